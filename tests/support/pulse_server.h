#pragma once

#include "base/interface.h"

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace velmo::testing {

/// A PulseAudio server of this test alone, which the test's process and the programs it starts use. It ends with the
/// object, and when the test itself is killed.
class PulseServer : private Unmovable {
public:
    /// "load-module …" lines and the like.
    explicit PulseServer(const QStringList &script);
    ~PulseServer();

    /// A microphone that hears what is played: the monitor of a null sink, as a source of its own. 48 kHz stereo.
    static QStringList virtualMicrophone();
    /// A microphone named so that hears a tone of 440 Hz. 44.1 kHz mono.
    static QString toneMicrophone(const QString &name);

    /// Keeps the virtual microphone awake and waits until sound comes through it; a null sink begins with a block of
    /// 2 seconds.
    void wakeMicrophone();
    /// What the server is told by pactl; waits until it is done.
    void control(const QStringList &arguments);
    /// Has the server keep a sound of its own, so that playing it begins at once and has no gaps on a busy machine.
    void load(const QString &path);
    /// Plays the loaded sound to the virtual microphone, to the end.
    void play();
    void signal(int number);

private:
    static QByteArray pactl(const QStringList &arguments);

    QTemporaryDir m_directory;
    QProcess m_server;
    QProcess m_listener;
};

/// Has a sentence spoken into a file of 16 kHz.
[[nodiscard]] QString speechFile(const QTemporaryDir &directory, const QString &sentence);

} // namespace velmo::testing
