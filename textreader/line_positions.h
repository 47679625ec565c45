#pragma once

#include "textreader/text_edit.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::textreader {

// Positions of a text whose lines end with CR LF, and of the control that shows it and counts a line break as
// one character. A table of line starts, searched by halving.
class LinePositions {
public:
    void SetText(std::wstring_view text);

    // After an edit that the text already has.
    void TextEdited(std::wstring_view text, const TextEdit& edit);

    // A position between CR and LF is taken for the beginning of the next line.
    std::int32_t ToControl(std::int32_t position) const;

    // The same for the end of a range, for which it is the end of the line.
    std::int32_t EndToControl(std::int32_t position) const;

    std::int32_t FromControl(std::int32_t controlPosition) const;

private:
    std::size_t LineOf(std::int32_t position) const;

    std::vector<std::int32_t> starts_{0}; // position of the first character of every line
};

// The text with CR LF for each of its line breaks, which may be CR, LF or CR LF.
std::wstring WithCrLf(std::wstring_view text);

// A text whose lines end with CR LF, with LF in its place.
std::wstring WithLf(std::wstring_view text);

} // namespace voxtrel::textreader
