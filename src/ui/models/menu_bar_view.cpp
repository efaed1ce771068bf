#include "ui/models/menu_bar_view.h"

#include "dictation/gestures/hotkey_listener.h"
#include "dictation/session/recording_manager.h"
#include "platform/accessibility_permission.h"
#include "store/history_store.h"
#include "ui/models/platform_texts.h"
#include "ui/models/trigger_key_name.h"

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Permissions are given in other programs, which tell nobody, and times grow older (a product decision).
constexpr auto kRefreshInterval = 2000ms;

} // namespace

MenuBarView::MenuBarView(const Collaborators &collaborators, Actions actions, const Region &region)
    : m_with(collaborators), m_actions(std::move(actions)), m_calendar(region) {
    const RecordingManager &manager = m_with.recordingManager;
    connect(&manager, &RecordingManager::stateChanged, this, &MenuBarView::statusChanged);
    connect(&manager, &RecordingManager::errorMessageChanged, this, &MenuBarView::errorMessageChanged);
    connect(&manager, &RecordingManager::noticeChanged, this, &MenuBarView::noticeChanged);
    connect(&m_with.hotkeyListener, &HotkeyListener::recordingModeChanged, this, &MenuBarView::statusChanged);
    connect(&m_with.triggerKeyName, &TriggerKeyName::changed, this, &MenuBarView::setupChanged);
    connect(this, &MenuBarView::setupChanged, this, &MenuBarView::statusChanged);
    connect(&m_with.historyStore, &HistoryStore::entriesChanged, this, &MenuBarView::loadEntries);
    refresh();
}

void MenuBarView::refresh() {
    refreshPermission();
    loadEntries();
    m_refreshTimer = m_with.queue.after(kRefreshInterval, [this] { refresh(); });
}

void MenuBarView::refreshPermission() {
    const bool hadAccessibility = std::exchange(m_hasAccessibility, m_with.permission.isTrusted());
    if (!m_with.hotkeyListener.isUsingFnHotkey())
        m_with.hotkeyListener.setupFnKey();
    const bool hadFnHotkey = std::exchange(m_hasFnHotkey, m_with.hotkeyListener.isUsingFnHotkey());
    if (hadAccessibility != m_hasAccessibility || hadFnHotkey != m_hasFnHotkey)
        Q_EMIT setupChanged();
}

// Status

bool MenuBarView::isRecording() const {
    return m_with.recordingManager.state() == State::recording;
}

bool MenuBarView::isTranscribing() const {
    return m_with.recordingManager.state() == State::transcribing;
}

QString MenuBarView::title() const {
    switch (m_with.recordingManager.state()) {
    case State::idle:
        return tr("Ready");
    case State::recording:
        return tr("Listening...");
    case State::transcribing:
        return tr("Transcribing...");
    }
    return {};
}

QString MenuBarView::subtitle() const {
    const QString &key = m_with.triggerKeyName.inText();
    const bool isHeld = m_with.hotkeyListener.recordingMode() == RecordingMode::pushToTalk;
    switch (m_with.recordingManager.state()) {
    case State::idle:
        return idleSubtitle();
    case State::recording:
        if (isHeld)
            return tr("Release %1 to stop").arg(key);
        return m_hasFnHotkey ? tr("Tap %1 to stop").arg(key) : tr("Ctrl+Shift+A to stop");
    case State::transcribing:
        return tr("Processing your speech");
    }
    return {};
}

QString MenuBarView::idleSubtitle() const {
    return m_hasFnHotkey ? tr("Hold %1 or double-tap %1").arg(m_with.triggerKeyName.inText())
                         : tr("Ctrl+Shift+A to record");
}

const QString &MenuBarView::errorMessage() const {
    return m_with.recordingManager.errorMessage();
}

const QString &MenuBarView::notice() const {
    return m_with.recordingManager.notice();
}

QString MenuBarView::setupHint() const {
    return m_hasAccessibility ? platform_texts::missingTriggerKey(m_with.triggerKeyName.inText())
                              : platform_texts::setupHint();
}

QString MenuBarView::emptyHint() const {
    return m_hasFnHotkey ? tr("Hold %1 or double-tap %1 to dictate").arg(m_with.triggerKeyName.inText())
                         : tr("Press Ctrl+Shift+A to dictate");
}

// Recent texts

void MenuBarView::loadEntries() {
    const qsizetype before = entryCount();
    const Date now = m_with.queue.now();
    QList<RecentEntry> rows;
    for (const Entry &entry : m_with.historyStore.entries())
        rows.append({entry.id, entry.text, m_calendar.timeAgo(entry.timestamp, now)});
    m_recentEntries.setRows(rows);
    if (entryCount() != before)
        Q_EMIT entriesChanged();
}

void MenuBarView::copy(const QString &entryId) {
    for (const RecentEntry &entry : m_recentEntries.rows()) {
        if (entry.id == entryId)
            return m_actions.copy(entry.text);
    }
}

void MenuBarView::remove(const QString &entryId) {
    m_with.historyStore.remove(entryId);
}

// Actions out

void MenuBarView::showPermission() {
    m_actions.showPermission();
}

void MenuBarView::openVelmo() {
    m_actions.openVelmo();
}

void MenuBarView::quit() {
    m_actions.quit();
}

} // namespace velmo
