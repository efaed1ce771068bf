#include "store/history_store.h"

#include "base/json.h"
#include "support/failing_preferences.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"

#include <QRegularExpression>
#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace velmo {

namespace {

class HistoryStoreTest : public ::testing::Test {
protected:
    HistoryStoreTest() { open(); }

    void open() {
        store = std::make_unique<HistoryStore>(preferences, queue);
        QObject::connect(store.get(), &HistoryStore::entriesChanged, [this] { ++changes; });
    }

    void storeBytes(const char *json) { preferences.set(HistoryStore::storageKey, QByteArray(json)); }

    [[nodiscard]] QByteArray storedBytes() const {
        return preferences.data(HistoryStore::storageKey).value_or(QByteArray("(absent)"));
    }

    [[nodiscard]] static std::vector<std::string> textsOf(const QList<Entry> &entries) {
        std::vector<std::string> texts;
        for (const Entry &entry : entries)
            texts.push_back(entry.text.toStdString());
        return texts;
    }

    [[nodiscard]] std::vector<std::string> texts() const { return textsOf(store->entries()); }
    [[nodiscard]] std::vector<std::string> storedTexts() const {
        return textsOf(decodeEntries(storedBytes()).value());
    }

    testing::LogCapture log;
    testing::ManualMainQueue queue;
    testing::FailingPreferences preferences;
    std::unique_ptr<HistoryStore> store;
    int changes = 0;
};

constexpr const char *kTwoEntries =
    R"([{"id":"B","text":"ny","timestamp":795182400.25},{"durationSeconds":4.2,"id":"A","text":"eldst","timestamp":795182399}])";

} // namespace

TEST_F(HistoryStoreTest, StoresADictationInItsJsonForm) {
    store->add(u"Hei \"på\" deg"_s, 4.25);
    queue.advance(250ms);
    store->add(u"Ja"_s, std::nullopt);

    const auto array = json::array(storedBytes()).value();
    ASSERT_EQ(array.size(), 2);
    const QJsonObject newest = array[0].toObject();
    EXPECT_EQ(newest.keys(), (QStringList{u"id"_s, u"text"_s, u"timestamp"_s}));
    EXPECT_EQ(newest["timestamp"_L1].toDouble(), 795182400.25); // 2026-03-14 12:00 UTC
    const QJsonObject older = array[1].toObject();
    EXPECT_EQ(older["text"_L1], u"Hei \"på\" deg"_s);
    EXPECT_EQ(older["durationSeconds"_L1].toDouble(), 4.25);
    const QRegularExpression upperUuid(u"^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"_s);
    EXPECT_TRUE(upperUuid.match(older["id"_L1].toString()).hasMatch());
    EXPECT_EQ(store->firstUseDate(), queue.now() - 250ms);
    EXPECT_EQ(changes, 2);
}

TEST_F(HistoryStoreTest, LoadsWhatWasStoredAndStoresItUnchanged) {
    storeBytes(kTwoEntries);
    open();
    EXPECT_THAT(texts(), ElementsAre("ny", "eldst"));
    EXPECT_EQ(store->entries()[1].durationSeconds, 4.2);
    EXPECT_EQ(store->firstUseDate(), store->entries()[1].timestamp)
        << "the oldest entry began the days of use";

    for (const double moment : {795182400.123456, 795182400.000001, 0.1, -1.5, 1e9 / 3, 0.0}) {
        const QByteArray stored = json::compact(
            QJsonArray{QJsonObject{{u"id"_s, u"A"_s}, {u"text"_s, u""_s}, {u"timestamp"_s, moment}}});
        EXPECT_EQ(encodeEntries(decodeEntries(stored).value()).value(), stored) << moment;
    }
}

TEST_F(HistoryStoreTest, KeepsTheNewestHundredOnAddingOnly) {
    QList<Entry> entries(120, Entry{u"id"_s, u"text"_s, queue.now(), 1.0});
    preferences.set(HistoryStore::storageKey, encodeEntries(entries).value());
    open();
    EXPECT_EQ(store->entries().size(), 120);
    store->add(u"newest"_s, 1.0);
    EXPECT_EQ(storedTexts().size(), 100U);
    EXPECT_EQ(storedTexts().front(), "newest");
}

TEST_F(HistoryStoreTest, RemovesEveryEntryOfAnId) {
    storeBytes(
        R"([{"id":"A","text":"a","timestamp":1},{"id":"B","text":"b","timestamp":1,"durationSeconds":null},{"id":"A","text":"c","timestamp":1}])");
    open();
    store->remove(u"A"_s);
    EXPECT_THAT(texts(), ElementsAre("b"));
    EXPECT_THAT(storedTexts(), ElementsAre("b"));
    store->remove(u"A"_s);
    EXPECT_EQ(changes, 1) << "a list that stays the same is not announced";
}

TEST_F(HistoryStoreTest, ChangesTheListAsItIsStoredNow) {
    HistoryStore other(preferences, queue);
    store->add(u"mine"_s, 1.0);
    other.add(u"theirs"_s, 1.0);
    store->remove(store->entries()[0].id);
    EXPECT_THAT(texts(), ElementsAre("theirs"));
}

TEST_F(HistoryStoreTest, FollowsWhatAnotherProcessStored) {
    store->add(u"a"_s, std::nullopt);
    HistoryStore other(preferences, queue);
    other.add(u"b"_s, std::nullopt);
    const int before = changes;
    store->refresh();
    store->refresh();
    EXPECT_THAT(texts(), ElementsAre("b", "a"));
    EXPECT_EQ(changes, before + 1);
    storeBytes("no JSON");
    store->refresh();
    EXPECT_THAT(texts(), ElementsAre("b", "a"));
}

TEST_F(HistoryStoreTest, ShowsNothingOfAnUnreadableHistoryAndReplacesItAtTheNextSave) {
    const std::pair<const char *, const char *> rows[] = {
        {"[{\"id\":", "unterminated object at byte 7"},
        {"{}", "it is no array"},
        {"[1]", "entry 0 has no string \"id\""},
        {R"([{"id":"A","text":"t","timestamp":1},{"id":"B","timestamp":1}])",
         "entry 1 has no string \"text\""},
        {R"([{"id":"A","text":"t","timestamp":"1"}])", "entry 0 has no number \"timestamp\""},
        {R"([{"id":"A","text":"t","timestamp":1,"durationSeconds":"1"}])",
         "entry 0 has a \"durationSeconds\" that is no number"},
    };
    for (const auto &[stored, line] : rows) {
        SCOPED_TRACE(stored);
        storeBytes(stored);
        log.clear();
        open();
        EXPECT_EQ(log.lines(),
                  QStringList(u"🎙️ [History] Failed to load: "_s + QLatin1StringView(line)));
        EXPECT_THAT(texts(), IsEmpty());
        EXPECT_EQ(storedBytes(), stored);
        store->add(u"new"_s, std::nullopt);
        EXPECT_THAT(storedTexts(), ElementsAre("new"));
    }
}

TEST_F(HistoryStoreTest, KeepsWhatADiskHadNoRoomForUntilItHas) {
    store->add(u"stored"_s, 1.0);
    preferences.full = true;
    store->add(u"waits"_s, 1.0);
    store->remove(store->entries()[1].id);
    EXPECT_THAT(texts(), ElementsAre("waits"));
    EXPECT_THAT(storedTexts(), ElementsAre("stored"));
    preferences.full = false;
    store->add(u"newest"_s, 1.0);
    EXPECT_THAT(storedTexts(), ElementsAre("newest", "waits"));
}

TEST_F(HistoryStoreTest, RefusesToStoreADurationThatIsNoNumber) {
    storeBytes(kTwoEntries);
    store->add(u"odd"_s, std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(
        log.contains(u"🎙️ [History] Failed to save: entry 0 has a duration that is no number"_s));
    EXPECT_THAT(texts(), ElementsAre("odd", "ny", "eldst"));
    EXPECT_EQ(storedBytes(), kTwoEntries);
}

} // namespace velmo
