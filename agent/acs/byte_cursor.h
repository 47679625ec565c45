#pragma once

#include "agent/acs/unicode.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace voxtrel::agent::acs {

// A block of a file: where it starts, counted from the start of the file, and its length in bytes.
struct Locator {
    std::uint32_t offset = 0;
    std::uint32_t size = 0;
};

// Reads little-endian values off a block. A read past its end gives zero or nothing and turns Ok()
// false for good, so a structure is read straight through and judged once.
class ByteCursor {
public:
    // The block must outlive the cursor.
    explicit ByteCursor(std::span<const std::uint8_t> block) : block_(block) {}

    bool Ok() const { return ok_; }
    void Fail() { ok_ = false; }
    std::size_t Position() const { return position_; }
    std::size_t Left() const { return ok_ ? block_.size() - position_ : 0; }

    std::uint8_t U8() { return static_cast<std::uint8_t>(Integer(1)); }
    std::uint16_t U16() { return static_cast<std::uint16_t>(Integer(2)); }
    std::uint32_t U32() { return static_cast<std::uint32_t>(Integer(4)); }
    std::int16_t I16() { return static_cast<std::int16_t>(U16()); }
    std::int32_t I32() { return static_cast<std::int32_t>(U32()); }
    bool Bool() { return U8() != 0; }

    Locator Place()
    {
        const std::uint32_t offset = U32();
        return {offset, U32()};
    }

    std::span<const std::uint8_t> Bytes(std::size_t count)
    {
        if (count > Left()) {
            Fail();
            return {};
        }
        position_ += count;
        return block_.subspan(position_ - count, count);
    }

    // A count of items that take at least smallestItem bytes each: a count that the block cannot hold is a
    // failure, so nobody sets memory aside for it.
    std::size_t Count(std::size_t claimed, std::size_t smallestItem)
    {
        if (claimed > Left() / smallestItem) {
            Fail();
            return 0;
        }
        return claimed;
    }

    // The zero that ends a text is sometimes left out, and there is none after an empty text.
    std::wstring Text()
    {
        const std::span<const std::uint8_t> bytes = Bytes(2 * Count(U32(), 2));
        std::u16string units;
        units.reserve(bytes.size() / 2);
        for (std::size_t i = 0; i < bytes.size(); i += 2)
            units += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
        if (!units.empty() && Left() >= 2 && block_[position_] == 0 && block_[position_ + 1] == 0)
            position_ += 2;
        return WideFromUtf16(units);
    }

private:
    std::uint32_t Integer(std::size_t size)
    {
        std::uint32_t value = 0;
        std::size_t shift = 0;
        for (const std::uint8_t byte : Bytes(size)) {
            value |= std::uint32_t{byte} << shift;
            shift += 8;
        }
        return value;
    }

    std::span<const std::uint8_t> block_;
    std::size_t position_ = 0;
    bool ok_ = true;
};

} // namespace voxtrel::agent::acs
