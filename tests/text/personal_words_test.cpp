#include "text/personal_words.h"

#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

namespace velmo {

using namespace Qt::StringLiterals;

TEST(PersonalWords, FollowWhatIsStored) {
    MemoryPreferences preferences({{keys::dictionary, u"[{\"word\":\"Grafana\"}]"_s}});
    const PersonalWords words(preferences);
    const PersonalContext before = words.current();
    EXPECT_EQ(before.vocabulary->correctionOf(u"grafena")->word, u"Grafana"_s);
    EXPECT_EQ(words.current().vocabulary, before.vocabulary); // nothing changed, nothing is made anew
    EXPECT_EQ(words.current().snippets, before.snippets);

    preferences.set(keys::dictionary, u"[{\"word\":\"Grafina\"}]"_s);
    EXPECT_EQ(words.current().vocabulary->correctionOf(u"grafena")->word, u"Grafina"_s);
    EXPECT_EQ(before.vocabulary->correctionOf(u"grafena")->word, u"Grafana"_s);
}

TEST(PersonalWords, TakeLearnedWordsOfTheSelectedLanguagesAfterTheDictionary) {
    MemoryPreferences preferences({{keys::dictionary, u"[{\"word\":\"fjordet\"}]"_s},
                                   {keys::learnedWords, u"{\"no\":[\"grafana\"],\"sv\":[\"grafine\"],"
                                                        u"\"fi\":[\"huomenna\"],\"grefene\":[]}"_s},
                                   {keys::selectedLanguages, u"sv, no"_s}});
    const PersonalWords words(preferences);
    const auto vocabulary = words.current().vocabulary;
    EXPECT_EQ(vocabulary->correctionOf(u"grafane")->word,
              u"grafine"_s);                             // as near as "grafana", selected earlier
    EXPECT_FALSE(vocabulary->correctionOf(u"huomanna")); // not selected
    EXPECT_FALSE(vocabulary->correctionOf(u"grefenx"));  // a language code is no word

    preferences.set(keys::selectedLanguages, u"no,sv"_s);
    EXPECT_EQ(words.current().vocabulary->correctionOf(u"grafane")->word, u"grafana"_s);
}

TEST(SnippetExpansion, TypesTheStoredText) {
    const std::tuple<const char *, QString, QString, QString> rows[] = {
        {"any_case", uR"([{"trigger":"my address","expansion":"Storgata 1, Oslo"}])"_s,
         u"send it to My Address please"_s, u"send it to Storgata 1, Oslo please"_s},
        {"inside_words", uR"([{"trigger":"sig","expansion":"Sigrun"}])"_s, u"design"_s, u"deSigrunn"_s},
        {"signs", uR"([{"trigger":"c++ (x|y) \\Q\\E","expansion":"ok"}])"_s, u"C++ (X|y) \\q\\e"_s, u"ok"_s},
        {"expansion_as_it_stands", uR"([{"trigger":"pris","expansion":"$1 \\0 ${x}\u2028"}])"_s, u"pris"_s,
         u"$1 \\0 ${x}\u2028"_s},
        {"later_sees_earlier",
         uR"([{"trigger":"a","expansion":"b"},{"trigger":"b","expansion":"c"},{"trigger":"c"}])"_s, u"ab"_s,
         u"cc"_s},
        {"case_folded_in_full", uR"([{"trigger":"straße","expansion":"gate"}])"_s, u"STRASSE"_s, u"gate"_s},
        {"empty_trigger", uR"([{"trigger":"","expansion":"x"}])"_s, u"ab"_s, u"ab"_s},
        {"unusable_objects_are_passed_over",
         uR"([{"trigger":"a"},{"trigger":1,"expansion":"x"},{"trigger":"a","expansion":"b"}])"_s, u"a"_s,
         u"b"_s},
        {"a_stray_value_empties_the_list", uR"([{"trigger":"a","expansion":"b"},3])"_s, u"a"_s, u"a"_s},
        {"damaged", uR"([{"trigger":"a")"_s, u"a"_s, u"a"_s},
    };
    for (const auto &[name, stored, text, result] : rows)
        EXPECT_EQ(expandSnippets(text, compiledSnippets(parseUsableSnippets(stored))), result) << name;
}

} // namespace velmo
