#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace voxtrel::agent::acs {

using GuidBytes = std::array<std::uint8_t, 16>;

// "{CA141FD0-AC7F-11D1-97A3-006008273000}": in braces, upper case. The first three groups are stored low byte
// first.
std::string GuidText(const GuidBytes& bytes);

// Reads that form in either case, with or without braces; nothing for any other text.
std::optional<GuidBytes> ParseGuid(std::string_view text);

} // namespace voxtrel::agent::acs
