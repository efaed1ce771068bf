#pragma once

#include "localservice/http/openai_server.h"

namespace velmo::localservice {

/// A language model behind the OpenAI-compatible POST /v1/chat/completions, such as those of llama.cpp,
/// Ollama and vLLM. Any thread.
class ChatClient {
public:
    /// The client must outlive it.
    ChatClient(HttpClient &http, OpenAiAddress address);

    /// What the model makes of the text under the instruction, trimmed and never empty.
    [[nodiscard]] Result<QString, Refusal> rewrite(const QString &instruction, const QString &text,
                                                   std::chrono::milliseconds limit) const;

private:
    OpenAiServer m_server;
};

/// The refusal of endpoints that need a model while none is set up.
[[nodiscard]] Refusal noChatServer();

} // namespace velmo::localservice
