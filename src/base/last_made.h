#pragma once

#include <memory>
#include <mutex>

namespace velmo {

/// Keeps what was last made of a source, for things that take time to make and whose source is read afresh each time.
/// What is handed out stays valid when the next takes its place. Any thread.
template <class Source, class Made>
class LastMade {
public:
    /// What `make` answers; it is called only when the source is another than the last time.
    template <class Make>
    std::shared_ptr<const Made> of(const Source &source, Make make) {
        const std::lock_guard lock(m_mutex);
        if (!m_made || m_source != source) {
            m_made = std::make_shared<const Made>(make());
            m_source = source;
        }
        return m_made;
    }

private:
    std::mutex m_mutex;
    Source m_source;
    std::shared_ptr<const Made> m_made;
};

} // namespace velmo
