#include "localservice/speech/pocketsphinx/probe_sound.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

namespace velmo::localservice {

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kRate = Sound::samplesPerSecond;
constexpr double kSyllableSeconds = 0.12;
constexpr double kLoudness = 9000;

using Formants = std::array<double, 3>; // Hz

// The first three resonances of a man's voice in "father", "see", "boot", "bed", "law", "bat" (Peterson and
// Barney, 1952).
constexpr std::array<Formants, 6> kVowels = {{{730, 1090, 2440},
                                              {270, 2290, 3010},
                                              {300, 870, 2240},
                                              {530, 1840, 2480},
                                              {570, 840, 2410},
                                              {660, 1720, 2410}}};
constexpr Formants kHiss = {2500, 4500, 6000};
constexpr Formants kBandwidths = {80, 100, 150};

/// A resonance of the mouth: a second-order filter.
class Resonator {
public:
    double step(double input, double frequency, double bandwidth) {
        const double radius = std::exp(-kPi * bandwidth / kRate);
        const double output = (1 - radius) * input +
                              2 * radius * std::cos(2 * kPi * frequency / kRate) * m_last -
                              radius * radius * m_beforeLast;
        m_beforeLast = m_last;
        m_last = output;
        return output;
    }

private:
    double m_last = 0;
    double m_beforeLast = 0;
};

const Formants &vowel(size_t syllable) {
    return kVowels[(syllable * 5 + syllable % 3) % kVowels.size()];
}

bool isHiss(size_t syllable) {
    return syllable % 4 == 3;
}

/// Pulses of the vocal cords at a gently moving pitch.
class Voice {
public:
    double step(double second) {
        m_phase += (110 + 20 * std::sin(2 * kPi * 0.7 * second)) / kRate;
        if (m_phase < 1)
            return 0;
        m_phase -= 1;
        return 8;
    }

private:
    double m_phase = 0;
};

} // namespace

Sound probeSound(double seconds) {
    Sound sound;
    sound.samples.resize(static_cast<size_t>(seconds * kRate));
    std::array<Resonator, 3> mouth;
    Voice voice;
    std::minstd_rand noise; // always the same: what is measured is the machine
    for (size_t index = 0; index < sound.samples.size(); ++index) {
        const double second = static_cast<double>(index) / kRate;
        const auto syllable = static_cast<size_t>(second / kSyllableSeconds);
        const double within = second / kSyllableSeconds - static_cast<double>(syllable);
        const double pulse = voice.step(second);
        const double hiss = 3.0 * noise() / std::minstd_rand::max() - 1.5;
        double sum = 0;
        for (size_t formant = 0; formant < mouth.size(); ++formant) {
            const double glide = std::lerp(vowel(syllable)[formant], vowel(syllable + 1)[formant], within);
            const double frequency = isHiss(syllable) ? kHiss[formant] : glide;
            sum += mouth[formant].step(isHiss(syllable) ? hiss : pulse, frequency, kBandwidths[formant]);
        }
        const double loudness = kLoudness * (0.6 + 0.4 * std::sin(kPi * within));
        sound.samples[index] = static_cast<int16_t>(std::clamp(sum * loudness, -32000.0, 32000.0));
    }
    return sound;
}

} // namespace velmo::localservice
