#include "localservice/speech/speech_session.h"

#include "localservice/speech/engine_pool.h"
#include "localservice/speech/language_names.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// How soon it is noticed that nobody waits any more.
constexpr std::chrono::milliseconds kLookPeriod{50};

} // namespace

SpeechSession::SpeechSession(EnginePool &pool, std::unique_ptr<SoundCutter> cutter, Upload about,
                             std::shared_ptr<Patience> patience)
    : m_pool(pool),
      m_cutter(std::move(cutter)),
      m_about{std::move(about), {}, 0, std::make_shared<LanguageChoice>()},
      m_patience(std::move(patience)) {
    m_about.upload.audio.clear();
}

SpeechSession::~SpeechSession() {
    m_patience->giveUp();
}

void SpeechSession::append(std::span<const int16_t> samples) {
    enqueue(m_cutter->append(samples));
}

void SpeechSession::enqueue(std::vector<SoundPiece> pieces) {
    for (SoundPiece &piece : pieces) {
        Speech speech = m_about;
        speech.sound = std::move(piece.sound);
        speech.voiceSeconds = piece.voiceSeconds;
        const double seconds = speech.sound.seconds();
        auto outcome = m_pool.enqueue(std::move(speech), m_patience);
        const std::lock_guard lock(m_mutex);
        m_pieces.push_back({seconds, std::move(outcome)});
    }
}

QString SpeechSession::partialText() {
    const std::lock_guard lock(m_mutex);
    QStringList texts;
    for (Piece &piece : m_pieces) {
        if (!takeIfDone(piece))
            break;
        if (!piece.text.isEmpty())
            texts.append(piece.text);
    }
    return texts.join(u' ');
}

/// Under the lock. What a piece came to, if that is known.
bool SpeechSession::takeIfDone(Piece &piece) {
    if (piece.isDone)
        return true;
    if (piece.outcome.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return false;
    const SpeechOutcome outcome = piece.outcome.get();
    piece.isDone = true;
    if (outcome) {
        piece.text = outcome->text.trimmed();
        if (!m_language)
            m_language = outcome->detectedLanguage;
    } else if (!m_refusal) {
        m_refusal = outcome.error();
    }
    return true;
}

std::optional<SpeechSession::Rest> SpeechSession::rest() {
    const std::lock_guard lock(m_mutex);
    std::optional<Rest> rest;
    for (Piece &piece : m_pieces) {
        if (takeIfDone(piece))
            continue;
        if (!rest)
            rest = Rest{piece.outcome};
        rest->seconds += piece.seconds;
    }
    return m_refusal ? std::nullopt : rest;
}

SpeechOutcome SpeechSession::finish(const std::function<bool()> &isGone) {
    enqueue(m_cutter->finish());
    while (const auto left = rest()) {
        if (const auto refusal = m_pool.refusalForRest(left->seconds, *m_patience))
            return failed(*refusal);
        while (left->next.wait_for(kLookPeriod) != std::future_status::ready) {
            if (isGone && isGone())
                m_patience->giveUp();
        }
    }
    const QString text = partialText();
    const std::lock_guard lock(m_mutex);
    if (m_refusal)
        return failed(*m_refusal);
    // Nobody spoke: it would have been the primary one.
    return Transcript{text, m_language ? m_language : languageCode(m_about.upload.language)};
}

} // namespace velmo::localservice
