#include "base/json.h"
#include "base/utf8.h"
#include "service/sync/sync_merge.h"
#include "service/sync/synced_list.h"
#include "store/dictionary_words.h"
#include "store/preference_keys.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const SyncedList::Lines kLines = {
    u"Pull dictionary failed: "_s, u"Pushed %1 local dictionary words (pull failed)"_s,
    u"Dictionary push failed: "_s, u"Dictionary pushed %1 words to server"_s,
    u"Push dictionary failed: "_s, u"Pushed %1 dictionary words"_s,
};

constexpr QLatin1StringView kWords{"words"};
constexpr QLatin1StringView kDeletedWords{"deletedWords"};

/// As they can be stored and sent on: half a surrogate pair is replaced.
QStringList stringsOf(const QJsonValue &array) {
    QStringList strings;
    for (const QJsonValueConstRef element : array.toArray()) {
        if (element.isString())
            strings.append(wellFormed(element.toString()));
    }
    return strings;
}

QSet<QString> setOf(const QStringList &words) {
    return {words.begin(), words.end()};
}

class SyncedDictionary final : public SyncedList {
public:
    [[nodiscard]] QLatin1StringView key() const override { return keys::dictionary; }
    [[nodiscard]] RequestKind pull() const override { return RequestKind::DictionaryPull; }
    [[nodiscard]] RequestKind push() const override { return RequestKind::DictionaryPush; }
    [[nodiscard]] const Lines &lines() const override { return kLines; }

    [[nodiscard]] qsizetype count(const QString &stored) const override {
        return parseDictionary(stored).size();
    }

    [[nodiscard]] QByteArray body(const QString &stored) const override {
        return json::compact(QJsonObject{{kWords, QJsonArray::fromStringList(parseDictionary(stored))}});
    }

    [[nodiscard]] Merge merge(const QString &storedAtPull, const QString &storedNow,
                              const QJsonObject &reply) const override {
        const QStringList local = parseDictionary(storedNow);
        const QStringList server = stringsOf(reply.value(kWords));
        const auto tombstones = setOf(stringsOf(reply.value(kDeletedWords)));
        const auto removedMeanwhile = setOf(parseDictionary(storedAtPull)).subtract(setOf(local));
        const auto merged = mergeDictionary(local, server, tombstones, removedMeanwhile);
        return {
            serialiseDictionary(merged.words),
            u"Dictionary merged: %1 local + %2 server → %3 union → %4 after %5 tombstones"_s.arg(local.size())
                .arg(server.size())
                .arg(merged.unionCount)
                .arg(merged.words.size())
                .arg(tombstones.size())};
    }
};

} // namespace

std::unique_ptr<SyncedList> makeSyncedDictionary() {
    return std::make_unique<SyncedDictionary>();
}

} // namespace velmo
