#include "app/process/preference_following.h"

#include "base/log.h"
#include "platform/folder_watch.h"
#include "store/history_store.h"
#include "store/preference_watch.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velmo {

void followOtherProcesses(const SharedPreferences &shared) {
    PreferenceWatch &watch = shared.watch;
    HistoryStore &history = shared.history;
    watch.follow(HistoryStore::storageKey, &history, [&history] { history.refresh(); });
    shared.preferences.ensureFile(); // and the folder to watch
    const QFileInfo file(shared.path);
    if (!shared.folder.watch(file.path(), file.fileName(), [&watch] { watch.noteWrite(); }))
        log(LogTag::Prefs, u"Changes of other processes cannot be noticed"_s);
}

} // namespace velmo
