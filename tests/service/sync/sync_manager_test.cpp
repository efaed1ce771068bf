#include "service/sync/sync_manager.h"

#include "service/account/account_fixture.h"
#include "store/dictionary_words.h"
#include "store/history_store.h"
#include "store/preference_keys.h"
#include "store/snippet_list.h"
#include "support/failing_preferences.h"

#include <future>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

namespace velmo {

namespace {

using testing::reply;
using Then = testing::Reaction::Then;

const QByteArray kDictionary = "/api/sync/dictionary";
const QByteArray kSnippets = "/api/sync/snippets";
const QByteArray kStats = "/api/sync/stats";
const QByteArray kIncrement = "/api/sync/stats/increment";

QString syncLine(const QString &line) {
    return u"🔄 [Sync] "_s + line;
}

} // namespace

class SyncManagerTest : public testing::AccountTest, protected TokenSource, protected Account {
protected:
    SyncManagerTest() { create(); }

    void create() {
        sync = std::make_unique<SyncManager>(
            *ServiceOrigin::parse(server.origin()),
            SyncManager::Collaborators{queue, worker, store, history, *this, *this, http});
    }

    [[nodiscard]] std::optional<QString> authToken() override {
        const std::lock_guard lock(tokenMutex);
        return token;
    }
    void prepareToken() override {}
    [[nodiscard]] bool isLoggedIn() const override { return loggedIn; }

    void setToken(const std::optional<QString> &value) {
        const std::lock_guard lock(tokenMutex);
        token = value;
    }

    void setWords(const QStringList &words) { store.set(keys::dictionary, serialiseDictionary(words)); }
    [[nodiscard]] QStringList words() const { return dictionaryWords(store); }

    /// Nothing is read, merged or sent until the promise is kept.
    [[nodiscard]] std::promise<void> holdWorker() {
        std::promise<void> free;
        worker.start([isFree = free.get_future().share()] { isFree.wait(); });
        return free;
    }

    [[nodiscard]] SyncManager::Completion noted(QStringList &ends, const QString &name) {
        return [&ends, name](bool merged) { ends.append(name + (merged ? u" true"_s : u" false"_s)); };
    }

    testing::FailingPreferences store;
    HistoryStore history{store, queue};
    std::mutex tokenMutex;
    std::optional<QString> token = u"t-1"_s;
    bool loggedIn = true;
    std::unique_ptr<SyncManager> sync;
};

TEST_F(SyncManagerTest, PullsMergesStoresAndPushesTheDictionary) {
    setWords({u"Oslo"_s, u"fjord"_s});
    server.react(kDictionary,
                 {reply(200, R"({"words":["fjord","Bergen"],"deletedWords":["Oslo"]})"), reply(204, "")});
    QStringList ends;
    sync->syncDictionary(noted(ends, u"dictionary"_s));
    settle();
    EXPECT_EQ(requests(), QStringList({u"GET /api/sync/dictionary"_s,
                                       uR"(PUT /api/sync/dictionary {"words":["Bergen","fjord"]})"_s}));
    EXPECT_EQ(server.requests()[0].header("Authorization"), "Bearer t-1");
    EXPECT_EQ(store.string(keys::dictionary), uR"([{"word":"Bergen"},{"word":"fjord"}])"_s);
    EXPECT_EQ(
        log.lines(),
        QStringList({syncLine(u"Dictionary merged: 2 local + 2 server → 3 union → 2 after 1 tombstones"_s),
                     syncLine(u"Dictionary pushed 2 words to server"_s)}));
    EXPECT_EQ(ends, QStringList{u"dictionary true"_s});
    EXPECT_EQ(sync->lastSyncDate(), queue.now());
}

TEST_F(SyncManagerTest, PullsMergesStoresAndPushesTheSnippets) {
    store.set(keys::snippets, uR"([{"id":"1","trigger":"Brb","expansion":"Straks tilbake"}])"_s);
    server.react(
        kSnippets,
        {reply(200, R"({"snippets":[{"trigger":"brb","expansion":"x"},{"trigger":"adr","expansion":"y"}]})"),
         reply(500, R"({"error":"full\nup"})")});
    QStringList ends;
    sync->syncSnippets(noted(ends, u"snippets"_s));
    settle();
    const auto stored = snippets(store);
    ASSERT_EQ(stored.size(), 2);
    EXPECT_EQ(server.requests()[1].body, "{\"snippets\":" + serialiseSnippets(stored).toUtf8() + "}");
    EXPECT_EQ(
        log.lines(),
        QStringList({syncLine(u"Snippets merged: 1 local + 2 server → 2 total"_s),
                     syncLine(u"Snippets push failed: Error Domain=SyncManager Code=500 \"full\\nup\""_s)}));
    EXPECT_EQ(ends, QStringList{u"snippets true"_s}); // merged and sent, whatever became of it
    EXPECT_EQ(sync->lastSyncDate(), queue.now());
}

TEST_F(SyncManagerTest, PushesWhatIsStoredWhenAPullFails) {
    const std::tuple<const char *, testing::Reaction, QString> rows[] = {
        {"signed out there", reply(401, ""), uR"(Error Domain=SyncManager Code=401 "HTTP 401")"_s},
        {"in its own words", reply(503, R"({"error":"down"})"),
         uR"(Error Domain=SyncManager Code=503 "down")"_s},
        {"words of another kind", reply(503, R"({"error":5})"),
         uR"(Error Domain=SyncManager Code=503 "HTTP 503")"_s},
        {"a redirection", reply(301, ""), uR"(Error Domain=SyncManager Code=301 "HTTP 301")"_s},
        {"no HTTP", {"hello\r\n\r\n", Then::Close}, uR"(Error Domain=SyncManager Code=-2 "No response")"_s},
        {"no reply", {"", Then::Close}, uR"(Error Domain=Transport Code=-1 "The connection was lost.")"_s},
    };
    setWords({u"Oslo"_s});
    for (const auto &[name, reaction, failure] : rows) {
        log.clear();
        server.react(kDictionary, {reaction, reply(500, "")});
        QStringList ends;
        sync->syncDictionary(noted(ends, u"dictionary"_s));
        settle();
        EXPECT_EQ(log.lines(), QStringList({syncLine(u"Pull dictionary failed: "_s + failure),
                                            syncLine(u"Pushed 1 local dictionary words (pull failed)"_s)}))
            << name;
        EXPECT_EQ(ends, QStringList{u"dictionary false"_s}) << name;
        EXPECT_EQ(server.requests().back().body, R"({"words":["Oslo"]})") << name;
    }
    EXPECT_EQ(words(), QStringList{u"Oslo"_s});
    EXPECT_EQ(sync->lastSyncDate(), std::nullopt);

    log.clear();
    server.answer(kSnippets, 401, "");
    sync->syncSnippets();
    settle();
    EXPECT_EQ(log.lines(), QStringList{syncLine(
                               uR"(Pull snippets failed: Error Domain=SyncManager Code=401 "HTTP 401")"_s)});
}

TEST_F(SyncManagerTest, TakesAnySuccessWithoutAnObjectForAnEmptyOne) {
    for (const auto &empty : {reply(204, ""), reply(200, "[1]"), reply(299, "no JSON")}) {
        setWords({u"Oslo"_s});
        server.react(kDictionary, {empty, reply(200, "")});
        sync->syncDictionary();
        settle();
        EXPECT_EQ(words(), QStringList{u"Oslo"_s}) << empty.bytes.toStdString();
        EXPECT_EQ(log.lines().last(), syncLine(u"Dictionary pushed 1 words to server"_s));
    }
}

TEST_F(SyncManagerTest, ShowsTheLargerTotalsAndPushesWhatIsAhead) {
    struct Row {
        const char *name;
        QByteArray pulled;
        testing::Reaction pushed;
        QString lastLine;
        qint64 shownWords;
        qint64 shownSessions;
    };
    history.add(u"a  b\tc"_s, std::nullopt);
    history.add(u"d e f"_s, std::nullopt); // 5 words in 2 sessions
    const Row rows[] = {
        {"behind in both", R"({"totalWords":5,"totalSessions":2})", reply(200, ""),
         u"Pulled stats: server=5w/2s, local=5w/2s → showing 5w/2s"_s, 5, 2},
        {"ahead in one", R"({"totalWords":4,"totalSessions":10})",
         reply(200, R"({"totalWords":7,"totalSessions":11})"),
         u"Stats pushed, merged: 7 words, 11 sessions"_s, 7, 11},
        {"numbers that are none", R"({"totalWords":100.0,"totalSessions":true})",
         reply(200, R"({"totalWords":1e3})"), u"Stats pushed, merged: 5 words, 2 sessions"_s, 5, 2},
        {"a push that fails", R"({"totalWords":9})", reply(500, ""),
         uR"(Stats push failed: Error Domain=SyncManager Code=500 "HTTP 500")"_s, 9, 2},
    };
    for (const Row &row : rows) {
        server.react(kStats, {reply(200, row.pulled), row.pushed});
        sync->syncStats();
        settle();
        EXPECT_EQ(log.lines().last(), syncLine(row.lastLine)) << row.name;
        EXPECT_EQ(sync->serverTotalWords(), row.shownWords) << row.name;
        EXPECT_EQ(sync->serverTotalSessions(), row.shownSessions) << row.name;
    }
    EXPECT_EQ(log.lines().count(syncLine(u"Local > server, pushing stats: 5 words, 2 sessions"_s)), 3);
    EXPECT_EQ(server.requests().back().body, R"({"totalSessions":2,"totalWords":5})");

    server.answer(kStats, 500, "");
    sync->syncStats();
    settle();
    EXPECT_EQ(log.lines().last(),
              syncLine(uR"(Pull stats failed: Error Domain=SyncManager Code=500 "HTTP 500")"_s));
}

TEST_F(SyncManagerTest, PushesAndCountsWithoutAPull) {
    setWords({u"b"_s, u"a"_s});
    store.set(keys::snippets, uR"([ {"trigger":"brb","id":"1","expansion":"x","color":"red"} ])"_s);
    for (const QByteArray &path : {kDictionary, kSnippets, kIncrement})
        server.react(path, {reply(200, ""), reply(500, "")});
    for (int round = 0; round < 2; ++round) {
        sync->pushDictionary();
        settle();
        sync->pushSnippets();
        settle();
        sync->incrementStats(12);
        settle();
        queue.advance(1s);
    }
    const QString failure = u" failed: Error Domain=SyncManager Code=500 \"HTTP 500\""_s;
    EXPECT_EQ(
        log.lines(),
        QStringList({syncLine(u"Pushed 2 dictionary words"_s), syncLine(u"Pushed 1 snippets"_s),
                     syncLine(u"Incremented stats: +12 words"_s), syncLine(u"Push dictionary"_s + failure),
                     syncLine(u"Push snippets"_s + failure), syncLine(u"Increment stats"_s + failure)}));
    EXPECT_EQ(
        requests().mid(0, 3),
        QStringList(
            {uR"(PUT /api/sync/dictionary {"words":["b","a"]})"_s,
             uR"(PUT /api/sync/snippets {"snippets":[{"color":"red","expansion":"x","id":"1","trigger":"brb"}]})"_s,
             uR"(POST /api/sync/stats/increment {"words":12})"_s}));
    EXPECT_EQ(sync->lastSyncDate(), queue.now() - 2s);
}

TEST_F(SyncManagerTest, SendsNothingWithoutAToken) {
    setWords({u"Oslo"_s});
    setToken(std::nullopt);
    QStringList ends;
    sync->syncDictionary(noted(ends, u"dictionary"_s));
    sync->syncSnippets(noted(ends, u"snippets"_s));
    sync->syncStats();
    sync->pushDictionary();
    sync->pushSnippets();
    sync->incrementStats(3);
    sync->syncAll();
    settle();
    EXPECT_THAT(ends, UnorderedElementsAre(u"dictionary false"_s, u"snippets false"_s));
    EXPECT_THAT(requests(), IsEmpty());
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_FALSE(sync->isSyncing());

    loggedIn = false;
    setToken(u"t-1"_s);
    bool succeeded = true;
    sync->syncAll([&](bool all) { succeeded = all; });
    settle();
    EXPECT_FALSE(succeeded);
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(SyncManagerTest, SyncsAllThreeAndSaysWhenAFirstOneEnds) {
    server.answer(kDictionary, 200, "{}");
    server.answer(kSnippets, 500, "");
    server.answer(kStats, 200, "{}");
    std::vector<bool> states;
    QObject::connect(sync.get(), &SyncManager::isSyncingChanged,
                     [&] { states.push_back(sync->isSyncing()); });
    std::optional<bool> succeeded;
    bool isIdle = false;
    sync->syncAll([&](bool all) { succeeded = all; });
    EXPECT_FALSE(sync->isSyncing()); // not before the next turn
    sync->whenIdle([&] { isIdle = true; });
    settle();
    EXPECT_THAT(states, ElementsAre(true, false));
    EXPECT_EQ(succeeded, false);
    EXPECT_TRUE(isIdle);
    EXPECT_EQ(requests().filter(u"GET "_s).size(), 3);

    server.answer(kSnippets, 200, "{}");
    sync->syncAll([&](bool all) { succeeded = all; });
    settle();
    EXPECT_EQ(succeeded, true);
}

TEST_F(SyncManagerTest, EndsAFullOneEarlyForAPushOfTheDictionaryAlone) {
    server.react(kDictionary, {reply(500, ""), reply(200, "{}")});
    server.answer(kSnippets, 200, "{}");
    server.answer(kStats, 200, "{}");
    for (const auto &[push, isSyncing] :
         {std::pair(&SyncManager::pushDictionary, false), std::pair(&SyncManager::pushSnippets, true)}) {
        std::promise<void> free = holdWorker();
        (sync.get()->*push)();
        sync->syncAll();
        queue.runPosted();
        EXPECT_TRUE(sync->isSyncing());
        free.set_value();
        awaitAnswers(); // of the push and of what does not wait behind it
        free = holdWorker();
        queue.runPosted();
        EXPECT_EQ(sync->isSyncing(), isSyncing);
        free.set_value();
        settle();
    }
}

TEST_F(SyncManagerTest, LosesNothingThatChangesWhileAPullIsUnderWay) {
    setWords({u"stays"_s, u"goes"_s});
    server.answer(kDictionary, 200, R"({"words":["stays","goes","theirs"]})");
    sync->syncDictionary();
    awaitAnswers();
    addDictionaryWord(store, u"added"_s);
    removeDictionaryWord(store, u"goes"_s);
    sync->pushDictionary();
    settle();
    const QStringList expected = {u"added"_s, u"stays"_s, u"theirs"_s};
    EXPECT_EQ(words(), expected);
    const QString push = uR"(PUT /api/sync/dictionary {"words":["added","stays","theirs"]})"_s;
    EXPECT_EQ(requests(), QStringList({u"GET /api/sync/dictionary"_s, push, push}));
}

TEST_F(SyncManagerTest, SendsOnePushAtATimeAndTheNewestListLast) {
    setWords({u"a"_s});
    server.answer(kDictionary, 200, "{}");
    sync->syncDictionary();
    QStringList ends;
    sync->syncDictionary(noted(ends, u"first"_s));  // waits behind
    sync->syncDictionary(noted(ends, u"second"_s)); // goes along with it
    awaitAnswers();
    queue.runPosted();
    awaitAnswers(); // the merged list is on its way
    removeDictionaryWord(store, u"a"_s);
    sync->pushDictionary(); // before the waiting pull, or that would bring the word back
    addDictionaryWord(store, u"b"_s);
    sync->pushDictionary();
    settle();
    settle();
    EXPECT_EQ(requests(),
              QStringList({u"GET /api/sync/dictionary"_s, uR"(PUT /api/sync/dictionary {"words":["a"]})"_s,
                           uR"(PUT /api/sync/dictionary {"words":["b"]})"_s, u"GET /api/sync/dictionary"_s,
                           uR"(PUT /api/sync/dictionary {"words":["b"]})"_s}));
    EXPECT_EQ(ends, QStringList({u"first true"_s, u"second true"_s}));
}

TEST_F(SyncManagerTest, LeavesListsAndTotalsAloneAfterASignOutInTheMiddle) {
    history.add(u"ahead of the service"_s, std::nullopt);
    for (const auto &later : {std::optional<QString>(), std::optional(u"t-2"_s)}) {
        setWords({u"mine"_s});
        setToken(u"t-1"_s);
        server.answer(kDictionary, 200, R"({"words":["of the account before"]})");
        server.answer(kStats, 200, R"({"totalSessions":7})");
        QStringList ends;
        sync->syncDictionary(noted(ends, u"dictionary"_s));
        sync->syncStats();
        awaitAnswers();
        setToken(later);
        settle();
        EXPECT_EQ(words(), QStringList{u"mine"_s});
        EXPECT_EQ(ends, QStringList{u"dictionary false"_s});
        EXPECT_EQ(sync->serverTotalSessions(), std::nullopt);
    }
    EXPECT_TRUE(requests().filter(u"PUT"_s).isEmpty());
}

TEST_F(SyncManagerTest, PushesNoListThatCannotBeReadOrStored) {
    setWords({u"mine"_s});
    server.answer(kDictionary, 200, R"({"words":["theirs"]})");
    QStringList ends;
    sync->syncDictionary(noted(ends, u"dictionary"_s));
    awaitAnswers();
    store.unreadable = true;
    settle();
    sync->pushDictionary();
    settle();
    EXPECT_EQ(requests(), QStringList{u"GET /api/sync/dictionary"_s});
    EXPECT_EQ(ends, QStringList{u"dictionary false"_s});
    store.unreadable = false;
    EXPECT_EQ(words(), QStringList{u"mine"_s});
}

TEST_F(SyncManagerTest, MayEndAtAnyMoment) {
    setWords({u"mine"_s});
    for (const QByteArray &path : {kDictionary, kSnippets, kStats, kIncrement})
        server.answer(path, 200, "{}");
    for (int steps = 0; steps < 5; ++steps) {
        create();
        sync->syncAll();
        sync->incrementStats(1);
        for (int step = 0; step < steps; ++step) {
            awaitAnswers();
            queue.runPosted();
        }
        sync.reset();
        settle();
    }
    EXPECT_EQ(words(), QStringList{u"mine"_s});
}

} // namespace velmo
