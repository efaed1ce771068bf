#include "platform/linux/inotify/inotify_folder_watch.h"

#include "base/interface.h"

#include <QFile>
#include <QSocketNotifier>
#include <array>
#include <sys/inotify.h>
#include <unistd.h>

namespace velmo {

namespace {

// Not IN_CLOSE_WRITE: a database keeps its files open.
constexpr uint32_t kEvents = IN_MODIFY | IN_CREATE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE;

class Descriptor : private Unmovable {
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    ~Descriptor() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    [[nodiscard]] int get() const { return m_descriptor; }

private:
    int m_descriptor;
};

} // namespace

class InotifyFolderWatch::Watch {
public:
    Watch(QByteArray namePrefix, std::function<void()> changed)
        : m_namePrefix(std::move(namePrefix)),
          m_changed(std::move(changed)),
          m_inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {}

    [[nodiscard]] bool start(const QByteArray &folder) {
        if (::inotify_add_watch(m_inotify.get(), folder.constData(), kEvents) < 0)
            return false;
        m_notifier = std::make_unique<QSocketNotifier>(m_inotify.get(), QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] {
            if (takeEvents())
                m_changed();
        });
        return true;
    }

private:
    /// Reads what has gathered; whether any of it concerns a watched file.
    bool takeEvents() {
        alignas(inotify_event) std::array<char, 4096> buffer;
        bool concernsUs = false;
        for (;;) {
            const ssize_t size = ::read(m_inotify.get(), buffer.data(), buffer.size());
            if (size <= 0)
                return concernsUs;
            for (ssize_t at = 0; at < size;) {
                const auto *event = reinterpret_cast<const inotify_event *>(buffer.data() + at);
                concernsUs = concernsUs || concerns(*event);
                at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
            }
        }
    }

    [[nodiscard]] bool concerns(const inotify_event &event) const {
        const bool isOverflow = (event.mask & IN_Q_OVERFLOW) != 0;
        return isOverflow || (event.len > 0 && QByteArray(event.name).startsWith(m_namePrefix));
    }

    QByteArray m_namePrefix;
    std::function<void()> m_changed;
    Descriptor m_inotify;
    std::unique_ptr<QSocketNotifier> m_notifier; // ends before the descriptor it listens to
};

InotifyFolderWatch::InotifyFolderWatch() = default;
InotifyFolderWatch::~InotifyFolderWatch() = default;

bool InotifyFolderWatch::watch(const QString &folder, const QString &namePrefix,
                               std::function<void()> changed) {
    auto watch = std::make_unique<Watch>(QFile::encodeName(namePrefix), std::move(changed));
    if (!watch->start(QFile::encodeName(folder)))
        return false;
    m_watches.push_back(std::move(watch));
    return true;
}

} // namespace velmo
