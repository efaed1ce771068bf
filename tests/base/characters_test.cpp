#include "base/characters.h"

#include <gtest/gtest.h>

namespace velmo {

TEST(Characters, CountsAndCutsWhatPeopleSee) {
    const QString text = QStringLiteral("e\u0301👨‍👩‍👧🇳🇴x\r\n");
    EXPECT_EQ(characterCount(text), 5);
    EXPECT_EQ(firstCharacters(text, 2), QStringLiteral("e\u0301👨‍👩‍👧"));
    EXPECT_EQ(firstCharacters(text, 99), text);
    EXPECT_EQ(characterCount(QString()), 0);
}

TEST(Characters, ComeApartAsPeopleSeeThem) {
    for (const QString &text : {QStringLiteral("aå\u00ad"), QStringLiteral("e\u0301👨‍👩‍👧x"),
                                QStringLiteral("a\r\nb")}) {
        const auto pieces = characters(text);
        EXPECT_EQ(pieces.size(), 3U);
        QString joined;
        for (const QStringView piece : pieces)
            joined += piece;
        EXPECT_EQ(joined, text);
    }
}

TEST(Characters, TrimsWhatCountsAsWhiteSpaceAndNothingElse) {
    EXPECT_EQ(trimmed(QStringLiteral("\u2029\u00a0\t hei \u0085\v")), QStringLiteral("hei"));
    EXPECT_EQ(trimmed(QStringLiteral("\u200bhei\u200b")), QStringLiteral("\u200bhei\u200b"));
    EXPECT_EQ(trimmedOfBlanks(QStringLiteral("\u3000\t hei\n ")), QStringLiteral("hei\n"));
}

TEST(Characters, OrdersByCodePointsOfTheComposedForm) {
    EXPECT_TRUE(precedes(QStringLiteral("Zebra"), QStringLiteral("apple")));
    EXPECT_TRUE(
        precedes(QStringLiteral("\uff5e"), QStringLiteral("😀"))); // by UTF-16 units the emoji would be first
    EXPECT_FALSE(precedes(QStringLiteral("e\u0301"), QStringLiteral("\u00e9")));
    EXPECT_FALSE(precedes(QStringLiteral("\u00e9"), QStringLiteral("e\u0301")));
}

} // namespace velmo
