#include "service/sync/sync_merge.h"

#include "service/sync/synced_list.h"

#include <QJsonDocument>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

QJsonObject object(const QString &text) {
    return QJsonDocument::fromJson(text.toUtf8()).object();
}

/// The snippets of a stored list as "trigger=expansion", after a check of their identifiers.
QStringList snippetTexts(const QString &stored) {
    QStringList texts;
    QSet<QString> ids;
    for (const QJsonValueConstRef element : QJsonDocument::fromJson(stored.toUtf8()).array()) {
        const QJsonObject snippet = element.toObject();
        EXPECT_EQ(snippet.size(), 3);
        ids.insert(snippet.value(u"id").toString());
        texts.append(snippet.value(u"trigger").toString() + u'=' + snippet.value(u"expansion").toString());
    }
    EXPECT_EQ(ids.size(), texts.size());
    for (const QString &id : ids)
        EXPECT_TRUE(id.size() == 36 && id == id.toUpper()) << id.toStdString();
    return texts;
}

struct Row {
    const char *name;
    QString local;
    QString reply;
    QString merged;
    QString logLine;
};

} // namespace

TEST(SyncMerge, BringsTheWordsOfBothSidesTogether) {
    const Row rows[] = {
        {"both sides and a tombstone", uR"([{"word":"Oslo"},{"word":"fjord"}])"_s,
         uR"({"words":["fjord","Bergen"],"deletedWords":["Oslo"]})"_s,
         uR"([{"word":"Bergen"},{"word":"fjord"}])"_s,
         u"2 local + 2 server → 3 union → 2 after 1 tombstones"_s},
        {"nothing on either side", QString(), u"{}"_s, u"[]"_s,
         u"0 local + 0 server → 0 union → 0 after 0 tombstones"_s},
        {"a reply without its members", uR"([{"word":"b"},{"word":"a"}])"_s,
         uR"({"words":{},"deletedWords":1})"_s, uR"([{"word":"a"},{"word":"b"}])"_s,
         u"2 local + 0 server → 2 union → 2 after 0 tombstones"_s},
        {"members of another kind", QString(), uR"({"words":["a",1,null],"deletedWords":[2]})"_s,
         uR"([{"word":"a"}])"_s, u"0 local + 1 server → 1 union → 1 after 0 tombstones"_s},
        {"half a surrogate pair", QString(), uR"({"words":["a\ud800"]})"_s, u"[{\"word\":\"a\ufffd\"}]"_s,
         u"0 local + 1 server → 1 union → 1 after 0 tombstones"_s},
        {"case and copies", uR"([{"word":"Oslo"},{"word":"oslo"},{"word":"Oslo"}])"_s,
         uR"({"words":["OSLO","Oslo"],"deletedWords":["oslo","oslo","x"]})"_s,
         uR"([{"word":"OSLO"},{"word":"Oslo"}])"_s, u"3 local + 2 server → 3 union → 2 after 2 tombstones"_s},
        {"a letter written in two ways, and one beyond 16 bits",
         u"[{\"word\":\"e\u0301\"},{\"word\":\"\uff5e\"}]"_s, u"{\"words\":[\"\u00e9\",\"\U0001f600\"]}"_s,
         u"[{\"word\":\"e\u0301\"},{\"word\":\"\u00e9\"},{\"word\":\"\uff5e\"},{\"word\":\"\U0001f600\"}]"_s,
         u"2 local + 2 server → 4 union → 4 after 0 tombstones"_s},
        {"a damaged list", uR"([{"word":"a"},5])"_s, uR"({"words":["b"]})"_s, uR"([{"word":"b"}])"_s,
         u"0 local + 1 server → 1 union → 1 after 0 tombstones"_s},
    };
    const auto list = makeSyncedDictionary();
    for (const Row &row : rows) {
        const auto merge = list->merge(row.local, row.local, object(row.reply));
        EXPECT_EQ(merge.stored.toStdString(), row.merged.toStdString()) << row.name;
        EXPECT_EQ(merge.logLine.toStdString(), "Dictionary merged: " + row.logLine.toStdString()) << row.name;
    }
}

TEST(SyncMerge, KeepsOneSnippetForATriggerAndPrefersItsOwn) {
    const Row rows[] = {
        {"the same trigger in another case", uR"([{"id":"1","trigger":"Brb ΟΔΟΣ","expansion":"mine"}])"_s,
         uR"({"snippets":[{"trigger":"brb οδος","expansion":"theirs"},{"trigger":"adr","expansion":"x","y":1}]})"_s,
         u"Brb ΟΔΟΣ=mine adr=x"_s, u"1 local + 2 server → 2 total"_s},
        {"the last of its own, the first of theirs",
         uR"([{"trigger":"a","expansion":"1"},{"trigger":"A","expansion":"2"},{"trigger":"c"}])"_s,
         uR"({"snippets":[{"trigger":"b","expansion":"3"},{"trigger":"B","expansion":"4"}]})"_s,
         u"A=2 b=3 c="_s, u"3 local + 2 server → 3 total"_s},
        {"records without their members",
         uR"([{"id":"1","expansion":"x"},{"id":2,"trigger":"a","expansion":"kept"},{"trigger":5}])"_s,
         uR"({"snippets":[{"trigger":"b"},{"expansion":"x"},{"trigger":"c","expansion":1},"d"]})"_s,
         u"a=kept"_s, u"3 local + 3 server → 1 total"_s},
        {"a damaged list", u"[5]"_s, uR"({"snippets":7})"_s, QString(), u"0 local + 0 server → 0 total"_s},
    };
    const auto list = makeSyncedSnippets();
    for (const Row &row : rows) {
        const auto merge = list->merge(row.local, row.local, object(row.reply));
        EXPECT_EQ(snippetTexts(merge.stored).join(u' ').toStdString(), row.merged.toStdString()) << row.name;
        EXPECT_EQ(merge.logLine.toStdString(), "Snippets merged: " + row.logLine.toStdString()) << row.name;
    }
    const QString local = uR"([{"id":"1","trigger":"a","expansion":"x"}])"_s;
    EXPECT_FALSE(list->merge(local, local, {}).stored.contains(u"\"1\""));
}

TEST(SyncMerge, DoesNotBringBackWhatWasRemovedMeanwhile) {
    const auto dictionary = makeSyncedDictionary();
    EXPECT_EQ(dictionary
                  ->merge(uR"([{"word":"a"},{"word":"b"}])"_s, uR"([{"word":"b"},{"word":"c"}])"_s,
                          object(uR"({"words":["a","b","d"]})"_s))
                  .stored,
              uR"([{"word":"b"},{"word":"c"},{"word":"d"}])"_s);
    const auto snippets = makeSyncedSnippets();
    EXPECT_EQ(
        snippetTexts(snippets
                         ->merge(uR"([{"trigger":"A","expansion":"1"},{"trigger":"b","expansion":"2"}])"_s,
                                 uR"([{"trigger":"b","expansion":"2"}])"_s,
                                 object(uR"({"snippets":[{"trigger":"a","expansion":"1"}]})"_s))
                         .stored),
        QStringList{u"b=2"_s});
}

TEST(SyncMerge, ShowsTheLargerTotalsAndPushesWhenAheadInAny) {
    const UsageTotals server{100, 10};
    EXPECT_EQ(largerTotals(server, {120, 8}), (UsageTotals{120, 10}));
    EXPECT_TRUE(isAhead({120, 8}, server));
    EXPECT_TRUE(isAhead({1, 11}, server));
    EXPECT_FALSE(isAhead(server, server));
}

} // namespace velmo
