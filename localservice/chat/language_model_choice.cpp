#include "localservice/chat/language_model_choice.h"

#include "base/json.h"
#include "store/private_files.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

LanguageModelChoice::Chosen stored(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject object = json::object(file.readAll()).value_or(QJsonObject());
    return {object["address"_L1].toString(), object["model"_L1].toString()};
}

bool store(const QString &path, const LanguageModelChoice::Chosen &chosen) {
    makePrivateDirectories(QFile::encodeName(QFileInfo(path).absolutePath()));
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    file.write(json::compact(QJsonObject{{u"address"_s, chosen.address}, {u"model"_s, chosen.model}}));
    return file.commit();
}

} // namespace

LanguageModelChoice::LanguageModelChoice(HttpClient &http, QString path)
    : m_http(http), m_path(std::move(path)), m_chosen(stored(m_path)) {
    m_client = clientFor(m_chosen).value_or(nullptr);
    if (!m_client)
        m_chosen = {};
}

void LanguageModelChoice::fix(const Chosen &chosen, std::unique_ptr<ChatClient> client) {
    const std::lock_guard lock(m_mutex);
    m_isFixed = true;
    m_chosen = chosen;
    m_client = std::move(client);
}

LanguageModelChoice::Chosen LanguageModelChoice::chosen() const {
    const std::lock_guard lock(m_mutex);
    return m_chosen;
}

std::shared_ptr<const ChatClient> LanguageModelChoice::client() const {
    const std::lock_guard lock(m_mutex);
    return m_client;
}

/// Chosen ones get no key: keys come with the command line's.
Result<std::shared_ptr<const ChatClient>, Refusal>
LanguageModelChoice::clientFor(const Chosen &chosen) const {
    if (chosen.address.isEmpty())
        return nullptr;
    const auto url = openAiUrl(chosen.address, u"/v1/chat/completions"_s);
    if (!url)
        return failed(Refusal{422, url.error()});
    return std::make_shared<const ChatClient>(m_http, OpenAiAddress{*url, chosen.model, {}});
}

Result<void, Refusal> LanguageModelChoice::choose(const Chosen &chosen) {
    const std::lock_guard lock(m_mutex);
    if (m_isFixed)
        return failed(Refusal{409, u"The service was started with --chat-url, which decides."_s});
    auto client = clientFor(chosen);
    if (!client)
        return failed(client.error());
    if (!store(m_path, chosen))
        return failed(Refusal{500, u"%1 cannot be written."_s.arg(m_path)});
    m_chosen = chosen;
    m_client = std::move(*client);
    return {};
}

} // namespace velmo::localservice
