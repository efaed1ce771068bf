#pragma once

#include "support/person.h"

#include <QQmlEngine>
#include <QQuickView>

namespace velmo::testing {

/// A page of the main window in a window of its own.
class PageWindow {
public:
    PageWindow(const QString &page, const QString &property, QObject *model) : m_view(&m_engine, nullptr) {
        m_view.setResizeMode(QQuickView::SizeRootObjectToView);
        m_view.resize(720, 1140);
        m_view.setInitialProperties({{property, QVariant::fromValue(model)}});
        m_view.setSource(QUrl(QStringLiteral("qrc:/qt-project.org/imports/Velmo/Window/%1.qml").arg(page)));
    }

    [[nodiscard]] QQuickView &window() { return m_view; }

private:
    QQmlEngine m_engine;
    QQuickView m_view;
};

} // namespace velmo::testing
