#include "dictation/session/hint_prompt.h"

#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

TEST(HintPromptTest, HoldsTheWordsToExpect) {
    const struct {
        const char *name;
        const char *dictionary;
        const char *learned;
        const char *languages;
        const char *prompt; // nullptr: none
    } rows[] = {
        {"nothing", nullptr, nullptr, "no", nullptr},
        {"two_words", R"([{"word":"a"},{"word":"b"}])", nullptr, "no", nullptr},
        {"code_point_order", R"([{"word":"ø"},{"word":"b"},{"word":"Z"},{"word":"😀"},{"word":"～"}])",
         nullptr, "no", "Z, b, ø, ～, 😀"},
        {"words_of_unselected_languages_stay_out",
         R"([{"word":"hygge"},{"word":"fika"},{"word":"Kjell"},{"word":"Velmo"}])", nullptr, "no,sv",
         "Kjell, Velmo, fika"},
        {"codes_as_written", R"([{"word":"fika"},{"word":"a"},{"word":"b"},{"word":"c"}])", nullptr, "SV,no",
         "a, b, c"},
        {"case_counts", R"([{"word":"Hygge"},{"word":"a"},{"word":"b"}])", nullptr, "no", "Hygge, a, b"},
        {"equal_letters_count_once",
         "[{\"word\":\"Bode\\u0301\"},{\"word\":\"Bod\\u00e9\"},{\"word\":\"a\"}]", nullptr, "no", nullptr},
        {"listed_words_in_any_form", "[{\"word\":\"Bjo\\u0308rn\"},{\"word\":\"a\"},{\"word\":\"b\"}]",
         nullptr, "no", nullptr},
        {"learned_words_of_selected_languages", R"([{"word":"Oslo"}])",
         R"({"no":["digg","gira"],"sv":["fika"],"da":["hygge"]})", "sv,no", "Oslo, digg, fika, gira"},
        {"learned_words_of_another_shape", R"([{"word":"a"},{"word":"b"}])", R"({"no":["digg"],"sv":"fika"})",
         "no", nullptr},
        {"objects_without_words_are_passed_over",
         R"([{"word":1},{},{"word":"a","more":2},{"word":"b"},{"word":"c"}])", nullptr, "no", "a, b, c"},
        {"no_array_of_objects", R"([{"word":"a"},{"word":"b"},{"word":"c"},"d"])", nullptr, "no", nullptr},
    };
    for (const auto &row : rows) {
        const testing::LogCapture log;
        MemoryPreferences preferences;
        if (row.dictionary)
            preferences.set(keys::dictionary, QString::fromUtf8(row.dictionary));
        if (row.learned)
            preferences.set(keys::learnedWords, QString::fromUtf8(row.learned));
        const HintPrompt hints(preferences);
        const auto prompt = hints.current(QString::fromUtf8(row.languages).split(QLatin1Char(',')));
        EXPECT_EQ(prompt.value_or(u"none"_s), QString::fromUtf8(row.prompt ? row.prompt : "none"))
            << row.name;
        EXPECT_EQ(log.lines().size(), row.prompt ? 1 : 0) << row.name;
    }
}

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
