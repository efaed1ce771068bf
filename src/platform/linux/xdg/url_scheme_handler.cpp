#include "platform/linux/xdg/url_scheme_handler.h"

#include "velmo_desktop_entry.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const QString kEntryName = u"velmo.desktop"_s;

bool isPlain(QChar character) {
    return character.isLetterOrNumber() || QStringView(u"/._-+,:@").contains(character);
}

/// A word of an Exec line. One with special characters is quoted, as the desktop entry format wants it, with what is
/// special inside the quotes escaped and percent signs doubled. The backslashes of that are escaped once more, as in
/// every string of the format. A plain word stays as it is: where no desktop environment runs, xdg-open takes quotes
/// for a part of the program's name.
QString execWord(const QString &word) {
    if (std::all_of(word.begin(), word.end(), isPlain))
        return word;
    QString text;
    for (const QChar character : word) {
        if (QStringView(u"\"`$\\").contains(character))
            text += u"\\\\"_s;
        text += character == u'\\' ? u"\\\\"_s : QString(character);
        if (character == u'%')
            text += character;
    }
    return u'"' + text + u'"';
}

QString userFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/applications"_s;
}

/// Another folder than the user's that holds the entry: a package installed it.
bool isInstalledForAll() {
    const QStringList folders =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation).sliced(1);
    return std::any_of(folders.begin(), folders.end(), [](const QString &folder) {
        return QFile::exists(folder + u"/applications/"_s + kEntryName);
    });
}

QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Result<void, QString> write(const QString &path, const QByteArray &content) {
    QSaveFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(content) != content.size() || !file.commit())
        return failed(u"Could not write %1: %2"_s.arg(path, file.errorString()));
    return {};
}

} // namespace

QString desktopEntry(const QString &program) {
    QString entry = QString::fromUtf8(kDesktopEntry);
    return entry.replace(u"Exec=velmo "_s, u"Exec=%1 "_s.arg(execWord(program)));
}

Result<void, QString> UrlSchemeHandler::install(const QString &program) {
    const QString path = userFolder() + u'/' + kEntryName;
    const QByteArray content = desktopEntry(program).toUtf8();
    if (isInstalledForAll() || contentOf(path) == content)
        return {};
    if (auto written = write(path, content); !written)
        return written;
    registerEntry(userFolder());
    return {};
}

void UrlSchemeHandler::registerEntry(const QString &folder) {
    m_process =
        std::make_unique<DetachedProcess>(u"update-desktop-database"_s, QStringList{folder}, [this](bool) {
            m_process = std::make_unique<DetachedProcess>(
                u"xdg-mime"_s, QStringList{u"default"_s, kEntryName, u"x-scheme-handler/velmo"_s},
                [](bool) {});
        });
}

} // namespace velmo
