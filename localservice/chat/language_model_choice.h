#pragma once

#include "base/interface.h"
#include "base/result.h"
#include "localservice/chat/chat_client.h"

#include <QString>
#include <memory>
#include <mutex>

namespace velmo::localservice {

/// Which language model modes go through: the one the service was told at its start, else what the person has chosen, which
/// is kept in a file. Any thread.
class LanguageModelChoice : private Unmovable {
public:
    struct Chosen {
        QString address; ///< As it was written; empty: none.
        QString model;   ///< Empty: the server's own choice.
    };

    /// A file that cannot be read is as good as none. The client outlives the choice.
    LanguageModelChoice(HttpClient &http, QString path);

    /// What the command line says: it cannot be changed then.
    void fix(const Chosen &chosen, std::unique_ptr<ChatClient> client);

    [[nodiscard]] Chosen chosen() const;
    /// Null where there is no language model.
    [[nodiscard]] std::shared_ptr<const ChatClient> client() const;

    [[nodiscard]] Result<void, Refusal> choose(const Chosen &chosen);

private:
    [[nodiscard]] Result<std::shared_ptr<const ChatClient>, Refusal> clientFor(const Chosen &chosen) const;

    HttpClient &m_http;
    const QString m_path;
    mutable std::mutex m_mutex; // of what follows
    bool m_isFixed = false;
    Chosen m_chosen;
    std::shared_ptr<const ChatClient> m_client;
};

} // namespace velmo::localservice
