#pragma once

#include "base/collation.h"
#include "service/sync/list_pushes.h"
#include "service/wire/session_interfaces.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "ui/models/list_page.h"
#include "ui/models/undo_offer.h"

#include <QStringList>

namespace velmo::testing {

/// What the pages of somebody's stored lists need, and what they asked of the account.
template <class Queue>
struct ListDesk : Account, ListPushes {
    /// `fill` may store something before anybody reads it.
    explicit ListDesk(const std::function<void(MemoryPreferences &)> &fill = {}) {
        if (fill)
            fill(preferences);
    }

    [[nodiscard]] bool isLoggedIn() const override { return loggedIn; }
    void pushDictionary() override { pushes.append(QStringLiteral("dictionary")); }
    void pushSnippets() override { pushes.append(QStringLiteral("snippets")); }

    /// Stores a value as another process does.
    void storeElsewhere(const QString &key, const QString &value) {
        preferences.set(key, value);
        watch.noteWrite();
        queue.runPosted();
    }

    Queue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch{preferences, queue};
    Collation collation{QStringLiteral("nb_NO")};
    UndoOffer undoOffer{queue};
    ListPage page{preferences, watch, collation, *this, *this, undoOffer};
    bool loggedIn = true;
    QStringList pushes;
};

} // namespace velmo::testing
