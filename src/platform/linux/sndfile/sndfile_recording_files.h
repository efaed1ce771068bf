#pragma once

#include "platform/recording_files.h"

#include <memory>

namespace velmo {

/// By libsndfile. A file carries an exclusive lock (flock) from its making to its removal, so other processes can
/// tell the recordings of a running Velmo from those a crash left: the system drops the lock with the process.
[[nodiscard]] std::unique_ptr<RecordingFiles> makeSndfileRecordingFiles();

} // namespace velmo
