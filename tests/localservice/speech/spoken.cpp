#include "localservice/speech/spoken.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace velmo::localservice::testing {

QByteArray spoken(const QString &sentence) {
    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("spoken.wav")));
    QProcess::execute(QStringLiteral("flite"),
                      {QStringLiteral("-voice"), QStringLiteral("rms"), QStringLiteral("-t"), sentence,
                       QStringLiteral("-o"), file.fileName()});
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace velmo::localservice::testing
