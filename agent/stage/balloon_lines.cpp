#include "agent/stage/balloon_lines.h"

#include <algorithm>
#include <utility>

namespace voxtrel::agent::stage {
namespace {

// What is longer, without a blank, is cut off: no balloon could show it.
constexpr std::size_t kLongestWord = 4096;

constexpr wchar_t kZeroWidthSpace = 0x200B;

bool IsBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\r' || c == L'\n' || c == 0x3000; }

// A line must not begin with what belongs to the character before it: the second half of a pair, a mark that
// combines, a joiner or a variation.
bool BelongsToPrevious(wchar_t c)
{
    const auto code = static_cast<std::uint32_t>(c);
    return (code >= 0xDC00 && code <= 0xDFFF) || (code >= 0x0300 && code <= 0x036F) || code == 0x200D ||
           (code >= 0xFE00 && code <= 0xFE0F) || (code >= 0x1F3FB && code <= 0x1F3FF);
}

// The nearest place at or before position where text may be broken; the one behind it when there is none.
std::size_t BreakAt(std::wstring_view text, std::size_t position)
{
    std::size_t before = position;
    while (before > 0 && before < text.size() && BelongsToPrevious(text[before]))
        --before;
    if (before > 0)
        return before;
    std::size_t behind = std::max<std::size_t>(position, 1);
    while (behind < text.size() && BelongsToPrevious(text[behind]))
        ++behind;
    return behind;
}

} // namespace

BalloonLines::BalloonLines(const TextMeasure& measure, FontSpec font, int width, std::size_t keep)
    : measure_(measure), font_(std::move(font)), width_(width), keep_(std::max<std::size_t>(keep, 1))
{
}

void BalloonLines::AddWord(std::wstring_view word)
{
    if (word.size() > kLongestWord)
        word = word.substr(0, BreakAt(word, kLongestWord));

    bool blankBefore = true;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= word.size(); ++i) {
        const bool atEnd = i == word.size();
        if (!atEnd && !IsBlank(word[i]) && word[i] != kZeroWidthSpace)
            continue;
        if (i > start)
            AddPiece(word.substr(start, i - start), std::exchange(blankBefore, false));
        if (!atEnd && IsBlank(word[i]))
            blankBefore = true;
        start = i + 1;
    }
}

void BalloonLines::BreakLine() { lineIsOver_ = true; }

void BalloonLines::AddText(std::wstring_view text)
{
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        const bool atEnd = i == text.size();
        if (!atEnd && !IsBlank(text[i]))
            continue;
        AddWord(text.substr(start, i - start));
        if (!atEnd && (text[i] == L'\n' || text[i] == L'\r'))
            BreakLine();
        start = i + 1;
    }
}

void BalloonLines::AddPiece(std::wstring_view piece, bool blankBefore)
{
    if (!lineIsOver_) {
        std::wstring longer = lines_.back();
        if (blankBefore)
            longer += L' ';
        longer += piece;
        if (Fits(longer)) {
            lines_.back() = std::move(longer);
            return;
        }
    }
    while (!Fits(piece)) {
        const std::size_t part = FittingPart(piece);
        if (part >= piece.size())
            break;
        StartLine(piece.substr(0, part));
        piece.remove_prefix(part);
    }
    StartLine(piece);
}

void BalloonLines::StartLine(std::wstring_view text)
{
    lines_.emplace_back(text);
    lineIsOver_ = false;
    if (lines_.size() > keep_) {
        lines_.pop_front();
        ++dropped_;
    }
}

// How much of a text that is too long fits into a line: at least one character, however narrow the line is.
std::size_t BalloonLines::FittingPart(std::wstring_view text) const
{
    std::size_t fits = 1;
    std::size_t tooLong = text.size();
    // No glyph is so narrow that a line could hold more of them than it has pixels.
    tooLong = std::min(tooLong, static_cast<std::size_t>(std::max(width_, 1)) + 1);
    while (fits + 1 < tooLong) {
        const std::size_t middle = fits + (tooLong - fits) / 2;
        (Fits(text.substr(0, middle)) ? fits : tooLong) = middle;
    }
    return BreakAt(text, fits);
}

} // namespace voxtrel::agent::stage
