#include "platform/linux/xdg/xdg_url_opener.h"

using namespace Qt::StringLiterals;

namespace velmo {

void XdgUrlOpener::open(const QString &address, Answer answer) {
    const auto process = m_processes.emplace(m_processes.end());
    *process = std::make_unique<DetachedProcess>(u"xdg-open"_s, QStringList{address},
                                                 [this, process, answer = std::move(answer)](bool opened) {
                                                     m_processes.erase(process);
                                                     answer(opened);
                                                 });
}

} // namespace velmo
