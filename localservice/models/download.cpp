#include "localservice/models/download.h"

#include "service/http/loopback.h"
#include "service/http/transport_failure.h"

#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <QUrl>
#include <curl/curl.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr int kNoSuchRange = 416;
constexpr int kPartOfFile = 206;
constexpr long kMostRedirections = 10;
constexpr long kConnectSeconds = 30;
constexpr long kStalledSeconds = 60;
constexpr qint64 kMebibyte = 1024LL * 1024;
constexpr qint64 kRoomLeft = 64 * kMebibyte; // for everybody else on the disk

class Download {
public:
    Download(const QString &address, const QString &path,
             const std::function<bool(const DownloadProgress &)> &progress)
        : m_address(address), m_file(path), m_progress(progress) {}

    Result<void, QString> run();

private:
    [[nodiscard]] Result<void, QString> failureFor(CURLcode code);
    void setUp();
    [[nodiscard]] bool begin();
    [[nodiscard]] int status() const;
    static size_t take(char *data, size_t size, size_t count, void *user);
    static int tell(void *user, curl_off_t total, curl_off_t received, curl_off_t, curl_off_t);

    struct Cleanup {
        void operator()(CURL *curl) const { curl_easy_cleanup(curl); }
    };

    QString m_address;
    QFile m_file;
    const std::function<bool(const DownloadProgress &)> &m_progress;
    std::unique_ptr<CURL, Cleanup> m_curl{curl_easy_init()};
    qint64 m_before = 0; ///< Bytes of an earlier attempt.
    bool m_hasBegun = false;
    QString m_fault; ///< Why we ended it ourselves.
};

int Download::status() const {
    long status = 0;
    curl_easy_getinfo(m_curl.get(), CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

void Download::setUp() {
    CURL *curl = m_curl.get();
    const QUrl url(m_address);
    const bool isSafe = url.scheme() == u"https";
    curl_easy_setopt(curl, CURLOPT_URL, url.toEncoded().constData());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    // Publishers send on to where their files lie; what was asked for safely stays so.
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, kMostRedirections);
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, isSafe ? "https" : "http,https");
    if (isLoopbackHost(url.host()))
        curl_easy_setopt(curl, CURLOPT_PROXY, "");
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, kConnectSeconds);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, kStalledSeconds);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, &Download::take);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, &Download::tell);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, this);
}

Result<void, QString> Download::run() {
    const QUrl url(m_address, QUrl::StrictMode);
    if (!url.isValid() || (url.scheme() != u"http" && url.scheme() != u"https") || url.host().isEmpty())
        return failed(u"'%1' is no address of a file."_s.arg(m_address));
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return failed(u"%1 cannot be written: %2."_s.arg(m_file.fileName(), m_file.errorString()));
    m_file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    m_before = m_file.size();
    m_file.seek(m_before);
    setUp();
    // By a header of our own: the library's way to go on ends in an error when a server begins anew.
    if (m_before > 0)
        curl_easy_setopt(m_curl.get(), CURLOPT_RANGE, (QByteArray::number(m_before) + '-').constData());
    auto outcome = failureFor(curl_easy_perform(m_curl.get()));
    if (outcome || m_file.size() > 0)
        return outcome;
    m_file.remove();
    return outcome;
}

/// With the head of the answer known: whether its body is to be taken.
bool Download::begin() {
    m_hasBegun = true;
    if (status() >= 300)
        return true; // a page of words, which is passed over
    if (status() != kPartOfFile) {
        m_before = 0;
        m_file.resize(0);
        m_file.seek(0);
    }
    curl_off_t left = 0;
    curl_easy_getinfo(m_curl.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &left);
    const qint64 free = QStorageInfo(QFileInfo(m_file).absolutePath()).bytesAvailable();
    if (left <= 0 || free >= left + kRoomLeft)
        return true;
    m_fault = u"The disk has %1 MiB free, and %2 MiB are needed."_s.arg(
        QString::number(free / kMebibyte), QString::number((left + kRoomLeft) / kMebibyte));
    return false;
}

size_t Download::take(char *data, size_t size, size_t count, void *user) {
    auto *self = static_cast<Download *>(user);
    const size_t length = size * count;
    if (!self->m_hasBegun && !self->begin())
        return 0;
    if (self->status() >= 300)
        return length;
    if (self->m_file.write(data, static_cast<qint64>(length)) == static_cast<qint64>(length))
        return length;
    self->m_fault =
        u"%1 could not be written: %2."_s.arg(self->m_file.fileName(), self->m_file.errorString());
    return 0;
}

int Download::tell(void *user, curl_off_t total, curl_off_t received, curl_off_t, curl_off_t) {
    auto *self = static_cast<Download *>(user);
    if (self->status() >= 300)
        return 0;
    const DownloadProgress progress{self->m_before + received, total > 0 ? self->m_before + total : 0};
    if (self->m_progress(progress))
        return 0;
    self->m_fault = u"The download was cancelled."_s;
    return 1;
}

Result<void, QString> Download::failureFor(CURLcode code) {
    if (!m_fault.isEmpty())
        return failed(m_fault);
    if (code == CURLE_PARTIAL_FILE)
        return failed(
            u"The download was cut off after %1 MiB. Begin it again, and it goes on from there."_s.arg(
                m_file.size() / kMebibyte));
    if (code != CURLE_OK)
        return failed(failureOf(code).description);
    if (status() == kNoSuchRange) // it was whole already, or is another file by now: the checksum tells
        return {};
    if (status() >= 300)
        return failed(
            u"There is no such file at %1 (status %2)."_s.arg(m_address, QString::number(status())));
    return {};
}

} // namespace

Result<void, QString> download(const QString &address, const QString &path,
                               const std::function<bool(const DownloadProgress &)> &progress) {
    return Download(address, path, progress).run();
}

} // namespace velmo::localservice
