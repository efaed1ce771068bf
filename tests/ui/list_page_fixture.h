#pragma once

#include "base/collation.h"
#include "service/sync/list_pushes.h"
#include "service/wire/session_interfaces.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"
#include "ui/models/list_page.h"
#include "ui/models/undo_offer.h"

#include <QAbstractItemModel>
#include <gmock/gmock.h>

namespace velmo::testing {

/// What a page of a stored list needs, and what it asked of the account.
class ListPageTest : public ::testing::Test, protected Account, protected ListPushes {
protected:
    [[nodiscard]] bool isLoggedIn() const override { return loggedIn; }
    void pushDictionary() override { pushes.append(QStringLiteral("dictionary")); }
    void pushSnippets() override { pushes.append(QStringLiteral("snippets")); }

    /// Stores a value as another process does.
    void storeElsewhere(const QString &key, const QString &value) {
        preferences.set(key, value);
        watch.noteWrite();
        queue.runPosted();
    }

    ManualMainQueue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch{preferences, queue};
    Collation collation{QStringLiteral("nb_NO")};
    UndoOffer undoOffer{queue};
    ListPage page{preferences, watch, collation, *this, *this, undoOffer};
    bool loggedIn = true;
    QStringList pushes;
};

/// Writes down which rows of a model come and go: "+2..3", "-0..0".
class RowLog {
public:
    explicit RowLog(QAbstractItemModel &model) {
        const auto note = [this](const char *sign) {
            return [this, sign](const QModelIndex &, int first, int last) {
                m_changes.append(
                    QStringLiteral("%1%2..%3").arg(QLatin1StringView(sign)).arg(first).arg(last));
            };
        };
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &m_context, note("+"));
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &m_context, note("-"));
    }

    [[nodiscard]] QStringList take() { return std::exchange(m_changes, {}); }

private:
    QObject m_context;
    QStringList m_changes;
};

} // namespace velmo::testing
