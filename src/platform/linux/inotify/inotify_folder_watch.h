#pragma once

#include "platform/folder_watch.h"

#include <memory>
#include <vector>

namespace velmo {

/// Watches folders by inotify: the kernel wakes the event loop only when something happened.
class InotifyFolderWatch final : public FolderWatch {
public:
    InotifyFolderWatch();
    ~InotifyFolderWatch() override;

    [[nodiscard]] bool watch(const QString &folder, const QString &namePrefix,
                             std::function<void()> changed) override;

private:
    class Watch;
    std::vector<std::unique_ptr<Watch>> m_watches;
};

} // namespace velmo
