#include "platform/linux/xdg/xdg_url_opener.h"

namespace velmo {

void XdgUrlOpener::open(const QString &address, Answer answer) {
    const auto process = m_processes.emplace(m_processes.end());
    *process = std::make_unique<DetachedProcess>(QStringLiteral("xdg-open"), QStringList{address},
                                                 [this, process, answer = std::move(answer)](bool opened) {
                                                     m_processes.erase(process);
                                                     answer(opened);
                                                 });
}

} // namespace velmo
