#include "agent/acs/compression.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace voxtrel::agent::acs {

namespace {

using Bytes = std::vector<std::uint8_t>;

struct Packing {
    const char* what;
    Bytes unpacked;
    Bytes packed;
};

Bytes Repeated(const Bytes& piece, int times)
{
    Bytes bytes;
    for (int i = 0; i < times; ++i)
        bytes.insert(bytes.end(), piece.begin(), piece.end());
    return bytes;
}

Bytes EmptyRegion()
{
    Bytes region(32, 0);
    region[0] = 0x20;
    region[4] = 0x01;
    region[12] = 0xA8;
    return region;
}

std::vector<Packing> KnownPackings()
{
    return {
        {"an empty region",
         EmptyRegion(),
         {0x00, 0x40, 0x00, 0x04, 0x10, 0xD0, 0x90, 0x80, 0x42, 0xED, 0x98, 0x01, 0xB7, 0xFF, 0xFF, 0xFF,
          0xFF, 0xFF, 0xFF}},
        {"one byte", {0x41}, {0x00, 0x82, 0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
        {"40 equal bytes",
         Repeated({0x41}, 40),
         {0x00, 0x82, 0x02, 0x3E, 0xF3, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
        {"three bytes 20 times",
         Repeated({0x61, 0x62, 0x63}, 20),
         {0x00, 0xC2, 0x88, 0x19, 0x4B, 0xF8, 0xF0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
    };
}

Bytes Noise(std::size_t size, std::uint32_t seed, unsigned values = 256)
{
    std::mt19937 random(seed);
    Bytes bytes(size);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random() % values);
    return bytes;
}

void ExpectComesBack(const Bytes& bytes)
{
    const auto unpacked = Decompress(Compress(bytes), bytes.size());
    ASSERT_TRUE(unpacked.has_value());
    EXPECT_TRUE(*unpacked == bytes);
}

} // namespace

TEST(Decompress, UnpacksKnownBlocks)
{
    for (const Packing& known : KnownPackings()) {
        SCOPED_TRACE(known.what);
        EXPECT_EQ(Decompress(known.packed, known.unpacked.size()), known.unpacked);
    }
}

TEST(Compress, MakesTheKnownBlocks)
{
    for (const Packing& known : KnownPackings()) {
        SCOPED_TRACE(known.what);
        EXPECT_EQ(Compress(known.unpacked), known.packed);
    }
}

TEST(Compress, ComesBackForEveryLengthOfRun)
{
    for (std::size_t length = 0; length < 300; ++length)
        ExpectComesBack(Bytes(length, 7));
    for (std::size_t length = 4090; length < 4105; ++length)
        ExpectComesBack(Bytes(length, 7));
}

// A piece, noise between, the piece again: the copy is exactly that far away.
TEST(Compress, ComesBackAcrossEveryClassOfDistance)
{
    for (const std::size_t distance : {64u, 65u, 576u, 577u, 4672u, 4673u, 100000u, 1053247u, 1053248u}) {
        SCOPED_TRACE(distance);
        Bytes bytes = Noise(distance, 1, 250);
        const Bytes piece = Repeated({251, 252, 253}, 20);
        std::copy(piece.begin(), piece.end(), bytes.begin());
        bytes.insert(bytes.end(), piece.begin(), piece.end());
        ExpectComesBack(bytes);
    }
}

TEST(Compress, UsesTheFarthestDistance)
{
    constexpr std::size_t kFarthest = 1053247;
    Bytes near = Bytes(kFarthest, 1);
    const Bytes piece = Noise(200, 5);
    std::copy(piece.begin(), piece.end(), near.begin());
    Bytes far = near;
    far.insert(far.begin() + 1000, 1);
    near.insert(near.end(), piece.begin(), piece.end());
    far.insert(far.end(), piece.begin(), piece.end());
    EXPECT_LT(Compress(near).size() + 150, Compress(far).size());
    ExpectComesBack(near);
    ExpectComesBack(far);
}

TEST(Compress, ComesBackForRandomBytes)
{
    for (std::uint32_t seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(seed);
        ExpectComesBack(Noise(seed * 13, seed, 2 + seed % 40));
    }
}

TEST(Compress, MakesFlatPicturesSmall) { EXPECT_LT(Compress(Bytes(128 * 128, 10)).size(), 100u); }

TEST(Decompress, RefusesEveryTruncation)
{
    const Bytes bytes = Noise(500, 3, 6);
    const Bytes packed = Compress(bytes);
    // The end mark reaches into the first of the last six bytes.
    for (std::size_t size = 0; size < packed.size() - 6; ++size)
        EXPECT_FALSE(Decompress(std::span(packed).first(size), bytes.size()).has_value()) << size;
}

TEST(Decompress, RefusesAnotherSizeThanExpected)
{
    const Bytes packed = Compress(Bytes(40, 0x41));
    EXPECT_FALSE(Decompress(packed, 39).has_value());
    EXPECT_FALSE(Decompress(packed, 41).has_value());
    EXPECT_FALSE(Decompress(packed, std::size_t{1} << 40).has_value());
}

TEST(Decompress, RefusesAWrongFirstByte)
{
    Bytes packed = Compress(Bytes(40, 0x41));
    packed[0] = 1;
    EXPECT_FALSE(Decompress(packed, 40).has_value());
}

TEST(Decompress, RefusesACopyFromBeforeTheStart)
{
    // A copy as the very first thing: nothing has been put out that it could come from.
    EXPECT_FALSE(Decompress(Bytes{0x00, 0x01, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, 2).has_value());
}

TEST(Decompress, SurvivesRandomBytes)
{
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        Bytes packed = Noise(60, seed);
        packed[0] = 0;
        const auto unpacked = Decompress(packed, 300);
        if (unpacked.has_value()) {
            EXPECT_EQ(unpacked->size(), 300u);
        }
    }
}

} // namespace voxtrel::agent::acs
