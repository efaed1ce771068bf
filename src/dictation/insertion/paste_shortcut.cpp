#include "dictation/insertion/paste_shortcut.h"

#include <algorithm>
#include <array>

namespace velmo {

namespace {

struct OwnShortcut {
    QStringView windowClass;
    PasteShortcut shortcut;
};

constexpr auto kControlShiftV = PasteShortcut::ControlShiftV;
constexpr auto kShiftInsert = PasteShortcut::ShiftInsert;

// The shortcuts these programs have before anyone configures them.
constexpr std::array kOwnShortcuts = {
    // Older terminals, which paste the primary selection.
    OwnShortcut{u"XTerm", kShiftInsert},
    OwnShortcut{u"UXTerm", kShiftInsert},
    OwnShortcut{u"KOI8RXTerm", kShiftInsert},
    OwnShortcut{u"Rxvt", kShiftInsert},
    OwnShortcut{u"URxvt", kShiftInsert},
    OwnShortcut{u"Eterm", kShiftInsert},
    OwnShortcut{u"mlterm", kShiftInsert},
    OwnShortcut{u"st-256color", kShiftInsert},
    OwnShortcut{u"st", kShiftInsert},
    // Terminals of the desktops, and newer ones.
    OwnShortcut{u"Gnome-terminal", kControlShiftV},
    OwnShortcut{u"Gnome-terminal-server", kControlShiftV},
    OwnShortcut{u"org.gnome.Terminal", kControlShiftV},
    OwnShortcut{u"kgx", kControlShiftV},
    OwnShortcut{u"org.gnome.Console", kControlShiftV},
    OwnShortcut{u"org.gnome.Ptyxis", kControlShiftV},
    OwnShortcut{u"konsole", kControlShiftV},
    OwnShortcut{u"yakuake", kControlShiftV},
    OwnShortcut{u"Xfce4-terminal", kControlShiftV},
    OwnShortcut{u"Mate-terminal", kControlShiftV},
    OwnShortcut{u"Lxterminal", kControlShiftV},
    OwnShortcut{u"qterminal", kControlShiftV},
    OwnShortcut{u"deepin-terminal", kControlShiftV},
    OwnShortcut{u"io.elementary.terminal", kControlShiftV},
    OwnShortcut{u"Terminator", kControlShiftV},
    OwnShortcut{u"Tilix", kControlShiftV},
    OwnShortcut{u"Tilda", kControlShiftV},
    OwnShortcut{u"Guake", kControlShiftV},
    OwnShortcut{u"Sakura", kControlShiftV},
    OwnShortcut{u"Roxterm", kControlShiftV},
    OwnShortcut{u"Termite", kControlShiftV},
    OwnShortcut{u"terminology", kControlShiftV},
    OwnShortcut{u"cool-retro-term", kControlShiftV},
    OwnShortcut{u"Alacritty", kControlShiftV},
    OwnShortcut{u"kitty", kControlShiftV},
    OwnShortcut{u"org.wezfurlong.wezterm", kControlShiftV},
    OwnShortcut{u"com.mitchellh.ghostty", kControlShiftV},
    OwnShortcut{u"com.raggesilver.BlackBox", kControlShiftV},
    // An editor that scrolls on Control+V.
    OwnShortcut{u"Emacs", kShiftInsert},
};

} // namespace

std::optional<PasteShortcut> ownPasteShortcut(QStringView windowClass) {
    const auto *const row =
        std::find_if(kOwnShortcuts.begin(), kOwnShortcuts.end(), [windowClass](const OwnShortcut &candidate) {
            return candidate.windowClass.compare(windowClass, Qt::CaseInsensitive) == 0;
        });
    if (row == kOwnShortcuts.end())
        return std::nullopt;
    return row->shortcut;
}

} // namespace velmo
