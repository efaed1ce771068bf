#include "flow/desk_test.h"
#include "support/child_process.h"
#include "support/wave_file.h"

#include <algorithm>
#include <cmath>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace velmo {

namespace {

namespace key = testing::key;

/// How a person begins and ends a dictation.
struct Gesture {
    const char *name;
    const char *editor;
    void (*begin)(testing::DeskTest &test);
    void (*end)(testing::DeskTest &test);
    const char *saidAtStart;
    /// The person begins to speak with the key, not when Velmo knows that this was a gesture.
    bool speaksAtOnce;
};

void PrintTo(const Gesture &gesture, std::ostream *out) {
    *out << gesture.name;
}

void pressHotkey(testing::DeskTest &) {
    testing::DeskTest::desk->hands.chord({key::leftControl, key::leftShift, key::letterA});
}

void toggle(testing::DeskTest &test) {
    test.velmo->command(u"toggle"_s);
}

const Gesture kGestures[] = {
    {"HeldKey", "mousepad", [](auto &test) { test.desk->hands.press(key::rightControl); },
     [](auto &test) { test.desk->hands.release(key::rightControl); },
     "[Hotkey] Push-to-talk started (held Fn)", true},
    {"TwoTaps", "featherpad", [](auto &test) { test.desk->hands.tapTwice(key::rightControl, 250ms); },
     [](auto &test) { test.desk->hands.tap(key::rightControl); },
     "[Hotkey] Double-tap Fn → hands-free recording started", true},
    {"Hotkey", "mousepad", pressHotkey, pressHotkey, "[Flow] Recording started", false},
    {"Command", "featherpad", toggle, toggle, "[Flow] Recording started", false},
};

/// A recording of the sentence that begins with its first sound.
QString recordingOf(const QString &sentence, const QTemporaryDir &directory) {
    const auto samples = testing::readWave(testing::speechFile(directory, sentence)).samples;
    const auto firstSound =
        std::find_if(samples.begin(), samples.end(), [](float sample) { return std::abs(sample) > 0.02F; });
    const QString path = directory.filePath(u"sentence.wav"_s);
    testing::writeWave(path, std::vector<float>(firstSound, samples.end()));
    return path;
}

/// What Velmo is about to type, from the end of its log.
QString processedText(const QByteArray &log) {
    const QByteArray line = log.mid(log.lastIndexOf("[Flow] Processed text ("));
    const qsizetype begin = line.indexOf('"') + 1;
    return QString::fromUtf8(line.mid(begin, line.indexOf("\"\n") - begin));
}

/// Speech into a microphone, recognised by the local service's own engine.
class SpokenDictationTest : public testing::DeskTest, public ::testing::WithParamInterface<Gesture> {
protected:
    SpokenDictationTest() {
        testing::endWithParent(service);
        service.setStandardErrorFile(QProcess::nullDevice());
        service.start(QStringLiteral(VELMO_LOCAL_SERVICE),
                      {u"--port"_s, u"0"_s, u"--data-dir"_s, directory.path()});
        EXPECT_TRUE(testing::waitUntil([this] { return service.canReadLine(); }));
        startVelmo(QString::fromUtf8(service.readLine()).section(u' ', 4, 4));
    }
    ~SpokenDictationTest() override {
        service.kill();
        service.waitForFinished();
    }

    QTemporaryDir directory;
    QProcess service;
};

TEST_P(SpokenDictationTest, TypesWhatIsSaidFromTheFirstWordOn) {
    const Gesture &gesture = GetParam();
    desk->sound.load(recordingOf(u"the meeting will start at ten in the morning"_s, directory));
    testing::RealEditor editor(desk->display, QString::fromLatin1(gesture.editor));
    gesture.begin(*this);
    if (gesture.speaksAtOnce)
        desk->sound.play();
    EXPECT_TRUE(velmo->says(gesture.saidAtStart));
    if (!gesture.speaksAtOnce)
        desk->sound.play();
    gesture.end(*this);
    // On a busy machine sound gets lost and the engine mishears a word; what it understood has to arrive whole.
    EXPECT_TRUE(velmo->says("[Flow] Processed text ("));
    const QString text = processedText(velmo->log());
    EXPECT_TRUE(text.startsWith(u"The meeting will")) << text.toStdString();
    EXPECT_TRUE(text.endsWith(u"morning.")) << text.toStdString();
    expectText(editor, text);
}

INSTANTIATE_TEST_SUITE_P(Gestures, SpokenDictationTest, ::testing::ValuesIn(kGestures),
                         [](const auto &info) { return info.param.name; });

} // namespace

} // namespace velmo
