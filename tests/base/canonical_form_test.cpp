#include "base/canonical_form.h"

#include <QList>
#include <QRandomGenerator>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

// The other side is Qt's own normalisation: quadratic in long runs of marks, and fine for short texts.
TEST(Composition, AgreesWithPlainNormalisation) {
    QRandomGenerator random(1);
    const QString alphabet = u"ae\u00e5\u1ebf\u0301\u0316\u0323\u030a\u0344\u0f73\u0f71\u0f72"
                             "\u1100\u1161\u11a8\U0001d15e\u212b\u0345"_s;
    const QList<uint> letters = alphabet.toUcs4();
    for (int round = 0; round < 2000; ++round) {
        QString text;
        for (int length = random.bounded(12); length > 0; --length)
            text += QChar::fromUcs4(letters[random.bounded(letters.size())]);
        ASSERT_EQ(composed(text), text.normalized(QString::NormalizationForm_C))
            << text.toUtf8().toHex().constData();
    }
}

} // namespace velmo
