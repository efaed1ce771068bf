#include "dictation/capture/recording_paths.h"

#include "base/uuid.h"
#include "platform/recording_files.h"

#include <QDir>
#include <QUuid>

namespace velmo {

namespace {

constexpr QLatin1StringView kPrefix("velmo-recording-");
constexpr QLatin1StringView kSuffix(".wav");

bool isRecordingName(const QString &name) {
    if (!name.startsWith(kPrefix) || !name.endsWith(kSuffix))
        return false;
    return !QUuid::fromString(QStringView(name).sliced(kPrefix.size()).chopped(kSuffix.size())).isNull();
}

} // namespace

QString newRecordingPath(const QString &directory) {
    return QDir(directory).filePath(kPrefix + newUpperUuid() + kSuffix);
}

void removeAbandonedRecordings(RecordingFiles &files, const QString &directory) {
    const QDir recordings(directory);
    for (const QString &name : recordings.entryList(QDir::Files | QDir::NoSymLinks)) {
        if (isRecordingName(name))
            files.removeIfAbandoned(recordings.filePath(name));
    }
}

} // namespace velmo
