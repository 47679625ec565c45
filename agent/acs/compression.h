#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace voxtrel::agent::acs {

// Unpacks a compressed block of an .acs file. Nothing when the block is damaged or does not hold exactly
// unpackedSize bytes. Memory grows with what is really unpacked, not with what unpackedSize claims.
std::optional<std::vector<std::uint8_t>> Decompress(std::span<const std::uint8_t> packed,
                                                    std::size_t unpackedSize);

// Packs bytes into a block that Decompress brings back. May be larger than the bytes.
std::vector<std::uint8_t> Compress(std::span<const std::uint8_t> bytes);

} // namespace voxtrel::agent::acs
