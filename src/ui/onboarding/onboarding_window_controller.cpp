#include "ui/onboarding/onboarding_window_controller.h"

#include "store/preference_keys.h"
#include "store/preferences.h"
#include "ui/models/onboarding_view.h"

#include <QQmlEngine>
#include <QQuickView>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr QSize kSize(520, 680);

} // namespace

OnboardingWindowController::OnboardingWindowController(QQmlEngine &engine, Preferences &preferences,
                                                       OnboardingView &view)
    : m_engine(engine), m_preferences(preferences), m_view(view) {
    connect(&m_view, &OnboardingView::completed, this, &OnboardingWindowController::complete);
    connect(&m_view, &OnboardingView::closed, this, &OnboardingWindowController::close);
}

OnboardingWindowController::~OnboardingWindowController() = default;

void OnboardingWindowController::show() {
    if (!m_window)
        createWindow();
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

QQuickWindow *OnboardingWindowController::window() const {
    return m_window.get();
}

void OnboardingWindowController::createWindow() {
    m_window = std::make_unique<QQuickView>(&m_engine, nullptr);
    QQuickView &window = *m_window;
    window.setTitle(tr("Velmo Setup"));
    window.setFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    const QRect desktop = window.screen()->availableGeometry();
    const QSize size = kSize.boundedTo(desktop.size());
    window.setMinimumSize(size);
    window.setMaximumSize(size);
    window.setGeometry(QRect(desktop.center() - QPoint(size.width() / 2, size.height() / 2), size));
    window.setResizeMode(QQuickView::SizeRootObjectToView);
    window.setInitialProperties({{u"onboarding"_s, QVariant::fromValue(&m_view)}});
    window.setSource(QUrl(u"qrc:/qt-project.org/imports/Velmo/Onboarding/Onboarding.qml"_s));
    connect(&window, &QWindow::visibleChanged, &m_view, [this](bool isVisible) {
        if (isVisible)
            m_view.start();
        else
            m_view.stop();
    });
}

void OnboardingWindowController::complete() {
    m_preferences.set(m_view.isKeyless() ? keys::keylessSetupComplete : keys::onboardingComplete, true);
}

/// The window may still be in a handler of its button.
void OnboardingWindowController::close() {
    if (!m_window)
        return;
    m_window->close();
    m_window.release()->deleteLater();
}

} // namespace velmo
