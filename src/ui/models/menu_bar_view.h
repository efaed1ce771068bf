#pragma once

#include "base/calendar.h"
#include "base/lifetime.h"
#include "base/main_queue.h"
#include "ui/models/row_model.h"

#include <QtQml/qqmlregistration.h>
#include <functional>

namespace velmo {

class AccessibilityPermission;
class HistoryStore;
class HotkeyListener;
class RecordingManager;
class TriggerKeyName;

/// One text of the history, as the popover lists it.
struct RecentEntry {
    Q_GADGET
    Q_PROPERTY(QString entryId MEMBER id)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString timeAgo MEMBER timeAgo)

public:
    QString id;
    QString text;
    QString timeAgo;

    [[nodiscard]] const QString &key() const { return id; }
    bool operator==(const RecentEntry &) const = default;
};

/// What the popover shows and does, for as long as it is open: whether dictation is ready and how to begin, what is still
/// missing for it, and the recent texts. Main thread.
class MenuBarView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(bool isRecording READ isRecording NOTIFY statusChanged)
    Q_PROPERTY(bool isTranscribing READ isTranscribing NOTIFY statusChanged)
    Q_PROPERTY(QString title READ title NOTIFY statusChanged)
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY statusChanged)
    Q_PROPERTY(QString idleSubtitle READ idleSubtitle NOTIFY statusChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(bool hasAccessibility READ hasAccessibility NOTIFY setupChanged)
    Q_PROPERTY(bool isSetupRequired READ isSetupRequired NOTIFY setupChanged)
    Q_PROPERTY(QString setupHint READ setupHint NOTIFY setupChanged)
    Q_PROPERTY(QAbstractItemModel *recentEntries READ recentEntries CONSTANT)
    Q_PROPERTY(int entryCount READ entryCount NOTIFY entriesChanged)
    Q_PROPERTY(QString emptyHint READ emptyHint NOTIFY setupChanged)

public:
    /// Whom the popover's state works with; all of it outlives the state.
    struct Collaborators {
        MainQueue &queue;
        const TriggerKeyName &triggerKeyName;
        RecordingManager &recordingManager;
        HistoryStore &historyStore;
        HotkeyListener &hotkeyListener;
        const AccessibilityPermission &permission;
    };

    /// What leads out of the popover.
    struct Actions {
        std::function<void()> openVelmo;
        std::function<void()> quit;
        std::function<void()> showPermission; ///< To what is missing for dictation.
        std::function<void(const QString &text)> copy;
    };

    MenuBarView(const Collaborators &collaborators, Actions actions, const Region &region);

    [[nodiscard]] bool isRecording() const;
    [[nodiscard]] bool isTranscribing() const;
    [[nodiscard]] QString title() const;
    /// How to begin or to end a dictation now.
    [[nodiscard]] QString subtitle() const;
    /// What it is while nothing is dictated.
    [[nodiscard]] QString idleSubtitle() const;
    [[nodiscard]] const QString &errorMessage() const;
    /// What is to be known of the last text, though nothing failed.
    [[nodiscard]] const QString &notice() const;

    [[nodiscard]] bool hasAccessibility() const { return m_hasAccessibility; }
    [[nodiscard]] bool isSetupRequired() const { return !m_hasAccessibility || !m_hasFnHotkey; }
    /// What helps: with the permission it is the trigger key that is missing.
    [[nodiscard]] QString setupHint() const;

    /// All of the history, newest first.
    [[nodiscard]] RowModel<RecentEntry> *recentEntries() { return &m_recentEntries; }
    [[nodiscard]] int entryCount() const { return m_recentEntries.rowCount(); }
    /// How to get a first text.
    [[nodiscard]] QString emptyHint() const;

    Q_INVOKABLE void copy(const QString &entryId);
    /// Removes every entry with that identifier.
    Q_INVOKABLE void remove(const QString &entryId);
    Q_INVOKABLE void showPermission();
    Q_INVOKABLE void openVelmo();
    Q_INVOKABLE void quit();

Q_SIGNALS:
    void statusChanged();
    void errorMessageChanged();
    void noticeChanged();
    void setupChanged();
    void entriesChanged();

private:
    void refresh();
    void refreshPermission();
    void loadEntries();

    Collaborators m_with;
    Actions m_actions;
    Calendar m_calendar;
    bool m_hasAccessibility = false;
    bool m_hasFnHotkey = false;
    RowModel<RecentEntry> m_recentEntries;
    MainQueue::Timer m_refreshTimer;
};

} // namespace velmo
