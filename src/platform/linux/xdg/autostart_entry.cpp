#include "platform/linux/xdg/autostart_entry.h"

#include "platform/linux/xdg/url_scheme_handler.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// What the tools of desktops write into an entry that is not to be started.
bool isSwitchedOff(const QByteArray &entry) {
    const auto lines = entry.split('\n');
    return std::any_of(lines.begin(), lines.end(), [](const QByteArray &line) {
        const QByteArray words = line.simplified().replace(' ', "").toLower();
        return words == "hidden=true" || words == "x-gnome-autostart-enabled=false";
    });
}

Result<void, QString> refused(const QFile &file) {
    return failed(QCoreApplication::translate("AutostartEntry", "Could not change %1: %2")
                      .arg(file.fileName(), file.errorString()));
}

} // namespace

AutostartEntry::AutostartEntry(const QString &folder, QString program)
    : m_path(folder + u"/velmo.desktop"_s), m_program(std::move(program)) {}

bool AutostartEntry::isEnabled() const {
    QFile file(m_path);
    return file.open(QIODevice::ReadOnly) && !isSwitchedOff(file.readAll());
}

Result<void, QString> AutostartEntry::setEnabled(bool enabled) {
    return enabled ? write() : remove();
}

/// Written in place: the file is a few hundred bytes, and a safe copy would make the main thread wait for the disk.
Result<void, QString> AutostartEntry::write() const {
    const QByteArray content = desktopEntry(m_program).toUtf8();
    QFile file(m_path);
    if (!QDir().mkpath(QFileInfo(m_path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(content) != content.size() || !file.flush())
        return refused(file);
    return {};
}

Result<void, QString> AutostartEntry::remove() const {
    QFile file(m_path);
    if (file.exists() && !file.remove())
        return refused(file);
    return {};
}

} // namespace velmo
