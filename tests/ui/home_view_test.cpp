#include "ui/models/home_view.h"

#include "base/calendar.h"
#include "dictation/gestures/trigger_fakes.h"
#include "service/wire/session_interfaces.h"
#include "store/history_store.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"
#include "ui/models/trigger_key_name.h"
#include "ui/models/undo_offer.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

class HomeViewTest : public ::testing::Test, protected Account {
protected:
    HomeViewTest() {
        queue.setNow(Date(1794841200s)); // 16 November 2026, 15:00
        for (const auto &text : {u"  først\tog\u0000 sist 👍\n"_s, u"sent i går"_s, u"tidlig i dag"_s}) {
            store.add(text, std::nullopt);
            queue.setNow(queue.now() + 5h);
        }
        view.refresh();
    }

    [[nodiscard]] bool isLoggedIn() const override { return loggedIn; }

    /// "[TODAY]" heads a row that is the first of its day; "_" ends the last one.
    [[nodiscard]] QStringList shown() {
        QStringList rows;
        for (const HistoryRow &row : view.history()->rows())
            rows.append((row.isFirst ? u'[' + row.day + u']' : QString()) + row.time + u' ' +
                        row.text.trimmed() + (row.isLast ? u"_"_s : QString()));
        return rows;
    }

    testing::ManualMainQueue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch{preferences, queue};
    testing::FakeKeyboardKeys keys;
    TriggerKeyName triggerKeyName{preferences, watch, keys};
    HistoryStore store{preferences, queue};
    Calendar calendar{{u"en_US"_s, u"UTC"_s}};
    UndoOffer undo{queue};
    bool loggedIn = false;
    std::optional<qint64> serverTotalWords = 1500;
    HomeView view{{queue, preferences, watch, triggerKeyName, store, calendar, *this,
                   [this] { return serverTotalWords; }, [](const QString &) {}, undo}};
};

TEST_F(HomeViewTest, HeadsTheHistoryByDaysThatMoveOnAtMidnight) {
    const QStringList today{u"[Today]01:00 tidlig i dag_"_s, u"[Yesterday]20:00 sent i går"_s,
                            u"15:00 først\tog\u0000 sist 👍_"_s};
    EXPECT_EQ(shown(), today);
    queue.advance(18h); // 06:00 becomes midnight
    EXPECT_EQ(shown().first(), u"[Yesterday]01:00 tidlig i dag_"_s);
    EXPECT_EQ(shown()[1], u"[Nov 16, 2026]20:00 sent i går"_s);
}

TEST_F(HomeViewTest, GivesADeletedEntryBackAtItsPlaceForAFewSeconds) {
    const QStringList before = shown();
    const auto id = [&](int row) { return view.history()->rows()[row].id; };
    view.remove(id(1));
    EXPECT_EQ(shown()[1], u"[Yesterday]15:00 først\tog\u0000 sist 👍_"_s)
        << "the day is headed by what is left";
    EXPECT_TRUE(undo.isOffered());
    undo.undo();
    EXPECT_EQ(shown(), before);
    EXPECT_FALSE(undo.isOffered());

    view.remove(id(2));
    view.remove(id(0));
    undo.hold(true);
    queue.advance(10min);
    undo.hold(false);
    queue.advance(UndoOffer::duration - 1ms);
    undo.undo();
    EXPECT_EQ(shown(), before.mid(0, 1) + QStringList{u"[Yesterday]20:00 sent i går_"_s})
        << "the last one first";
    queue.advance(UndoOffer::duration - 1ms);
    undo.undo();
    EXPECT_EQ(shown(), before) << "and then the one before, for as long again";
    view.remove(id(2));
    view.remove(id(0));
    queue.advance(UndoOffer::duration);
    EXPECT_FALSE(undo.isOffered());
    undo.undo();
    EXPECT_EQ(store.entries().size(), 1);
}

TEST_F(HomeViewTest, ShowsTheAccountsWordsWhileSomebodyIsSignedIn) {
    const auto values = [&] {
        QStringList values;
        for (const StatisticCard &card : view.statistics())
            values.append(card.value + u' ' + card.label);
        return values.join(u", ");
    };
    EXPECT_EQ(values(), u"1 days, 9 words, 150 WPM, <1 min saved"_s);
    loggedIn = true;
    view.refresh();
    EXPECT_EQ(values(), u"1 days, 1.5K words, 150 WPM, 37 min saved"_s);
    serverTotalWords.reset();
    view.refresh();
    EXPECT_EQ(values(), u"1 days, 9 words, 150 WPM, <1 min saved"_s);
}

TEST_F(HomeViewTest, KeepsTheIntroductionClosedAndNamesTheKeyThatIsChosen) {
    EXPECT_TRUE(view.isHeroCardShown());
    view.dismissHeroCard();
    EXPECT_FALSE(view.isHeroCardShown());
    EXPECT_EQ(preferences.boolean(keys::heroCardDismissed), true);

    preferences.set(keys::triggerKey, u"MENU"_s);
    watch.noteWrite();
    queue.runPosted();
    EXPECT_EQ(view.heroTitle(), u"Hold <b>Menu</b> to dictate and let Velmo transcribe for you"_s);
    EXPECT_EQ(view.emptyText(), u"Hold Menu or double-tap Menu to start dictating"_s);

    preferences.set(keys::heroCardDismissed, false);
    const HomeView keyless{{queue, preferences, watch, triggerKeyName, store, calendar, *this,
                            [] { return std::nullopt; }, [](const QString &) {}, undo, false}};
    EXPECT_FALSE(keyless.isHeroCardShown());
    EXPECT_TRUE(keyless.emptyText().contains(u"Bind the command velmo toggle to a key"_s));
}

} // namespace velmo
