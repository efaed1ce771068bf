#include "base/case_mapping.h"

#include "support/qt_printing.h"

#include <gtest/gtest.h>

namespace velmo {

using namespace Qt::StringLiterals;

TEST(CaseMapping, MapsWholeTextsInFull) {
    EXPECT_EQ(upperCased(u"ßå\xd800ŉ"), u"SSÅ\xd800ʼN"_s);
    EXPECT_EQ(lowerCased(u"ΣΑΣ İI"), u"σας i\u0307i"_s); // a final sigma; "I" has its dot in every language
    EXPECT_EQ(caseFolded(u"ΣΑΣ ẞ"), u"σασ ss"_s);
}

TEST(CaseMapping, BeginsATextWithACapital) {
    const std::pair<QString, QString> cases[] = {{u"åse"_s, u"Åse"_s},  {u"a\u030ase"_s, u"A\u030ase"_s},
                                                 {u"ßen"_s, u"SSen"_s}, {u"ǆ"_s, u"Ǆ"_s},
                                                 {u"ǅ"_s, u"ǅ"_s},      {u"ªx"_s, u"ªx"_s},
                                                 {u"1 a"_s, u"1 a"_s},  {u" a"_s, u" a"_s},
                                                 {u"𐐨"_s, u"𐐀"_s},      {QString(), QString()}};
    for (const auto &[text, capitalised] : cases)
        EXPECT_EQ(withFirstCapital(text), capitalised);
}

} // namespace velmo
