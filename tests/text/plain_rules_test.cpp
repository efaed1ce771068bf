#include "base/case_mapping.h"
#include "base/characters.h"
#include "base/pattern.h"
#include "support/qt_printing.h"
#include "text/passes/line_breaks.h"
#include "text/passes/norwegian_words.h"
#include "text/passes/passes.h"
#include "text/tables/emoji_names.h"
#include "text/tables/filler_words.h"
#include "text/tables/nynorsk_words.h"
#include "text/tables/spoken_punctuation.h"

#include <QRandomGenerator>
#include <QStringList>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

// The passes take short cuts: phrases that cannot occur are not looked for, all emoji names are one expression.
// Here the rules run as they are written, one after the other over the whole text, and both must agree on
// random speech.
namespace velmo {

using namespace Qt::StringLiterals;

/// Patterns and what their matches become, in order.
using PlainRules = std::vector<std::pair<Pattern, Pattern::Replacement>>;

void add(PlainRules &rules, const QString &expression, const QString &replacement) {
    rules.emplace_back(Pattern(expression, Pattern::CaseInsensitive),
                       [=](const Pattern::Match &) { return replacement; });
}

QString applied(const PlainRules &rules, QString text) {
    for (const auto &[pattern, replacement] : rules)
        text = pattern.replaced(text, replacement);
    return text;
}

const QStringList kLanguages = {u"en"_s, u"sv"_s, u"no"_s, u"nn"_s,
                                u"da"_s, u"fi"_s, u"is"_s}; // as in the tables

PlainRules plainSpokenPunctuation() {
    PlainRules rules;
    for (const LanguageRules &language : spokenToWrittenRules()) {
        for (const auto &[spoken, written] : language.rules) {
            const QString mark = isSpokenBreak(written.front()) ? u"[,.]?"_s : QString();
            add(rules, u"\\b%1\\b%2"_s.arg(spoken, mark), written.toString());
        }
    }
    return rules;
}

PlainRules plainFillers() {
    QStringList fillers;
    for (const QStringView word : universalHesitations())
        fillers.append(word.toString());
    for (const LanguageFillers &language : fillersByLang()) {
        for (const QStringView word : language.fillers)
            fillers.append(word.toString());
    }
    std::ranges::stable_sort(fillers, std::greater<>(), characterCount);
    PlainRules rules;
    for (const QString &filler : fillers)
        add(rules, u"(?<=^|\\s)%1[,.]?(?=\\s|$)"_s.arg(filler), u" "_s);
    return rules;
}

PlainRules plainEmoji() {
    PlainRules rules;
    for (const auto &[name, emoji] : emojiNames())
        add(rules, withinLine(u"\\bemoji\\s+%1\\b"_s.arg(name)), emoji.toString());
    return rules;
}

PlainRules plainNorwegianWords() {
    PlainRules rules;
    for (const auto &row : nynorskWords()) {
        rules.emplace_back(Pattern(u"\\b%1\\b"_s.arg(row.nynorsk), Pattern::CaseInsensitive),
                           [word = row.bokmal.toString()](const Pattern::Match &match) {
                               const bool isCapital = isUpperCase(firstCharacters(match.group(0), 1));
                               return isCapital ? withFirstCapital(word) : word;
                           });
    }
    rules.emplace_back(Pattern(u"(?:^|(?<=[.!?]\\s)|(?<=[,;]\\s))\\b([Nn])o\\b"_s, Pattern::Multiline),
                       [](const Pattern::Match &match) { return match.group(1).toString() + u"å"_s; });
    return rules;
}

/// Words of the tables and odd letters, put together with and without white space.
class RandomSpeech {
public:
    RandomSpeech() {
        for (const LanguageRules &language : spokenToWrittenRules()) {
            for (const SpokenRule &rule : language.rules)
                m_pieces.append(rule.spoken.toString());
        }
        for (const LanguageFillers &language : fillersByLang()) {
            for (const QStringView word : language.fillers)
                m_pieces.append(word.toString());
        }
        for (const auto &[nynorsk, bokmal] : nynorskWords())
            m_pieces.append(nynorsk.toString());
        for (const EmojiName &row : emojiNames())
            m_pieces.append(u"emoji "_s +
                            Pattern(u"\\(\\?:|\\)|\\\\s\\*|\\?|\\|.*"_s).replaced(row.name.toString(), u""));
        m_pieces +=
            {u"emoji"_s, u"no"_s,     u"No"_s,     u"K"_s,   u"ſ"_s,    u"ß"_s,     u"\u0301"_s, u"\u200d"_s,
             u"İ"_s,     u"\u2028"_s, u"\u2029"_s, u"ﬁre"_s, u"eyes"_s, u"heart"_s, u"up"_s};
    }

    QString next() {
        const QStringList gaps = {u" "_s,  u" "_s,  u" "_s,  u" "_s, u"  "_s,
                                  u"\n"_s, u", "_s, u". "_s, u"."_s, u""_s};
        QString text;
        for (int count = m_random.bounded(12); count > 0; --count) {
            const QString piece = m_pieces[m_random.bounded(m_pieces.size())];
            text += m_random.bounded(4) == 0 ? upperCased(piece) : piece;
            text += gaps[m_random.bounded(gaps.size())];
        }
        return text;
    }

private:
    QRandomGenerator m_random{17};
    QStringList m_pieces;
};

TEST(PlainRules, AgreeWithThePasses) {
    const CleanupContext context{kLanguages, std::nullopt, u"no"_s};
    const PlainRules punctuation = plainSpokenPunctuation();
    const PlainRules fillers = plainFillers();
    const PlainRules emoji = plainEmoji();
    const PlainRules norwegian = plainNorwegianWords();
    RandomSpeech speech;
    for (int round = 0; round < 1000; ++round) {
        const QString text = speech.next();
        ASSERT_EQ(writeSpokenPunctuation(text, context), applied(punctuation, text)) << qPrintable(text);
        ASSERT_EQ(removeFillers(text, context), applied(fillers, text)) << qPrintable(text);
        ASSERT_EQ(writeSpokenEmoji(text, context), applied(emoji, text)) << qPrintable(text);
        ASSERT_EQ(fixNorwegianWords(text, u"no"_s), applied(norwegian, text)) << qPrintable(text);
    }
}

} // namespace velmo
