#include "localservice/speech/openai_speech_engine.h"

#include "base/json.h"
#include "base/uuid.h"
#include "localservice/speech/language_names.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// Servers work on one recording at a time or on several; what waits there waits no longer than here.
constexpr int kInstances = 4;

/// A multipart/form-data body.
class Form {
public:
    void addText(const QByteArray &name, const QString &text) {
        begin("name=\"" + name + '"');
        m_bytes += "\r\n" + text.toUtf8() + "\r\n";
    }

    void addFile(const Upload &upload) {
        begin("name=\"file\"; filename=\"" + upload.fileName.toUtf8() + '"');
        m_bytes += "Content-Type: " + upload.contentType + "\r\n\r\n" + upload.audio + "\r\n";
    }

    [[nodiscard]] QByteArray contentType() const { return "multipart/form-data; boundary=" + m_boundary; }
    [[nodiscard]] QByteArray body() const { return m_bytes + "--" + m_boundary + "--\r\n"; }

private:
    void begin(const QByteArray &disposition) {
        m_bytes += "--" + m_boundary + "\r\nContent-Disposition: form-data; " + disposition + "\r\n";
    }

    QByteArray m_boundary = newUpperUuid().toLatin1();
    QByteArray m_bytes;
};

/// Whisper knows Norwegian as "no" and Nynorsk as "nn".
QString languageToTell(const QString &primary) {
    return languageCode(primary).value_or(QString());
}

class OpenAiSpeechEngine final : public SpeechEngine {
public:
    OpenAiSpeechEngine(HttpClient &http, const SpeechServerSettings &settings)
        : m_server(http, u"speech server"_s, settings.address), m_detectLanguage(settings.detectLanguage) {}

    [[nodiscard]] std::optional<double> measureWorkPerSecond() override { return std::nullopt; }

    [[nodiscard]] SpeechOutcome transcribe(const Speech &speech, const Patience &patience) override {
        const Form form = formFor(speech.upload);
        const auto limit =
            std::chrono::duration_cast<std::chrono::milliseconds>(patience.end() - Clock::now());
        const auto reply = m_server.post(form.contentType(), form.body(), limit);
        if (!reply)
            return failed(reply.error());
        const auto text = json::string(*reply, "text"_L1);
        if (!text)
            return failed(m_server.badAnswer());
        const QString language = json::string(*reply, "language"_L1).value_or(QString());
        return Transcript{text->trimmed(), languageCode(language)};
    }

private:
    [[nodiscard]] Form formFor(const Upload &upload) const {
        Form form;
        form.addFile(upload);
        form.addText("model", m_server.model());
        const QString language = m_detectLanguage ? QString() : languageToTell(upload.language);
        if (!language.isEmpty())
            form.addText("language", language);
        if (!upload.prompt.isEmpty())
            form.addText("prompt", upload.prompt);
        form.addText("response_format", u"verbose_json"_s); // tells the language too
        return form;
    }

    OpenAiServer m_server;
    bool m_detectLanguage;
};

} // namespace

EngineKind openAiSpeechEngines(HttpClient &http, const SpeechServerSettings &settings) {
    EngineKind kind;
    kind.facts = {u"server"_s};
    const QUrl url(settings.address.url);
    kind.description =
        u"speech server %1"_s.arg(url.adjusted(QUrl::RemovePath | QUrl::RemoveQuery).toString());
    kind.instances = kInstances;
    kind.make = [&http, settings]() -> Result<std::unique_ptr<SpeechEngine>, QString> {
        return std::make_unique<OpenAiSpeechEngine>(http, settings);
    };
    kind.prepare = [](Upload upload) -> Result<Speech, Refusal> { return Speech{std::move(upload), {}}; };
    return kind;
}

} // namespace velmo::localservice
