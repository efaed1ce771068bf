#include "base/qt_main_queue.h"
#include "dictation/capture/audio_recorder.h"
#include "dictation/capture/recording_writer.h"
#include "platform/linux/pulse/connection.h"
#include "platform/linux/pulse/microphone.h"
#include "platform/linux/sndfile/sndfile_recording_files.h"
#include "support/pulse_server.h"
#include "support/wait_until.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace {

using velmo::Capture;
using velmo::CaptureFormat;
using velmo::CaptureListener;
using velmo::Microphone;
using velmo::MicrophoneFailure;

/// Passes everything on and notes when the first frame was captured.
class Stopwatch final : public Microphone, CaptureListener {
public:
    explicit Stopwatch(Microphone &microphone) : m_microphone(microphone) {}

    [[nodiscard]] std::unique_ptr<Capture> open(CaptureListener &listener) override {
        m_listener = &listener;
        m_firstFrame = std::chrono::nanoseconds(0);
        return m_microphone.open(*this);
    }
    [[nodiscard]] std::chrono::nanoseconds firstFrame() const { return m_firstFrame; }

private:
    void opened(const CaptureFormat &format) override { m_listener->opened(format); }
    void captured(std::span<const float> samples, std::chrono::nanoseconds at) override {
        if (m_firstFrame.load() == 0ns)
            m_firstFrame = at;
        m_listener->captured(samples, at);
    }
    void ended(const MicrophoneFailure &failure) override { m_listener->ended(failure); }

    Microphone &m_microphone;
    CaptureListener *m_listener = nullptr;
    std::atomic<std::chrono::nanoseconds> m_firstFrame{};
};

/// A recorder at a sound server of its own, whose microphone is awake.
struct RealRecorder {
    velmo::testing::PulseServer server{velmo::testing::PulseServer::virtualMicrophone()};
    velmo::QtMainQueue queue;
    QTemporaryDir directory;
    std::unique_ptr<Microphone> microphone =
        velmo::makePulseMicrophone(std::make_shared<velmo::pulse::Connection>(), queue);
    Stopwatch stopwatch{*microphone};
    std::unique_ptr<velmo::RecordingFiles> files = velmo::makeSndfileRecordingFiles();
    velmo::AudioRecorder recorder{{queue, stopwatch, *files}, directory.path()};

    RealRecorder() { server.wakeMicrophone(); }
};

/// From the press of the trigger to the moment at which the first sample of the recording was captured; the
/// recording itself begins 0.3 s after the press, when the gesture is known.
void pressToFirstSample(benchmark::State &state) {
    static int argc = 0;
    static QCoreApplication application(argc, nullptr);
    static RealRecorder real;
    for (auto _ : state) {
        const auto press = real.queue.uptime();
        real.recorder.press(press);
        (void)velmo::testing::waitUntil([&] { return real.queue.uptime() - press >= 300ms; });
        const auto path = real.recorder.startRecording();
        if (!path || real.stopwatch.firstFrame() == 0ns) {
            state.SkipWithError("nothing was heard");
            return;
        }
        const std::chrono::duration<double> delay = real.stopwatch.firstFrame() - press;
        state.SetIterationTime(std::max(delay.count(), 0.0));
        (void)real.recorder.stopRecording();
        real.recorder.deleteRecording(*path);
    }
}

/// What the capture thread does with a block of 4096 frames: mix, convert, write, measure the level.
void blockToFile(benchmark::State &state) {
    const QTemporaryDir directory;
    const auto files = velmo::makeSndfileRecordingFiles();
    auto file = files->create(directory.filePath(u"recording.wav"_s));
    const CaptureFormat format{static_cast<int>(state.range(0)), 2};
    const auto writer = velmo::RecordingWriter::create(format, std::move(*file), [](float) {});
    const std::vector<float> block(4096UL * 2, 0.1F);
    for (auto _ : state)
        writer->append(block);
}

double largest(const std::vector<double> &values) {
    return *std::max_element(values.begin(), values.end());
}

} // namespace

BENCHMARK(pressToFirstSample)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(50)
    ->ReportAggregatesOnly()
    ->ComputeStatistics("max", largest)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(blockToFile)->Arg(48000)->Arg(44100)->Unit(benchmark::kMicrosecond);
