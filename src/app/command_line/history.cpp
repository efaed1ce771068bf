#include "app/command_line/history.h"

#include "app/command_line/command_options.h"
#include "app/command_line/output.h"
#include "app/composition/composition.h"
#include "base/json.h"
#include "base/log.h"
#include "base/utf8.h"
#include "store/history_store.h"

#include <QDateTime>

namespace velmo {

namespace {

const QString kJson = QStringLiteral("json");
const QString kLimit = QStringLiteral("limit");

QDateTime dateTime(Date moment) {
    return QDateTime::fromMSecsSinceEpoch(
        std::chrono::duration_cast<std::chrono::milliseconds>(moment.time_since_epoch()).count());
}

/// The moment, then the text; its further lines stand below the first.
QString lines(const Entry &entry) {
    QString head = dateTime(entry.timestamp).toString(QStringLiteral("yyyy-MM-dd HH:mm  "));
    QString text;
    for (const QString &line : entry.text.split(u'\n')) {
        text += head + onOneLine(line) + u'\n';
        head.fill(u' ');
    }
    return text;
}

QJsonObject object(const Entry &entry) {
    QJsonObject object{
        {QLatin1StringView("id"), entry.id},
        {QLatin1StringView("text"), wellFormed(entry.text)},
        {QLatin1StringView("timestamp"), dateTime(entry.timestamp).toUTC().toString(Qt::ISODateWithMs)},
    };
    if (entry.durationSeconds)
        object.insert(QLatin1StringView("durationSeconds"), *entry.durationSeconds);
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

int runHistory(Composition &composition, const QStringList &arguments) {
    CommandOptions options(historyCommand());
    options.add({kJson, QStringLiteral("Print one JSON array of objects.")});
    options.add({kLimit, QStringLiteral("Print the newest N entries only."), QStringLiteral("N")});
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    const auto limit = limitIn(options);
    if (!limit)
        return options.usageError(QStringLiteral("'%1' is no number of entries").arg(options.value(kLimit)));
    const QList<Entry> entries = composition.historyStore().entries().mid(0, *limit);
    return print(options.isSet(kJson) ? asJson(entries) : asText(entries)) ? exit_status::success
                                                                           : exit_status::failure;
}

} // namespace

Command historyCommand() {
    return {QLatin1StringView("history"), QLatin1StringView("[--json] [--limit N]"),
            QLatin1StringView("Print what was dictated, the newest first."), runHistory};
}

} // namespace velmo
