#include "desks/speech_desk.h"
#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/pages/page_window.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

class SpeechPageTest : public ::testing::Test, protected testing::SpeechDesk {
protected:
    SpeechPageTest() {
        service.runsWhisper();
        service.server.answer("/api/language-model", 200, "{}");
        service.server.answer(
            "/api/models", 200,
            R"({"models":[{"name":"base","bytes":1,"installed":true,"inUse":true},{"name":"small","bytes":2}]})");
    }

    testing::PageWindow page{u"SpeechPage"_s, u"view"_s, &view};
    testing::Person person{page.window()};
};

TEST_F(SpeechPageTest, GetsAModelAndALanguageModelByKeyboard) {
    lookAgain();
    EXPECT_TRUE(person.sees(u"Finnish, understood"_s));
    person.tabTo(u"Get small"_s);
    service.server.answer(
        "/api/models", 200,
        R"({"models":[{"name":"base","bytes":1,"installed":true,"inUse":true},)"
        R"({"name":"small","bytes":2}],"download":{"name":"small","received":1,"bytes":2}})");
    person.press(Qt::Key_Return);
    settle();
    EXPECT_EQ(person.focused(), u"Cancel small"_s) << "the keyboard stays where it is";
    EXPECT_EQ(service.server.requests().back().body, R"({"get":"small"})");

    person.tabTo(u"Language Model for Modes"_s);
    for (const int key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Return})
        person.press(key);
    ASSERT_TRUE(testing::waitUntil([&] { return person.focused() == u"Address"_s; }));
    person.type(u"http://127.0.0.1:8080"_s);
    person.press(Qt::Key_Return);
    settle();
    EXPECT_EQ(service.server.requests().back().body, R"({"address":"http://127.0.0.1:8080"})");
    EXPECT_FALSE(person.sees(u"Address"_s));
}

TEST_F(SpeechPageTest, ATextThatIsSpokenComesIntoTheField) {
    person.tabTo(u"Try It"_s);
    person.press(Qt::Key_Space);
    stage.queue.advance(std::chrono::seconds(1));
    EXPECT_EQ(person.focused(), u"Dictate here"_s);
    person.click(u"Stop"_s);
    stage.queue.runPosted();
    EXPECT_EQ(person.focused(), u"Dictate here"_s) << "the paste goes where the keyboard is";
    stage.transcriber.complete(Transcript{u"Hei"_s, std::nullopt});
    stage.queue.runPosted();
    stage.processor.complete({u"Hei"_s});
    stage.queue.runPosted();
    EXPECT_EQ(stage.clipboard.text(), u"Hei"_s);
    person.type(u"Hei"_s); // what the paste does
    EXPECT_TRUE(person.sees(u"The text came 0.0 s after you stopped."_s));
}

} // namespace velmo
