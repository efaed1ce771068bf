#pragma once

#include "dictation/insertion/insertion_fakes.h"
#include "dictation/insertion/text_inserter.h"
#include "platform/linux/x11/x11_insertion.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"
#include "support/xvfb.h"

#include <gtest/gtest.h>
#include <memory>

namespace velmo::testing {

/// A program that does what the test tells it: see puppet.cpp.
class Puppet {
public:
    Puppet(Xvfb &server, const QString &title);

    void tell(const QByteArray &command);
    [[nodiscard]] DisplayProgram &program() { return *m_program; }

private:
    std::unique_ptr<DisplayProgram> m_program;
};

/// A private desktop with real programs on it, and text insertion on a clock that is moved by hand.
class InsertionDesktop : public ::testing::Test {
protected:
    /// Waiting for other programs takes real time; what the inserter waits for does not.
    explicit InsertionDesktop(const QStringList &serverArguments = {});

    /// Starts the inserter. Frozen programs aside, other programs get all the time they need.
    void open(ClipboardSaveLimits limits = {std::chrono::seconds(30), qint64{64} << 20});
    void insert(const QString &text);

    [[nodiscard]] bool waitFor(const std::function<bool()> &condition);
    /// Everything that was due by now has been done on the display.
    void settle();
    /// Lets the time pass after which the old contents come back, and waits until they have.
    void letInsertionEnd();

    /// A program with a window, which has the focus, on a desktop with a window manager.
    [[nodiscard]] std::unique_ptr<Puppet> openEditor();
    [[nodiscard]] QByteArray lineOf(Puppet &puppet);
    /// What the program gets when it pastes.
    [[nodiscard]] QString pasteIn(Puppet &puppet);
    QByteArray xdotool(const QStringList &arguments);
    /// Waits for the window and gives it the focus.
    void focus(const QString &windowName);

    /// A program that puts this on the clipboard and stays.
    [[nodiscard]] std::unique_ptr<DisplayProgram>
    copy(const QByteArray &data, const char *type = "UTF8_STRING", const char *selection = "clipboard");
    /// What another program gets when it asks for this; empty when refused.
    [[nodiscard]] QByteArray paste(const char *type = "UTF8_STRING", const char *selection = "clipboard");

    LogCapture log;
    Xvfb server;
    ManualMainQueue queue;
    std::unique_ptr<X11Insertion> x11;
    FakeSessionLock lock;
    std::unique_ptr<TextInserter> inserter;

private:
    bool m_isManaged = false;
};

} // namespace velmo::testing
