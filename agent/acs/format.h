#pragma once

#include "agent/acs/character_file.h"

#include <cstddef>
#include <cstdint>

// Numbers of the .acs 2.0 layout that reader and writer share.
namespace voxtrel::agent::acs {

constexpr std::uint32_t kCharacterSignature = 0xABCDABC3;
constexpr std::uint16_t kFormatMajor = 2;
constexpr std::uint16_t kFormatMinor = 1;

constexpr std::uint32_t kFlagVoice = 0x10;
constexpr std::uint32_t kFlagSpokenVoice = 0x20;
constexpr std::uint32_t kFlagBalloonOff = 0x100;
constexpr std::uint32_t kFlagBalloonOn = 0x200;
constexpr std::uint32_t kFlagSizeToText = 0x10000;
constexpr std::uint32_t kFlagAutoHideOff = 0x20000;
constexpr std::uint32_t kFlagAutoPaceOff = 0x40000;
constexpr std::uint32_t kFlagStandardSet = 0x100000;

constexpr std::uint16_t kNoSound = 0xFFFF;
constexpr std::size_t kMouthCount = 7;
constexpr std::size_t kPaletteSize = 256;

// Pixels; larger pictures are taken for damage.
constexpr int kLargestImageSide = 4096;

// Bytes from the start of one row of pixels to the next.
constexpr std::size_t RowStride(int width) { return (static_cast<std::size_t>(width) + 3) & ~std::size_t{3}; }

} // namespace voxtrel::agent::acs
