#pragma once

#include <QObject>

namespace velmo {

class KeyboardKeys;
class PreferenceWatch;
class Preferences;

/// How people call the trigger key, for every text that names it. It follows the choice that is stored. Main thread.
class TriggerKeyName final : public QObject {
    Q_OBJECT

public:
    /// All outlive the name.
    TriggerKeyName(const Preferences &preferences, PreferenceWatch &watch, const KeyboardKeys &keyboard);

    /// "Right Control"
    [[nodiscard]] const QString &label() const { return m_label; }
    /// The same for a sentence: its blanks do not break, so no line ends within it.
    [[nodiscard]] const QString &inText() const { return m_inText; }

    /// Another choice has just been stored.
    void refresh();

Q_SIGNALS:
    void changed();

private:
    const Preferences &m_preferences;
    const KeyboardKeys &m_keyboard;
    QString m_label;
    QString m_inText;
};

} // namespace velmo
