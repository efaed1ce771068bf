#include "base/log.h"

#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace velmo {

TEST(Log, WritesOneLineForOneEvent) {
    const testing::LogCapture log;
    velmo::log(LogTag::Flow, QStringLiteral("Recording started"));
    velmo::log(LogTag::Tx, QStringLiteral("a\nb\u2028c\x1b[31m\t%1").arg(QChar(u'\0')));

    EXPECT_EQ(log.lines(), (QStringList{QStringLiteral("🎙️ [Flow] Recording started"),
                                        QStringLiteral("🎙️ [Tx] a\\nb\\u2028c\\u001b[31m\\t\\u0000")}));
}

TEST(Log, FormatsNumbersWithAPoint) {
    EXPECT_EQ(fixed(0.29, 1), QStringLiteral("0.3"));
    EXPECT_EQ(fixed(1834.4, 0), QStringLiteral("1834"));
}

} // namespace velmo
