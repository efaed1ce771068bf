#include "text/vocabulary/vocabulary.h"

#include "base/canonical_form.h"
#include "base/case_mapping.h"
#include "base/characters.h"
#include "support/log_capture.h"
#include "support/qt_printing.h"
#include "text/vocabulary/apply_dictionary.h"
#include "text/vocabulary/edit_distance.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>
#include <numeric>

namespace velmo {

using namespace Qt::StringLiterals;

TEST(Vocabulary, SnapsWordsOntoIt) {
    const std::tuple<const char *, QString, QString, QString> rows[] = {
        {"one_slip", u"Grafana"_s, u"se grafena nå"_s, u"se Grafana nå"_s},
        {"two_slips_need_eight_characters", u"Grafana Kubernetes"_s, u"grofena kubarnetis"_s,
         u"grofena Kubernetes"_s},
        {"four_characters_never", u"fjord"_s, u"fjor"_s, u"fjor"_s},
        {"the_word_itself", u"Kubernetes"_s, u"kubernetes"_s, u"kubernetes"_s},
        {"a_word_beside_the_word_itself", u"Grafana Grafane"_s, u"grafana"_s, u"Grafane"_s},
        {"capitals", u"Straße"_s, u"STRASE Strase"_s, u"STRASSE Straße"_s},
        {"marks_behind_stay", u"Grafana"_s, u"grafena,?! grafena👍"_s, u"Grafana,?! Grafana👍"_s},
        {"marks_before_count", u"Grafana"_s, u"(grafena)"_s, u"Grafana)"_s},
        {"numbers_are_no_marks", u"kubernetis"_s, u"kubernetis² kubernetis1️⃣"_s,
         u"kubernetis kubernetis"_s},
        {"earlier_of_two_as_near", u"fjorden fjordar"_s, u"fjordan"_s, u"fjorden"_s},
        {"earlier_of_another_length", u"fjordans fjorda"_s, u"fjordan"_s, u"fjordans"_s},
        {"nearer_wins_over_earlier", u"fjordenens fjordenes"_s, u"fjordene"_s, u"fjordenes"_s},
        {"letters_written_otherwise", u"Ålesund"_s, u"a\u030alesunt A\u030alesund"_s,
         u"Ålesund A\u030alesund"_s},
        {"letter_and_mark_is_one", u"x\u0301\u0323yzab"_s, u"x\u0323\u0301yzac xyzab"_s,
         u"x\u0301\u0323yzab x\u0301\u0323yzab"_s},
        {"an_unknown_letter_is_none_of_ours", u"q\u0301abcde"_s, u"r\u0301abcde"_s, u"q\u0301abcde"_s},
        {"white_space_stays", u"Grafana"_s, u" \nhei\n\ngrafena  ja"_s, u"hei\n\nGrafana  ja"_s},
        {"only_white_space", u"Grafana"_s, u" \n"_s, u" \n"_s},
        {"no_words", QString(), u" hei"_s, u" hei"_s},
    };
    for (const auto &[name, words, text, result] : rows)
        EXPECT_EQ(applyDictionary(text, Vocabulary(words.split(u' ', Qt::SkipEmptyParts))), result) << name;
}

TEST(Vocabulary, LogsWhatItCorrected) {
    const testing::LogCapture log;
    (void)applyDictionary(u"GRAFENA!"_s, Vocabulary({u"Grafana"_s}));
    EXPECT_EQ(log.lines(), QStringList{u"📖 [Dict] Fuzzy corrected: 'GRAFENA' → 'GRAFANA' (distance: 1)"_s});
}

/// Levenshtein's table in full.
int plainDistance(const std::u32string &from, const std::u32string &to) {
    std::vector<int> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const char32_t letter : from) {
        int diagonal = row[0]++;
        for (std::size_t column = 1; column < row.size(); ++column) {
            const int substituted = diagonal + (letter == to[column - 1] ? 0 : 1);
            diagonal = row[column];
            row[column] = std::min({substituted, row[column] + 1, row[column - 1] + 1});
        }
    }
    return row.back();
}

QString randomWord(QRandomGenerator &random, const QString &letters, int shortest, int longest) {
    QString word;
    for (int length = random.bounded(shortest, longest + 1); length > 0; --length)
        word += letters[random.bounded(letters.size())];
    return word;
}

TEST(EditDistance, AgreesWithTheFullTable) {
    QRandomGenerator random(3);
    for (int round = 0; round < 20'000; ++round) {
        const std::u32string from = randomWord(random, u"abå"_s, 0, 7).toStdU32String();
        const std::u32string to = randomWord(random, u"abå"_s, 0, 7).toStdU32String();
        for (int limit = 0; limit <= kLargestEditDistance; ++limit)
            ASSERT_EQ(editDistance(from, to, limit), std::min(plainDistance(from, to), limit + 1));
    }
}

/// Every candidate in list order, as the rule is written.
std::optional<QString> plainCorrection(const QString &word, const QStringList &candidates) {
    const qsizetype length = characterCount(word);
    const int limit = (length >= 5 ? 1 : 0) + (length >= 8 ? 1 : 0);
    std::optional<QString> best;
    int bestDistance = limit + 1;
    for (const QString &candidate : candidates) {
        if (std::abs(characterCount(candidate) - length) >= 3)
            continue;
        const int distance = plainDistance(composed(lowerCased(word)).toStdU32String(),
                                           composed(lowerCased(candidate)).toStdU32String());
        if (distance >= 1 && distance < bestDistance) {
            best = candidate;
            bestDistance = distance;
        }
    }
    return best;
}

TEST(Vocabulary, FindsTheWinnerOfThePlainScan) {
    QRandomGenerator random(5);
    const QString letters = u"aaaAbBåéß"_s;
    int found = 0;
    for (int round = 0; round < 300; ++round) {
        QStringList candidates;
        for (int count = random.bounded(40); count > 0; --count)
            candidates.append(randomWord(random, letters, 4, 10));
        const Vocabulary vocabulary(candidates);
        for (int word = 0; word < 40; ++word) {
            const QString said = randomWord(random, letters, 4, 10);
            const auto correction = vocabulary.correctionOf(said);
            const auto expected = plainCorrection(said, candidates);
            ASSERT_EQ(correction ? std::optional(correction->word) : std::nullopt, expected)
                << qPrintable(said);
            found += expected ? 1 : 0;
        }
    }
    EXPECT_GT(found, 300); // the comparison had something to compare
}

} // namespace velmo
