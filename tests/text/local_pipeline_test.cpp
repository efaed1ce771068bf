#include "text/local_pipeline.h"

#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/qt_printing.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace velmo {

using namespace Qt::StringLiterals;

struct Said {
    const char *name;
    QString transcript;
    QString typed;
    std::optional<QString> detected = std::nullopt;
    std::map<QString, PreferenceValue> preferences = {};
};

std::map<QString, PreferenceValue> selected(const QString &languages, const QString &primary = u"no"_s) {
    return {{keys::selectedLanguages, languages}, {keys::primaryLanguage, primary}};
}

std::map<QString, PreferenceValue> spokenRulesOf(const QString &languages) {
    return {{keys::selectedLanguages, languages}, {keys::ruleScope, u"spoken"_s}};
}

void expectTyped(const std::vector<Said> &rows) {
    for (const Said &row : rows) {
        const MemoryPreferences preferences(row.preferences);
        EXPECT_EQ(LocalTextPath(preferences).process(row.transcript, row.detected), row.typed) << row.name;
    }
}

TEST(LocalPath, TypesWhatWasMeant) {
    expectTyped({{"wish", u"I'D TO go and i want go home"_s, u"I'd like to go and I want to go home"_s},
                 {"stutter", u"the the cat"_s, u"The cat"_s},
                 {"stutter_across_a_break_of_the_transcript", u"the\u2028the cat"_s, u"The cat"_s},
                 {"long_words_are_repeated_on_purpose", u"hello hello"_s, u"Hello hello"_s},
                 {"stutter_a_filler_stood_in", u"det um det bra"_s, u"Det bra"_s, u"en"_s, selected(u"en"_s)},
                 {"stock_phrase", u" Thanks for watching.\n"_s, u""_s},
                 {"nothing", u" \u2028 "_s, u""_s}});
}

TEST(LocalPath, SpokenMarks) {
    expectTyped({{"marks", u"hello comma world period"_s, u"Hello, world."_s},
                 {"of_any_selected_language", u"hello komma world"_s, u"Hello, world"_s, u"en"_s},
                 {"of_no_other", u"hello komma world"_s, u"Hello komma world"_s, u"no"_s, selected(u"en"_s)},
                 {"inside_a_word", u"kommandolinje"_s, u"Kommandolinje"_s},
                 {"line", u"hei NY LINJE du"_s, u"Hei\nDu"_s},
                 {"line_with_the_models_mark", u"hei ny linje. du ny linje, nå ny linje.. ja"_s,
                  u"Hei\nDu\nNå\n. Ja"_s},
                 {"marks_of_the_sentence_stay", u"hei, ny linje komma du"_s, u"Hei,\n, du"_s},
                 {"paragraph", u"hei nytt avsnitt du"_s, u"Hei\n\nDu"_s},
                 {"at_most_two_in_a_row", u"hei nytt avsnitt ny linje nytt avsnitt du"_s, u"Hei\n\nDu"_s},
                 {"breaks_at_the_ends_go", u"ny linje hei ny linje"_s, u"Hei"_s},
                 {"breaks_of_the_transcript_are_white_space", u"hei\u2028du\u2029\r\nja"_s, u"Hei du ja"_s},
                 {"a_stutter_does_not_swallow_a_break", u"ja ny linje ja"_s, u"Ja\nJa"_s},
                 {"an_emoji_does_not_swallow_a_break", u"emoji ny linje fire"_s, u"Emoji\nFire"_s},
                 {"fillers_beside_a_break_go", u"hei ny linje eh, du"_s, u"Hei\nDu"_s}});
}

TEST(LocalPath, Fillers) {
    expectTyped({{"with_the_mark_behind", u"eh, okay um."_s, u"Okay"_s},
                 {"only_between_white_space", u"umbrella (um) um-um"_s, u"Umbrella (um) um-um"_s},
                 {"in_every_language", u"hmm ja"_s, u"Ja"_s, std::nullopt, selected(u""_s)},
                 {"phrases_before_their_words", u"det er liksom ba sant"_s, u"Det er sant"_s, u"sv"_s,
                  selected(u"sv"_s)},
                 {"longest_first_not_leftmost_first", u"tai siis niinku tak"_s, u"Tai tak"_s, u"fi"_s,
                  selected(u"fi"_s)},
                 {"norwegian_ones_not_in_english", u"my ass liksom altså"_s, u"My ass liksom altså"_s,
                  u"en"_s, selected(u"no,en"_s)},
                 {"norwegian_ones_in_danish", u"ja altså ass"_s, u"Ja"_s, u"DA"_s, selected(u"no,en"_s)},
                 {"bokmal_code_has_none", u"liksom ja"_s, u"Liksom ja"_s, u"nb"_s, selected(u"nb"_s)},
                 {"er_is_a_verb_here", u"det er bra"_s, u"Det er bra"_s, u"no"_s},
                 {"er_is_a_hesitation_there", u"det er bra"_s, u"Det bra"_s, u"en"_s}});
}

TEST(LocalPath, RuleScope) {
    expectTyped({
        {"the_spoken_language_alone", u"um jeg komma bor period"_s, u"Um jeg, bor period"_s, u"no"_s,
         spokenRulesOf(u"no, en"_s)},
        {"a_norwegian_code_finds_the_others", u"um eh ja"_s, u"Um ja"_s, u"nb"_s, spokenRulesOf(u"nn,en"_s)},
        {"but_only_where_it_is_not_selected_itself", u"um eh ja"_s, u"Um eh ja"_s, u"nb"_s,
         spokenRulesOf(u"nn,nb,en"_s)},
        {"not_selected", u"um eh ja"_s, u"Eh ja"_s, u"de"_s, spokenRulesOf(u"no,en"_s)},
        {"not_detected", u"um eh ja"_s, u"Ja"_s, std::nullopt, spokenRulesOf(u"no,en"_s)},
        {"codes_are_compared_as_written", u"um ja"_s, u"Um ja"_s, u"EN"_s, spokenRulesOf(u"EN"_s)},
    });
}

TEST(LocalPath, Emoji) {
    expectTyped({{"any_case_and_space", u"great EMOJI \t thumbsUp thanks"_s, u"Great 👍 thanks"_s},
                 {"specific_before_general", u"emoji red heart emoji heart eyes"_s, u"❤️ 😍"_s},
                 {"whole_names_only", u"emoji hearts"_s, u"Emoji hearts"_s},
                 {"general_where_the_specific_fails", u"emoji star eyesx"_s, u"⭐ eyesx"_s},
                 {"white_space_must_follow", u"emoji, heart"_s, u"Emoji, heart"_s},
                 {"optional_letters", u"emoji elsker emoji älskar"_s, u"🥰 🥰"_s},
                 {"case_folded_in_full", u"emoji ﬁre"_s, u"🔥"_s},
                 {"before_it_is_judged_norwegian", u"ikkje emoji død"_s, u"Ikkje 💀"_s, u"no"_s}});
}

TEST(LocalPath, Norwegian) {
    expectTyped({{"nynorsk", u"Eg veit ikkje kva det er"_s, u"Jeg veit ikke hva det er"_s, u"nn"_s},
                 {"does_not_look_it", u"Eg veit ikkje"_s, u"Eg veit ikkje"_s, u"nn"_s},
                 {"not_for_others", u"Eg veit ikkje kva det er"_s, u"Eg veit ikkje kva det er"_s, u"nn"_s,
                  selected(u"no"_s, u"nn"_s)},
                 {"not_in_danish", u"ikkje det"_s, u"Ikkje det"_s, u"da"_s},
                 {"heard_as_swedish", u"ikkje det"_s, u"Ikke det"_s, u"sv"_s},
                 {"no_at_starts", u"no, det er bra. no problem, No; no"_s,
                  u"Nå, det er bra. Nå problem, Nå; nå"_s, u"no"_s},
                 {"no_elsewhere", u"det er no bra NO. \u00a0no"_s, u"Det er no bra NO. No"_s, u"no"_s}});
}

TEST(LocalPath, Spacing) {
    expectTyped({{"behind_every_mark", u"3.5 10:30"_s, u"3. 5 10: 30"_s},
                 {"between_dots", u"ok... sure"_s, u"Ok. . . Sure"_s},
                 {"before_marks", u"hva \u00a0? ja"_s, u"Hva? Ja"_s},
                 {"leading_mark", u", hello"_s, u"hello"_s},
                 {"sentences", u"what? yes! ok: no"_s, u"What? Yes! Ok: no"_s},
                 {"only_spaces_before_a_capital", u"ja. \"nei\""_s, u"Ja. \"nei\""_s},
                 {"long_capitals", u"ja. ßen"_s, u"Ja. SSen"_s},
                 {"marks_that_join", u"ja.\u0301 nei"_s, u"Ja. \u0301 nei"_s},
                 {"english_i", u"i think i can"_s, u"I think I can"_s},
                 {"no_english", u"i think i can"_s, u"I think i can"_s, std::nullopt, selected(u"no"_s)},
                 {"scandinavian_i", u"jeg bor i Oslo"_s, u"Jeg bor i Oslo"_s, u"sv"_s}});
}

// ICU bounds its stack, and a pattern that keeps a state for each blank would give up here.
TEST(LocalPathOfLongTexts, ReachesAcrossAnyNumberOfBlanks) {
    const MemoryPreferences preferences;
    const QString blanks(300'000, u' ');
    EXPECT_EQ(LocalTextPath(preferences)
                  .process(u"emoji fire emoji"_s + blanks + u"heart ja"_s + blanks + u"ja"_s, u"no"_s),
              u"🔥 ❤️ ja"_s);
}

TEST(LocalPathTrace, TellsEachPassAndWhatItLeft) {
    const MemoryPreferences preferences(
        {{keys::snippets, u"[{\"trigger\":\"mvh\",\"expansion\":\"Hilsen\"}]"_s}});
    QStringList passes;
    QStringList texts;
    const QString typed =
        LocalTextPath(preferences)
            .process(u"eh mvh"_s, u"no"_s, [&](QLatin1StringView pass, const QString &text) {
                passes.append(pass);
                texts.append(text);
            });
    EXPECT_EQ(typed, u"Hilsen"_s);
    EXPECT_EQ(passes.first(), u"line breaks of the transcript"_s);
    EXPECT_EQ(texts[passes.indexOf(u"spoken punctuation"_s)], u"Eh mvh"_s);
    EXPECT_EQ(texts[passes.indexOf(u"fillers"_s)], u"  mvh"_s);
    EXPECT_EQ(texts[passes.indexOf(u"vocabulary"_s)], u"Mvh"_s);
    EXPECT_EQ(passes.last(), u"snippets"_s);
}

} // namespace velmo
