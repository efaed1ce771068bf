#include "dictation/session/hint_prompt.h"

#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

struct Case {
    const char *name;
    const char *dictionary;
    const char *learned;
    const char *languages;
    const char *prompt; // nullptr: none

    friend void PrintTo(const Case &row, std::ostream *out) { *out << row.name; }
};

class HintPromptOf : public ::testing::TestWithParam<Case> {};

TEST_P(HintPromptOf, HoldsTheWordsToExpect) {
    const testing::LogCapture log;
    MemoryPreferences preferences;
    if (GetParam().dictionary)
        preferences.set(keys::dictionary, QString::fromUtf8(GetParam().dictionary));
    if (GetParam().learned)
        preferences.set(keys::learnedWords, QString::fromUtf8(GetParam().learned));

    const HintPrompt hints(preferences);
    const auto prompt = hints.current(QString::fromUtf8(GetParam().languages).split(QLatin1Char(',')));

    EXPECT_EQ(prompt.value_or(u"none"_s), QString::fromUtf8(GetParam().prompt ? GetParam().prompt : "none"));
    EXPECT_EQ(log.lines().size(), GetParam().prompt ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, HintPromptOf,
    ::testing::Values(
        Case{"nothing", nullptr, nullptr, "no", nullptr},
        Case{"two_words", R"([{"word":"a"},{"word":"b"}])", nullptr, "no", nullptr},
        Case{"code_point_order", R"([{"word":"ø"},{"word":"b"},{"word":"Z"},{"word":"😀"},{"word":"～"}])",
             nullptr, "no", "Z, b, ø, ～, 😀"},
        Case{"words_of_unselected_languages_stay_out",
             R"([{"word":"hygge"},{"word":"fika"},{"word":"Kjell"},{"word":"Velmo"}])", nullptr, "no,sv",
             "Kjell, Velmo, fika"},
        Case{"codes_as_written", R"([{"word":"fika"},{"word":"a"},{"word":"b"},{"word":"c"}])", nullptr,
             "SV,no", "a, b, c"},
        Case{"case_counts", R"([{"word":"Hygge"},{"word":"a"},{"word":"b"}])", nullptr, "no", "Hygge, a, b"},
        Case{"equal_letters_count_once",
             "[{\"word\":\"Bode\\u0301\"},{\"word\":\"Bod\\u00e9\"},{\"word\":\"a\"}]", nullptr, "no",
             nullptr},
        Case{"listed_words_in_any_form", "[{\"word\":\"Bjo\\u0308rn\"},{\"word\":\"a\"},{\"word\":\"b\"}]",
             nullptr, "no", nullptr},
        Case{"learned_words_of_selected_languages", R"([{"word":"Oslo"}])",
             R"({"no":["digg","gira"],"sv":["fika"],"da":["hygge"]})", "sv,no", "Oslo, digg, fika, gira"},
        Case{"learned_words_of_another_shape", R"([{"word":"a"},{"word":"b"}])",
             R"({"no":["digg"],"sv":"fika"})", "no", nullptr},
        Case{"objects_without_words_are_passed_over",
             R"([{"word":1},{},{"word":"a","more":2},{"word":"b"},{"word":"c"}])", nullptr, "no", "a, b, c"},
        Case{"no_array_of_objects", R"([{"word":"a"},{"word":"b"},{"word":"c"},"d"])", nullptr, "no",
             nullptr}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(HintPromptTest, FollowsEveryChange) {
    const testing::LogCapture log;
    MemoryPreferences preferences;
    const HintPrompt hints(preferences);
    const auto now = [&](const char *language) {
        return hints.current({QString::fromUtf8(language)}).value_or(QString());
    };
    preferences.set(keys::dictionary,
                    QStringLiteral(R"([{"word":"fika"},{"word":"b"},{"word":"a"},{"word":"c"}])"));
    EXPECT_EQ(now("no"), u"a, b, c"_s);
    EXPECT_EQ(now("sv"), u"a, b, c, fika"_s);
    preferences.set(keys::learnedWords, QStringLiteral(R"({"sv":["mysa"]})"));
    EXPECT_EQ(now("sv"), u"a, b, c, fika, mysa"_s);
    EXPECT_EQ(now("sv"), u"a, b, c, fika, mysa"_s);
    preferences.remove(keys::dictionary);
    EXPECT_EQ(now("sv"), QString());
    EXPECT_EQ(log.lines().size(), 4);
}

} // namespace

} // namespace velmo
