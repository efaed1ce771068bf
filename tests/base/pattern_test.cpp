#include "base/pattern.h"

#include "support/qt_printing.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace velmo {

using namespace Qt::StringLiterals;

TEST(Pattern, ReplacesAsIcuDefines) {
    const struct {
        const char *name;
        QString expression;
        Pattern::Options options;
        QString text;
        QString replacement;
        QString result;
    } rows[] = {
        {"every_match", u"a+"_s, {}, u"aab ba"_s, u"-"_s, u"-b b-"_s},
        {"first_group", u"(b)(c)?"_s, {}, u"abbc"_s, u"<$1$2>"_s, u"a<b><bc>"_s},
        {"matches_do_not_overlap", u"aa"_s, {}, u"aaa"_s, u"b"_s, u"ba"_s},
        {"empty_matches", u"x*"_s, {}, u"ab"_s, u"-"_s, u"-a-b-"_s},
        {"any_unicode_white_space", u"\\s"_s, {}, u"a\u00a0\u2028\u3000b\u200b"_s, u"."_s, u"a...b\u200b"_s},
        {"marks_belong_to_words", u"\\w+"_s, {}, u"a\u030a-b"_s, u"w"_s, u"w-w"_s},
        {"no_border_before_a_mark", u"\\ba\\b"_s, {}, u"a a\u030a"_s, u"x"_s, u"x a\u030a"_s},
        {"full_case_folding", u"straße"_s, Pattern::CaseInsensitive, u"STRASSE Straße"_s, u"x"_s, u"x x"_s},
        {"case_counts_by_default", u"a"_s, {}, u"aA"_s, u"x"_s, u"xA"_s},
        {"code_points_not_letters", u"å"_s, {}, u"å a\u030a"_s, u"x"_s, u"x a\u030a"_s},
        {"lines_only_when_asked", u"^a"_s, {}, u"a\na"_s, u"x"_s, u"x\na"_s},
        {"lines", u"^a"_s, Pattern::Multiline, u"a\na\u2028a"_s, u"x"_s, u"x\nx\u2028x"_s},
        {"outside_the_plane", u"."_s, {}, u"😀\xd800"_s, u"x"_s, u"xx"_s},
        {"a_broken_pattern_changes_nothing", u"(a"_s, {}, u"(a"_s, u"x"_s, u"(a"_s},
        {"signs_can_be_escaped",
         Pattern::escaped(u"a.b\\E$({["),
         {},
         u"axb a.b\\E$({["_s,
         u"x"_s,
         u"axb x"_s},
    };
    for (const auto &row : rows)
        EXPECT_EQ(Pattern(row.expression, row.options).replaced(row.text, row.replacement), row.result)
            << row.name;
}

TEST(Pattern, LeavesATextAloneThatIcuGivesUpOn) {
    const Pattern greedyForStack(u"^(?:a|b)*c|b"_s);
    const QString text = QString(10'000'000, u'a') + u"b"_s;
    EXPECT_EQ(greedyForStack.replaced(text, u"x"), text);
    EXPECT_FALSE(greedyForStack.occursIn(text));
    EXPECT_TRUE(greedyForStack.occursIn(u"ab"));
}

TEST(Pattern, HandsEachMatchToItsReplacement) {
    const Pattern word(u"(\\w)(\\d)?"_s);
    const QString result = word.replaced(u"a1 b"_s, [](const Pattern::Match &match) {
        return QStringList{match.group(0).toString(), match.group(1).toString(), match.group(2).toString()}
            .join(u'/');
    });
    EXPECT_EQ(result, u"a1/a/1 b/b/"_s);
}

} // namespace velmo
