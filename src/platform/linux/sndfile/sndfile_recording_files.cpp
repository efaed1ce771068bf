#include "platform/linux/sndfile/sndfile_recording_files.h"

#include "audio/speech_rate.h"
#include "base/interface.h"

#include <QByteArray>
#include <QFile>
#include <cerrno>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <sndfile.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// An open file of ours; closing it gives up its lock.
class Descriptor : private Unmovable {
public:
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor &&other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor &operator=(Descriptor &&) = delete;
    ~Descriptor() {
        if (isOpen())
            ::close(m_number);
    }

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }
    [[nodiscard]] int number() const { return m_number; }

private:
    int m_number;
};

struct stat statusOf(const Descriptor &file) {
    struct stat status {};
    ::fstat(file.number(), &status);
    return status;
}

/// Makes a file and locks it. A starting Velmo may find the file before it is locked, take it for abandoned and
/// remove it; then it is made again. Not open when it cannot be made; errno says why.
Descriptor makeLocked(const QByteArray &name) {
    for (;;) {
        Descriptor file(::open(name.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR));
        if (!file.isOpen())
            return file;
        ::flock(file.number(), LOCK_EX);
        if (statusOf(file).st_nlink > 0)
            return file;
    }
}

RecordingFileFailure failureOf(int error) {
    if (error == ENOSPC || error == EDQUOT)
        return {u"The disk is full."_s};
    if (error == EACCES || error == EPERM || error == EROFS)
        return {u"The recording may not be written to the temporary directory."_s};
    return {u"The recording file could not be written."_s};
}

class SndfileRecordingFile final : public RecordingFile {
public:
    explicit SndfileRecordingFile(SNDFILE *file) : m_file(file) {}
    ~SndfileRecordingFile() override { sf_close(m_file); }

    Result<void, RecordingFileFailure> write(std::span<const float> samples) override {
        const auto count = static_cast<sf_count_t>(samples.size());
        errno = 0;
        if (sf_write_float(m_file, samples.data(), count) == count)
            return {};
        const auto failure = failureOf(errno);
        // A failed write leaves the library right behind the header, where the next one would overwrite the beginning.
        sf_seek(m_file, 0, SEEK_END);
        return failed(failure);
    }

private:
    SNDFILE *m_file;
};

/// Begins a WAVE file in an empty one. The descriptor stays the caller's and outlives what is answered.
std::unique_ptr<RecordingFile> beginWave(const Descriptor &file) {
    SF_INFO info{};
    info.samplerate = kSpeechRate;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    SNDFILE *wave = sf_open_fd(file.number(), SFM_WRITE, &info, SF_FALSE);
    if (!wave)
        return nullptr;
    sf_command(wave, SFC_SET_UPDATE_HEADER_AUTO, nullptr, SF_TRUE);
    sf_command(wave, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    return std::make_unique<SndfileRecordingFile>(wave);
}

class SndfileRecordingFiles final : public RecordingFiles {
public:
    Result<std::unique_ptr<RecordingFile>, RecordingFileFailure> create(const QString &path) override;
    void remove(const QString &path) override;
    bool removeIfAbandoned(const QString &path) override;

private:
    std::mutex m_mutex;
    std::map<QString, Descriptor> m_ours; ///< What this process has locked, by path.
};

Result<std::unique_ptr<RecordingFile>, RecordingFileFailure>
SndfileRecordingFiles::create(const QString &path) {
    const QByteArray name = QFile::encodeName(path);
    Descriptor file = makeLocked(name);
    if (!file.isOpen())
        return failed(failureOf(errno));
    errno = 0;
    std::unique_ptr<RecordingFile> recording = beginWave(file);
    if (!recording) {
        const auto failure = failureOf(errno);
        ::unlink(name.constData());
        return failed(failure);
    }
    const std::lock_guard lock(m_mutex);
    m_ours.emplace(path, std::move(file));
    return recording;
}

void SndfileRecordingFiles::remove(const QString &path) {
    ::unlink(QFile::encodeName(path).constData());
    const std::lock_guard lock(m_mutex);
    m_ours.erase(path);
}

bool SndfileRecordingFiles::removeIfAbandoned(const QString &path) {
    const QByteArray name = QFile::encodeName(path);
    // The temporary directory is everybody's: links are not followed and a pipe does not hold us up.
    const Descriptor file(::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file.isOpen())
        return false;
    const struct stat status = statusOf(file);
    return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
           ::flock(file.number(), LOCK_EX | LOCK_NB) == 0 && ::unlink(name.constData()) == 0;
}

} // namespace

std::unique_ptr<RecordingFiles> makeSndfileRecordingFiles() {
    return std::make_unique<SndfileRecordingFiles>();
}

} // namespace velmo
