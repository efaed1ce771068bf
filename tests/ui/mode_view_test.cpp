#include "ui/models/mode_view.h"

#include "desks/service_desk.h"
#include "list_page_fixture.h"
#include "store/custom_modes.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

class ModeViewTest : public testing::ListPageTest {
protected:
    /// The names of the cards, the chosen one in brackets.
    [[nodiscard]] static QString cards(const RowModel<ModeCard> &modes) {
        QStringList names;
        for (const ModeCard &mode : modes.rows())
            names.append(mode.isChosen ? u'[' + mode.name + u']' : mode.name);
        return names.join(u", "_s);
    }

    void create(ModeView &view, const QString &name, const QString &prompt) {
        view.openNewSheet();
        view.sheet()->setName(name);
        view.sheet()->setPrompt(prompt);
        view.sheet()->confirm();
    }

    testing::ServiceDesk service{queue};
};

TEST_F(ModeViewTest, MakesEditsAndRemovesAModeThatIsChosen) {
    ModeView view(preferences, watch, service.watch, undoOffer);
    EXPECT_EQ(cards(*view.builtInModes()),
              u"[Accurate], Fix Grammar, Professional, Casual, Summarize, Bullet Points"_s);

    create(view, u"\t "_s, u"Write a mail."_s);
    ASSERT_TRUE(view.sheet()) << "a mode without a name cannot be made";
    view.sheet()->cancel();
    create(view, u" Email Writer "_s, u"Write a mail.\nShort."_s);
    create(view, u"Standup"_s, u"Three lines."_s);
    EXPECT_EQ(view.customModes()->rows().front().description, u"Write a mail. Short."_s);
    view.choose(view.customModes()->rows().front().id);
    EXPECT_EQ(cards(*view.customModes()), u"[Email Writer], Standup"_s);

    testing::RowLog log(*view.customModes());
    view.openEditSheet(0);
    EXPECT_EQ(view.sheet()->prompt(), u"Write a mail.\nShort."_s);
    view.sheet()->setName(u"Mail"_s);
    view.sheet()->confirm();
    EXPECT_EQ(cards(*view.customModes()), u"[Mail], Standup"_s);
    EXPECT_EQ(log.take(), QStringList()) << "a row that is edited stays in place";

    view.removeRow(0);
    EXPECT_EQ(cards(*view.builtInModes()).left(10), u"[Accurate]"_s);
    undoOffer.undo();
    EXPECT_EQ(cards(*view.customModes()), u"[Mail], Standup"_s);
}

TEST_F(ModeViewTest, ShowsWhatIsUsedWhateverIsStored) {
    ModeView view(preferences, watch, service.watch, undoOffer);
    storeElsewhere(keys::customModes,
                   u"[{\"id\":\"casual\",\"name\":\"Mine\",\"systemPrompt\":\"x\",\"icon\":\"globe\"}]"_s);
    storeElsewhere(keys::selectedMode, u"casual"_s);
    EXPECT_EQ(cards(*view.customModes()), u"[Mine]"_s) << "a custom mode goes before a built-in one";
    EXPECT_FALSE(cards(*view.builtInModes()).contains(u'['));
    storeElsewhere(keys::selectedMode, u"gone"_s);
    EXPECT_EQ(cards(*view.builtInModes()).left(10), u"[Accurate]"_s);
    EXPECT_EQ(view.caption(), u"AI processing enabled"_s);
    service.runsWhisper();
    view.setShown(true);
    service.http.waitUntilIdle();
    queue.runPosted();
    EXPECT_EQ(view.caption(), u"Base cleanup only"_s) << "the service has no language model";
    EXPECT_TRUE(view.problem().contains(u"no language model"_s));
    service.runsWhisper(R"("llama3")");
    queue.advance(std::chrono::milliseconds(1500));
    service.http.waitUntilIdle();
    queue.runPosted();
    EXPECT_EQ(view.caption() + view.problem(), u"AI processing enabled"_s);
    view.setShown(false);
    EXPECT_EQ(queue.pendingTimers(), 0U);
    view.setSmartFormatting(false);
    EXPECT_EQ(view.caption(), u"Base cleanup only"_s);
    EXPECT_EQ(preferences.boolean(keys::smartFormatting), false);
}

} // namespace velmo
