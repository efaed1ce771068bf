#include "ui/controls/interface_setup.h"

#include "ui/controls/motion.h"

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSGRendererInterface>

using namespace Qt::StringLiterals;

void qml_register_types_Velmo_Controls(); // NOLINT(readability-identifier-naming): Qt names it

namespace velmo {

namespace {

/// Light whatever the desktop's theme; what selected text looks like is all the templates take from a palette.
QPalette lightPalette() {
    const QColor ink(0x12, 0x12, 0x12);
    QPalette palette(QColor(0xED, 0xED, 0xF2));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, ink);
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(0x1A, 0x7A, 0x4A));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

} // namespace

void prepareInterface() {
    // Without a graphics card this takes a third of the memory and a tenth of the processor time of OpenGL.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickWindow::setDefaultAlphaBuffer(true);
    // Otherwise another typeface with black-and-white emoji comes first.
    QFont::insertSubstitutions(u"Inter"_s, {u"Noto Color Emoji"_s});
    QFont font(u"Inter"_s);
    font.setPixelSize(13);
    QGuiApplication::setFont(font);
    QGuiApplication::setPalette(lightPalette());
    qml_register_types_Velmo_Controls(); // Motion has to be known before the first import
}

void setReducedMotion(QQmlEngine &engine, bool isReduced) {
    static const int kMotion = qmlTypeId("Velmo.Controls", 1, 0, "Motion");
    engine.singletonInstance<Motion *>(kMotion)->setReduced(isReduced);
}

} // namespace velmo
