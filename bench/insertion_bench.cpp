// From insert() to the moment at which the focused application has the text, in real editors on a private display, and
// from the end of speech by the program that people run, beside the time in which a tool types the same text key by key.

#include "base/qt_main_queue.h"
#include "dictation/insertion/insertion_fakes.h"
#include "dictation/insertion/text_inserter.h"
#include "flow/running_velmo.h"
#include "platform/linux/x11/x11_insertion.h"
#include "support/real_editor.h"
#include "support/scripted_server.h"

#include <QCoreApplication>
#include <algorithm>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

using namespace velmo;
using testing::waitUntil;
using Moment = std::chrono::steady_clock::time_point;

constexpr qsizetype kCharacters = 500;

/// Passes everything on to a clipboard and notes when a text was read.
class WatchedClipboard final : public Clipboard {
public:
    explicit WatchedClipboard(Clipboard &clipboard) : m_clipboard(clipboard) {}

    std::optional<Moment> textRead;
    bool restored = false;

    void save(std::function<void(Saved)> done) override { m_clipboard.save(std::move(done)); }
    void setText(ChangeCount expected, const QString &text, TextEvents events, Changed done) override {
        const auto noted = [this, read = events.read](DisplayClient client) {
            textRead = std::chrono::steady_clock::now();
            read(client);
        };
        m_clipboard.setText(expected, text, {noted, events.lost}, std::move(done));
    }
    void setItems(ChangeCount expected, std::vector<ClipboardItem> items, Changed done) override {
        m_clipboard.setItems(expected, std::move(items), [this, done = std::move(done)](auto count) {
            restored = true;
            done(count);
        });
    }
    void handOver(std::function<void()> done) override { m_clipboard.handOver(std::move(done)); }

private:
    Clipboard &m_clipboard;
};

QString sentence() {
    return u"Vi møtes klokka ti på fredag, og da går vi gjennom planen én gang til. "_s.repeated(10).left(
        kCharacters);
}

/// A desktop with one editor, which has the focus.
struct Desktop {
    explicit Desktop(const char *program) {
        server.startWindowManager();
        editor = std::make_unique<testing::RealEditor>(server, QString::fromLatin1(program));
    }

    /// Returns once another program would paste the text.
    std::unique_ptr<testing::DisplayProgram> copy(const QByteArray &text) {
        const QStringList clipboard = {u"-selection"_s, u"clipboard"_s};
        auto owner = server.start(u"xclip"_s, clipboard + QStringList{u"-quiet"_s});
        owner->write(text);
        const QStringList paste = clipboard + QStringList{u"-out"_s};
        static_cast<void>(
            waitUntil([&] { return server.start(u"xclip"_s, paste)->outputUntilEnd() == text; }));
        return owner;
    }

    testing::Xvfb server;
    std::unique_ptr<testing::RealEditor> editor;
};

/// Like waitUntil, without a pause that would be measured.
bool spinUntil(const std::function<bool()> &condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition() && std::chrono::steady_clock::now() < end)
        QCoreApplication::processEvents();
    return condition();
}

void report(benchmark::State &state, std::vector<double> milliseconds) {
    std::sort(milliseconds.begin(), milliseconds.end());
    state.counters["median_ms"] = milliseconds[milliseconds.size() / 2];
    state.counters["p95_ms"] = milliseconds[milliseconds.size() * 95 / 100];
    state.counters["worst_ms"] = milliseconds.back();
}

/// The old contents are a text that another program offers; saving them is part of the time.
void inserted(benchmark::State &state, const char *editor) {
    Desktop desktop(editor);
    const auto owner = desktop.copy("kept");
    QtMainQueue queue;
    auto x11 = X11Insertion::open(queue, {desktop.server.display()});
    if (!x11)
        return state.SkipWithError("no display");
    WatchedClipboard clipboard((*x11)->clipboard());
    const testing::FakeSessionLock lock;
    TextInserter inserter(
        {queue, clipboard, (*x11)->primarySelection(), (*x11)->keyInjector(), (*x11)->focusedWindow(), lock});
    std::vector<double> milliseconds;
    for (auto _ : state) {
        clipboard.textRead.reset();
        clipboard.restored = false;
        const auto start = std::chrono::steady_clock::now();
        inserter.insert(sentence());
        if (!spinUntil([&clipboard] { return clipboard.textRead.has_value(); }))
            return state.SkipWithError("the editor does not read the text");
        const std::chrono::duration<double> taken = *clipboard.textRead - start;
        state.SetIterationTime(taken.count());
        milliseconds.push_back(taken.count() * 1000);
        static_cast<void>(waitUntil([&clipboard] { return clipboard.restored; }));
    }
    report(state, milliseconds);
}

void letPass(std::chrono::milliseconds time) {
    const auto start = std::chrono::steady_clock::now();
    static_cast<void>(waitUntil([=] { return std::chrono::steady_clock::now() - start >= time; }));
}

QByteArray lineOf(QProcess &process) {
    static_cast<void>(spinUntil([&process] { return process.canReadLine(); }));
    return process.readLine();
}

/// From the release of the trigger key to the moment at which the focused program has told its text; the service answers
/// at once.
void dictated(benchmark::State &state) {
    testing::Desk desk;
    testing::ScriptedServer service;
    service.answer("/api/transcribe", 200, "{\"text\":\"" + sentence().toUtf8() + "\"}");
    const QTemporaryDir temporary;
    testing::RunningVelmo velmo(desk, service.origin(), temporary.path());
    const auto target = desk.startWindow(u"target"_s, QStringLiteral(VELMO_PUPPET), {u"target"_s});
    std::vector<double> milliseconds;
    for (auto _ : state) {
        desk.hands.press(testing::key::rightControl);
        if (!velmo.says("[Flow] Recording started"))
            return state.SkipWithError("no recording starts");
        letPass(std::chrono::milliseconds(500));
        const auto start = std::chrono::steady_clock::now();
        desk.hands.release(testing::key::rightControl);
        lineOf(target->process()); // the shortcut
        target->process().write("read\n");
        if (lineOf(target->process()).size() < kCharacters)
            return state.SkipWithError("the text does not come");
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(taken.count());
        milliseconds.push_back(taken.count() * 1000);
        letPass(std::chrono::milliseconds(500)); // what was on the clipboard is back
    }
    report(state, milliseconds);
}

void typedByXdotool(benchmark::State &state, const QStringList &options) {
    Desktop desktop("featherpad");
    std::vector<double> milliseconds;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        desktop.server.start(u"xdotool"_s, QStringList{u"type"_s} + options + QStringList{sentence()})
            ->outputUntilEnd();
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
        state.SetIterationTime(taken.count());
        milliseconds.push_back(taken.count() * 1000);
    }
    report(state, milliseconds);
}

} // namespace

BENCHMARK_CAPTURE(inserted, featherpad, "featherpad")
    ->UseManualTime()
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(inserted, mousepad, "mousepad")
    ->UseManualTime()
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(dictated)->UseManualTime()->Iterations(50)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(typedByXdotool, without_delay, {u"--delay"_s, u"0"_s})
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(typedByXdotool, as_it_comes, {})
    ->UseManualTime()
    ->Iterations(2)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
