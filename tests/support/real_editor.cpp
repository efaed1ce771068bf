#include "support/real_editor.h"

#include <QFile>
#include <gtest/gtest.h>

namespace velmo::testing {

namespace {

/// Without this they look for an instance of theirs on the session bus.
QString standaloneOption(const QString &program) {
    return program == u"mousepad" ? QStringLiteral("--disable-server") : QStringLiteral("--standalone");
}

} // namespace

RealEditor::RealEditor(Xvfb &server, const QString &program)
    : m_server(server), m_path(m_folder.filePath(QStringLiteral("text.txt"))) {
    QFile file(m_path);
    EXPECT_TRUE(file.open(QFile::WriteOnly));
    qputenv("HOME", m_folder.path().toUtf8()); // keeps off the settings of whoever runs the test
    m_program = server.start(program, {standaloneOption(program), m_path});
    // The window may have the focus long before it takes keys.
    EXPECT_TRUE(waitUntil([this] {
        xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                 QStringLiteral("text.txt"), QStringLiteral("windowfocus")});
        press("x");
        return isChanged();
    })) << program.toStdString()
        << " does not take keys";
    press("ctrl+a");
    press("Delete");
    EXPECT_TRUE(waitUntil([this] { return savedText().isEmpty() && !isChanged(); }));
}

bool RealEditor::isChanged() {
    const QByteArray title = xdotool({QStringLiteral("getwindowfocus"), QStringLiteral("getwindowname")});
    return title.contains("text.txt") && title.contains('*');
}

QString RealEditor::savedText() {
    press("ctrl+s");
    QFile file(m_path);
    return file.open(QFile::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QByteArray RealEditor::xdotool(const QStringList &arguments) {
    return m_server.start(QStringLiteral("xdotool"), arguments)->outputUntilEnd();
}

void RealEditor::press(const char *shortcut) {
    xdotool({QStringLiteral("key"), QString::fromLatin1(shortcut)});
}

} // namespace velmo::testing
