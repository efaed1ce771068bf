#pragma once

#include <QString>

namespace velmo {

class FolderWatch;
class HistoryStore;
class PreferenceWatch;
class Preferences;

/// The preferences, and what keeps this process in step with others that change them. All of it stays.
struct SharedPreferences {
    Preferences &preferences;
    QString path; ///< Of their file.
    PreferenceWatch &watch;
    FolderWatch &folder;
    HistoryStore &history;
};

/// From here on the watch looks whenever the file is written, and the history takes over what is stored. Makes the file
/// where there is none. Main thread.
void followOtherProcesses(const SharedPreferences &shared);

} // namespace velmo
