#pragma once

#include "base/main_queue.h"
#include "ui/models/row_model.h"

#include <QtQml/qqmlregistration.h>
#include <optional>

namespace velmo {

class Account;
class Calendar;
class HistoryStore;
class PreferenceWatch;
class Preferences;
class TriggerKeyName;
class UndoOffer;

/// A dictation in the history list, with its place among those of its day.
struct HistoryRow {
    Q_GADGET
    Q_PROPERTY(QString entryId MEMBER id)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString time MEMBER time)
    Q_PROPERTY(QString day MEMBER day)
    Q_PROPERTY(bool isFirst MEMBER isFirst)
    Q_PROPERTY(bool isLast MEMBER isLast)

public:
    QString id;
    QString text;
    QString time;        ///< "14:32".
    QString day;         ///< "Today", "Yesterday" or the date.
    bool isFirst = true; ///< Of its day: the list heads it with the day.
    bool isLast = true;

    [[nodiscard]] const QString &key() const { return id; }
    bool operator==(const HistoryRow &) const = default;
};

/// A figure about the use of Velmo.
struct StatisticCard {
    Q_GADGET
    QML_VALUE_TYPE(statisticCard)
    Q_PROPERTY(QString emoji MEMBER emoji)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(QString label MEMBER label)

public:
    QString emoji;
    QString value;
    QString label;

    bool operator==(const StatisticCard &) const = default;
};

/// The home page: how to dictate, figures about the use, and the history by days. Main thread.
class HomeView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(bool isHeroCardShown READ isHeroCardShown NOTIFY heroCardChanged)
    Q_PROPERTY(QString heroTitle READ heroTitle NOTIFY triggerKeyChanged)
    Q_PROPERTY(QString heroText READ heroText NOTIFY triggerKeyChanged)
    Q_PROPERTY(QString keyLabel READ keyLabel NOTIFY triggerKeyChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY triggerKeyChanged)
    Q_PROPERTY(QList<velmo::StatisticCard> statistics READ statistics NOTIFY statisticsChanged)
    Q_PROPERTY(QAbstractItemModel *history READ history CONSTANT)
    Q_PROPERTY(bool isHistoryEmpty READ isHistoryEmpty NOTIFY historyChanged)

public:
    /// What the page works with; all of it outlives the page.
    struct Collaborators {
        MainQueue &queue;
        Preferences &preferences;
        PreferenceWatch &watch;
        const TriggerKeyName &triggerKeyName;
        HistoryStore &historyStore;
        const Calendar &calendar; ///< Of the person's region.
        const Account &account;
        std::function<std::optional<qint64>()> serverTotalWords; ///< None before it is known.
        std::function<void(const QString &)> copyText;           ///< To the clipboard, exactly.
        UndoOffer &undoOffer;
        bool canWatchKeys = true; ///< Where the desktop does not let it, no key is taught, but another way.
    };

    explicit HomeView(const Collaborators &collaborators);

    /// Until it was dismissed once, on this machine. It teaches the key.
    [[nodiscard]] bool isHeroCardShown() const { return m_isHeroCardShown; }
    Q_INVOKABLE void dismissHeroCard();

    /// The key's name is bold, as styled text.
    [[nodiscard]] QString heroTitle() const;
    [[nodiscard]] QString heroText() const;
    [[nodiscard]] QString keyLabel() const;
    [[nodiscard]] QString emptyText() const;

    [[nodiscard]] const QList<StatisticCard> &statistics() const { return m_statistics; }

    /// Latest first.
    [[nodiscard]] RowModel<HistoryRow> *history() { return &m_history; }
    [[nodiscard]] bool isHistoryEmpty() const { return m_history.rows().isEmpty(); }

    Q_INVOKABLE void copy(const QString &entryId);
    /// Deletes the entry and offers it back for a few seconds.
    Q_INVOKABLE void remove(const QString &entryId);

    /// Computes everything afresh: the account's totals came in, somebody signed in or out, the window is shown.
    void refresh();

Q_SIGNALS:
    void heroCardChanged();
    void triggerKeyChanged();
    void statisticsChanged();
    void historyChanged();

private:
    void loadHeroCard();
    void showHeroCard(bool isShown);
    void loadHistory();
    void loadStatistics();
    void waitForTomorrow();

    Collaborators m_with;
    bool m_isHeroCardShown = true;
    QList<StatisticCard> m_statistics;
    RowModel<HistoryRow> m_history;
    MainQueue::Timer m_tomorrow;
};

} // namespace velmo
