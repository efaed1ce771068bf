#pragma once

#include "store/preferences.h"

namespace velmo {

/// A kind of preference value as people name and write it on the command line.
struct PreferenceKind {
    QLatin1StringView name;     ///< "int"
    QLatin1StringView expected; ///< What its values look like: "a whole number".
    std::optional<PreferenceValue> (*parse)(const QString &text);
};

/// The kind of that name, which is string, bool, int, date or data; null when there is no such kind.
[[nodiscard]] const PreferenceKind *preferenceKind(QStringView name);

[[nodiscard]] const PreferenceKind &kindOf(const PreferenceValue &value);

/// The value as text, which its kind can parse again: data as base64, dates as ISO 8601 in UTC.
[[nodiscard]] QString textOf(const PreferenceValue &value);

/// One line for one value: key, kind and text, separated by tabs. Backslashes, line breaks, tabs and other control
/// characters inside them are written as in C: "\\", "\n", "\t", "\u001b".
[[nodiscard]] QString listLine(const QString &key, const PreferenceValue &value);

} // namespace velmo
