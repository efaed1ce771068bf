#include "base/characters.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

TEST(Characters, CountsAndCutsWhatPeopleSee) {
    const QString text = u"e\u0301👨‍👩‍👧🇳🇴x\r\n"_s;
    EXPECT_EQ(characterCount(text), 5);
    EXPECT_EQ(firstCharacters(text, 2), u"e\u0301👨‍👩‍👧"_s);
    EXPECT_EQ(firstCharacters(text, 99), text);
    EXPECT_EQ(characterCount(QString()), 0);
}

TEST(Characters, ComeApartAsPeopleSeeThem) {
    for (const QString &text : {u"aå\u00ad"_s, u"e\u0301👨‍👩‍👧x"_s, u"a\r\nb"_s}) {
        const auto pieces = characters(text);
        EXPECT_EQ(pieces.size(), 3U);
        QString joined;
        for (const QStringView piece : pieces)
            joined += piece;
        EXPECT_EQ(joined, text);
    }
}

TEST(Characters, TrimsWhatCountsAsWhiteSpaceAndNothingElse) {
    EXPECT_EQ(trimmed(u"\u2029\u00a0\t hei \u0085\v"_s), u"hei"_s);
    EXPECT_EQ(trimmed(u"\u200bhei\u200b"_s), u"\u200bhei\u200b"_s);
    EXPECT_EQ(trimmedOfBlanks(u"\u3000\t hei\n "_s), u"hei\n"_s);
}

TEST(Characters, OrdersByCodePointsOfTheComposedForm) {
    // By UTF-16 units the emoji would be before the last, and as it is written "é" would be before "f".
    const QStringList ascending = {u"Zebra"_s,  u"apple"_s,  u"f"_s, u"e\u0301"_s,
                                   u"\u00e9"_s, u"\uff5e"_s, u"😀"_s};
    EXPECT_EQ(inOrder(QStringList(ascending.rbegin(), ascending.rend())), ascending);
}

} // namespace velmo
