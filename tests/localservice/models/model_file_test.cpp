#include "localservice/models/model_file.h"

#include "localservice/models/small_model.h"

#include <QBuffer>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using testing::SmallModel;

QString faultOf(QByteArray bytes) {
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    const auto checked = checkModel(file);
    return checked ? QString() : checked.error();
}

template <class Change>
QString faultAfter(Change change) {
    SmallModel model;
    change(model);
    return faultOf(model.bytes());
}

} // namespace

TEST(ModelFile, TakesAWholeModelAndNothingElse) {
    EXPECT_EQ(faultOf(SmallModel().bytes()), QString());

    using M = SmallModel;
    EXPECT_TRUE(faultOf({}).contains(u"no speech model"));
    EXPECT_TRUE(faultAfter([](M &m) { m.mark = 0x46554747; }).contains(u"no speech model"));
    for (const auto &spoil : std::initializer_list<void (*)(M &)>{
             [](M &m) { m.sizes.vocabulary = 1 << 30; }, [](M &m) { m.sizes.audioContext = -1; },
             [](M &m) { m.sizes.audioWidth = 385; }, [](M &m) { m.sizes.audioHeads = 100'665'344; },
             [](M &m) { m.sizes.textLayers = 1'000'000; }, [](M &m) { m.sizes.textWidth = 512; },
             [](M &m) { m.sizes.bands = 81; }, [](M &m) { m.sizes.form = 5; },
             [](M &m) { m.sizes.form = -2000; }})
        EXPECT_TRUE(faultAfter(spoil).contains(u"sizes"));
    EXPECT_TRUE(faultAfter([](M &m) { m.filterRows = 0; }).contains(u"filters"));
    EXPECT_TRUE(faultAfter([](M &m) { m.tokens = 60000; }).contains(u"vocabulary"));
    EXPECT_TRUE(faultAfter([](M &m) { m.tokenLength = -1; }).contains(u"vocabulary"));
    EXPECT_TRUE(faultAfter([](M &m) { m.tokenLength = 0x7FFFFFFF; }).contains(u"vocabulary"));
    for (const auto &spoil : std::initializer_list<void (*)(M &)>{
             [](M &m) { m.spoiltType = 99; }, [](M &m) { m.spoiltType = 1; },
             [](M &m) { m.spoiltWidth = 383; }, [](M &m) { m.spoiltWidth = -1; },
             [](M &m) { m.spoiltName = "decoder.ln.bias"; },
             [](M &m) { m.spoiltName = QByteArray(1000, 'x'); }})
        EXPECT_TRUE(faultAfter(spoil).contains(u"damaged"));
    EXPECT_TRUE(faultAfter([](M &m) { m.end = "x"; }).contains(u"more in it"));
}

TEST(ModelFile, RefusesAModelCutOffAnywhere) {
    const QByteArray whole = SmallModel().bytes();
    qsizetype length = whole.size() - 1;
    for (; length > 3; length -= length / 9 + 1)
        EXPECT_FALSE(faultOf(whole.first(length)).isEmpty()) << length;
    EXPECT_TRUE(faultOf(whole.first(whole.size() - 1)).contains(u"cut off"));
}

} // namespace velmo::localservice
