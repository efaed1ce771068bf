#pragma once

#include "base/lifetime.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmo {

class HotkeyListener;
class KeyboardKeys;
class Preferences;
class TriggerKeyName;

/// The trigger key as the settings and onboarding show it, and how another is chosen: by pressing it. While it waits for
/// the press the present trigger key does nothing, so it can be pressed too. Main thread.
class TriggerKeyCapture final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(QString keyName READ keyName NOTIFY keyNameChanged)
    Q_PROPERTY(bool isCapturing READ isCapturing NOTIFY isCapturingChanged)
    Q_PROPERTY(QString refusal READ refusal NOTIFY refusalChanged)
    Q_PROPERTY(QString instruction READ instruction NOTIFY isCapturingChanged)

public:
    /// Whom the capture works with; all of them outlive it.
    struct Collaborators {
        Preferences &preferences;
        TriggerKeyName &name;
        HotkeyListener &listener;
        const KeyboardKeys &keys;
    };

    explicit TriggerKeyCapture(const Collaborators &collaborators);
    ~TriggerKeyCapture() override;

    /// Of the chosen key, for people; its words do not part at the end of a line.
    [[nodiscard]] const QString &keyName() const;
    [[nodiscard]] bool isCapturing() const { return m_isCapturing; }
    /// Why the key pressed last cannot be chosen; null when there is nothing to say.
    [[nodiscard]] const QString &refusal() const { return m_refusal; }
    /// What to do while it waits.
    [[nodiscard]] QString instruction() const;

    Q_INVOKABLE void begin();
    /// A key went down while it waits: chooses it, or says why not. Escape keeps the present key.
    /// @param key a Qt::Key.
    /// @param scanCode of the event as it came from the windowing system.
    Q_INVOKABLE void press(int key, quint32 scanCode);
    /// Keeps the present key; harmless when it does not wait.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    void keyNameChanged();
    void isCapturingChanged();
    void refusalChanged();

private:
    void end();
    void setRefusal(const QString &sentence);

    Collaborators m_with;
    bool m_isCapturing = false;
    QString m_refusal;
};

} // namespace velmo
