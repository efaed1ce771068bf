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

TEST(PromptEcho, IsToldFromSpeech) {
    const struct {
        const char *name;
        const char16_t *text;
        bool isEcho;
        const char16_t *prompt = u"Grafana, Kubernetes, Oslo";
    } rows[] = {{"one_word_never", u"Kubernetes", false},
                {"both_of_two", u"Grafana Kubernetes", true},
                {"one_of_two", u"Grafana now", false},
                {"two_of_three", u"Grafana Kubernetes now", true},
                {"two_of_four", u"is it Grafana Kubernetes", true},
                {"one_of_four", u"I use Kubernetes daily", false},
                {"two_of_five", u"is it Kubernetes or Grafana", false},
                {"three_of_five", u"Grafana Grafana Grafana is down", false},
                {"six_of_eight", u"Oslo Oslo Oslo no Oslo Oslo Oslo no", true},
                {"marks_of_the_text_go", u"«kubernetes!» (OSLO)", true},
                {"marks_of_the_prompt_stay", u"Oslo Oslo", false, u"Oslo."},
                {"commas_and_any_space_cut_the_prompt", u"Oslo Bergen", true, u"Oslo,,Bergen\u2003x\n"},
                {"short_words_of_the_prompt_do_not_count", u"Bod Bod", false, u"Bod, Ås"},
                {"characters_count_not_units", u"øø\u0301\u0323 øø\u0301\u0323", false, u"øø\u0301\u0323"},
                {"letter_and_mark_are_one", u"A\u030alesund Ålesund", true, u"\u00c5lesund"},
                {"digits_are_words", u"2024 2025", true, u"2024 2025"},
                {"other_digits_are_not", u"２０２４ ２０２５", false, u"２０２４ ２０２５"},
                {"no_words", u" … ", false},
                {"empty_prompt", u"Oslo Oslo", false, u""}};
    for (const auto &row : rows)
        EXPECT_EQ(isPromptEcho(QString::fromUtf16(row.text), QString::fromUtf16(row.prompt)), row.isEcho)
            << row.name;
}

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
