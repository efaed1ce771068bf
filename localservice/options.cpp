#include "localservice/options.h"

#include "localservice/http/openai_server.h"

#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>
#include <arpa/inet.h>
#include <array>
#include <netinet/in.h>
#include <optional>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

struct Parser {
    QCommandLineParser line;
    QCommandLineOption help{{u"help"_s, u"h"_s}, u"Show this text."_s};
    QCommandLineOption version{u"version"_s, u"Show the version."_s};
    QCommandLineOption port{u"port"_s, u"Port to listen on; 0 takes any free one. Default: 18650."_s,
                            u"number"_s, u"18650"_s};
    QCommandLineOption host{u"host"_s,
                            u"Numeric address to listen on. Default: 127.0.0.1, which only this "
                            "machine can reach."_s,
                            u"address"_s, u"127.0.0.1"_s};
    QCommandLineOption model{
        u"model"_s,
        u"Recognise speech with this model: a name, a file, or none for the simple English "
        "engine. Default: as told by 'models use'."_s,
        u"name or file"_s};
    QCommandLineOption speechUrl{
        u"speech-url"_s,
        u"Recognise speech by this server instead of the embedded engine: any with the "
        "OpenAI-compatible /v1/audio/transcriptions, such as whisper.cpp's or faster-whisper's."_s,
        u"url"_s};
    QCommandLineOption speechModel{u"speech-model"_s, u"Model to ask that server for. Default: whisper-1."_s,
                                   u"name"_s, u"whisper-1"_s};
    QCommandLineOption detectLanguage{
        u"speech-detect-language"_s,
        u"Let that server find out the language of each recording, for people who dictate in "
        "several. Otherwise it is told the primary one."_s};
    QCommandLineOption chatUrl{u"chat-url"_s,
                               u"Serve modes and Bokmål by this server: any with the OpenAI-compatible "
                               "/v1/chat/completions, such as llama.cpp's, Ollama or vLLM."_s,
                               u"url"_s};
    QCommandLineOption chatModel{u"chat-model"_s, u"Model to ask that server for."_s, u"name"_s};

    QCommandLineOption dataDirectory{
        u"data-dir"_s,
        u"Directory for accounts and what they keep in step. Default: velmo-local-service in "
        "$XDG_DATA_HOME."_s,
        u"directory"_s};

    Parser() {
        line.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
        line.setApplicationDescription(
            u"Turns recordings into text for Velmo and keeps its accounts, on this machine."_s);
        line.addOptions({port, host, dataDirectory, model, speechUrl, speechModel, detectLanguage, chatUrl,
                         chatModel, help, version});
    }
};

bool isNumericAddress(const QString &text) {
    std::array<unsigned char, sizeof(in6_addr)> address{};
    const QByteArray bytes = text.toUtf8();
    return ::inet_pton(AF_INET, bytes.constData(), address.data()) == 1 ||
           ::inet_pton(AF_INET6, bytes.constData(), address.data()) == 1;
}

std::optional<QString> readPort(const QString &text, int &port) {
    bool isNumber = false;
    port = text.toInt(&isNumber);
    if (!isNumber || port < 0 || port > 65535)
        return u"--port takes a number from 0 to 65535, not '%1'."_s.arg(text);
    return std::nullopt;
}

std::optional<QString> readHost(const QString &text, QString &host) {
    host = text == u"localhost" ? u"127.0.0.1"_s : text;
    if (!isNumericAddress(host))
        return u"--host takes a numeric address such as 127.0.0.1, not '%1'."_s.arg(text);
    return std::nullopt;
}

std::optional<QString> readUrl(const Parser &parser, const QCommandLineOption &option,
                               const char *endpointPath, QString &url) {
    if (!parser.line.isSet(option))
        return std::nullopt;
    const auto read = openAiUrl(parser.line.value(option), QLatin1StringView(endpointPath));
    if (!read)
        return u"--%1: %2"_s.arg(option.names().first(), read.error());
    url = *read;
    return std::nullopt;
}

QString ownDirectory() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/velmo-local-service"_s;
}

/// A model by its name, or by its file: whatever has the form of no name.
QString readModel(const QString &written) {
    return written.isEmpty() || isModelName(written) ? written : QDir().absoluteFilePath(written);
}

std::optional<QString> readDataDirectory(const Parser &parser, QString &directory) {
    directory = ownDirectory();
    if (!parser.line.isSet(parser.dataDirectory))
        return std::nullopt;
    if (parser.line.value(parser.dataDirectory).isEmpty())
        return u"--data-dir takes a directory."_s;
    directory = QDir().absoluteFilePath(parser.line.value(parser.dataDirectory));
    return std::nullopt;
}

} // namespace

Result<Options, QString> parseOptions(const QStringList &arguments) {
    Parser parser;
    // The parser takes the first word for the program's name.
    if (!parser.line.parse(QStringList(QString()) + arguments))
        return failed(parser.line.errorText());
    const QStringList others = parser.line.positionalArguments();
    if (!others.isEmpty())
        return failed(u"Unexpected argument '%1'."_s.arg(others.first()));

    Options options;
    options.help = parser.line.isSet(parser.help);
    options.version = parser.line.isSet(parser.version);
    if (const auto wrong = readPort(parser.line.value(parser.port), options.port))
        return failed(*wrong);
    if (const auto wrong = readHost(parser.line.value(parser.host), options.host))
        return failed(*wrong);
    if (const auto wrong = readUrl(parser, parser.speechUrl, "/v1/audio/transcriptions", options.speechUrl))
        return failed(*wrong);
    if (const auto wrong = readUrl(parser, parser.chatUrl, "/v1/chat/completions", options.chatUrl))
        return failed(*wrong);
    if (const auto wrong = readDataDirectory(parser, options.dataDirectory))
        return failed(*wrong);
    options.model = readModel(parser.line.value(parser.model));
    options.speechModel = parser.line.value(parser.speechModel);
    options.detectLanguage = parser.line.isSet(parser.detectLanguage);
    options.chatModel = parser.line.value(parser.chatModel);
    return options;
}

ModelStore modelStore() {
    const QString further = qEnvironmentVariable("VELMO_MODELS_PATH");
    return {ownDirectory() + u"/models"_s, further.split(u':', Qt::SkipEmptyParts)};
}

QString helpText() {
    return Parser().line.helpText() +
           u"\nSpeech models: velmo-local-service models --help\n"
           "\nEnvironment:\n"
           "  VELMO_SPEECH_API_KEY   key for the server of --speech-url\n"
           "  VELMO_CHAT_API_KEY     key for the server of --chat-url\n"
           "  VELMO_MODELS_PATH      further folders with speech models, separated by colons\n"_s;
}

} // namespace velmo::localservice
