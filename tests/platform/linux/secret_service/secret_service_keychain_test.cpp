#include "platform/linux/secret_service/secret_service_keychain.h"

#include "support/private_bus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <csignal>
#include <gtest/gtest.h>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

/// A keyring of the test's own, on the private bus.
class Keyring {
public:
    explicit Keyring(const testing::PrivateBus &bus) : m_bus(bus) { start(); }
    Keyring(const Keyring &) = delete;
    Keyring &operator=(const Keyring &) = delete;
    ~Keyring() { end(); }

    void restart() {
        end();
        start();
    }

    void lock() {
        QDBusMessage call =
            QDBusMessage::createMethodCall(u"org.freedesktop.secrets"_s, u"/org/freedesktop/secrets"_s,
                                           u"org.freedesktop.Secret.Service"_s, u"Lock"_s);
        call << QVariant::fromValue(QList{QDBusObjectPath(u"/org/freedesktop/secrets/collection/login"_s)});
        {
            const QDBusConnection connection = QDBusConnection::connectToBus(m_bus.address(), u"locks"_s);
            EXPECT_EQ(connection.call(call).type(), QDBusMessage::ReplyMessage);
        }
        QDBusConnection::disconnectFromBus(u"locks"_s);
    }

    void stop() { ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP); }

    /// Runs secret-tool, the way a person looks into the keyring.
    [[nodiscard]] QString secretTool(const QStringList &arguments) const {
        QProcess tool;
        tool.setProcessChannelMode(QProcess::MergedChannels);
        tool.start(u"secret-tool"_s, arguments);
        tool.waitForFinished();
        return QString::fromUtf8(tool.readAll());
    }

private:
    void start() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, m_home.path());
        environment.insert(u"XDG_DATA_HOME"_s, m_home.path());
        environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.path());
        m_daemon.setProcessEnvironment(environment);
        m_daemon.setProcessChannelMode(QProcess::MergedChannels);
        testing::endWithParent(m_daemon);
        m_daemon.start(u"gnome-keyring-daemon"_s,
                       {u"--foreground"_s, u"--unlock"_s, u"--components=secrets"_s});
        m_daemon.write("\n"); // the password of the login keyring: empty
        m_daemon.waitForBytesWritten();
        m_daemon.closeWriteChannel();
        ASSERT_TRUE(m_bus.waitForName(u"org.freedesktop.secrets"_s));
    }

    void end() {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }

    const testing::PrivateBus &m_bus;
    QTemporaryDir m_home;
    QProcess m_daemon;
};

const QString kAccount = u"com.example.test"_s;
const QString kNone = u"This session has no keyring."_s;

QString reasonOf(const Result<std::optional<QByteArray>, KeychainFailure> &result) {
    return result ? u"none"_s : result.error().reason;
}

} // namespace

/// GLib connects a process to one session bus for good, so all tests share it.
class SecretServiceKeychainTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { bus.emplace(); }
    static void TearDownTestSuite() { bus.reset(); }

    static std::optional<testing::PrivateBus> bus;
};
std::optional<testing::PrivateBus> SecretServiceKeychainTest::bus;

TEST(SecretServiceKeychain, SaysThatThereIsNoBusToFindAKeyringOn) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    SecretServiceKeychain keychain(u"Test"_s);
    EXPECT_EQ(reasonOf(keychain.read(kAccount)), kNone);
}

TEST_F(SecretServiceKeychainTest, KeepsOneItemKnownByItsAccountAlone) {
    Keyring keyring(*bus);
    SecretServiceKeychain keychain(u"Test"_s);
    EXPECT_EQ(keychain.read(kAccount), std::nullopt);
    EXPECT_TRUE(keychain.remove(kAccount));
    const QByteArray secret("tøken\0x", 8);
    ASSERT_TRUE(keychain.add(kAccount, "old"));
    ASSERT_TRUE(keychain.add(kAccount, secret));
    EXPECT_EQ(keychain.read(kAccount), secret);
    EXPECT_EQ(keychain.read(u"com.example.other"_s), std::nullopt);

    const QString found = keyring.secretTool({u"search"_s, u"--all"_s, u"account"_s, kAccount});
    EXPECT_EQ(found.count(u"label = Test"_s), 1) << found.toStdString();
    EXPECT_EQ(found.count(u"attribute."_s), 1) << found.toStdString();

    keyring.restart();
    EXPECT_EQ(keychain.read(kAccount), secret);
    EXPECT_TRUE(keychain.remove(kAccount));
    EXPECT_EQ(keychain.read(kAccount), std::nullopt);
}

TEST_F(SecretServiceKeychainTest, SaysThatAKeyringIsLockedAndAsksNobody) {
    Keyring keyring(*bus);
    SecretServiceKeychain keychain(u"Test"_s);
    ASSERT_TRUE(keychain.add(kAccount, "token"));
    keyring.lock();
    const QString locked = u"The keyring is locked."_s;
    EXPECT_EQ(reasonOf(keychain.read(kAccount)), locked);
    EXPECT_EQ(keychain.add(kAccount, "other").error().reason, locked);
    EXPECT_EQ(keychain.remove(kAccount).error().reason, locked);
}

TEST_F(SecretServiceKeychainTest, GivesAKeyringUpThatDoesNotAnswer) {
    Keyring keyring(*bus);
    SecretServiceKeychain keychain(u"Test"_s, 200ms);
    ASSERT_TRUE(keychain.add(kAccount, "token"));
    keyring.stop();
    EXPECT_EQ(reasonOf(keychain.read(kAccount)), u"The keyring does not answer."_s);
}

TEST_F(SecretServiceKeychainTest, SaysThatThereIsNoKeyring) {
    SecretServiceKeychain keychain(u"Test"_s);
    EXPECT_EQ(reasonOf(keychain.read(kAccount)), kNone);
    EXPECT_EQ(keychain.add(kAccount, "token").error().reason, kNone);
}

} // namespace velmo
