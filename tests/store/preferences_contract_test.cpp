#include "store/memory_preferences.h"
#include "store/sqlite_preferences.h"
#include "support/qt_printing.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

const QString kKey = u"velmoDictionary"_s;

/// What every preference domain promises, the one that tests and single lines of text have as well as the one on the disk.
template <class Domain>
class PreferencesContract : public ::testing::Test {
protected:
    static std::unique_ptr<Preferences> open(const QTemporaryDir &directory) {
        if constexpr (std::is_same_v<Domain, SqlitePreferences>)
            return std::make_unique<SqlitePreferences>(directory.filePath(u"preferences.sqlite"_s));
        else
            return std::make_unique<Domain>();
    }

    QTemporaryDir directory;
    std::unique_ptr<Preferences> preferences = open(directory);
};

using Domains = ::testing::Types<MemoryPreferences, SqlitePreferences>;
TYPED_TEST_SUITE(PreferencesContract, Domains);

TYPED_TEST(PreferencesContract, KeepsEveryKindOfValue) {
    Preferences &preferences = *this->preferences;
    const std::vector<PreferenceValue> values = {u""_s,
                                                 u"Blåbærsyltetøy 🇳🇴"_s,
                                                 u"a\0b"_s,
                                                 QString(5'000'000, u'å'),
                                                 true,
                                                 false,
                                                 std::numeric_limits<qint64>::min(),
                                                 std::numeric_limits<qint64>::max(),
                                                 Date(1'773'489'600s + 123'456'789ns),
                                                 Date(-1ns),
                                                 QByteArray(),
                                                 QByteArray("\0\xff{}", 4)};
    for (const PreferenceValue &value : values) {
        ASSERT_TRUE(preferences.set(kKey, value));
        EXPECT_TRUE(preferences.value(kKey) == value) << "kind " << value.index();
    }
    preferences.set(kKey, QChar(0xD83D) + u"x"_s + QChar(0xDE00) + QChar(0xD83D));
    EXPECT_EQ(preferences.string(kKey), u"\uFFFDx\uFFFD\uFFFD"_s);

    preferences.set(u"velmoUser"_s, QByteArray("{}"));
    EXPECT_EQ(preferences.all().size(), 2U);
    EXPECT_TRUE(preferences.remove(kKey));
    EXPECT_TRUE(preferences.remove(kKey));
    EXPECT_EQ(preferences.value(kKey), std::nullopt);
}

TYPED_TEST(PreferencesContract, ReadsAnotherKindAsAbsent) {
    Preferences &preferences = *this->preferences;
    preferences.set(kKey, u"1"_s);
    EXPECT_EQ(preferences.boolean(kKey), std::nullopt);
    EXPECT_EQ(preferences.integer(kKey), std::nullopt);
    EXPECT_EQ(preferences.date(kKey), std::nullopt);
    EXPECT_EQ(preferences.data(kKey), std::nullopt);
    preferences.set(kKey, true);
    EXPECT_EQ(preferences.boolean(kKey), true);
    EXPECT_EQ(preferences.string(kKey), std::nullopt);
}

TYPED_TEST(PreferencesContract, ReadsWhileSomebodyChanges) {
    Preferences &preferences = *this->preferences;
    preferences.set(kKey, u"before"_s);
    EXPECT_TRUE(preferences.change(kKey, [&](const std::optional<PreferenceValue> &stored) {
        EXPECT_TRUE(stored == PreferenceValue(u"before"_s));
        EXPECT_EQ(preferences.string(kKey), u"before"_s);
        return PreferenceValue(u"after"_s);
    }));
    EXPECT_EQ(preferences.string(kKey), u"after"_s);
    EXPECT_TRUE(preferences.change(kKey, [](const auto &) { return std::nullopt; }));
    EXPECT_TRUE(preferences.all().empty());
}

TYPED_TEST(PreferencesContract, LosesNoChangeOfSeveralThreads) {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this] {
            for (int i = 0; i < 50; ++i) {
                this->preferences->change(kKey, [](const std::optional<PreferenceValue> &stored) {
                    return PreferenceValue(stored ? std::get<qint64>(*stored) + 1 : qint64{1});
                });
            }
        });
    }
    threads.clear();
    EXPECT_EQ(this->preferences->integer(kKey), 200);
}

} // namespace

} // namespace velmo
