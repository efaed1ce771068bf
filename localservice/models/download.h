#pragma once

#include "base/result.h"

#include <QString>
#include <functional>

namespace velmo::localservice {

/// How far a download is.
struct DownloadProgress {
    qint64 received = 0; ///< Bytes of the file, those of an earlier attempt among them.
    qint64 total = 0;    ///< 0: not known.
};

/// Fetches a file of any size over http or https into `path`, going on where an earlier attempt has left off, and waits for
/// it. The disk must have room for all of it before it begins. `progress` is told now and then; answering false ends the
/// download. What has come stays, for the next attempt. A sentence says why it is not whole.
[[nodiscard]] Result<void, QString> download(const QString &address, const QString &path,
                                             const std::function<bool(const DownloadProgress &)> &progress);

} // namespace velmo::localservice
