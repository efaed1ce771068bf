#include "platform/linux/xdg/desktop_settings.h"

#include <QStandardPaths>
#include <array>
#include <optional>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using Page = SystemSettings::Page;

/// A command that shows a page. `desktop` is a word of XDG_CURRENT_DESKTOP; empty: on any desktop that has it.
struct SettingsCommand {
    Page page;
    QLatin1StringView desktop;
    const char *command;
};

/// In this order: Budgie says "Budgie:GNOME", so those that go by their own name come as they are.
constexpr std::array kCommands = {
    SettingsCommand{Page::Keyboard, "GNOME"_L1, "gnome-control-center keyboard"},
    SettingsCommand{Page::Keyboard, "KDE"_L1, "systemsettings kcm_keys"},
    SettingsCommand{Page::Keyboard, "XFCE"_L1, "xfce4-keyboard-settings"},
    SettingsCommand{Page::Keyboard, "X-Cinnamon"_L1, "cinnamon-settings keyboard"},
    SettingsCommand{Page::Keyboard, "MATE"_L1, "mate-keybinding-properties"},
    SettingsCommand{Page::Keyboard, "LXQt"_L1, "lxqt-config-globalkeyshortcuts"},
    SettingsCommand{Page::Sound, "GNOME"_L1, "gnome-control-center sound"},
    SettingsCommand{Page::Sound, "KDE"_L1, "systemsettings kcm_pulseaudio"},
    SettingsCommand{Page::Sound, "X-Cinnamon"_L1, "cinnamon-settings sound"},
    SettingsCommand{Page::Sound, "MATE"_L1, "mate-volume-control"},
    SettingsCommand{Page::Sound, QLatin1StringView(), "pavucontrol"},
    SettingsCommand{Page::Sound, QLatin1StringView(), "pavucontrol-qt"},
};

/// The first command for the page that this desktop has, as words.
std::optional<QStringList> commandFor(Page page) {
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    for (const SettingsCommand &row : kCommands) {
        const QStringList words = QString::fromLatin1(row.command).split(u' ');
        if (row.page == page && (row.desktop.isEmpty() || desktops.contains(row.desktop)) &&
            !QStandardPaths::findExecutable(words.front()).isEmpty())
            return words;
    }
    return std::nullopt;
}

} // namespace

bool DesktopSettings::canOpen(Page page) const {
    return commandFor(page).has_value();
}

void DesktopSettings::open(Page page) {
    if (const auto words = commandFor(page))
        m_process = std::make_unique<DetachedProcess>(words->front(), words->sliced(1), [](bool) {});
}

} // namespace velmo
