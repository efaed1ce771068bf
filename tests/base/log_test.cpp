#include "base/log.h"

#include "support/log_capture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

TEST(Log, WritesOneLineForOneEvent) {
    const testing::LogCapture log;
    velmo::log(LogTag::Flow, u"Recording started"_s);
    velmo::log(LogTag::Tx, u"a\nb\u2028c\x1b[31m\t%1"_s.arg(QChar(u'\0')));

    EXPECT_EQ(log.lines(), (QStringList{u"🎙️ [Flow] Recording started"_s,
                                        u"🎙️ [Tx] a\\nb\\u2028c\\u001b[31m\\t\\u0000"_s}));
}

TEST(Log, FormatsNumbersWithAPoint) {
    EXPECT_EQ(fixed(0.29, 1), u"0.3"_s);
    EXPECT_EQ(fixed(1834.4, 0), u"1834"_s);
}

} // namespace velmo
