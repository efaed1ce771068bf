#include "app/composition/desktop_parts.h"

#include "app/composition/core_parts.h"
#include "app/composition/window_parts.h"
#include "app/desktop/app_delegate.h"
#include "app/desktop/application_commands.h"
#include "dictation/capture/audio_level_provider.h"
#include "dictation/capture/audio_recorder.h"
#include "dictation/capture/recording_paths.h"
#include "dictation/gestures/hotkey_listener.h"
#include "dictation/insertion/text_inserter.h"
#include "dictation/session/dictation_controls.h"
#include "dictation/session/recording_manager.h"
#include "platform/linux/canberra/sound_player.h"
#include "platform/linux/dbus/screen_saver_lock.h"
#include "platform/linux/granted_microphone_permission.h"
#include "platform/linux/pulse/connection.h"
#include "platform/linux/pulse/microphone.h"
#include "platform/linux/pulse/microphone_presence.h"
#include "platform/linux/sndfile/sndfile_audio_length.h"
#include "platform/linux/sndfile/sndfile_recording_files.h"
#include "platform/linux/x11/x11_input.h"
#include "platform/linux/x11/x11_insertion.h"
#include "platform/linux/xdg/browser_authentication.h"
#include "platform/linux/xdg/desktop_settings.h"
#include "service/account/auth_manager.h"
#include "service/sync/sync_manager.h"
#include "store/history_store.h"
#include "store/sqlite_preferences.h"
#include "ui/overlay/recording_overlay_controller.h"

#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QQmlEngine>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// The domain in which the desktop keeps what the trigger key does by itself.
const QString kKeyboardDomain = u"com.apple.HIToolbox"_s;

/// The connection on which Qt makes windows; null when it makes none on an X display.
xcb_connection_t *windowConnection() {
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const auto *x11 =
        application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->connection() : nullptr;
}

X11InsertionOptions insertionOptions(const AccessibilityPermission &permission) {
    X11InsertionOptions options;
    options.mayInject = permission.isTrusted();
    return options;
}

/// In an order in which each part may use those before it.
class DesktopParts final : public DesktopSession {
public:
    DesktopParts(CoreParts &core, X11Input display, std::unique_ptr<X11Insertion> insertionParts)
        : m_x11(std::move(display)),
          m_insertion(std::move(insertionParts)),
          m_microphone(makePulseMicrophone(m_connection, core.mainQueue())),
          m_microphonePresence(makePulseMicrophonePresence(m_connection, core.mainQueue())),
          m_recorder({core.mainQueue(), *m_microphone, *m_recordingFiles}, QDir::tempPath()),
          m_levelMeter(core.mainQueue(), m_recorder),
          m_textInserter({core.mainQueue(), m_insertion->clipboard(), m_insertion->primarySelection(),
                          m_insertion->keyInjector(), m_insertion->focusedWindow(), m_sessionLock}),
          m_overlay({m_engine, core.mainQueue(), *m_x11.floating, *m_x11.mouse}),
          m_recordingManager({core.mainQueue(), core.preferences(), m_microphonePermission, *m_x11.workspace,
                              *m_sounds, m_recorder, core.transcriptionClient(), core.textProcessor(),
                              m_textInserter, m_levelMeter, m_overlay, core.historyStore(),
                              core.authManager(), core.syncManager()}),
          m_hotkeyListener({core.mainQueue(), core.preferences(), *m_x11.permission, *m_x11.tap,
                            *m_x11.hotkey, *m_x11.keys}),
          m_controls({m_hotkeyListener, m_recordingManager, m_recorder, m_recorder, m_sessionLock,
                      core.preferenceWatch()}),
          m_windows({core, m_engine, m_x11, m_recordingManager, m_hotkeyListener, m_levelMeter,
                     m_textInserter, m_overlay, m_microphonePermission, *m_microphonePresence,
                     m_systemSettings},
                    {[this] { m_appDelegate.openMainWindow(); }, [this] { m_commands.onQuit(); },
                     [this] { m_appDelegate.showPermission(); }}),
          m_appDelegate({core.mainQueue(), core.preferences(), m_keyboardPreferences, m_recordingManager,
                         m_controls, *m_x11.workspace, core.authManager(), core.syncManager(),
                         *m_x11.permission, m_systemSettings, m_windows}),
          m_commands({m_controls, core.authManager(), core.syncManager()}) {
        m_commands.onAddress =
            std::bind_front(&BrowserAuthentication::deliver, &core.browserAuthentication());
        m_commands.onShow = [this] { m_appDelegate.applicationShouldHandleReopen(); };
        removeAbandonedRecordings(*m_recordingFiles, QDir::tempPath());
    }

    AppDelegate &appDelegate() override { return m_appDelegate; }
    ApplicationCommands &commands() override { return m_commands; }
    TextInserter &textInserter() override { return m_textInserter; }

private:
    ScreenSaverLock m_sessionLock;
    X11Input m_x11;
    std::unique_ptr<X11Insertion> m_insertion;
    SqlitePreferences m_keyboardPreferences{preferencesPath(kKeyboardDomain)};
    std::shared_ptr<pulse::Connection> m_connection = std::make_shared<pulse::Connection>();
    std::unique_ptr<Microphone> m_microphone;
    std::unique_ptr<MicrophonePresence> m_microphonePresence;
    GrantedMicrophonePermission m_microphonePermission;
    std::unique_ptr<RecordingFiles> m_recordingFiles = makeSndfileRecordingFiles();
    AudioRecorder m_recorder;
    AudioLevelProvider m_levelMeter;
    std::unique_ptr<SoundPlayer> m_sounds = makeCanberraSoundPlayer(makeSndfileAudioLength());
    TextInserter m_textInserter;
    QQmlEngine m_engine;
    RecordingOverlayController m_overlay;
    RecordingManager m_recordingManager;
    HotkeyListener m_hotkeyListener;
    DictationControls m_controls;
    DesktopSettings m_systemSettings;
    WindowParts m_windows;
    AppDelegate m_appDelegate;
    ApplicationCommands m_commands;
};

} // namespace

Result<std::unique_ptr<DesktopSession>, QString> openDesktopParts(CoreParts &core) {
    X11Input x11 = makeX11Input(core.mainQueue(), {QString(), keyGuardProgram(), windowConnection()});
    auto insertion = X11Insertion::open(core.mainQueue(), insertionOptions(*x11.permission));
    if (!insertion)
        return failed(insertion.error());
    return std::make_unique<DesktopParts>(core, std::move(x11), std::move(*insertion));
}

} // namespace velmo
