#include "platform/linux/xdg/browser_authentication.h"

#include "support/log_capture.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace velmo {

namespace {

struct FakeOpener final : UrlOpener {
    QStringList opened;
    std::vector<Answer> answers;

    void open(const QString &address, Answer answer) override {
        opened.append(address);
        answers.push_back(std::move(answer));
    }
};

} // namespace

class BrowserAuthenticationTest : public ::testing::Test {
protected:
    void start(BrowserAuthentication &authentication, const QString &name) {
        authentication.start(u"https://id.example/"_s + name, u"velmo"_s,
                             [this, name](const WebAuthentication::Outcome &outcome) {
                                 if (outcome)
                                     ends.append(name + u' ' + outcome->value_or(u"nothing"_s));
                                 else
                                     ends.append(name +
                                                 u" failed %1"_s.arg(static_cast<int>(outcome.error().kind)));
                             });
    }

    const QString stray = u"🔑 [Auth] Ignored a callback that nobody waits for"_s;
    testing::LogCapture log;
    Result<void, QString> registered;
    const BrowserAuthentication::Registration registration = [this] { return registered; };
    FakeOpener opener;
    QStringList ends;
};

TEST_F(BrowserAuthenticationTest, TakesTheFirstAddressOfItsScheme) {
    BrowserAuthentication authentication(opener, registration);
    authentication.deliver(u"velmo://early"_s);
    start(authentication, u"a"_s);
    EXPECT_EQ(opener.opened, QStringList{u"https://id.example/a"_s});
    authentication.deliver(u"https://velmo://x"_s);
    EXPECT_THAT(ends, IsEmpty());
    authentication.deliver(u"VELMO:x?y"_s);
    authentication.deliver(u"velmo://late"_s);
    authentication.cancel();
    opener.answers[0](false); // a browser that ends badly after its work
    EXPECT_THAT(ends, ElementsAre(u"a VELMO:x?y"_s));
    EXPECT_THAT(log.lines(), ElementsAre(stray, stray, stray));
}

TEST_F(BrowserAuthenticationTest, ReplacesTheSessionThatRuns) {
    BrowserAuthentication authentication(opener, registration);
    start(authentication, u"a"_s);
    registered = failed(u"Could not write velmo.desktop"_s);
    start(authentication, u"b"_s);
    EXPECT_THAT(log.lines(), ElementsAre(u"🔑 [Auth] Could not write velmo.desktop"_s));
    opener.answers[0](false);
    EXPECT_THAT(ends, IsEmpty());
    authentication.cancel();
    EXPECT_THAT(ends, ElementsAre(u"b failed 1"_s));
}

TEST_F(BrowserAuthenticationTest, EndsWithoutABrowserUnlessThePersonKnowsTheAddress) {
    BrowserAuthentication strict(opener, registration);
    start(strict, u"a"_s);
    opener.answers[0](false);
    BrowserAuthentication lenient(opener, registration);
    lenient.goOnWithoutBrowser();
    start(lenient, u"b"_s);
    opener.answers[1](false);
    lenient.deliver(u"velmo://x"_s);
    EXPECT_THAT(ends, ElementsAre(u"a failed 0"_s, u"b velmo://x"_s));
}

} // namespace velmo
