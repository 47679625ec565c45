#pragma once

#include "agent/stage/stage_view.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace voxtrel::agent::stage {

// Words laid out in lines. Of the lines only the last ones are kept, so that a book costs no more than a
// sentence.
class BalloonLines {
public:
    // width in pixels; keep is the number of lines kept, at least 1. The measure must outlive the lines.
    BalloonLines(const TextMeasure& measure, FontSpec font, int width, std::size_t keep);

    // Adds a word, with a blank before it unless it begins a line. It is wrapped at white space and at
    // zero-width spaces, and broken where it is longer than a line.
    void AddWord(std::wstring_view word);

    // The next word begins a line.
    void BreakLine();

    // A whole text: words apart by white space, line breaks kept.
    void AddText(std::wstring_view text);

    bool Empty() const { return lines_.empty(); }
    const std::deque<std::wstring>& Lines() const { return lines_; }

    // Lines that are not kept any more.
    std::size_t Dropped() const { return dropped_; }

private:
    void AddPiece(std::wstring_view piece, bool blankBefore);
    void StartLine(std::wstring_view text);
    std::size_t FittingPart(std::wstring_view text) const;
    bool Fits(std::wstring_view text) const { return measure_.Width(font_, text) <= width_; }

    const TextMeasure& measure_;
    FontSpec font_;
    int width_;
    std::size_t keep_;
    std::deque<std::wstring> lines_;
    std::size_t dropped_ = 0;
    bool lineIsOver_ = true;
};

} // namespace voxtrel::agent::stage
