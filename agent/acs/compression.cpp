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
#include <bit>
#include <cstring>
#include <utility>

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
constexpr int kLiteralBits = 9;
constexpr std::size_t kTrailingOnes = 3; // bytes after the one that holds the last of the end mark

// A bit stream, read through a word that is filled up before each step. Zeros follow its end.
class BitSource {
public:
    static constexpr int kAtHand = 56; // bits after a fill

    explicit BitSource(std::span<const std::uint8_t> bytes)
        : next_(bytes.data()), end_(bytes.data() + bytes.size())
    {
    }

    // Whether more bits were taken than there are.
    bool Exhausted() const { return count_ < 0; }

    void Fill()
    {
        static_assert(std::endian::native == std::endian::little);
        if (end_ - next_ >= static_cast<std::ptrdiff_t>(sizeof(word_))) {
            std::uint64_t more = 0;
            std::memcpy(&more, next_, sizeof(more));
            word_ |= more << count_;
            next_ += (63 - count_) / 8;
            count_ |= kAtHand;
            return;
        }
        for (; count_ <= kAtHand && next_ < end_; count_ += 8)
            word_ |= std::uint64_t{*next_++} << count_;
    }

    // The next bits, the first one lowest.
    std::uint64_t Word() const { return word_; }

    void Take(int bits)
    {
        word_ >>= bits;
        count_ -= bits;
    }

private:
    const std::uint8_t* next_;
    const std::uint8_t* end_;
    std::uint64_t word_ = 0;
    int count_ = 0; // bits of the word that count
};

constexpr std::uint32_t LowBits(std::uint64_t word, int count)
{
    return static_cast<std::uint32_t>(word & ((std::uint64_t{1} << count) - 1));
}

// What is unpacked, up to the size that is expected. Memory is set aside as it fills.
class Unpacked {
public:
    explicit Unpacked(std::size_t expected) : expected_(expected), bytes_(std::min(expected, kFirstSize)) {}

    std::size_t Size() const { return size_; }

    // False when there is no room for so many bytes.
    bool MakeRoom(std::size_t count)
    {
        if (count > expected_ - size_)
            return false;
        if (count > bytes_.size() - size_)
            bytes_.resize(std::min(expected_, std::max(2 * bytes_.size(), size_ + count)));
        return true;
    }

    // The following need room.
    void Literal(std::uint8_t byte) { bytes_[size_++] = byte; }

    // distance is from 1 to Size. The copy may reach into what it puts out itself: then it is done in pieces,
    // each as long as all that there is to repeat.
    void Copy(std::size_t distance, std::size_t length)
    {
        std::uint8_t* to = bytes_.data() + size_;
        const std::uint8_t* from = to - distance;
        size_ += length;
        while (length > 0) {
            const std::size_t piece = std::min(length, static_cast<std::size_t>(to - from));
            std::memcpy(to, from, piece);
            to += piece;
            length -= piece;
        }
    }

    std::vector<std::uint8_t> Release()
    {
        bytes_.resize(size_);
        return std::move(bytes_);
    }

private:
    static constexpr std::size_t kFirstSize = 0x10000;

    std::size_t expected_;
    std::vector<std::uint8_t> bytes_;
    std::size_t size_ = 0;
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

// A copy as it stands in the stream.
struct CopyCode {
    Copy copy;
    bool end = false; // the end mark, which is no copy
    int bits = 0;     // taken up in the stream; 0 for a length that does not exist
};

// word begins with the 1 bit of a copy.
CopyCode ReadCopy(std::uint64_t word)
{
    const int ones = std::min(std::countr_one(word >> 1), kMostDistanceOnes);
    const DistanceClass& distanceClass = kDistances[static_cast<std::size_t>(ones)];
    int bits = 1 + ones + (ones < kMostDistanceOnes ? 1 : 0);
    const std::uint32_t value = LowBits(word >> bits, distanceClass.bits);
    bits += distanceClass.bits;
    if (ones == kMostDistanceOnes && value == kEndMark)
        return {{}, true, bits};

    const int lengthOnes = std::countr_one(word >> bits);
    if (lengthOnes > kMostLengthOnes)
        return {};
    bits += lengthOnes + 1;
    const std::size_t extra = ((std::size_t{1} << lengthOnes) - 1) + LowBits(word >> bits, lengthOnes);
    bits += lengthOnes;
    return {{value + distanceClass.nearest, distanceClass.shortestCopy + extra}, false, bits};
}

} // namespace

std::optional<std::vector<std::uint8_t>> Decompress(std::span<const std::uint8_t> packed,
                                                    std::size_t unpackedSize)
{
    if (packed.empty() || packed.front() != 0)
        return std::nullopt;
    BitSource source(packed.subspan(1));
    Unpacked unpacked(unpackedSize);
    while (!source.Exhausted()) {
        source.Fill();
        if ((source.Word() & 1) == 0) {
            if (!unpacked.MakeRoom(1))
                return std::nullopt;
            unpacked.Literal(static_cast<std::uint8_t>(source.Word() >> 1));
            source.Take(kLiteralBits);
            continue;
        }
        const CopyCode code = ReadCopy(source.Word());
        if (code.end) {
            source.Take(code.bits);
            if (source.Exhausted() || unpacked.Size() != unpackedSize)
                return std::nullopt;
            return unpacked.Release();
        }
        if (code.bits == 0 || code.copy.distance > unpacked.Size() || !unpacked.MakeRoom(code.copy.length))
            return std::nullopt;
        unpacked.Copy(code.copy.distance, code.copy.length);
        source.Take(code.bits);
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
