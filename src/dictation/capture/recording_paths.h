#pragma once

#include <QString>

namespace velmo {

class RecordingFiles;

/// A path nobody has used: "velmo-recording-0D4C7A52-….wav", with a fresh UUID, in the directory.
[[nodiscard]] QString newRecordingPath(const QString &directory);

/// Removes the recordings in the directory whose processes ended before they were done with them (a crash, a power
/// cut). Those of running processes and other files stay. Any thread; once at launch.
void removeAbandonedRecordings(RecordingFiles &files, const QString &directory);

} // namespace velmo
