#pragma once

#include "platform/microphone.h"

#include <cmath>
#include <optional>
#include <vector>

namespace velmo::testing {

/// A microphone that opens, delivers and fails when a test says so; one capture at a time.
class FakeMicrophone final : public Microphone {
public:
    std::optional<CaptureFormat> format = CaptureFormat{48000, 1}; ///< Nothing: it never answers.
    std::optional<QString> failure;
    std::chrono::nanoseconds clock{0}; ///< The capture time of the next frame.
    int openings = 0;

    [[nodiscard]] std::unique_ptr<Capture> open(CaptureListener &listener) override {
        ++openings;
        m_listener = &listener;
        if (failure)
            fail(*failure);
        else if (format)
            listener.opened(*format);
        return std::make_unique<Open>(*this);
    }
    [[nodiscard]] bool isOpen() const { return m_listener; }

    void fail(const QString &reason) { m_listener->ended({reason}); }

    /// The same sample again and again, in fragments as odd as a sound server's.
    void deliver(std::chrono::milliseconds duration, float sample) {
        deliver(std::vector<float>(samplesIn(duration), sample));
    }

    void deliver(const std::vector<float> &samples) {
        const std::size_t fragment = 441 * static_cast<std::size_t>(format->channels);
        for (std::size_t at = 0; at < samples.size(); at += fragment) {
            const auto part = std::span(samples).subspan(at).first(std::min(fragment, samples.size() - at));
            if (m_listener)
                m_listener->captured(part, clock);
            clock += std::chrono::nanoseconds(1000000000LL * static_cast<long long>(part.size()) /
                                              format->channels / format->sampleRate);
        }
    }

    [[nodiscard]] std::size_t samplesIn(std::chrono::milliseconds duration) const {
        return static_cast<std::size_t>(duration.count() * format->sampleRate / 1000 * format->channels);
    }

private:
    class Open final : public Capture {
    public:
        explicit Open(FakeMicrophone &microphone) : m_microphone(microphone) {}
        ~Open() override { m_microphone.m_listener = nullptr; }

    private:
        FakeMicrophone &m_microphone;
    };

    CaptureListener *m_listener = nullptr;
};

} // namespace velmo::testing
