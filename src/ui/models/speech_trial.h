#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>
#include <optional>

namespace velmo {

class RecordingManager;

/// Dictation tried out in a field of Velmo's own: it goes the way of every dictation, so the text comes as it does anywhere,
/// by the clipboard and the paste shortcut, to where the keyboard is. This tells how that went and how long it took. Main
/// thread.
class SpeechTrial final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY stateChanged)
    Q_PROPERTY(bool isTranscribing READ isTranscribing NOTIFY stateChanged)
    Q_PROPERTY(QString outcome READ outcome NOTIFY outcomeChanged)
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY outcomeChanged)

public:
    /// Both outlive the trial.
    SpeechTrial(MainQueue &queue, RecordingManager &manager);

    [[nodiscard]] bool isRecording() const;
    [[nodiscard]] bool isTranscribing() const;

    /// How the last one ended, in a sentence; empty before that.
    [[nodiscard]] const QString &outcome() const { return m_outcome; }
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

    /// Begins, or ends what was begun.
    Q_INVOKABLE void toggle();
    /// The field has another text.
    Q_INVOKABLE void textArrived();

Q_SIGNALS:
    void stateChanged();
    void outcomeChanged();

private:
    void follow();
    void awaitText();
    void setOutcome(const QString &outcome, bool hasFailed);

    MainQueue &m_queue;
    RecordingManager &m_manager;
    std::optional<Date> m_stopped; ///< When the person ended what is awaited.
    QString m_outcome;
    bool m_hasFailed = false;
    MainQueue::Timer m_patience;
};

} // namespace velmo
