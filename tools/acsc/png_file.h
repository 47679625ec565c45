#pragma once

#include "agent/acs/character_file.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <variant>

namespace voxtrel::acsc {

// Writes an image as a PNG file that keeps its palette indexes. Returns false when it cannot be written.
bool WriteIndexedPng(const std::filesystem::path& path, const agent::acs::Image& image,
                     const std::array<agent::acs::Color, 256>& palette, std::uint8_t transparentIndex);

// Reads the palette indexes of such a file, or says what is wrong with it.
std::variant<agent::acs::Image, std::string> ReadIndexedPng(const std::filesystem::path& path);

} // namespace voxtrel::acsc
