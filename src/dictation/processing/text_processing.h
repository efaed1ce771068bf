#pragma once

#include "base/interface.h"

#include <QString>
#include <functional>
#include <optional>

namespace velmo {

/// What became of a transcript.
struct ProcessedText {
    QString text;
    bool lacksMode = false; ///< The selected mode was to rewrite it, and could not.

    bool operator==(const ProcessedText &) const = default;
};

/// Turns a raw transcript into the text to type.
class TextProcessing : public Interface {
public:
    using Completion = std::function<void(ProcessedText)>;

    /// `text` is the trimmed transcript. Never fails: the completion comes exactly once, on any thread,
    /// perhaps before this returns. Called on the main thread.
    virtual void process(const QString &text, const std::optional<QString> &detectedLanguage,
                         Completion completion) = 0;
};

} // namespace velmo
