#include "base/collation.h"

#include <QStringList>
#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

TEST(Collation, OrdersByTheAlphabetOfTheLocale) {
    const std::pair<const char *, QStringList> rows[] = {
        {"nb_NO", {u"adr"_s, u"Zebra"_s, u"ærlig"_s, u"Øre"_s, u"ål"_s}},
        {"sv_SE", {u"adr"_s, u"Zebra"_s, u"ål"_s, u"ärlig"_s, u"Öre"_s}},
        {"en_GB", {u"adr"_s, u"Ål"_s, u"öre"_s, u"zebra"_s}},
    };
    for (const auto &[locale, expected] : rows) {
        const Collation collation(QString::fromLatin1(locale));
        QStringList words(expected.rbegin(), expected.rend());
        std::stable_sort(words.begin(), words.end(), [&](const QString &left, const QString &right) {
            return collation.precedes(left, right);
        });
        EXPECT_EQ(words, expected) << locale;
    }
}

TEST(Collation, TakesCaseForNothingAndAccentsForLetters) {
    const Collation collation(u"fi_FI"_s);
    EXPECT_FALSE(collation.precedes(u"MVH", u"mvh"));
    EXPECT_FALSE(collation.precedes(u"mvh", u"MVH"));
    EXPECT_TRUE(collation.precedes(u"cafe", u"café"));
    EXPECT_FALSE(collation.precedes(u"e\u0301", u"\u00e9"));
}

TEST(Collation, FindsPartsOfTexts) {
    const std::tuple<const char *, QString, QString, bool> rows[] = {
        {"other case", u"OSL"_s, u"Oslo"_s, true},
        {"within", u"åles"_s, u"Fra Ålesund"_s, true},
        {"an accent counts", u"al"_s, u"Ålesund"_s, false},
        {"a mark of its own", u"e"_s, u"e\u0301"_s, false},
        {"written in two ways", u"é"_s, u"cafe\u0301"_s, true},
        {"blanks as they stand", u" b"_s, u"ab"_s, false},
        {"emoji", u"👍"_s, u"bra 👍"_s, true},
        {"empty wanted", QString(), u"Oslo"_s, true},
        {"empty text", u"o"_s, QString(), false},
        {"both empty", QString(), QString(), true},
        {"a line break", u"a\nb"_s, u"xA\nBy"_s, true},
    };
    const Collation collation(u"nb_NO"_s);
    for (const auto &[name, wanted, text, expected] : rows)
        EXPECT_EQ(CollationSearch(collation, wanted).isPartOf(text), expected) << name;

    CollationSearch search(collation, u"bø"_s);
    EXPECT_TRUE(search.isPartOf(u"Bodø bøker"_s));
    EXPECT_FALSE(search.isPartOf(u"Bodø"_s));
    EXPECT_TRUE(search.isPartOf(u"BØ"_s));
}

} // namespace velmo
