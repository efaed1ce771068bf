#include "support/real_editor.h"

#include "support/files.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

/// Without this they look for an instance of theirs on the session bus.
QString standaloneOption(const QString &program) {
    return program == u"mousepad" ? u"--disable-server"_s : u"--standalone"_s;
}

} // namespace

RealEditor::RealEditor(Xvfb &server, const QString &program)
    : m_server(server), m_path(m_folder.filePath(u"text.txt"_s)) {
    writeFile(m_path);
    qputenv("HOME", m_folder.path().toUtf8()); // keeps off the settings of whoever runs the test
    m_program = server.start(program, {standaloneOption(program), m_path});
    // The window may have the focus long before it takes keys.
    EXPECT_TRUE(waitUntil([this] {
        xdotool({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"text.txt"_s, u"windowfocus"_s});
        press("x");
        return isChanged();
    })) << program.toStdString()
        << " does not take keys";
    press("ctrl+a");
    press("Delete");
    EXPECT_TRUE(waitUntil([this] { return savedText().isEmpty() && !isChanged(); }));
}

bool RealEditor::isChanged() {
    const QByteArray title = xdotool({u"getwindowfocus"_s, u"getwindowname"_s});
    return title.contains("text.txt") && title.contains('*');
}

QString RealEditor::savedText() {
    press("ctrl+s");
    return QString::fromUtf8(contentOf(m_path));
}

QByteArray RealEditor::xdotool(const QStringList &arguments) {
    return m_server.start(u"xdotool"_s, arguments)->outputUntilEnd();
}

void RealEditor::press(const char *shortcut) {
    xdotool({u"key"_s, QString::fromLatin1(shortcut)});
}

} // namespace velmo::testing
