#pragma once

#include "store/preferences.h"

#include <QList>

/// The modes a person has made.
namespace velmo {

/// A way to have text rewritten: a name, a symbol and what the language model is told.
struct CustomMode {
    QString id; ///< A UUID in upper case.
    QString name;
    QString systemPrompt;
    QString icon; ///< The name of a symbol.

    bool operator==(const CustomMode &) const = default;
};

/// The modes of a list in its stored form, [{"id":"…","name":"…","systemPrompt":"…","icon":"…"}], in list order.
/// Objects without a string "id", "name" or "systemPrompt" are passed over; without a string "icon" a mode has
/// "sparkles". A text that is no array of objects holds no modes.
[[nodiscard]] QList<CustomMode> parseCustomModes(const QString &stored);

/// The stored form of a list.
[[nodiscard]] QString serialiseCustomModes(const QList<CustomMode> &modes);

/// The stored list.
[[nodiscard]] QList<CustomMode> customModes(const Preferences &preferences);

/// Puts a mode at the end of the stored list.
void addCustomMode(Preferences &preferences, const CustomMode &mode);

/// Puts the mode in the place of the one with the same identifier; without one the list stays as it is.
void replaceCustomMode(Preferences &preferences, const CustomMode &mode);

/// Removes every mode of that identifier from the stored list.
void removeCustomMode(Preferences &preferences, const QString &id);

/// Puts a removed mode back to its place in the stored list, or to the end where that is shorter now. One that is there
/// already stays where it is.
void restoreCustomMode(Preferences &preferences, const CustomMode &mode, qsizetype place);

/// The prompt of the first stored object with that identifier, whatever else it lacks; empty when it has no string
/// "systemPrompt", nothing when there is no such object.
[[nodiscard]] std::optional<QString> customModePrompt(const Preferences &preferences, const QString &id);

} // namespace velmo
