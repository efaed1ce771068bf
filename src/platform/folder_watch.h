#pragma once

#include "base/interface.h"

#include <QString>
#include <functional>

namespace velmo {

/// Tells when files are written, by whichever process. Main thread.
class FolderWatch : public Interface {
public:
    /// Ends every watch.

    /// Calls back soon after a file of the folder whose name begins so was written, made, moved there or removed;
    /// once for several of them, and sometimes for nothing.
    /// @return false when the folder cannot be watched: it does not exist, or the system has no watch left.
    [[nodiscard]] virtual bool watch(const QString &folder, const QString &namePrefix,
                                     std::function<void()> changed) = 0;
};

} // namespace velmo
