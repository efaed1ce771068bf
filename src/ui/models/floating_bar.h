#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace velmo {

class AudioLevelProvider;
class RecordingManager;
class TextInserter;
class TriggerKeyName;

/// What the bar at the foot of the screen shows and does. Main thread.
class FloatingBar final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(bool isIdle READ isIdle NOTIFY stateChanged)
    Q_PROPERTY(bool isTranscribing READ isTranscribing NOTIFY stateChanged)
    Q_PROPERTY(QString initial READ initial NOTIFY initialChanged)
    Q_PROPERTY(QList<double> dotLevels READ dotLevels NOTIFY dotLevelsChanged)
    Q_PROPERTY(QString liveText READ liveText NOTIFY liveTextChanged)
    Q_PROPERTY(QString triggerKeyName READ triggerKeyName NOTIFY triggerKeyNameChanged)
    Q_PROPERTY(QString message READ message NOTIFY messageChanged)
    Q_PROPERTY(bool isWarning READ isWarning NOTIFY messageChanged)

public:
    /// What the bar follows; all of it outlives the bar.
    struct Collaborators {
        MainQueue &queue;
        const TriggerKeyName &triggerKeyName;
        RecordingManager &recordingManager;
        AudioLevelProvider &levelMeter;
        TextInserter &textInserter;
    };

    explicit FloatingBar(const Collaborators &collaborators);

    [[nodiscard]] bool isIdle() const;
    [[nodiscard]] bool isTranscribing() const;

    /// The first character, in capitals, of the application that gets the text.
    [[nodiscard]] QString initial() const;
    /// The heights of the ten dots, 0 to 1, leftmost first.
    [[nodiscard]] const QList<double> &dotLevels() const;
    /// What has been heard so far; empty when there is nothing to show.
    [[nodiscard]] const QString &liveText() const;
    [[nodiscard]] QString triggerKeyName() const;

    /// A sentence that is worth a look now; empty when there is none.
    [[nodiscard]] const QString &message() const;
    /// Whether the sentence says that something went wrong.
    [[nodiscard]] bool isWarning() const { return m_isWarning; }

    Q_INVOKABLE void startRecording();
    Q_INVOKABLE void stopRecording();
    Q_INVOKABLE void cancelRecording();

Q_SIGNALS:
    void stateChanged();
    void initialChanged();
    void dotLevelsChanged();
    void liveTextChanged();
    void triggerKeyNameChanged();
    void messageChanged();

private:
    void say(const QString &message, bool isWarning);

    Collaborators m_with;
    QString m_message; ///< Of the last dictation, for as long as it is shown here.
    bool m_isWarning = false;
    MainQueue::Timer m_messageTimer;
};

} // namespace velmo
