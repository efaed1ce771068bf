#pragma once

#include "support/xvfb.h"

#include <QTemporaryDir>

namespace velmo::testing {

/// An editor that people use, on a display with a window manager. It has the focus and an empty text, which is saved.
class RealEditor {
public:
    /// "mousepad" (GTK) or "featherpad" (Qt).
    RealEditor(Xvfb &server, const QString &program);

    [[nodiscard]] DisplayProgram &program() { return *m_program; }

    /// Whether it shows that its text differs from what was saved.
    [[nodiscard]] bool isChanged();

    /// Has the editor save its text and reads it. This presses keys: not while somebody else does.
    [[nodiscard]] QString savedText();

private:
    QByteArray xdotool(const QStringList &arguments);
    void press(const char *shortcut);

    Xvfb &m_server;
    QTemporaryDir m_folder;
    QString m_path;
    std::unique_ptr<DisplayProgram> m_program;
};

} // namespace velmo::testing
