#include "screenshots/window_set.h"
#include "ui/controls/interface_setup.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>
#include <benchmark/benchmark.h>

// How long it takes from the choice of a page to its picture, over 100 long dictations, 2,000 words and 500 snippets.
// No display: what a graphics server adds is left out.

namespace velmo {

namespace {

using Page = MainWindowView::SidebarPage;

void showPainted(screenshots::WindowSet &set, QQuickWindow &window, int page) {
    QEventLoop untilPainted;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &untilPainted, &QEventLoop::quit);
    set.view().selectPage(page);
    window.requestUpdate();
    untilPainted.exec();
}

/// A page that has not been open yet.
void firstTime(benchmark::State &state) {
    QQmlEngine engine;
    for (auto _ : state) {
        state.PauseTiming();
        screenshots::WindowSet set(engine, screenshots::WindowSet::Contents::Overfull);
        set.view().selectPage(Page::Notes);
        QQuickWindow &window = set.show();
        showPainted(set, window, Page::Notes);
        state.ResumeTiming();
        showPainted(set, window, static_cast<int>(state.range(0)));
    }
}

/// A page that has been open before.
void again(benchmark::State &state) {
    QQmlEngine engine;
    screenshots::WindowSet set(engine, screenshots::WindowSet::Contents::Overfull);
    QQuickWindow &window = set.show();
    const int page = static_cast<int>(state.range(0));
    showPainted(set, window, page);
    for (auto _ : state) {
        state.PauseTiming();
        showPainted(set, window, Page::Notes);
        state.ResumeTiming();
        showPainted(set, window, page);
    }
}

} // namespace

BENCHMARK(firstTime)->DenseRange(Page::Home, Page::Snippets)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(again)->DenseRange(Page::Home, Page::Snippets)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace velmo

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    velmo::prepareInterface();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
