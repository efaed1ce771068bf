#include "base/json.h"
#include "service/sync/sync_merge.h"
#include "service/sync/synced_list.h"
#include "store/preference_keys.h"
#include "store/snippet_form.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const SyncedList::Lines kLines = {
    u"Pull snippets failed: "_s, u"Pushed %1 local snippets (pull failed)"_s,
    u"Snippets push failed: "_s, u"Snippets pushed %1 to server"_s,
    u"Push snippets failed: "_s, u"Pushed %1 snippets"_s,
};

constexpr QLatin1StringView kSnippets{"snippets"};

QJsonArray recordsOf(const QJsonValue &array) {
    QJsonArray records;
    for (const QJsonValueConstRef element : array.toArray()) {
        if (element.isObject())
            records.append(snippetRecord(element.toObject()));
    }
    return records;
}

QSet<QString> triggersOf(const QJsonArray &records) {
    QSet<QString> triggers;
    for (const QJsonValueConstRef record : records) {
        if (const auto trigger = json::string(record.toObject(), snippet_members::trigger))
            triggers.insert(snippetKey(*trigger));
    }
    return triggers;
}

class SyncedSnippets final : public SyncedList {
public:
    [[nodiscard]] QLatin1StringView key() const override { return keys::snippets; }
    [[nodiscard]] RequestKind pull() const override { return RequestKind::SnippetsPull; }
    [[nodiscard]] RequestKind push() const override { return RequestKind::SnippetsPush; }
    [[nodiscard]] const Lines &lines() const override { return kLines; }

    [[nodiscard]] qsizetype count(const QString &stored) const override {
        return parseSnippetRecords(stored).size();
    }

    [[nodiscard]] QByteArray body(const QString &stored) const override {
        return json::compact(QJsonObject{{kSnippets, parseSnippetRecords(stored)}});
    }

    [[nodiscard]] Merge merge(const QString &storedAtPull, const QString &storedNow,
                              const QJsonObject &reply) const override {
        const QJsonArray local = parseSnippetRecords(storedNow);
        const QJsonArray server = recordsOf(reply.value(kSnippets));
        const auto removedMeanwhile =
            triggersOf(parseSnippetRecords(storedAtPull)).subtract(triggersOf(local));
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
