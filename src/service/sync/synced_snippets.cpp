#include "base/case_mapping.h"
#include "base/json.h"
#include "base/utf8.h"
#include "service/sync/sync_merge.h"
#include "service/sync/synced_list.h"
#include "store/preference_keys.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const SyncedList::Lines kLines = {
    u"Pull snippets failed: "_s, u"Pushed %1 local snippets (pull failed)"_s,
    u"Snippets push failed: "_s, u"Snippets pushed %1 to server"_s,
    u"Push snippets failed: "_s, u"Pushed %1 snippets"_s,
};

constexpr QLatin1StringView kSnippets{"snippets"};
constexpr QLatin1StringView kTrigger{"trigger"};

/// The object without the members that are no strings; half a surrogate pair, which can be neither stored nor sent on,
/// is replaced.
QJsonObject stringsOf(const QJsonObject &object) {
    QJsonObject strings;
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (member.value().isString())
            strings.insert(member.key(), wellFormed(member.value().toString()));
    }
    return strings;
}

/// The records of the stored list, as they are but for members of another kind: a list that the page could not read
/// for those is not lost. One that is no array of objects holds none.
QJsonArray recordsIn(const QString &stored) {
    QJsonArray records;
    for (const QJsonValueConstRef element : json::arrayOfObjects(stored.toUtf8()).value_or(QJsonArray()))
        records.append(stringsOf(element.toObject()));
    return records;
}

QJsonArray objectsOf(const QJsonValue &array) {
    QJsonArray objects;
    for (const QJsonValueConstRef element : array.toArray()) {
        if (element.isObject())
            objects.append(stringsOf(element.toObject()));
    }
    return objects;
}

QSet<QString> triggersOf(const QJsonArray &records) {
    QSet<QString> triggers;
    for (const QJsonValueConstRef record : records) {
        if (const auto trigger = json::string(record.toObject(), kTrigger))
            triggers.insert(lowerCased(*trigger));
    }
    return triggers;
}

class SyncedSnippets final : public SyncedList {
public:
    [[nodiscard]] QLatin1StringView key() const override { return keys::snippets; }
    [[nodiscard]] RequestKind pull() const override { return RequestKind::SnippetsPull; }
    [[nodiscard]] RequestKind push() const override { return RequestKind::SnippetsPush; }
    [[nodiscard]] const Lines &lines() const override { return kLines; }

    [[nodiscard]] qsizetype count(const QString &stored) const override { return recordsIn(stored).size(); }

    [[nodiscard]] QByteArray body(const QString &stored) const override {
        return json::compact(QJsonObject{{kSnippets, recordsIn(stored)}});
    }

    [[nodiscard]] Merge merge(const QString &storedAtPull, const QString &storedNow,
                              const QJsonObject &reply) const override {
        const QJsonArray local = recordsIn(storedNow);
        const QJsonArray server = objectsOf(reply.value(kSnippets));
        const auto removedMeanwhile = triggersOf(recordsIn(storedAtPull)).subtract(triggersOf(local));
        const QJsonArray merged = mergeSnippets(local, server, removedMeanwhile);
        return {QString::fromUtf8(json::compact(merged)),
                u"Snippets merged: %1 local + %2 server → %3 total"_s.arg(local.size())
                    .arg(server.size())
                    .arg(merged.size())};
    }
};

} // namespace

std::unique_ptr<SyncedList> makeSyncedSnippets() {
    return std::make_unique<SyncedSnippets>();
}

} // namespace velmo
