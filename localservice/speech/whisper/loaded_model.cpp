#include "localservice/speech/whisper/loaded_model.h"

#include "localservice/models/model_file.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <malloc.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr int kUnavailable = 503;
constexpr qint64 kMebibyte = 1024LL * 1024;

/// In memory a model takes its file, and to work on it some more: 145 and 110 MB for "base", 1.5 and 0.3 GB for the largest.
qint64 memoryFor(qint64 fileSize) {
    return fileSize + fileSize / 8 + 128 * kMebibyte;
}

} // namespace

qint64 availableMemory() {
    static const QRegularExpression line(u"^MemAvailable: +(\\d+) kB$"_s,
                                         QRegularExpression::MultilineOption);
    QFile file(u"/proc/meminfo"_s);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const auto match = line.match(QString::fromLatin1(file.readAll()));
    return match.hasMatch() ? match.captured(1).toLongLong() * 1024 : -1;
}

Result<WhisperModel *, Refusal> LoadedModel::get(const QString &language) {
    const auto chosen = m_surroundings.modelFor(language);
    if (!chosen) {
        giveBack();
        return failed(Refusal{kUnavailable, chosen.error()});
    }
    const QFileInfo info(chosen->path);
    const File file{chosen->path, info.size(), info.lastModified()};
    if (!m_model || m_file != file) {
        giveBack();
        if (const auto loaded = load(file, chosen->name); !loaded)
            return failed(loaded.error());
    }
    m_lastUse = m_surroundings.now();
    return m_model.get();
}

Result<void, Refusal> LoadedModel::load(const File &file, const QString &name) {
    const QString remedy = u"Use another with 'velmo-local-service models use'."_s;
    if (const auto checked = checkModelFile(file.path); !checked)
        return failed(Refusal{kUnavailable, u"The speech model \"%1\" cannot be used. %2 %3"_s.arg(
                                                name, checked.error(), remedy)});
    const qint64 available = m_surroundings.availableMemory();
    const qint64 needed = memoryFor(file.size);
    if (available >= 0 && available < needed)
        return failed(Refusal{
            kUnavailable,
            u"The speech model \"%1\" needs about %2 MiB of memory, and %3 MiB are free. %4"_s.arg(
                name, QString::number(needed / kMebibyte), QString::number(available / kMebibyte), remedy)});
    m_model = WhisperModel::load(file.path);
    if (!m_model)
        return failed(
            Refusal{kUnavailable, u"The speech model \"%1\" could not be loaded. %2"_s.arg(name, remedy)});
    m_file = file;
    return {};
}

std::optional<LoadedModel::Clock::time_point> LoadedModel::restsAt() const {
    if (!m_model)
        return std::nullopt;
    return m_lastUse + m_surroundings.idle;
}

void LoadedModel::giveBack() {
    if (!m_model)
        return;
    m_model.reset();
    ::malloc_trim(0); // the heap would keep some of it
}

} // namespace velmo::localservice
