#include "localservice/speech/whisper/thread_count.h"

#include <QFile>
#include <algorithm>
#include <thread>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// More gain little: the work is bound by the memory's speed.
constexpr int kMostThreads = 8;

} // namespace

int threadsForWork(int processors, const QByteArray &load) {
    const QByteArrayList fields = load.split(' ');
    const int running = fields.size() > 3 ? fields[3].split('/').first().toInt() : 1;
    const int most = std::min(processors, kMostThreads);
    return std::clamp(processors - std::max(running - 1, 0), std::min(most, 2), most);
}

int threadsForWork() {
    QFile load(u"/proc/loadavg"_s);
    const QByteArray line = load.open(QIODevice::ReadOnly) ? load.readAll() : QByteArray();
    return threadsForWork(static_cast<int>(std::max(std::thread::hardware_concurrency(), 1U)), line);
}

} // namespace velmo::localservice
