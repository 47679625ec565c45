// Bit-level LZ77 of .acs files.
//
// A block is a zero byte, a bit stream, and filling of ones. Bits go from the lowest of a byte upwards. A 0
// bit is followed by 8 bits of a literal. A 1 bit starts a copy from the bytes already put out: a run of up
// to three ones picks the width of the distance, the distance follows, then a run of n ones closed by a zero
// and n more bits for the length. 24 ones in a row (the longest distance with all its bits set) end the
// stream.

#include "agent/acs/compression.h"

#include <algorithm>
#include <array>

namespace voxtrel::agent::acs {

namespace {

struct DistanceClass {
    int bits;
    std::size_t nearest;      // distance of the value 0
    std::size_t shortestCopy; // bytes
};

constexpr std::array<DistanceClass, 4> kDistances{{{6, 1, 2}, {9, 65, 2}, {12, 577, 2}, {20, 4673, 3}}};
constexpr int kMostDistanceOnes = 3;
constexpr int kMostLengthOnes = 11;
constexpr std::uint32_t kEndMark = 0xFFFFF;
constexpr std::size_t kFarthest = kDistances.back().nearest + kEndMark - 1;
constexpr std::size_t kMostExtraLength = 2 * ((std::size_t{1} << kMostLengthOnes) - 1);
constexpr std::size_t kLongestNearCopy = kDistances.front().shortestCopy + kMostExtraLength;
constexpr std::size_t kTrailingOnes = 3; // bytes after the one that holds the last of the end mark

class BitSource {
public:
    explicit BitSource(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    bool Exhausted() const { return exhausted_; }

    std::uint32_t Bits(int count)
    {
        std::uint32_t value = 0;
        for (int i = 0; i < count; ++i)
            value |= Bit() << i;
        return value;
    }

    // Counts ones up to most; the zero that ends a shorter run is consumed.
    int Ones(int most)
    {
        int ones = 0;
        while (ones < most && Bit() == 1)
            ++ones;
        return ones;
    }

    std::uint32_t Bit()
    {
        const std::size_t byte = position_ / 8;
        if (byte >= bytes_.size()) {
            exhausted_ = true;
            return 0;
        }
        const std::uint32_t bit = (bytes_[byte] >> (position_ % 8)) & 1u;
        ++position_;
        return bit;
    }

private:
    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0; // in bits
    bool exhausted_ = false;
};

class BitSink {
public:
    explicit BitSink(std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}

    void Bits(std::uint32_t value, int count)
    {
        for (int i = 0; i < count; ++i)
            Bit((value >> i) & 1u);
    }

    void Ones(int count) { Bits((1u << count) - 1, count); }

    void Bit(std::uint32_t bit)
    {
        if (used_ == 0)
            bytes_.push_back(0);
        bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | (bit << used_));
        used_ = (used_ + 1) % 8;
    }

    void FillWithOnes()
    {
        while (used_ != 0)
            Bit(1);
    }

private:
    std::vector<std::uint8_t>& bytes_;
    int used_ = 0; // bits of the last byte
};

struct Copy {
    std::size_t distance = 0;
    std::size_t length = 0; // 0 when there is nothing to copy
};

const DistanceClass& ClassOf(std::size_t distance)
{
    std::size_t found = kDistances.size() - 1;
    while (distance < kDistances[found].nearest)
        --found;
    return kDistances[found];
}

// Finds the longest earlier occurrence of what follows a position, through chains of equal byte pairs.
class MatchFinder {
public:
    explicit MatchFinder(std::span<const std::uint8_t> bytes)
        : bytes_(bytes), latest_(kPairs, kNone), earlier_(bytes.size(), kNone)
    {
    }

    void Add(std::size_t position)
    {
        if (position + 1 >= bytes_.size())
            return;
        std::uint32_t& latest = latest_[PairAt(position)];
        earlier_[position] = latest;
        latest = static_cast<std::uint32_t>(position);
    }

    // The nearest of the longest copies for the bytes at position; all positions before it have been added.
    Copy Longest(std::size_t position) const
    {
        Copy best;
        if (position + 1 >= bytes_.size())
            return best;
        int tries = kMostTries;
        for (std::uint32_t from = latest_[PairAt(position)]; from != kNone && tries > 0;
             from = earlier_[from]) {
            --tries;
            const std::size_t distance = position - from;
            if (distance > kFarthest)
                break;
            const DistanceClass& distanceClass = ClassOf(distance);
            const std::size_t length =
                SameBytes(from, position, distanceClass.shortestCopy + kMostExtraLength);
            if (length > best.length && length >= distanceClass.shortestCopy)
                best = {distance, length};
            if (length >= kLongestNearCopy || position + length == bytes_.size())
                break;
        }
        return best;
    }

private:
    static constexpr std::size_t kPairs = 0x10000;
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    static constexpr int kMostTries = 400;

    std::size_t PairAt(std::size_t position) const { return bytes_[position] | (bytes_[position + 1] << 8); }

    std::size_t SameBytes(std::size_t from, std::size_t to, std::size_t most) const
    {
        const std::size_t end = std::min(most, bytes_.size() - to);
        std::size_t length = 0;
        while (length < end && bytes_[from + length] == bytes_[to + length])
            ++length;
        return length;
    }

    std::span<const std::uint8_t> bytes_;
    std::vector<std::uint32_t> latest_;
    std::vector<std::uint32_t> earlier_;
};

void WriteCopy(BitSink& sink, const Copy& copy)
{
    const DistanceClass& distanceClass = ClassOf(copy.distance);
    const int ones = static_cast<int>(&distanceClass - kDistances.data());
    sink.Bit(1);
    sink.Ones(ones);
    if (ones < kMostDistanceOnes)
        sink.Bit(0);
    sink.Bits(static_cast<std::uint32_t>(copy.distance - distanceClass.nearest), distanceClass.bits);

    const std::size_t extra = copy.length - distanceClass.shortestCopy;
    int lengthOnes = 0;
    while ((std::size_t{2} << lengthOnes) - 1 <= extra)
        ++lengthOnes;
    sink.Ones(lengthOnes);
    sink.Bit(0);
    sink.Bits(static_cast<std::uint32_t>(extra - ((std::size_t{1} << lengthOnes) - 1)), lengthOnes);
}

} // namespace

std::optional<std::vector<std::uint8_t>> Decompress(std::span<const std::uint8_t> packed,
                                                    std::size_t unpackedSize)
{
    if (packed.empty() || packed.front() != 0)
        return std::nullopt;
    BitSource source(packed.subspan(1));
    std::vector<std::uint8_t> bytes;
    while (!source.Exhausted()) {
        if (source.Bit() == 0) {
            bytes.push_back(static_cast<std::uint8_t>(source.Bits(8)));
        } else {
            const DistanceClass& distanceClass =
                kDistances[static_cast<std::size_t>(source.Ones(kMostDistanceOnes))];
            const std::uint32_t value = source.Bits(distanceClass.bits);
            if (&distanceClass == &kDistances.back() && value == kEndMark) {
                if (bytes.size() != unpackedSize)
                    return std::nullopt;
                return bytes;
            }
            const std::size_t distance = value + distanceClass.nearest;
            const int lengthOnes = source.Ones(kMostLengthOnes + 1);
            if (distance > bytes.size() || lengthOnes > kMostLengthOnes)
                return std::nullopt;
            const std::size_t length =
                distanceClass.shortestCopy + ((std::size_t{1} << lengthOnes) - 1) + source.Bits(lengthOnes);
            if (length > unpackedSize - bytes.size())
                return std::nullopt;
            // Byte by byte: the copy may reach into what it puts out itself.
            for (std::size_t i = 0; i < length; ++i)
                bytes.push_back(bytes[bytes.size() - distance]);
        }
        if (bytes.size() > unpackedSize)
            return std::nullopt;
    }
    return std::nullopt;
}

std::vector<std::uint8_t> Compress(std::span<const std::uint8_t> bytes)
{
    std::vector<std::uint8_t> packed{0};
    BitSink sink(packed);
    MatchFinder finder(bytes);
    for (std::size_t position = 0; position < bytes.size();) {
        const Copy copy = finder.Longest(position);
        if (copy.length > 0) {
            WriteCopy(sink, copy);
        } else {
            sink.Bit(0);
            sink.Bits(bytes[position], 8);
        }
        const std::size_t next = position + std::max<std::size_t>(copy.length, 1);
        for (; position < next; ++position)
            finder.Add(position);
    }
    sink.Ones(24);
    sink.FillWithOnes();
    packed.insert(packed.end(), kTrailingOnes, 0xFF);
    return packed;
}

} // namespace voxtrel::agent::acs
