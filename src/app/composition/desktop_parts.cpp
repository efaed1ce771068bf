#include "app/composition/desktop_parts.h"

#include "app/composition/core_parts.h"
#include "app/composition/setup_parts.h"
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
#include "platform/linux/xdg/autostart_entry.h"
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

} // namespace

/// In an order in which each part may use those before it.
struct DesktopParts::Parts {
    Parts(CoreParts &composition, X11Input display, std::unique_ptr<X11Insertion> insertionParts)
        : x11(std::move(display)),
          insertion(std::move(insertionParts)),
          keyboardPreferences(preferencesPath(kKeyboardDomain)),
          connection(std::make_shared<pulse::Connection>()),
          microphone(makePulseMicrophone(connection, composition.mainQueue())),
          recorder({composition.mainQueue(), *microphone, *recordingFiles}, QDir::tempPath()),
          levelMeter(composition.mainQueue(), recorder),
          textInserter({composition.mainQueue(), insertion->clipboard(), insertion->primarySelection(),
                        insertion->keyInjector(), insertion->focusedWindow(), sessionLock}),
          overlay({engine, composition.mainQueue(), *x11.floating, *x11.mouse}),
          recordingManager({composition.mainQueue(), composition.preferences(), microphonePermission,
                            *x11.workspace, *sounds, recorder, composition.transcriptionClient(),
                            composition.textProcessor(), textInserter, levelMeter, overlay,
                            composition.historyStore(), composition.authManager(),
                            composition.syncManager()}),
          hotkeyListener(
              {composition.mainQueue(), composition.preferences(), *x11.permission, *x11.tap, *x11.hotkey}),
          microphonePresence(makePulseMicrophonePresence(connection, composition.mainQueue())),
          setup(composition, {hotkeyListener, *x11.permission, *x11.keys, microphonePermission,
                              *microphonePresence, systemSettings, loginItem}),
          windows({composition, engine, *x11.floating, *x11.panels, *x11.mouse, *x11.motion, *x11.permission,
                   recordingManager, hotkeyListener, levelMeter, textInserter, overlay, setup},
                  {[this] { appDelegate.openMainWindow(); }, [this] { commands.onQuit(); }}),
          controls({hotkeyListener, recordingManager, recorder, recorder, sessionLock,
                    composition.preferenceWatch()}),
          appDelegate({composition.mainQueue(), composition.preferences(), keyboardPreferences,
                       recordingManager, controls, *x11.workspace, composition.authManager(),
                       composition.syncManager(), *x11.permission, windows}),
          commands({controls, composition.authManager(), composition.syncManager()}) {
        commands.onShow = [this] { appDelegate.applicationShouldHandleReopen(); };
        removeAbandonedRecordings(*recordingFiles, QDir::tempPath());
    }

    ScreenSaverLock sessionLock;
    X11Input x11;
    std::unique_ptr<X11Insertion> insertion;
    SqlitePreferences keyboardPreferences;
    std::shared_ptr<pulse::Connection> connection;
    std::unique_ptr<Microphone> microphone;
    std::unique_ptr<RecordingFiles> recordingFiles = makeSndfileRecordingFiles();
    AudioRecorder recorder;
    AudioLevelProvider levelMeter;
    GrantedMicrophonePermission microphonePermission;
    std::unique_ptr<SoundPlayer> sounds = makeCanberraSoundPlayer(makeSndfileAudioLength());
    TextInserter textInserter;
    QQmlEngine engine;
    RecordingOverlayController overlay;
    RecordingManager recordingManager;
    HotkeyListener hotkeyListener;
    std::unique_ptr<MicrophonePresence> microphonePresence;
    DesktopSettings systemSettings;
    AutostartEntry loginItem{autostartFolder(), QCoreApplication::applicationFilePath()};
    SetupParts setup;
    WindowParts windows;
    DictationControls controls;
    AppDelegate appDelegate;
    ApplicationCommands commands;
};

Result<std::unique_ptr<DesktopParts>, QString> DesktopParts::open(CoreParts &composition) {
    X11Input x11 = makeX11Input(composition.mainQueue(), {QString(), keyGuardProgram(), windowConnection()});
    auto insertion = X11Insertion::open(composition.mainQueue(), insertionOptions(*x11.permission));
    if (!insertion)
        return failed(insertion.error());
    auto parts = std::make_unique<Parts>(composition, std::move(x11), std::move(*insertion));
    return std::unique_ptr<DesktopParts>(new DesktopParts(std::move(parts)));
}

DesktopParts::DesktopParts(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
DesktopParts::~DesktopParts() = default;

RecordingManager &DesktopParts::recordingManager() {
    return m_parts->recordingManager;
}

TextInserter &DesktopParts::textInserter() {
    return m_parts->textInserter;
}

ApplicationCommands &DesktopParts::commands() {
    return m_parts->commands;
}

AppDelegate &DesktopParts::appDelegate() {
    return m_parts->appDelegate;
}

} // namespace velmo
