#pragma once

#include <cstdint>
#include <ostream>
#include <span>

namespace voxtrel::agent::speech {

// Writes samples as a WAV stream: 16 bits, one channel, kSampleRate. Where the stream can be written again
// the header tells the true length after each UpdateHeader; elsewhere (a pipe) it says that the length is not
// known.
class WavWriter {
public:
    // Writes the header at once. out must outlive the writer.
    explicit WavWriter(std::ostream& out);

    // False once something could not be written.
    bool Write(std::span<const std::int16_t> samples);
    bool UpdateHeader();

private:
    void WriteHeader(std::uint32_t dataBytes);

    std::ostream& out_;
    std::ostream::pos_type start_;
    std::uint64_t bytes_ = 0;
};

} // namespace voxtrel::agent::speech
