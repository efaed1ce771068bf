#include "store/history_store.h"

#include "base/log.h"
#include "base/uuid.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

void removeId(QList<Entry> &entries, const QString &id) {
    entries.removeIf([&](const Entry &entry) { return entry.id == id; });
}

/// Before the first entry that is not newer, which is where it was.
void putBack(QList<Entry> &entries, const Entry &entry) {
    const auto isIt = [&](const Entry &other) { return other.id == entry.id; };
    if (std::any_of(entries.begin(), entries.end(), isIt))
        return;
    entries.insert(std::find_if(entries.begin(), entries.end(),
                                [&](const Entry &other) { return other.timestamp <= entry.timestamp; }),
                   entry);
    if (entries.size() > HistoryStore::maxEntries)
        entries.resize(HistoryStore::maxEntries);
}

void addToFront(QList<Entry> &entries, const Entry &entry) {
    removeId(entries, entry.id);
    entries.prepend(entry);
    if (entries.size() > HistoryStore::maxEntries)
        entries.resize(HistoryStore::maxEntries);
}

} // namespace

HistoryStore::HistoryStore(Preferences &preferences, const MainQueue &clock)
    : m_preferences(preferences), m_clock(clock) {
    load();
}

void HistoryStore::add(const QString &text, std::optional<double> durationSeconds) {
    const Entry entry{newUpperUuid(), text, m_clock.now(), durationSeconds};
    ensureFirstUseDate(entry.timestamp);
    save([entry](QList<Entry> &entries) { addToFront(entries, entry); });
}

void HistoryStore::remove(const QString &id) {
    save([id](QList<Entry> &entries) { removeId(entries, id); });
}

void HistoryStore::restore(const Entry &entry) {
    save([entry](QList<Entry> &entries) { putBack(entries, entry); });
}

void HistoryStore::refresh() {
    publish(edited(entriesIn(m_preferences.value(storageKey))));
}

std::optional<Date> HistoryStore::firstUseDate() const {
    return m_preferences.date(firstUseDateKey);
}

void HistoryStore::load() {
    const auto stored = m_preferences.data(storageKey);
    if (!stored)
        return;
    auto entries = decodeEntries(*stored);
    if (!entries) {
        log(LogTag::History, u"Failed to load: "_s + entries.error());
        return;
    }
    m_entries = std::move(*entries);
    if (!m_entries.isEmpty())
        ensureFirstUseDate(m_entries.last().timestamp);
}

void HistoryStore::save(Edit edit) {
    m_unsaved.append(std::move(edit));
    QList<Entry> entries = edited(m_entries); // what is shown when the stored list cannot be had
    const bool stored = m_preferences.change(
        storageKey, [&](const std::optional<PreferenceValue> &value) -> std::optional<PreferenceValue> {
            entries = edited(entriesIn(value));
            auto encoded = encodeEntries(entries);
            if (encoded)
                return std::move(*encoded);
            log(LogTag::History, u"Failed to save: "_s + encoded.error());
            return value;
        });
    if (stored)
        m_unsaved.clear();
    publish(entries);
}

QList<Entry> HistoryStore::edited(QList<Entry> entries) const {
    for (const Edit &edit : m_unsaved)
        edit(entries);
    return entries;
}

/// A stored value that cannot be read is replaced by what is held in memory.
QList<Entry> HistoryStore::entriesIn(const std::optional<PreferenceValue> &stored) const {
    const auto *bytes = stored ? std::get_if<QByteArray>(&*stored) : nullptr;
    return bytes ? decodeEntries(*bytes).value_or(m_entries) : QList<Entry>();
}

void HistoryStore::ensureFirstUseDate(Date date) {
    if (firstUseDate())
        return;
    m_preferences.change(firstUseDateKey, [date](const std::optional<PreferenceValue> &stored) {
        return stored && std::holds_alternative<Date>(*stored) ? stored : PreferenceValue(date);
    });
}

void HistoryStore::publish(const QList<Entry> &entries) {
    if (entries == m_entries)
        return;
    m_entries = entries;
    Q_EMIT entriesChanged();
}

} // namespace velmo
