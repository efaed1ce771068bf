#include "platform/floating_windows.h"
#include "platform/global_mouse_monitor.h"
#include "stage.h"
#include "ui/floating/floating_view.h"
#include "ui/models/floating_bar.h"
#include "ui/models/menu_bar_view.h"
#include "ui/overlay/recording_overlay_controller.h"
#include "ui/popover/popover_window.h"
#include "ui/shown_dictation.h"

#include <QCoreApplication>
#include <QMouseEvent>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo::screenshots {

namespace {

using testing::DictationStage;
using testing::ShownDictation;

/// A desktop that leaves floating windows alone.
struct StillDesktop final : FloatingWindows, GlobalMouseMonitor {
    explicit StillDesktop(bool hasCompositor) : composited(hasCompositor) {}

    bool composited;
    [[nodiscard]] bool isComposited() const override { return composited; }
    [[nodiscard]] std::unique_ptr<Handle> watch(Events) override { return nullptr; }
    [[nodiscard]] QRect freeOf(QRect screen) const override { return screen; }
    void setInputRegion(quint64, const QList<QRect> &) override {}
    [[nodiscard]] std::unique_ptr<KeyboardLoan> borrowKeyboard(quint64) override { return nullptr; }
    [[nodiscard]] std::unique_ptr<Watch> watch(Clicked) override { return nullptr; }
};

using Play = std::function<void(DictationStage &)>;

void putPointer(QQuickWindow &window, QPoint at) {
    QMouseEvent move(QEvent::MouseMove, at, window.mapToGlobal(at), Qt::NoButton, {}, {});
    QCoreApplication::sendEvent(&window, &move);
}

void listen(DictationStage &dictation) {
    dictation.manager.startRecording();
    dictation.queue.runPosted();
    for (const double level : {0.2, 0.5, 0.4, 0.7, 0.9, 0.6, 0.8, 0.5, 0.7, 0.3}) {
        dictation.levelMeter.receiveLevel(level);
        dictation.queue.advance(50ms);
    }
}

void hearWords(DictationStage &dictation) {
    listen(dictation);
    dictation.transcriber.heard(
        u"Møtet begynner klokka ti i morgen, og vi tar saken om nytt tak først. Husk å sende innkallingen"_s);
    dictation.queue.runPosted();
}

void transcribe(DictationStage &dictation) {
    listen(dictation);
    dictation.manager.stopRecording();
    dictation.queue.runPosted();
}

void fail(DictationStage &dictation) {
    dictation.microphone.answer = MicrophonePermission::Status::Denied;
    dictation.manager.startRecording();
    dictation.queue.runPosted();
}

void remember(DictationStage &dictation) {
    const std::pair<QString, std::chrono::minutes> texts[] = {
        {u"Takk for sist! Skal vi ta en kaffe på fredag?"_s, 20min},
        {u"Remember to book the ferry to Bodø before Friday."_s, 60min},
        {u"Tack för snabbt svar! Vi hörs imorgon."_s, 42min},
        {u"Let’s move the design review to Thursday at ten, same room as last time. I’ll bring the new drawings."_s,
         16min},
        {u"Kan du sende meg referatet fra møtet i går?"_s, 2min},
    };
    for (const auto &[text, then] : texts) {
        dictation.history.add(text, std::nullopt);
        dictation.queue.advance(then);
    }
}

// The overlay

struct Ground {
    QString name;
    QColor color;
};

Scene overlay(const QString &state, const Ground &ground, const Play &play, bool isHovered = false,
              bool hasCompositor = true) {
    const QString name = u"overlay-"_s + state + u'-' + ground.name;
    return {name, [=](Stage &stage) {
                StillDesktop desktop(hasCompositor);
                testing::ManualMainQueue queue;
                RecordingOverlayController controller({stage.engine(), queue, desktop, desktop});
                ShownDictation dictation(&controller);
                controller.show(std::make_unique<FloatingBar>(
                    FloatingBar::Collaborators{dictation.queue, dictation.triggerKeyName, dictation.manager,
                                               dictation.levelMeter, dictation.inserter}));
                FloatingView &panel = *controller.overlayPanel();
                panel.setColor(ground.color);
                play(dictation);
                if (isHovered)
                    putPointer(panel, QPoint(panel.width() / 2, panel.height() - 15));
                stage.photograph(panel, name);
            }};
}

// The popover

Scene popover(const QString &state, const Play &play) {
    const QString name = u"popover-"_s + state;
    return {name, [=](Stage &stage) {
                StillDesktop desktop(true);
                ShownDictation dictation;
                PopoverWindow popover({stage.engine(), dictation.queue, desktop, desktop}, [&dictation] {
                    return std::make_unique<MenuBarView>(
                        MenuBarView::Collaborators{dictation.queue, dictation.triggerKeyName,
                                                   dictation.manager, dictation.history, dictation.listener,
                                                   dictation.permission},
                        MenuBarView::Actions{}, Region{u"en_US"_s, u"UTC"_s});
                });
                play(dictation);
                popover.toggle(QRect(400, 0, 24, 24));
                popover.view()->setColor(QColor(0xC9, 0xD3, 0xDC));
                stage.photograph(*popover.view(), name);
            }};
}

} // namespace

QList<Scene> floatingScenes() {
    const Play rest = [](DictationStage &) {};
    QList<Scene> scenes;
    for (const Ground &ground :
         {Ground{u"light"_s, QColor(0xEE, 0xF2, 0xF6)}, Ground{u"dark"_s, QColor(0x1B, 0x1E, 0x24)}}) {
        scenes += {
            overlay(u"idle"_s, ground, rest),
            overlay(u"hover"_s, ground, rest, /*isHovered=*/true),
            overlay(u"recording"_s, ground, listen),
            overlay(u"words"_s, ground, hearWords),
            overlay(u"transcribing"_s, ground, transcribe),
            overlay(u"error"_s, ground, fail),
            overlay(u"opaque"_s, ground, listen, /*isHovered=*/false, /*hasCompositor=*/false),
        };
    }
    scenes += {
        popover(u"empty"_s, rest),
        popover(u"ready"_s, remember),
        popover(u"recording"_s, [](DictationStage &dictation) { remember(dictation), listen(dictation); }),
        popover(u"transcribing"_s,
                [](DictationStage &dictation) { remember(dictation), transcribe(dictation); }),
        popover(u"error"_s, [](DictationStage &dictation) { remember(dictation), fail(dictation); }),
        popover(u"setup"_s,
                [](DictationStage &dictation) {
                    remember(dictation);
                    dictation.listener.stopListening();
                    dictation.permission.trusted = false;
                }),
    };
    return scenes;
}

} // namespace velmo::screenshots
