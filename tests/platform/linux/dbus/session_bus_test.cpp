#include "platform/linux/dbus/session_bus.h"

#include "base/interface.h"
#include "support/private_bus.h"
#include "support/wait_until.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

const QString kName = u"com.example.velmo"_s;
const QString kPath = u"/com/example/velmo"_s;

/// An application that remembers what it was asked.
struct RecordedRequests final : ApplicationRequests {
    QStringList asked;
    Reply reply;

    void activate() override { asked.append(u"activate"_s); }
    void open(const QStringList &addresses) override { asked.append(u"open "_s + addresses.join(u' ')); }
    void run(const QStringList &words, Reply answer) override {
        asked.append(u"run "_s + words.join(u' '));
        reply = std::move(answer);
    }
};

/// Another process of the session, as far as the bus can tell.
class OtherProcess : private Unmovable {
public:
    explicit OtherProcess(const testing::PrivateBus &bus)
        : connection(QDBusConnection::connectToBus(bus.address(), u"other"_s)) {}
    ~OtherProcess() {
        connection = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(u"other"_s);
    }

    [[nodiscard]] QDBusPendingCall call(const QString &interface, const QString &method,
                                        const QVariantList &arguments) const {
        QDBusMessage message = QDBusMessage::createMethodCall(kName, kPath, interface, method);
        message.setArguments(arguments);
        return connection.asyncCall(message);
    }

    QDBusConnection connection;
};

} // namespace

class SessionBusTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { bus.emplace(); }
    static void TearDownTestSuite() { bus.reset(); }

    /// The answer to what `ask` asks.
    template <class Ask>
    static std::optional<CommandOutcome> answerTo(Ask ask) {
        std::optional<std::optional<CommandOutcome>> answer;
        ask([&](const std::optional<CommandOutcome> &outcome) { answer = outcome; });
        EXPECT_TRUE(testing::waitUntil([&] { return answer.has_value(); }));
        return answer.value_or(std::nullopt);
    }

    static std::optional<testing::PrivateBus> bus;
    RecordedRequests requests;
};
std::optional<testing::PrivateBus> SessionBusTest::bus;

TEST_F(SessionBusTest, HandsOverWhatOthersAsk) {
    SessionBus application(kName);
    ASSERT_EQ(application.claim(requests), ApplicationBus::Claim::Held);
    const OtherProcess other(*bus);
    const QString address = u"velmo://auth?id_token=a%20b&state=c"_s;
    auto activated = other.call(u"org.freedesktop.Application"_s, u"Activate"_s, {QVariantMap()});
    auto opened =
        other.call(u"org.freedesktop.Application"_s, u"Open"_s, {QStringList{address}, QVariantMap()});
    QDBusPendingReply<int, QString, QString> ran =
        other.call(u"com.tarnwell.velmo.Commands"_s, u"Run"_s, {QStringList{u"sync"_s, u"--x"_s}});
    ASSERT_TRUE(testing::waitUntil([&] { return requests.asked.size() == 3; }));
    EXPECT_EQ(requests.asked, QStringList({u"activate"_s, u"open "_s + address, u"run sync --x"_s}));
    EXPECT_FALSE(ran.isFinished());
    requests.reply({1, u"out"_s, u"No."_s});
    ASSERT_TRUE(testing::waitUntil(
        [&] { return ran.isFinished() && activated.isFinished() && opened.isFinished(); }));
    EXPECT_FALSE(activated.isError() || opened.isError());
    EXPECT_EQ(ran.argumentAt<0>(), 1);
    EXPECT_EQ(ran.argumentAt<1>(), u"out"_s);
    EXPECT_EQ(ran.argumentAt<2>(), u"No."_s);
}

TEST_F(SessionBusTest, LeavesTheNameToWhoHasIt) {
    const OtherProcess other(*bus);
    {
        SessionBus application(kName);
        ASSERT_EQ(application.claim(requests), ApplicationBus::Claim::Held);
        EXPECT_FALSE(QDBusConnection(other.connection).registerService(kName));
    }
    ASSERT_TRUE(QDBusConnection(other.connection).registerService(kName)); // given back
    SessionBus application(kName);
    EXPECT_EQ(application.claim(requests), ApplicationBus::Claim::Taken);
    QDBusConnection(other.connection).unregisterService(kName);
}

TEST_F(SessionBusTest, SaysWhenNobodyIsThereOrNobodyAnswers) {
    SessionBus client(kName);
    EXPECT_EQ(answerTo([&](auto answer) { client.activate(answer); }), std::nullopt);
    EXPECT_EQ(answerTo([&](auto answer) { client.run({u"status"_s}, 1s, answer); }), std::nullopt);
    const OtherProcess other(*bus);
    ASSERT_TRUE(QDBusConnection(other.connection).registerService(kName)); // but it offers nothing
    const auto outcome = answerTo([&](auto answer) { client.open({u"velmo://x"_s}, answer); });
    EXPECT_EQ(outcome, (CommandOutcome{1, QString(),
                                       u"Velmo runs but does not answer; it may be busy or stopped."_s}));
    QDBusConnection(other.connection).unregisterService(kName);
}

TEST(SessionBus, DoesWithoutABus) {
    const QByteArray before = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    RecordedRequests requests;
    SessionBus application(kName);
    EXPECT_EQ(application.claim(requests), ApplicationBus::Claim::NoBus);
    bool isAnswered = false;
    application.activate([&](const auto &outcome) { isAnswered = !outcome; });
    EXPECT_TRUE(testing::waitUntil([&] { return isAnswered; }));
    qputenv("DBUS_SESSION_BUS_ADDRESS", before);
    qputenv("XDG_RUNTIME_DIR", runtime);
}

} // namespace velmo
