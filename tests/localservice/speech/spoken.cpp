#include "localservice/speech/spoken.h"

#include "support/files.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace velmo::localservice::testing {

QByteArray spoken(const QString &sentence) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"spoken.wav"_s);
    QProcess::execute(u"flite"_s, {u"-voice"_s, u"rms"_s, u"-t"_s, sentence, u"-o"_s, path});
    return velmo::testing::contentOf(path);
}

} // namespace velmo::localservice::testing
