#include "app/command_line/command_options.h"
#include "app/command_line/commands.h"
#include "app/command_line/file_dictation.h"
#include "app/command_line/headless.h"
#include "app/process/event_loop.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "dictation/session/recording_manager.h"
#include "platform/audio_length.h"
#include "service/account/auth_manager.h"
#include "service/sync/sync_manager.h"

#include <QFileInfo>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr CommandWords kWords = {"dictate"_L1, "FILE..."_L1,
                                 "Dictate recordings from files and print their texts."_L1};

/// A dictation whose recordings are files and whose text is collected.
class FileDictations {
public:
    explicit FileDictations(const FileDictationCollaborators &with)
        : m_audioLength(with.audioLength),
          m_clock(with.queue),
          m_recorder(m_clock),
          m_history(with.history),
          m_manager({m_clock, with.preferences, m_permission, m_workspace, m_silence, m_recorder,
                     with.transcriptionClient, with.textProcessor, m_text, m_levels, m_overlay, m_history,
                     with.account.auth, with.account.sync}) {}

    /// The text of the recording, or the sentence that says why there is none. Waits for it in the event loop.
    Result<QString, QString> dictate(const QString &path) {
        if (QFileInfo(path).isDir())
            return failed(u"This is a folder, not a recording"_s);
        const auto seconds = m_audioLength.seconds(path);
        m_recorder.setFile(path, seconds);
        m_history.setLengthKnown(seconds.has_value());

        awaitDone([this](const Done &done) {
            m_manager.onStateChange = [this, done](State state) {
                if (state == State::recording)
                    m_manager.stopRecording();
                else if (state == State::idle)
                    done();
            };
            m_manager.startRecording();
        });
        m_manager.onStateChange = {};

        if (auto text = m_text.take())
            return *text;
        const QString &message = m_manager.errorMessage();
        return failed(message.isEmpty() ? u"No text"_s : message);
    }

private:
    const AudioLength &m_audioLength;
    ShiftedClock m_clock;
    FileRecorder m_recorder;
    FileDictationHistory m_history;
    CollectedText m_text;
    headless::NoPermissionNeeded m_permission;
    headless::NoWorkspace m_workspace;
    headless::Silence m_silence;
    headless::NoLevels m_levels;
    headless::NoOverlay m_overlay;
    RecordingManager m_manager;
};

void showProgress(const QString &path, qsizetype number, qsizetype count) {
    if (::isatty(STDERR_FILENO))
        printError(u"[%1/%2] %3"_s.arg(QString::number(number), QString::number(count), path));
}

/// One failure does not stop the others; with several files it is told which one failed.
int dictateAll(const FileDictationCollaborators &with, const QStringList &paths) {
    with.account.waitForSession(); // or the first dictation would not be counted for its person
    FileDictations dictations(with);
    int status = exit_status::success;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        showProgress(paths[i], i + 1, paths.size());
        const auto text = dictations.dictate(paths[i]);
        if (text && print(*text + u'\n'))
            continue;
        status = exit_status::failure;
        if (!text)
            printError(paths.size() == 1 ? text.error() : paths[i] + u": "_s + text.error());
    }
    with.account.waitForRequests();
    return status;
}

int runDictate(const Lazy<FileDictationCollaborators> &collaborators, const QStringList &arguments) {
    CommandOptions options(kWords);
    if (const auto status = options.read(arguments))
        return *status;
    if (options.operands().isEmpty())
        return options.usageError(u"a FILE is missing"_s);
    return dictateAll(collaborators(), options.operands());
}

} // namespace

Command dictateCommand(Lazy<FileDictationCollaborators> collaborators) {
    return {kWords, std::bind_front(runDictate, std::move(collaborators))};
}

} // namespace velmo
