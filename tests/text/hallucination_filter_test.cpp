#include "text/passes/hallucination_filter.h"

#include "support/log_capture.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

namespace velmo {

using namespace Qt::StringLiterals;

TEST(HallucinationFilter, KnowsStockPhrasesWhateverTheirCase) {
    for (const QString &phrase : {u"Thank you for watching."_s, u" \n thanks for WATCHING.\u00a0"_s,
                                  u"TAKK FOR AT DU SER PÅ."_s, u"takk for at du så pa\u030a."_s})
        EXPECT_TRUE(isHallucinationPhrase(phrase)) << qPrintable(phrase);
    for (const QString &speech :
         {u"Thank you for watching"_s, u"Thank you for watching. Bye"_s, u"Takk"_s, QString()})
        EXPECT_FALSE(isHallucinationPhrase(speech)) << qPrintable(speech);
}

struct EchoCase {
    const char *name;
    const char16_t *text;
    bool isEcho;
    const char16_t *prompt = u"Grafana, Kubernetes, Oslo";

    friend void PrintTo(const EchoCase &row, std::ostream *out) { *out << row.name; }
};

class PromptEcho : public ::testing::TestWithParam<EchoCase> {};

TEST_P(PromptEcho, IsToldFromSpeech) {
    const auto &[name, text, isEcho, prompt] = GetParam();
    EXPECT_EQ(isPromptEcho(QString::fromUtf16(text), QString::fromUtf16(prompt)), isEcho);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, PromptEcho,
    ::testing::Values(
        EchoCase{"one_word_never", u"Kubernetes", false},
        EchoCase{"both_of_two", u"Grafana Kubernetes", true}, EchoCase{"one_of_two", u"Grafana now", false},
        EchoCase{"two_of_three", u"Grafana Kubernetes now", true},
        EchoCase{"two_of_four", u"is it Grafana Kubernetes", true},
        EchoCase{"one_of_four", u"I use Kubernetes daily", false},
        EchoCase{"two_of_five", u"is it Kubernetes or Grafana", false},
        EchoCase{"three_of_five", u"Grafana Grafana Grafana is down", false},
        EchoCase{"six_of_eight", u"Oslo Oslo Oslo no Oslo Oslo Oslo no", true},
        EchoCase{"marks_of_the_text_go", u"«kubernetes!» (OSLO)", true},
        EchoCase{"marks_of_the_prompt_stay", u"Oslo Oslo", false, u"Oslo."},
        EchoCase{"commas_and_any_space_cut_the_prompt", u"Oslo Bergen", true, u"Oslo,,Bergen\u2003x\n"},
        EchoCase{"short_words_of_the_prompt_do_not_count", u"Bod Bod", false, u"Bod, Ås"},
        EchoCase{"characters_count_not_units", u"øø\u0301\u0323 øø\u0301\u0323", false, u"øø\u0301\u0323"},
        EchoCase{"letter_and_mark_are_one", u"A\u030alesund Ålesund", true, u"\u00c5lesund"},
        EchoCase{"digits_are_words", u"2024 2025", true, u"2024 2025"},
        EchoCase{"other_digits_are_not", u"２０２４ ２０２５", false, u"２０２４ ２０２５"},
        EchoCase{"no_words", u" … ", false}, EchoCase{"empty_prompt", u"Oslo Oslo", false, u""}),
    [](const auto &info) { return info.param.name; });

TEST(HallucinationFilter, LogsWhatItCounted) {
    const testing::LogCapture log;
    EXPECT_FALSE(isPromptEcho(u"Oslo Oslo"_s, std::nullopt));
    EXPECT_FALSE(isPromptEcho(u"…"_s, u"Oslo"_s));
    EXPECT_TRUE(log.lines().isEmpty());

    EXPECT_TRUE(isPromptEcho(u"Grafana Kubernetes now"_s, u"Grafana, Kubernetes"_s));
    EXPECT_EQ(log.lines(), QStringList{u"🎙️ [Hallucination] 2/3 long words match (67%) detected=true "
                                       u"matched=grafana,kubernetes"_s});
}

} // namespace velmo
