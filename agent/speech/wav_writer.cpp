#include "agent/speech/wav_writer.h"

#include "agent/speech/synthesizer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <string>

namespace voxtrel::agent::speech {

namespace {

constexpr std::uint32_t kUnknownLength = 0xFFFFFFFF;
constexpr std::uint32_t kHeaderBytesAfterSize = 36;
constexpr int kSampleBytes = 2;

void Append(std::string& to, std::uint32_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        to += static_cast<char>((value >> (8 * i)) & 0xFF);
}

} // namespace

WavWriter::WavWriter(std::ostream& out) : out_(out), start_(out.tellp())
{
    if (start_ == std::ostream::pos_type(-1))
        out_.clear(); // a pipe cannot tell, and that is no failure
    WriteHeader(start_ == std::ostream::pos_type(-1) ? kUnknownLength : 0);
}

bool WavWriter::Write(std::span<const std::int16_t> samples)
{
    static_assert(std::endian::native == std::endian::little, "samples go out as they lie in memory");
    out_.write(reinterpret_cast<const char*>(samples.data()),
               static_cast<std::streamsize>(samples.size_bytes()));
    bytes_ += samples.size_bytes();
    return out_.good();
}

bool WavWriter::UpdateHeader()
{
    if (start_ == std::ostream::pos_type(-1))
        return out_.flush().good();
    const auto end = out_.tellp();
    out_.seekp(start_);
    WriteHeader(
        static_cast<std::uint32_t>(std::min<std::uint64_t>(bytes_, kUnknownLength - kHeaderBytesAfterSize)));
    out_.seekp(end);
    return out_.flush().good();
}

void WavWriter::WriteHeader(std::uint32_t dataBytes)
{
    std::string header = "RIFF";
    Append(header, dataBytes == kUnknownLength ? dataBytes : dataBytes + kHeaderBytesAfterSize, 4);
    header += "WAVEfmt ";
    Append(header, 16, 4); // bytes of the format
    Append(header, 1, 2);  // plain samples
    Append(header, 1, 2);  // channels
    Append(header, kSampleRate, 4);
    Append(header, kSampleRate * kSampleBytes, 4);
    Append(header, kSampleBytes, 2);
    Append(header, 8 * kSampleBytes, 2);
    header += "data";
    Append(header, dataBytes, 4);
    out_.write(header.data(), static_cast<std::streamsize>(header.size()));
}

} // namespace voxtrel::agent::speech
