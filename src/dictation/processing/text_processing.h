#pragma once

#include "base/interface.h"

#include <QString>
#include <functional>
#include <optional>

namespace velmo {

/// Turns a raw transcript into the text to type.
class TextProcessing : public Interface {
public:
    using Completion = std::function<void(QString)>;

    /// `text` is the trimmed transcript. Never fails: the completion comes exactly once, on any thread,
    /// perhaps before this returns. Called on the main thread.
    virtual void process(const QString &text, const std::optional<QString> &detectedLanguage,
                         Completion completion) = 0;
};

} // namespace velmo
