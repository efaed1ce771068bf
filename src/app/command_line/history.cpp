#include "app/command_line/command_options.h"
#include "app/command_line/commands.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "base/json.h"
#include "base/log.h"
#include "base/utf8.h"
#include "store/history_store.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr CommandWords kWords = {"history"_L1, "[--json] [--limit N]"_L1,
                                 "Print what was dictated, the newest first."_L1};

const QString kJson = u"json"_s;
const QString kLimit = u"limit"_s;

QDateTime dateTime(Date moment) {
    return QDateTime::fromMSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::milliseconds>(moment.time_since_epoch()).count());
}

/// The moment, then the text; its further lines stand below the first.
QString lines(const Entry &entry) {
    QString head = dateTime(entry.timestamp).toString(u"yyyy-MM-dd HH:mm  "_s);
    QString text;
    for (const QString &line : entry.text.split(u'\n')) {
        text += head + onOneLine(line) + u'\n';
        head.fill(u' ');
    }
    return text;
}

QJsonObject object(const Entry &entry) {
    QJsonObject object{
        {"id"_L1, entry.id},
        {"text"_L1, wellFormed(entry.text)},
        {"timestamp"_L1, dateTime(entry.timestamp).toUTC().toString(Qt::ISODateWithMs)},
    };
    if (entry.durationSeconds)
        object.insert("durationSeconds"_L1, *entry.durationSeconds);
    return object;
}

QString asText(const QList<Entry> &entries) {
    QString text;
    for (const Entry &entry : entries)
        text += lines(entry);
    return text;
}

QString asJson(const QList<Entry> &entries) {
    QJsonArray objects;
    for (const Entry &entry : entries)
        objects.append(object(entry));
    return QString::fromUtf8(json::compact(objects)) + u'\n';
}

/// How many entries are wanted; nothing when the text is no such number.
std::optional<qsizetype> limitIn(const CommandOptions &options) {
    if (!options.isSet(kLimit))
        return HistoryStore::maxEntries;
    bool isNumber = false;
    const uint limit = options.value(kLimit).toUInt(&isNumber);
    return isNumber ? std::optional<qsizetype>(limit) : std::nullopt;
}

int runHistory(const Lazy<const HistoryStore &> &history, const QStringList &arguments) {
    CommandOptions options(kWords);
    options.add({kJson, u"Print one JSON array of objects."_s});
    options.add({kLimit, u"Print the newest N entries only."_s, u"N"_s});
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    const auto limit = limitIn(options);
    if (!limit)
        return options.usageError(u"'%1' is no number of entries"_s.arg(options.value(kLimit)));
    const QList<Entry> entries = history().entries().mid(0, *limit);
    return print(options.isSet(kJson) ? asJson(entries) : asText(entries)) ? exit_status::success
                                                                           : exit_status::failure;
}

} // namespace

Command historyCommand(Lazy<const HistoryStore &> history) {
    return {kWords, std::bind_front(runHistory, std::move(history))};
}

} // namespace velmo
