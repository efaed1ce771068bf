#include "ui/window/main_window_controller.h"

#include "ui/models/account_view.h"
#include "ui/models/dictionary_view.h"
#include "ui/models/home_view.h"
#include "ui/models/main_window_view.h"
#include "ui/models/mode_view.h"
#include "ui/models/settings_view.h"
#include "ui/models/snippets_view.h"
#include "ui/models/speech_view.h"
#include "ui/models/undo_offer.h"

#include <QCloseEvent>
#include <QQuickView>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

// Product decisions, in logical pixels.
constexpr QSize kDefaultSize(900, 600);
constexpr QSize kSmallestSize(700, 500);

QRect centredOn(const QScreen &screen) {
    QRect frame({}, kDefaultSize.boundedTo(screen.availableSize()).expandedTo(kSmallestSize));
    frame.moveCenter(screen.availableGeometry().center());
    return frame;
}

} // namespace

/// Without a tray, the first closing tells how to come back; the window closes once that is read.
class MainWindowController::Window final : public QQuickView {
public:
    Window(QQmlEngine &engine, const Models &models, const std::function<bool()> &hasTrayHost)
        : QQuickView(&engine, nullptr), m_view(models.view), m_hasTrayHost(hasTrayHost) {
        setTitle(u"Velmo"_s);
        setResizeMode(SizeRootObjectToView);
        setMinimumSize(kSmallestSize);
        setGeometry(centredOn(*screen()));
        setInitialProperties({{u"view"_s, QVariant::fromValue(&models.view)},
                              {u"undoOffer"_s, QVariant::fromValue(&models.undoOffer)},
                              {u"home"_s, QVariant::fromValue(models.home)},
                              {u"dictionary"_s, QVariant::fromValue(models.dictionary)},
                              {u"snippets"_s, QVariant::fromValue(models.snippets)},
                              {u"mode"_s, QVariant::fromValue(models.mode)},
                              {u"account"_s, QVariant::fromValue(models.account)},
                              {u"settings"_s, QVariant::fromValue(models.settings)},
                              {u"speech"_s, QVariant::fromValue(models.speech)}});
        setSource(QUrl(u"qrc:/qt-project.org/imports/Velmo/Window/MainWindow.qml"_s));
        connect(&m_view, &MainWindowView::closingNoticeRead, this, &QWindow::close);
    }

protected:
    bool event(QEvent *event) override {
        if (event->type() == QEvent::Close && needsNotice()) {
            event->ignore();
            m_toldHowToComeBack = true;
            m_view.openClosingNotice();
            return true;
        }
        return QQuickView::event(event);
    }

private:
    [[nodiscard]] bool needsNotice() const { return !m_toldHowToComeBack && !m_hasTrayHost(); }

    MainWindowView &m_view;
    std::function<bool()> m_hasTrayHost;
    bool m_toldHowToComeBack = false;
};

MainWindowController::MainWindowController(QQmlEngine &engine, const Models &models,
                                           std::function<bool()> hasTrayHost)
    : m_engine(engine), m_models(models), m_hasTrayHost(std::move(hasTrayHost)) {}

MainWindowController::~MainWindowController() = default;

void MainWindowController::show() {
    if (!m_window)
        m_window = std::make_unique<Window>(m_engine, m_models, m_hasTrayHost);
    if (m_window->visibility() == QWindow::Minimized)
        m_window->showNormal();
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

QQuickWindow *MainWindowController::window() const {
    return m_window.get();
}

} // namespace velmo
