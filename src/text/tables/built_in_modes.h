#pragma once

#include <QStringView>
#include <span>

namespace velmo {

/// A mode that is always there.
struct BuiltInMode {
    QStringView id;
    QStringView name;
    QStringView icon; ///< The name of a symbol.
    QStringView description;
    QStringView systemPrompt; ///< Empty: the text is not sent to a language model.
};

/// In the order they are shown; the first is the default.
[[nodiscard]] std::span<const BuiltInMode> builtInModes();

/// The symbols offered for a custom mode.
[[nodiscard]] std::span<const QStringView> iconOptions();

} // namespace velmo
