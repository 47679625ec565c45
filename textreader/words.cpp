// Words.
//
// A word ends at a delimiter, a carriage return or the end of the text; one full stop that no blank follows
// is stepped over, so that a decimal number is one word. On its left only a blank or a carriage return bounds
// the word around the caret. The walk forward begins where the section before ended: blanks, line breaks and
// delimiters that stand alone are passed, delimiters that touch the word stay with it, unless they are the
// rest of a sentence's end.
//
// A blank or carriage return ends every word, so the walk backward goes back to the nearest one and walks
// forward from there: it meets the same words.

#include "textreader/scanned_text.h"
#include "textreader/segmentation.h"

namespace voxtrel::textreader {

namespace {

constexpr std::wstring_view kDelimiters = L" !%,.?:;";
constexpr std::wstring_view kBetweenWords = L" !%,.?:;\t\r\n";

std::int32_t ScanToDelimiter(const ScannedText& text, std::int32_t scanEnd)
{
    for (Scanned c = text.At(scanEnd); !c.IsCarriageReturn() && !c.In(kDelimiters); c = text.At(scanEnd))
        ++scanEnd;
    return scanEnd;
}

std::int32_t ScanForward(const ScannedText& text, std::int32_t scanEnd)
{
    scanEnd = ScanToDelimiter(text, scanEnd);
    if (text.At(scanEnd).IsFullStop() && !text.At(scanEnd + 1).IsBlank())
        scanEnd = ScanToDelimiter(text, scanEnd + 1);
    return scanEnd;
}

Section Word(const ScannedText& text, std::int32_t scanStart, std::int32_t scanEnd)
{
    return {scanStart, scanEnd, scanStart, scanEnd - scanStart, std::min(scanEnd, text.Length())};
}

Section WordFromFirstCharacter(const ScannedText& text, std::int32_t scanEnd)
{
    Section section = Word(text, 0, scanEnd - 1);
    section.lastRead = std::min(scanEnd, text.Length());
    return section;
}

// The scan position of the last character at or before the position that is none between words; 0 for none.
std::int32_t LastOfWord(std::wstring_view text, std::int32_t position)
{
    if (position < 1)
        return 0;
    const std::size_t found = text.find_last_not_of(kBetweenWords, static_cast<std::size_t>(position) - 1);
    return found == std::wstring_view::npos ? 0 : static_cast<std::int32_t>(found) + 1;
}

} // namespace

std::optional<Section> CurrentWord(std::wstring_view text, std::int32_t selStart)
{
    if (text.empty())
        return std::nullopt;
    const ScannedText scanned(text);
    std::int32_t p = scanned.Inside(selStart);
    if (scanned.At(p).IsBlank())
        ++p;
    std::int32_t scanStart = p;
    for (Scanned c = scanned.At(p); !c.IsBlank() && !c.IsCarriageReturn() && scanStart != 1;
         c = scanned.At(scanStart))
        --scanStart;
    const std::int32_t scanEnd = ScanForward(scanned, p);
    if (scanStart == 1 && !scanned.At(1).IsBlank())
        return WordFromFirstCharacter(scanned, scanEnd);
    return Word(scanned, scanStart, scanEnd);
}

std::optional<Section> NextWord(std::wstring_view text, std::int32_t lastRead)
{
    const ScannedText scanned(text);
    const std::int32_t end = std::clamp(lastRead, 0, scanned.Length());
    const std::size_t found = text.find_first_not_of(kBetweenWords, static_cast<std::size_t>(end));
    if (found == std::wstring_view::npos)
        return std::nullopt;
    const auto first = static_cast<std::int32_t>(found) + 1;
    std::int32_t begin = first;
    while (begin - 1 > end && scanned.At(begin - 1).In(kDelimiters) && !scanned.At(begin - 1).IsBlank())
        --begin;
    const bool endedSentence = end > 0 && scanned.At(end).In(L" .!?") && !scanned.At(end).IsBlank();
    if (endedSentence && begin == end + 1)
        begin = first;
    const std::int32_t scanEnd = ScanForward(scanned, first);
    return begin == 1 ? WordFromFirstCharacter(scanned, scanEnd) : Word(scanned, begin - 1, scanEnd);
}

std::optional<Section> PreviousWord(std::wstring_view text, std::int32_t startpos)
{
    const ScannedText scanned(text);
    const std::int32_t last = LastOfWord(text, std::min(startpos, scanned.Length()));
    if (last == 0)
        return NextWord(text, 0);
    std::int32_t before = last - 1;
    while (before > 0 && !scanned.At(before).IsBlank() && !scanned.At(before).IsCarriageReturn())
        --before;
    std::optional<Section> word = NextWord(text, before);
    while (word && word->lastRead < last)
        word = NextWord(text, word->lastRead);
    return word;
}

} // namespace voxtrel::textreader
