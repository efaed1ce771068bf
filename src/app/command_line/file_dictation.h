#pragma once

#include "base/main_queue.h"
#include "dictation/capture/recorder.h"
#include "dictation/insertion/text_insertion.h"
#include "store/dictation_history.h"

#include <QString>
#include <optional>

// What stands in for microphone, cursor and clock when recordings come from files.
namespace velmo {

/// A main queue whose clock can be held and moved ahead, so that a file that is handed over in an instant has taken the
/// time it took to speak. Everything after runs in real time.
class ShiftedClock final : public MainQueue {
public:
    explicit ShiftedClock(MainQueue &real) : m_real(real) {}

    void post(Task task) override { m_real.post(std::move(task)); }
    [[nodiscard]] Timer after(std::chrono::milliseconds delay, Task task) override {
        return m_real.after(delay, std::move(task));
    }
    [[nodiscard]] Date now() const override { return m_held.value_or(m_real.now() + m_ahead); }
    [[nodiscard]] std::chrono::nanoseconds uptime() const override { return m_real.uptime(); }

    /// Stops the clock. Main thread, while no other thread asks for the time.
    void hold() { m_held = now(); }
    /// Lets it go on, as if it had been held for this long.
    void releaseAfter(std::chrono::duration<double> held);

private:
    MainQueue &m_real;
    std::optional<Date> m_held;
    Date::duration m_ahead{};
};

/// "Records" one file: what is spoken is already in it, and it is kept.
class FileRecorder final : public Recorder {
public:
    explicit FileRecorder(ShiftedClock &clock) : m_clock(clock) {}

    /// The file the next recording is, and how long it is where that is known.
    void setFile(const QString &path, std::optional<double> seconds);

    [[nodiscard]] Result<QString, RecordingFailure> startRecording() override;
    [[nodiscard]] std::optional<QString> stopRecording() override;
    void deleteRecording(const QString &) override {}

private:
    ShiftedClock &m_clock;
    QString m_path;
    std::optional<double> m_seconds;
};

/// Keeps the text instead of typing it.
class CollectedText final : public TextInsertion {
public:
    void insert(const QString &text) override { m_text = text; }
    /// The text inserted since the last call, if any.
    [[nodiscard]] std::optional<QString> take() { return std::exchange(m_text, std::nullopt); }

private:
    std::optional<QString> m_text;
};

/// Remembers dictations in a history, without a duration where the file's length is not known.
class FileDictationHistory final : public DictationHistory {
public:
    explicit FileDictationHistory(DictationHistory &history) : m_history(history) {}

    void setLengthKnown(bool known) { m_lengthKnown = known; }
    void add(const QString &text, std::optional<double> durationSeconds) override {
        m_history.add(text, m_lengthKnown ? durationSeconds : std::nullopt);
    }

private:
    DictationHistory &m_history;
    bool m_lengthKnown = true;
};

} // namespace velmo
