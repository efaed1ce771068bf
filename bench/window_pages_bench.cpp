#include "base/qt_main_queue.h"
#include "desks/account_page_desk.h"
#include "desks/many_texts.h"
#include "desks/mode_desk.h"
#include "desks/setup_desk.h"
#include "desks/window_desk.h"
#include "ui/controls/interface_setup.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <benchmark/benchmark.h>

// How long it takes from the choice of a page to its picture, and a frame of its scrolling, over 100 long dictations,
// 2,000 words and 500 snippets.
// No display: what a graphics server adds is left out.

namespace velmo {

namespace {

using Page = MainWindowView::SidebarPage;

/// The pages beside the texts, somebody signed in, with a few modes of their own.
class OtherModels {
public:
    OtherModels() {
        m_mode.addCustomModes();
        m_account.signIn();
        m_account.view.syncNow();
        m_account.settle();
    }

    [[nodiscard]] testing::OtherPages pages() { return {&m_mode.view, &m_account.view, &m_settings.view}; }

private:
    testing::ModeDesk m_mode;
    testing::AccountPageDesk m_account;
    testing::SettingsDesk m_settings;
};

/// The main window over more texts than most people have.
struct FullWindow : testing::WindowDesk<QtMainQueue> {
    FullWindow(QQmlEngine &engine, const testing::OtherPages &pages)
        : WindowDesk(
              engine,
              [](MemoryPreferences &preferences) {
                  testing::storeManyTexts(preferences, std::chrono::system_clock::now());
              },
              pages) {}

    QQuickWindow &show() {
        controller.show();
        controller.window()->resize(900, 600);
        return *controller.window();
    }
};

void paint(QQuickWindow &window) {
    QEventLoop untilPainted;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &untilPainted, &QEventLoop::quit);
    window.requestUpdate();
    untilPainted.exec();
}

void showPainted(FullWindow &set, QQuickWindow &window, int page) {
    set.view.selectPage(page);
    paint(window);
}

/// What scrolls on the page that is shown.
QQuickItem *flickableIn(QQuickItem *item) {
    if (!item->isVisible() || item->inherits("QQuickFlickable"))
        return item->isVisible() ? item : nullptr;
    for (QQuickItem *child : item->childItems()) {
        if (QQuickItem *found = flickableIn(child))
            return found;
    }
    return nullptr;
}

/// A page that has not been open yet.
void firstTime(benchmark::State &state) {
    OtherModels models;
    QQmlEngine engine;
    for (auto _ : state) {
        state.PauseTiming();
        FullWindow set(engine, models.pages());
        set.view.selectPage(Page::Notes);
        QQuickWindow &window = set.show();
        showPainted(set, window, Page::Notes);
        state.ResumeTiming();
        showPainted(set, window, static_cast<int>(state.range(0)));
    }
}

/// A page that has been open before.
void again(benchmark::State &state) {
    OtherModels models;
    QQmlEngine engine;
    FullWindow set(engine, models.pages());
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

/// One frame of a fast scroll, from the top to the end and again.
void scrolled(benchmark::State &state) {
    constexpr qreal kStep = 90;
    OtherModels models;
    QQmlEngine engine;
    FullWindow set(engine, models.pages());
    QQuickWindow &window = set.show();
    showPainted(set, window, static_cast<int>(state.range(0)));
    QQuickItem &flickable = *flickableIn(window.contentItem());
    qreal y = 0;
    for (auto _ : state) {
        y = y + window.height() < flickable.property("contentHeight").toReal() ? y + kStep : 0;
        flickable.setProperty("contentY", y);
        paint(window);
    }
}

/// Notes, which holds nothing, is where each switch begins.
void everyPage(benchmark::internal::Benchmark *benchmark) {
    for (const int page :
         {Page::Home, Page::Dictionary, Page::Snippets, Page::Mode, Page::Account, Page::Settings})
        benchmark->Arg(page);
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

BENCHMARK(firstTime)->Apply(everyPage);
BENCHMARK(again)->Apply(everyPage);
BENCHMARK(scrolled)->DenseRange(Page::Home, Page::Snippets)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace velmo

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    velmo::prepareInterface();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
