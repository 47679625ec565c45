#pragma once

#include "agent/acs/character_file.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A character taken apart: frames.txt says everything but the pictures and sounds, which are files beside it.
namespace voxtrel::acsc {

// A character as frames.txt has it, with the names of the files in place of what is in them.
struct TakenApart {
    agent::acs::CharacterFile character; // without images, sounds and tray icon
    std::vector<std::string> images;     // PNG files; empty for an image without pixels
    std::vector<std::string> sounds;     // WAV files
    std::string trayMask = {};           // bitmaps without their first header; empty without a tray icon
    std::string trayColors = {};
};

std::string WriteFramesText(const TakenApart& parts);

// Throws SourceError. What the numbers lead to is not looked at.
TakenApart ParseFramesText(std::string_view text);

} // namespace voxtrel::acsc
