// What a character file costs: opening it, unpacking its images beside zlib inflating as many bytes, and
// packing them beside a search that misses no match.

#include "agent/acs/compression.h"
#include "agent/acs/file_images.h"
#include "agent/acs/format.h"
#include "agent/acs/reader.h"
#include "agent/acs/unicode.h"
#include "agent/acs/writer.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace voxtrel::agent::acs {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kLargeFile = 5'500'000; // bytes, without its sounds

CharacterFile Load(const std::filesystem::path& path)
{
    ReadOutcome read = LoadCharacterFile(path.wstring());
    if (!read.result.Ok()) {
        std::fprintf(stderr, "%s\n", Utf8FromWide(read.result.description).c_str());
        std::exit(1);
    }
    return std::move(read.character);
}

const CharacterFile& Genie()
{
    static const CharacterFile genie = Load(std::filesystem::path(VOXTREL_CHARACTERS) / "genie.acs");
    return genie;
}

// The images of the genie, over and over.
class RepeatedImages : public ImageSource {
public:
    explicit RepeatedImages(std::size_t times) : times_(times) {}
    std::size_t Count() const override { return times_ * Genie().images->Count(); }
    Image Decode(std::size_t index) const override
    {
        return Genie().images->Decode(index % Genie().images->Count());
    }

private:
    std::size_t times_;
};

// A file of more than five megabytes: a genie with more images and as many more animations.
class LargeFile {
public:
    LargeFile() : path_(std::filesystem::temp_directory_path() / "voxtrel-character-bench.acs")
    {
        const auto genie =
            std::filesystem::file_size(std::filesystem::path(VOXTREL_CHARACTERS) / "genie.acs");
        const std::size_t times = (kLargeFile + genie - 1) / genie;
        CharacterFile character = Genie();
        character.images = std::make_shared<RepeatedImages>(times);
        for (std::size_t i = 1; i < times; ++i)
            character.animations.insert(character.animations.end(), Genie().animations.begin(),
                                        Genie().animations.end());
        const Bytes bytes = WriteCharacterFile(character);
        std::ofstream stream(path_, std::ios::binary);
        stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    ~LargeFile() { std::filesystem::remove(path_); }
    LargeFile(const LargeFile&) = delete;
    LargeFile& operator=(const LargeFile&) = delete;

    const std::filesystem::path& Path() const { return path_; }

private:
    std::filesystem::path path_;
};

const LargeFile& Large()
{
    static const LargeFile file;
    return file;
}

std::size_t HeapInUse()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

void OpenLargeFile(benchmark::State& state)
{
    const std::filesystem::path& path = Large().Path();
    for (auto _ : state)
        benchmark::DoNotOptimize(Load(path));

    const std::size_t before = HeapInUse();
    const CharacterFile character = Load(path);
    state.counters["heap_KB"] = static_cast<double>(HeapInUse() - before) / 1024;
    state.counters["file_KB"] = static_cast<double>(std::filesystem::file_size(path)) / 1024;
}

// The rows of an image as they are packed.
Bytes Rows(const Image& image)
{
    const std::size_t stride = RowStride(image.width);
    Bytes rows(stride * static_cast<std::size_t>(image.height));
    for (int y = 0; y < image.height; ++y)
        std::copy_n(image.pixels.begin() + static_cast<std::ptrdiff_t>(y) * image.width, image.width,
                    rows.begin() + static_cast<std::ptrdiff_t>(stride) * (image.height - 1 - y));
    return rows;
}

const std::vector<Bytes>& AllRows()
{
    static const std::vector<Bytes> rows = [] {
        std::vector<Bytes> all;
        for (std::size_t i = 0; i < Genie().images->Count(); ++i)
            all.push_back(Rows(Genie().images->Decode(i)));
        return all;
    }();
    return rows;
}

std::int64_t AllRowBytes()
{
    std::int64_t bytes = 0;
    for (const Bytes& rows : AllRows())
        bytes += static_cast<std::int64_t>(rows.size());
    return bytes;
}

void DecodeAllImages(benchmark::State& state)
{
    for (auto _ : state) {
        for (std::size_t i = 0; i < Genie().images->Count(); ++i)
            benchmark::DoNotOptimize(Genie().images->Decode(i));
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * AllRowBytes());
}

void InflateAsManyBytes(benchmark::State& state)
{
    std::vector<Bytes> deflated;
    std::size_t size = 0;
    for (const Bytes& rows : AllRows()) {
        Bytes& packed = deflated.emplace_back(compressBound(rows.size()));
        uLongf length = packed.size();
        compress2(packed.data(), &length, rows.data(), rows.size(), Z_DEFAULT_COMPRESSION);
        packed.resize(length);
        size += length;
    }
    for (auto _ : state) {
        for (std::size_t i = 0; i < deflated.size(); ++i) {
            Bytes rows(AllRows()[i].size());
            uLongf length = rows.size();
            if (uncompress(rows.data(), &length, deflated[i].data(), deflated[i].size()) != Z_OK)
                state.SkipWithError("zlib does not inflate what it deflated");
            benchmark::DoNotOptimize(rows);
        }
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * AllRowBytes());
    state.counters["packed_KB"] = static_cast<double>(size) / 1024;
}

// The packing of a search that looks at every earlier place and takes the longest match.
std::size_t BestMatchBits(const Bytes& bytes)
{
    constexpr std::size_t kLongest = 4096, kFarthest = 1053247;
    constexpr int kLiteral = 9;
    std::size_t bits = 8 + 24 + 7 + 24; // first byte, end mark, what fills its byte, ones behind it
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t length = 0, distance = 0;
        for (std::size_t back = 1; back <= std::min(at, kFarthest); ++back) {
            std::size_t same = 0;
            while (same < kLongest && at + same < bytes.size() && bytes[at + same] == bytes[at + same - back])
                ++same;
            if (same > length)
                length = same, distance = back;
        }
        const bool far = distance > 4672;
        if (length < (far ? 3U : 2U)) {
            bits += kLiteral;
            ++at;
            continue;
        }
        const int place = distance <= 64     ? 2 + 6
                          : distance <= 576  ? 3 + 9
                          : distance <= 4672 ? 4 + 12
                                             : 4 + 20;
        const std::size_t extra = length - (far ? 3 : 2);
        int ones = 0;
        while ((std::size_t{2} << ones) - 1 <= extra)
            ++ones;
        bits += static_cast<std::size_t>(place + 2 * ones + 1);
        at += length;
    }
    return bits;
}

constexpr std::size_t kImagesPacked = 40; // of all, evenly: the thorough search is slow

void PackImages(benchmark::State& state)
{
    const std::size_t step = std::max<std::size_t>(1, AllRows().size() / kImagesPacked);
    std::size_t ours = 0, best = 0;
    for (auto _ : state) {
        ours = 0;
        for (std::size_t i = 0; i < AllRows().size(); i += step)
            ours += Compress(AllRows()[i]).size();
    }
    for (std::size_t i = 0; i < AllRows().size(); i += step)
        best += (BestMatchBits(AllRows()[i]) + 7) / 8;
    state.counters["packed_KB"] = static_cast<double>(ours) / 1024;
    state.counters["best_match_KB"] = static_cast<double>(best) / 1024;
    state.counters["of_best_match"] = static_cast<double>(ours) / static_cast<double>(best);
}

BENCHMARK(OpenLargeFile)->Unit(benchmark::kMillisecond);
BENCHMARK(DecodeAllImages)->Unit(benchmark::kMillisecond);
BENCHMARK(InflateAsManyBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(PackImages)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace
} // namespace voxtrel::agent::acs
