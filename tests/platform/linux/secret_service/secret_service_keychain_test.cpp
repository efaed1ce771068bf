#include "platform/linux/secret_service/secret_service_keychain.h"

#include "support/private_bus.h"
#include "support/private_keyring.h"

#include <gtest/gtest.h>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

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
    testing::PrivateKeyring keyring(*bus);
    SecretServiceKeychain keychain(u"Test"_s);
    EXPECT_EQ(keychain.read(kAccount), std::nullopt);
    EXPECT_TRUE(keychain.remove(kAccount));
    const QByteArray secret("tøken\0x", 8);
    ASSERT_TRUE(keychain.add(kAccount, "old"));
    ASSERT_TRUE(keychain.add(kAccount, secret));
    EXPECT_EQ(keychain.read(kAccount), secret);
    EXPECT_EQ(keychain.read(u"com.example.other"_s), std::nullopt);

    const QString found =
        testing::PrivateKeyring::secretTool({u"search"_s, u"--all"_s, u"account"_s, kAccount});
    EXPECT_EQ(found.count(u"label = Test"_s), 1) << found.toStdString();
    EXPECT_EQ(found.count(u"attribute."_s), 1) << found.toStdString();

    keyring.restart();
    EXPECT_EQ(keychain.read(kAccount), secret);
    EXPECT_TRUE(keychain.remove(kAccount));
    EXPECT_EQ(keychain.read(kAccount), std::nullopt);
}

TEST_F(SecretServiceKeychainTest, SaysThatAKeyringIsLockedAndAsksNobody) {
    testing::PrivateKeyring keyring(*bus);
    SecretServiceKeychain keychain(u"Test"_s);
    ASSERT_TRUE(keychain.add(kAccount, "token"));
    keyring.lock();
    const QString locked = u"The keyring is locked."_s;
    EXPECT_EQ(reasonOf(keychain.read(kAccount)), locked);
    EXPECT_EQ(keychain.add(kAccount, "other").error().reason, locked);
    EXPECT_EQ(keychain.remove(kAccount).error().reason, locked);
}

TEST_F(SecretServiceKeychainTest, GivesAKeyringUpThatDoesNotAnswer) {
    testing::PrivateKeyring keyring(*bus);
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
