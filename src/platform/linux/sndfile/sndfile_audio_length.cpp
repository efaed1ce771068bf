#include "platform/linux/sndfile/sndfile_audio_length.h"

#include <QFile>
#include <QFileInfo>
#include <sndfile.h>

namespace velmo {

namespace {

class SndfileAudioLength final : public AudioLength {
public:
    [[nodiscard]] std::optional<double> seconds(const QString &path) const override {
        if (!QFileInfo(path).isFile())
            return std::nullopt; // opening a pipe would wait for its writer
        SF_INFO info{};
        SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
        if (!file)
            return std::nullopt;
        sf_close(file);
        // Streams without a length say so with SF_COUNT_MAX.
        if (info.samplerate <= 0 || info.frames < 0 || info.frames == SF_COUNT_MAX)
            return std::nullopt;
        return static_cast<double>(info.frames) / info.samplerate;
    }
};

} // namespace

std::unique_ptr<AudioLength> makeSndfileAudioLength() {
    return std::make_unique<SndfileAudioLength>();
}

} // namespace velmo
