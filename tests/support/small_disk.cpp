#include "support/small_disk.h"

#include <QFile>
#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

constexpr const char *kOptions = "size=400k,mode=700";

bool write(const char *path, const QByteArray &text) {
    QFile file(QString::fromUtf8(path));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

/// Becomes root of a user namespace, where there is a right to mount.
bool enterUserNamespace() {
    const auto user = QByteArray::number(::getuid());
    const auto group = QByteArray::number(::getgid());
    return ::unshare(CLONE_NEWUSER) == 0 && write("/proc/self/setgroups", "deny") &&
           write("/proc/self/uid_map", "0 " + user + " 1") &&
           write("/proc/self/gid_map", "0 " + group + " 1");
}

bool enterMountNamespace() {
    const bool entered = ::unshare(CLONE_NEWNS) == 0 || (enterUserNamespace() && ::unshare(CLONE_NEWNS) == 0);
    return entered && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace

SmallDisk::SmallDisk()
    : m_mounted(enterMountNamespace() && ::mount("tmpfs", QFile::encodeName(m_directory.path()).constData(),
                                                 "tmpfs", 0, kOptions) == 0) {}

SmallDisk::~SmallDisk() {
    if (m_mounted)
        ::umount2(QFile::encodeName(m_directory.path()).constData(), MNT_DETACH);
}

void SmallDisk::fill() const {
    const QByteArray name = QFile::encodeName(path(u"filler"_s));
    const int file = ::open(name.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    const QByteArray block(4096, 'x');
    while (::write(file, block.constData(), static_cast<size_t>(block.size())) > 0) {
    }
    ::close(file);
}

void SmallDisk::empty() const {
    QFile::remove(path(u"filler"_s));
}

void SmallDisk::setReadOnly(bool readOnly) const {
    const unsigned long flags = MS_REMOUNT | (readOnly ? MS_RDONLY : 0);
    ::mount("tmpfs", QFile::encodeName(m_directory.path()).constData(), "tmpfs", flags, kOptions);
}

} // namespace velmo::testing
