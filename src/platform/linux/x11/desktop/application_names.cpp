#include "platform/linux/x11/desktop/application_names.h"

#include <QFileInfo>
#include <gio/gdesktopappinfo.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace velmo::x11 {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using AppInfo = std::unique_ptr<GDesktopAppInfo, Unref>;

struct FreeApplications {
    void operator()(GList *list) const { g_list_free_full(list, g_object_unref); }
};

bool isSame(const QString &left, const QString &right) {
    return !left.isEmpty() && left.compare(right, Qt::CaseInsensitive) == 0;
}

QString nameOf(GDesktopAppInfo *application) {
    return QString::fromUtf8(g_app_info_get_name(G_APP_INFO(application)));
}

QString nameById(const QString &id) {
    if (id.isEmpty())
        return {};
    const AppInfo application(g_desktop_app_info_new((id + u".desktop"_s).toUtf8().constData()));
    return application ? nameOf(application.get()) : QString();
}

/// How surely the desktop file belongs to the window; 0 when nothing speaks for it.
int affinity(GDesktopAppInfo *application, const WindowIdentity &window) {
    const QString windowClass = QString::fromUtf8(g_desktop_app_info_get_startup_wm_class(application));
    if (isSame(windowClass, window.className))
        return 5;
    if (isSame(windowClass, window.instance))
        return 4;
    // "org.gnome.gedit.desktop"
    const QString id =
        QFileInfo(QString::fromUtf8(g_app_info_get_id(G_APP_INFO(application)))).completeBaseName();
    const QString lastPart = id.section(u'.', -1);
    if (isSame(lastPart, window.className))
        return 3;
    if (isSame(lastPart, window.instance))
        return 2;
    const QString program = QString::fromUtf8(g_app_info_get_executable(G_APP_INFO(application)));
    return isSame(QFileInfo(program).fileName(), window.instance) ? 1 : 0;
}

QString nameByWindowClass(const WindowIdentity &window) {
    const std::unique_ptr<GList, FreeApplications> applications(g_app_info_get_all());
    QString name;
    int best = 0;
    for (const GList *entry = applications.get(); entry; entry = entry->next) {
        auto *application = G_DESKTOP_APP_INFO(entry->data);
        const int value = affinity(application, window);
        if (value > best) {
            best = value;
            name = nameOf(application);
        }
    }
    return name;
}

} // namespace

QString applicationName(const WindowIdentity &window) {
    if (const QString name = nameById(window.desktopId); !name.isEmpty())
        return name;
    if (const QString name = nameByWindowClass(window); !name.isEmpty())
        return name;
    return window.className.isEmpty() ? window.title : window.className;
}

} // namespace velmo::x11
