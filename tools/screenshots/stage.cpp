#include "stage.h"

#include <QDir>
#include <QEventLoop>
#include <QImage>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace velmo::screenshots {

namespace {

/// Longer than any animation of the interface.
constexpr int kComesToRestMs = 700;

} // namespace

Stage::Stage(QString folder) : m_folder(std::move(folder)) {}

void Stage::wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void Stage::photograph(QQuickWindow &window, const QString &name) {
    wait(kComesToRestMs);
    const QString path = QDir(m_folder).filePath(name + u".png"_s);
    if (window.grabWindow().save(path))
        return;
    std::fprintf(stderr, "screenshots: %s could not be written\n", qUtf8Printable(path));
    m_succeeded = false;
}

} // namespace velmo::screenshots
