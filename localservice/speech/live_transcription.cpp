#include "localservice/speech/live_transcription.h"

#include "localservice/speech/engine_pool.h"
#include "localservice/speech/transcript_reply.h"

#include <algorithm>
#include <cstring>
#include <vector>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// Hint words and all; the recording has begun by then.
constexpr qsizetype kLargestStart = 64LL * 1024;

/// The header of a WAVE file, but for the two sizes in it (bytes 4 to 7 and 40 to 43).
constexpr qsizetype kHeaderSize = 44;
constexpr QByteArrayView kBeforeFirstSize("RIFF", 4);
constexpr QByteArrayView kBetweenSizes("WAVEfmt \x10\0\0\0\x01\0\x01\0\x80\x3e\0\0\0\x7d\0\0\x02\0\x10\0data",
                                       32);

bool isVelmosWave(QByteArrayView header) {
    return header.first(4) == kBeforeFirstSize && header.sliced(8, kBetweenSizes.size()) == kBetweenSizes;
}

constexpr qsizetype kMostSamples = static_cast<qsizetype>(kLongestSoundSeconds) * Sound::samplesPerSecond;

} // namespace

LiveTranscription::LiveTranscription(SpeechRecognition &speech, LiveRecordings &recordings,
                                     const Request &request)
    : m_speech(speech),
      m_recordings(recordings),
      m_contentType(request.header("Content-Type").value_or(QByteArray())),
      m_end(live::endOfBody(m_contentType)),
      m_isAbandoned(request.isAbandoned) {
    if (const auto wrong = faultInHeaders(request))
        refuse({400, *wrong});
}

bool LiveTranscription::take(QByteArrayView bytes) {
    if (m_refusal)
        return false;
    m_held += bytes;
    if (!m_session)
        begin();
    if (m_session)
        appendSound();
    return !m_refusal;
}

void LiveTranscription::begin() {
    const qsizetype audio = live::startOfAudio(m_held);
    if (audio >= 0 && m_held.size() >= audio + kHeaderSize)
        begin(audio);
    else if (m_held.size() > kLargestStart)
        refuse({400, u"The recording does not begin within the first 64 KiB of the body."_s});
}

void LiveTranscription::begin(qsizetype audio) {
    auto upload = live::parseStart(m_contentType, QByteArrayView(m_held).first(audio));
    if (!upload) {
        refuse({400, upload.error()});
        return;
    }
    if (!isVelmosWave(QByteArrayView(m_held).sliced(audio, kHeaderSize))) {
        refuse({400, u"A recording that is still being made has to be a WAVE file of one channel, 16 kHz and "
                     "16 bits."_s});
        return;
    }
    auto session = m_speech.begin(std::move(*upload), m_patience);
    if (!session) {
        refuse(session.error());
        return;
    }
    m_session = std::move(*session);
    m_recordings.add(m_contentType.sliced(m_contentType.indexOf('=') + 1), m_session);
    m_held.remove(0, audio + kHeaderSize);
}

void LiveTranscription::appendSound() {
    const qsizetype count = std::max<qsizetype>(m_held.size() - m_end.size(), 0) / 2;
    if (count == 0)
        return;
    m_samples += count;
    if (m_samples > kMostSamples) {
        refuse({413, u"The recording is longer than %1 minutes."_s.arg(kLongestSoundSeconds / 60)});
        return;
    }
    std::vector<int16_t> samples(static_cast<size_t>(count));
    std::memcpy(samples.data(), m_held.constData(), samples.size() * 2); // little-endian, as the machine is
    m_session->append(samples);
    m_held.remove(0, count * 2);
}

Reply LiveTranscription::finish() {
    if (!m_refusal && m_session && m_held == m_end) {
        m_patience->endAt(Patience::Clock::now() + EnginePool::longestWait);
        return transcriptReply(m_session->finish(m_isAbandoned));
    }
    return refusalReply(
        m_refusal.value_or(Refusal{400, u"The body does not end with the closing boundary."_s}));
}

} // namespace velmo::localservice
