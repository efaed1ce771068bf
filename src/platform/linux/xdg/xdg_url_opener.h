#pragma once

#include "platform/linux/xdg/detached_process.h"
#include "platform/url_opener.h"

#include <list>

namespace velmo {

/// Opens addresses by xdg-open, which knows the desktop's own ways.
class XdgUrlOpener final : public UrlOpener {
public:
    void open(const QString &address, Answer answer) override;

private:
    std::list<std::unique_ptr<DetachedProcess>> m_processes;
};

} // namespace velmo
