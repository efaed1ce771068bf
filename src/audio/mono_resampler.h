#pragma once

#include "base/interface.h"

#include <memory>
#include <span>
#include <vector>

struct soxr;

namespace velmo {

/// Brings sound to the rate of speech recognition (`kSpeechRate`), in a stream. The filter looks ahead, so samples
/// come out later than they went in, and not evenly: a block may yield more than its share, the next one less. One
/// thread at a time.
class MonoResampler : private Unmovable {
public:
    /// Nothing when the rate cannot be converted.
    [[nodiscard]] static std::unique_ptr<MonoResampler> create(int inputRate);
    ~MonoResampler();

    /// Takes one block and answers at most `capacity` converted samples; what there is more stays for the next call.
    /// The samples are valid until then.
    [[nodiscard]] std::span<const float> convert(std::span<const float> block, std::size_t capacity);

    /// Answers all that is left; nothing may be converted after it. In sum, N samples in have given
    /// round(N × speech rate ÷ input rate) out.
    [[nodiscard]] std::span<const float> finish();

private:
    struct Progress {
        std::size_t used = 0; ///< Samples taken in.
        std::size_t made = 0; ///< Samples put out.
    };

    explicit MonoResampler(soxr *stream);
    Progress process(const float *samples, std::size_t count);
    void forgetTaken();

    soxr *m_stream;
    std::vector<float> m_ready;
    std::size_t m_taken = 0; ///< How many of the ready ones the last call answered.
};

} // namespace velmo
