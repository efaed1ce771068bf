#include "app/command_line/clean_request.h"
#include "app/command_line/command_options.h"
#include "app/command_line/commands.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "base/json.h"
#include "base/log.h"
#include "base/utf8.h"
#include "store/memory_preferences.h"
#include "text/local_pipeline.h"

#include <iostream>
#include <iterator>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr CommandWords kWords = {"clean"_L1, "[--detected CODE] [--trace] [--jsonl]"_L1,
                                 "Clean a transcript as a dictation does, without the service."_L1};

const QString kDetected = u"detected"_s;
const QString kTrace = u"trace"_s;
const QString kJsonLines = u"jsonl"_s;

/// Each pass on a line of its own.
void trace(QLatin1StringView pass, const QString &text) {
    printError(u"%1: %2"_s.arg(QString(pass), onOneLine(text)));
}

int cleanWholeInput(const LocalTextPath &stored, const std::optional<QString> &detected,
                    const TextTrace &tracing) {
    const std::string input(std::istreambuf_iterator<char>(std::cin), {});
    const QString text = stored.process(QString::fromStdString(input), detected, tracing);
    return print(text + u'\n') ? exit_status::success : exit_status::failure;
}

/// A line's own preferences take the place of the stored ones.
QString cleaned(const CleanRequest &request, const LocalTextPath &stored, const TextTrace &tracing) {
    if (!request.preferences)
        return stored.process(request.text, request.detectedLanguage, tracing);
    const MemoryPreferences preferences(*request.preferences);
    return LocalTextPath(preferences).process(request.text, request.detectedLanguage, tracing);
}

QByteArray answer(const QString &member, const QString &text) {
    return json::compact(QJsonObject{{member, wellFormed(text)}}) + '\n';
}

int cleanLines(const LocalTextPath &stored, const TextTrace &tracing) {
    int status = exit_status::success;
    for (std::string line; std::getline(std::cin, line);) {
        const auto request = parseCleanRequest(QByteArray::fromStdString(line));
        if (!request)
            status = exit_status::failure;
        const bool isHeard = print(request ? answer(u"text"_s, cleaned(*request, stored, tracing))
                                           : answer(u"error"_s, request.error()));
        if (!isHeard)
            return exit_status::failure;
    }
    return status;
}

int runClean(const Lazy<const Preferences &> &preferences, const QStringList &arguments) {
    CommandOptions options(kWords);
    options.add({kDetected, u"The language the speech service detected."_s, u"CODE"_s});
    options.add({kTrace, u"Show the text after each pass, on standard error."_s});
    options.add({kJsonLines, u"Answer one JSON object a line: {\"prefs\", \"detected\", \"text\"}."_s});
    if (const auto status = options.read(arguments))
        return *status;
    if (!options.operands().isEmpty())
        return options.usageError(u"the text is read from standard input"_s);
    if (options.isSet(kJsonLines) && options.isSet(kDetected))
        return options.usageError(u"with --jsonl each line names its own \"detected\""_s);

    const LocalTextPath stored(preferences());
    const TextTrace tracing = options.isSet(kTrace) ? TextTrace(trace) : TextTrace();
    if (options.isSet(kJsonLines))
        return cleanLines(stored, tracing);
    const auto detected = options.isSet(kDetected) ? std::optional(options.value(kDetected)) : std::nullopt;
    return cleanWholeInput(stored, detected, tracing);
}

} // namespace

Command cleanCommand(Lazy<const Preferences &> preferences) {
    return {kWords, std::bind_front(runClean, std::move(preferences))};
}

} // namespace velmo
