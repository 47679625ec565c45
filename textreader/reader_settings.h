#pragma once

#include "settings/settings_store.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::textreader {

inline constexpr std::wstring_view kModeWord = L"word";
inline constexpr std::wstring_view kModeSentence = L"sentence";
inline constexpr std::wstring_view kModeParagraph = L"paragraph";

// Where the window stands, in twips, 1440 to the inch.
struct WindowLayout {
    std::int32_t top = 100;
    std::int32_t left = 100;
    std::int32_t height = 7560;
    std::int32_t width = 8000;

    bool operator==(const WindowLayout&) const = default;
};

// Section "TextReader" of the settings: what the window looks like and how it reads.
struct ReaderSettings {
    WindowLayout window;
    std::int32_t wordColor = 0x0000FF;     // red in the low byte
    std::int32_t sentenceColor = 0xFF0000; // blue in the third
    std::wstring font = L"Arial";
    double fontSize = 14; // points
    bool fontBold = false;
    bool fontItalic = false;
    std::wstring readMode{kModeSentence}; // one of the three
    bool blockHighlight = false;
    bool autoClose = false;

    bool operator==(const ReaderSettings&) const = default;
};

// What is missing has its default; a mode that there is not is the sentence.
ReaderSettings LoadReaderSettings(const settings::SettingsStore& store);

// Everything but the block highlight, which is written when it is switched.
void SaveReaderSettings(settings::SettingsStore& store, const ReaderSettings& reader);
void SaveBlockHighlight(settings::SettingsStore& store, bool on);

// A window or the usable part of a screen, in pixels.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// Pixels of a layout on a screen with so many dots per inch, and back.
PixelRect ToPixels(const WindowLayout& layout, int dotsPerInch);
WindowLayout ToTwips(const PixelRect& pixels, int dotsPerInch);

// The window moved, and made smaller if need be, so that all of it lies on the screen that shows most of it;
// on the first screen when none does. Without screens it stays.
PixelRect KeptOnScreen(const PixelRect& window, const std::vector<PixelRect>& screens);

} // namespace voxtrel::textreader
