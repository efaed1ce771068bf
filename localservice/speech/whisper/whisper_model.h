#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

struct whisper_context;
struct whisper_state;

namespace velmo::localservice {

/// How one piece of sound is recognised.
struct WhisperRun {
    QString language;   ///< A code the model knows.
    QString prompt;     ///< May be empty.
    int window = 0;     ///< Frames of 20 ms the model looks at, at most `WhisperModel::wholeWindow`.
    int mostTokens = 0; ///< The text is cut off there.
    int threads = 1;
    std::function<bool()> isOver; ///< Asked now and then; true ends the run.
};

struct WhisperText {
    QString text;
    bool isCutOff = false; ///< It reached the most tokens.
};

/// A speech model in memory. With the voice detector the only code that speaks to the library. Used by one thread.
class WhisperModel : private Unmovable {
public:
    static constexpr int wholeWindow = 1500;
    static constexpr int mostPromptTokens = 223; ///< Half of what the model can look back at, less one.

    /// Null when the library takes the file for no model.
    [[nodiscard]] static std::unique_ptr<WhisperModel> load(const QString &path);
    ~WhisperModel();

    [[nodiscard]] bool knows(const QString &language) const;
    [[nodiscard]] int tokensIn(const QString &text) const;

    /// Waits for the text of sound at 16 kHz, with full scale at 1, of 30 s at most; nothing when the run was ended.
    [[nodiscard]] std::optional<WhisperText> recognise(std::span<const float> samples, const WhisperRun &run);

    /// How likely each of these languages, of which the model knows all, is the one of the sound recognised last; together 1.
    [[nodiscard]] std::vector<double> shares(const QStringList &languages, int threads);

private:
    struct Free {
        void operator()(whisper_context *context) const;
        void operator()(whisper_state *state) const;
    };

    WhisperModel() = default;

    std::unique_ptr<whisper_context, Free> m_context;
    std::unique_ptr<whisper_state, Free> m_state; // before the context goes
};

/// Keeps the library from writing to standard error what it does.
void silenceSpeechLibrary();

} // namespace velmo::localservice
