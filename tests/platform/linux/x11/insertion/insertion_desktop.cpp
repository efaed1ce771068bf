#include "platform/linux/x11/insertion/insertion_desktop.h"

using namespace Qt::StringLiterals;

namespace velmo::testing {

using namespace std::chrono_literals;

InsertionDesktop::InsertionDesktop(const QStringList &serverArguments) : server(serverArguments) {}

void InsertionDesktop::open(ClipboardSaveLimits limits) {
    auto opened = X11Insertion::open(queue, {server.display(), true, limits});
    ASSERT_TRUE(opened);
    x11 = std::move(*opened);
    inserter = std::make_unique<TextInserter>(TextInserter::Collaborators{
        queue, x11->clipboard(), x11->primarySelection(), x11->keyInjector(), x11->focusedWindow(), lock});
}

void InsertionDesktop::insert(const QString &text) {
    inserter->insert(text);
}

bool InsertionDesktop::waitFor(const std::function<bool()> &condition) {
    return waitUntil([this, &condition] {
        queue.runPosted();
        return condition();
    });
}

void InsertionDesktop::settle() {
    // The second answer comes after the events that the first one brought along.
    for (int round = 0; round < 2; ++round) {
        bool answered = false;
        x11->focusedWindow().find([&answered](const auto &) { answered = true; });
        EXPECT_TRUE(waitFor([&answered] { return answered; }));
    }
}

void InsertionDesktop::letInsertionEnd() {
    EXPECT_TRUE(waitFor([this] { return queue.pendingTimers() == 2; })) << "nothing was pasted";
    queue.advance(400ms);
    EXPECT_TRUE(waitFor([this] { return queue.pendingTimers() == 0; })) << "nobody has read the text";
    settle();
}

std::unique_ptr<Puppet> InsertionDesktop::openEditor() {
    if (!std::exchange(m_isManaged, true))
        server.startWindowManager();
    auto puppet = std::make_unique<Puppet>(server, u"editor"_s);
    focus(u"editor"_s);
    return puppet;
}

QByteArray InsertionDesktop::lineOf(Puppet &puppet) {
    QProcess &process = puppet.program().process();
    EXPECT_TRUE(
        waitFor([&process] { return process.canReadLine() || process.state() == QProcess::NotRunning; }));
    EXPECT_TRUE(process.canReadLine()) << "the program has ended";
    return process.readLine().trimmed();
}

QString InsertionDesktop::pasteIn(Puppet &puppet) {
    puppet.tell("read");
    return QString::fromUtf8(QByteArray::fromBase64(lineOf(puppet)));
}

QByteArray InsertionDesktop::xdotool(const QStringList &arguments) {
    return server.start(u"xdotool"_s, arguments)->outputUntilEnd();
}

void InsertionDesktop::focus(const QString &windowName) {
    const QStringList give = {u"search"_s, u"--onlyvisible"_s, u"--name"_s, windowName, u"windowfocus"_s};
    const QStringList ask = {u"getwindowfocus"_s, u"getwindowname"_s};
    EXPECT_TRUE(waitFor([&] {
        xdotool(give);
        return xdotool(ask).contains(windowName.toUtf8());
    })) << "the window has not got the focus";
}

std::unique_ptr<DisplayProgram> InsertionDesktop::copy(const QByteArray &data, const char *type,
                                                       const char *selection) {
    auto program =
        server.start(u"xclip"_s, {u"-quiet"_s, u"-in"_s, u"-selection"_s, QString::fromLatin1(selection),
                                  u"-target"_s, QString::fromLatin1(type)});
    program->write(data);
    EXPECT_TRUE(waitFor([&] { return paste(type, selection) == data; }));
    return program;
}

QByteArray InsertionDesktop::paste(const char *type, const char *selection) {
    return server
        .start(u"xclip"_s, {u"-out"_s, u"-selection"_s, QString::fromLatin1(selection), u"-target"_s,
                            QString::fromLatin1(type)})
        ->outputUntilEnd();
}

Puppet::Puppet(Xvfb &server, const QString &title)
    : m_program(server.start(QStringLiteral(VELMO_PUPPET), {title})) {}

void Puppet::tell(const QByteArray &command) {
    m_program->process().write(command + '\n');
}

} // namespace velmo::testing
