#pragma once

#include "base/interface.h"
#include "support/wait_until.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <memory>

namespace velmo::testing {

/// A program on a private display. It is killed with the object, and when the test itself is.
class DisplayProgram : private Unmovable {
public:
    DisplayProgram(const QString &display, const QString &program, const QStringList &arguments);
    ~DisplayProgram();

    [[nodiscard]] QProcess &process() { return m_process; }
    void write(const QByteArray &input);
    /// All of what it prints until it ends; fails the test when it does not end.
    QByteArray outputUntilEnd();
    void signal(int number) const;

private:
    QProcess m_process;
};

/// A private X server, one screen of 1280 × 800, no window manager until one is asked for.
class Xvfb : private Unmovable {
public:
    explicit Xvfb(const QStringList &moreArguments = {});
    ~Xvfb();

    [[nodiscard]] const QString &display() const { return m_display; } ///< ":7"
    void startWindowManager();
    [[nodiscard]] std::unique_ptr<DisplayProgram> start(const QString &program, const QStringList &arguments);

private:
    DisplayProgram m_server;
    QString m_display;
    std::unique_ptr<DisplayProgram> m_windowManager;
};

} // namespace velmo::testing
