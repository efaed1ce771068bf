#pragma once

#include "store/dictation_history.h"
#include "store/history_entry.h"
#include "store/preference_keys.h"
#include "store/preferences.h"

#include <QObject>
#include <functional>

namespace velmo {

/// The texts that were inserted, newest first, and the day dictation began. Kept in the preference domain, where
/// other processes can change it too: every change applies to the list as it is stored at that moment, in one
/// transaction, and is published after it. A change that cannot be stored (disk full) stays in memory and goes along
/// with the next one. Main thread.
class HistoryStore final : public QObject, public DictationHistory {
    Q_OBJECT
    Q_PROPERTY(QList<velmo::Entry> entries READ entries NOTIFY entriesChanged)

public:
    static constexpr qsizetype maxEntries = 100; ///< A product decision.
    static constexpr QLatin1StringView storageKey = keys::transcriptionHistory;
    static constexpr QLatin1StringView firstUseDateKey = keys::firstUseDate;

    /// Loads the stored entries. Both collaborators outlive the store; the queue gives the time.
    HistoryStore(Preferences &preferences, const MainQueue &clock);

    /// Puts a text, dated now, at the front; the oldest beyond `maxEntries` go. The first text of all begins the
    /// days of use.
    void add(const QString &text, std::optional<double> durationSeconds) override;

    /// Removes every entry of that id.
    void remove(const QString &id);

    /// Puts a removed entry back, by its date. One that is there already stays as it is.
    void restore(const Entry &entry);

    /// The stored list may have been changed by another process: takes it over.
    void refresh();

    [[nodiscard]] const QList<Entry> &entries() const { return m_entries; }

    /// When the first dictation was; nothing before it.
    [[nodiscard]] std::optional<Date> firstUseDate() const;

Q_SIGNALS:
    void entriesChanged();

private:
    /// A change to a list of entries. Applied twice it does no more than once, so it can be repeated.
    using Edit = std::function<void(QList<Entry> &)>;

    void load();
    void save(Edit edit);
    [[nodiscard]] QList<Entry> edited(QList<Entry> entries) const;
    [[nodiscard]] QList<Entry> entriesIn(const std::optional<PreferenceValue> &stored) const;
    void ensureFirstUseDate(Date date);
    void publish(const QList<Entry> &entries);

    Preferences &m_preferences;
    const MainQueue &m_clock;
    QList<Entry> m_entries;
    QList<Edit> m_unsaved;
};

} // namespace velmo
