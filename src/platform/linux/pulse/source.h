#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <pulse/introspect.h>

namespace velmo::pulse {

/// Whether people speak into the source. Without a microphone the server offers as default what is being played: the
/// monitor of a sound card's output or of the dummy output. The monitor of any other virtual output counts, for such
/// a one was set up to be recorded.
[[nodiscard]] bool isMicrophone(const pa_source_info &source);

/// The sentence for an error code of libpulse.
[[nodiscard]] QString sentenceFor(int error);

/// One question to the server about a source. Dropping it cancels the question. Under the connection's lock.
class SourceQuery {
public:
    /// Called once, with nothing when there is no such source.
    using Answer = std::function<void(const pa_source_info *source)>;

    void askForDefault(pa_context *context, Answer answer);
    void askFor(pa_context *context, std::uint32_t index, Answer answer);
    void cancel() { m_operation.reset(); }

private:
    struct CancelOperation {
        void operator()(pa_operation *operation) const;
    };

    static void answered(pa_context *context, const pa_source_info *source, int end, void *query);
    void begin(pa_operation *operation);

    Answer m_answer;
    std::unique_ptr<pa_operation, CancelOperation> m_operation;
};

} // namespace velmo::pulse
