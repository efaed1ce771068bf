#include "dictation/insertion/insertion_fakes.h"
#include "platform/linux/x11/insertion/clipboard_user.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::IsEmpty;

namespace velmo {

namespace {

/// The clipboard that the rest of insertion is tested with, and the people around it.
class FakeDesktop : public ::testing::Test {
protected:
    [[nodiscard]] Clipboard &clipboard() { return m_clipboard; }
    void somebodyCopies(const QByteArray &text) { m_clipboard.somebodyCopies(QString::fromUtf8(text)); }
    [[nodiscard]] QByteArray somebodyPastes() {
        if (m_clipboard.events.read)
            m_clipboard.readBy(DisplayClient{1});
        return m_clipboard.text().toUtf8();
    }
    [[nodiscard]] bool waitFor(const std::function<bool()> &condition) {
        queue.runPosted();
        return condition();
    }
    void settle() { queue.runPosted(); }

    testing::ManualMainQueue queue;

private:
    testing::FakeClipboard m_clipboard{queue};
};

class OpenDesktop : public testing::X11Desktop {
protected:
    OpenDesktop() { open(); }
};

/// What insertion relies on.
template <class Desktop>
class ClipboardContract : public testing::ClipboardUser<Desktop> {};

using Desktops = ::testing::Types<FakeDesktop, OpenDesktop>;
TYPED_TEST_SUITE(ClipboardContract, Desktops);

TYPED_TEST(ClipboardContract, CountsEveryChangeAndNothingElse) {
    const auto before = this->save();
    EXPECT_THAT(before.items, IsEmpty());
    EXPECT_EQ(this->save().changeCount, before.changeCount);
    const auto ours = this->setText(before.changeCount, u"text"_s);
    ASSERT_TRUE(ours);
    EXPECT_GT(*ours, before.changeCount);
    EXPECT_EQ(this->save().changeCount, *ours);
    this->somebodyCopies("copied");
    EXPECT_GT(this->save().changeCount, *ours);
}

TYPED_TEST(ClipboardContract, ChangesNothingThatSomebodyElseHasChanged) {
    const auto before = this->save().changeCount;
    this->somebodyCopies("copied");
    EXPECT_FALSE(this->setText(before, u"text"_s));
    EXPECT_EQ(this->somebodyPastes(), "copied");

    const auto ours = this->setText(this->save().changeCount, u"text"_s);
    ASSERT_TRUE(ours);
    this->somebodyCopies("copied again");
    EXPECT_TRUE(this->waitFor([this] { return this->losses == 1; }));
    EXPECT_FALSE(this->setItems(*ours, {}));
    EXPECT_EQ(this->somebodyPastes(), "copied again");
}

TYPED_TEST(ClipboardContract, TellsOfReadersOfTheTextThatStandsThere) {
    const auto first = this->setText(this->save().changeCount, u"first"_s);
    ASSERT_TRUE(first);
    EXPECT_EQ(this->somebodyPastes(), "first");
    EXPECT_EQ(this->readings, 0) << "an event is a task of the queue";
    EXPECT_TRUE(this->waitFor([this] { return this->readings == 1; }));
    const auto second = this->setText(*first, u"second"_s);
    ASSERT_TRUE(second);
    EXPECT_EQ(this->somebodyPastes(), "second");
    EXPECT_TRUE(this->waitFor([this] { return this->readings == 2; }));
    ASSERT_TRUE(this->setItems(*second, {{u"UTF8_STRING"_s, "kept"}}));
    EXPECT_EQ(this->somebodyPastes(), "kept");
    this->settle();
    EXPECT_EQ(this->readings, 2);
    EXPECT_EQ(this->losses, 0) << "it was replaced by ourselves";
}

TYPED_TEST(ClipboardContract, GivesBackWhatWasSaved) {
    this->somebodyCopies("copied");
    const auto saved = this->save();
    auto ours = this->setText(saved.changeCount, u"text"_s);
    ASSERT_TRUE(ours);
    ours = this->setItems(*ours, saved.items);
    ASSERT_TRUE(ours);
    EXPECT_EQ(this->somebodyPastes(), "copied");
    EXPECT_EQ(this->save().items, saved.items);
    ASSERT_TRUE(this->setItems(*ours, {}));
    EXPECT_THAT(this->save().items, IsEmpty());
    EXPECT_EQ(this->somebodyPastes(), "");
    EXPECT_EQ(this->losses, 0);
}

} // namespace

} // namespace velmo
