#include "localservice/download_display.h"

#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr double kMebibyte = 1024.0 * 1024;
constexpr std::chrono::milliseconds kPeriod{250};

QString timeLeft(double seconds) {
    if (seconds < 90)
        return u"%1 s left"_s.arg(seconds, 0, 'f', 0);
    return u"%1 min left"_s.arg(seconds / 60, 0, 'f', 0);
}

} // namespace

QString downloadLine(const QString &name, const DownloadProgress &progress, qint64 cameNow, double seconds) {
    const auto mebibytes = [](qint64 bytes) {
        return QString::number(static_cast<double>(bytes) / kMebibyte, 'f', 0);
    };
    QString line =
        progress.total > 0
            ? u"%1: %2 % of %3 MiB"_s.arg(name, QString::number(100 * progress.received / progress.total),
                                          mebibytes(progress.total))
            : u"%1: %2 MiB"_s.arg(name, mebibytes(progress.received));
    if (cameNow <= 0 || seconds <= 0)
        return line;
    const double rate = static_cast<double>(cameNow) / seconds;
    line += u", %1 MiB/s"_s.arg(rate / kMebibyte, 0, 'f', 1);
    if (progress.total > progress.received)
        line += u", "_s + timeLeft(static_cast<double>(progress.total - progress.received) / rate);
    return line;
}

DownloadDisplay::DownloadDisplay(QString name)
    : m_name(std::move(name)), m_isTerminal(::isatty(STDERR_FILENO) == 1) {}

void DownloadDisplay::show(const DownloadProgress &progress) {
    const auto now = Clock::now();
    if (progress.total == 0 && !m_isTerminal)
        return;
    if (m_first < 0)
        m_first = progress.received;
    const qint64 tenth = progress.total > 0 ? 10 * progress.received / progress.total : 0;
    if (m_isTerminal ? now - m_shown < kPeriod : tenth == m_tenth)
        return;
    m_shown = now;
    m_tenth = tenth;
    write(progress, now);
}

void DownloadDisplay::write(const DownloadProgress &progress, Clock::time_point now) {
    const double seconds = std::chrono::duration<double>(now - m_begun).count();
    const QByteArray line = downloadLine(m_name, progress, progress.received - m_first, seconds).toUtf8();
    if (m_isTerminal)
        std::fprintf(stderr, "\r\033[K%s", line.constData());
    else
        std::fprintf(stderr, "%s\n", line.constData());
    std::fflush(stderr);
}

void DownloadDisplay::end() {
    if (m_isTerminal && m_first >= 0)
        std::fputs("\r\033[K", stderr);
}

} // namespace velmo::localservice
