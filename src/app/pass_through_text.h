#pragma once

#include "text/text_processing.h"

namespace velmo {

/// Text as the service heard it: no cleaning, no modes.
class PassThroughText final : public TextProcessing {
public:
    void process(const QString &text, const std::optional<QString> &, Completion completion) override {
        completion(text);
    }
};

} // namespace velmo
