// Sentences.
//
// A sentence ends at a full stop, exclamation or question mark that is followed by a blank, a carriage return
// or the end of the text; a mark inside a number, between letters or before another mark does not count. It
// begins after the end of the one before. A line break alone ends no sentence. The walk in both directions
// uses the same ends, so it meets the same sentences; position 1 is the beginning of the text and never an
// end.

#include "textreader/scanned_text.h"
#include "textreader/segmentation.h"

namespace voxtrel::textreader {

namespace {

bool EndsSentence(Scanned c) { return c.In(L".!?"); }

bool EndsSentenceAt(const ScannedText& text, std::int32_t position)
{
    const Scanned next = text.At(position + 1);
    return EndsSentence(text.At(position)) && (next.IsBlank() || next.IsCarriageReturn());
}

// From the position back to the end of the sentence before, or to position 1.
std::int32_t ScanBack(const ScannedText& text, std::int32_t scanStart)
{
    Scanned c = text.At(scanStart);
    const auto stepBack = [&] { c = text.At(--scanStart); };
    for (;;) {
        while (!EndsSentence(c) && !c.IsCarriageReturn() && scanStart != 1)
            stepBack();
        while (EndsSentence(c) && !text.At(scanStart + 1).IsBlank() && scanStart != 1)
            stepBack();
        while (c.IsCarriageReturn() && scanStart != 1)
            stepBack();
        if (scanStart == 1 || EndsSentenceAt(text, scanStart))
            return scanStart;
    }
}

// The end of the sentence at or after the position, or the end of the text. Only here the end of the text is
// as good as a blank: without that a text that ends with a full stop would never end.
std::int32_t ScanForward(const ScannedText& text, std::int32_t scanEnd)
{
    const auto closes = [&](std::int32_t position) {
        const Scanned next = text.At(position);
        return next.Empty() || next.IsBlank() || next.IsCarriageReturn();
    };
    Scanned c = text.At(scanEnd);
    while (scanEnd < text.Length()) {
        while (scanEnd < text.Length() && !c.In(L"!.?"))
            c = text.At(++scanEnd);
        while (c.In(L"!?.") && !closes(scanEnd + 1))
            c = text.At(++scanEnd);
        if (c.In(L"!?.") && closes(scanEnd + 1))
            break;
    }
    return scanEnd;
}

Section Sentence(const ScannedText& text, std::int32_t scanStart, std::int32_t scanEnd)
{
    return {scanStart, scanEnd, scanStart, scanEnd - scanStart, std::min(scanEnd, text.Length())};
}

Section SentenceFromFirstCharacter(const ScannedText& text, std::int32_t scanEnd)
{
    Section section = Sentence(text, 0, scanEnd - 1);
    section.lastRead = std::min(scanEnd, text.Length());
    return section;
}

bool OnlyBlanksAfter(std::wstring_view text, std::int32_t position)
{
    return text.find_first_not_of(L" \t\r\n", static_cast<std::size_t>(position)) == std::wstring_view::npos;
}

} // namespace

std::optional<Section> CurrentSentence(std::wstring_view text, std::int32_t selStart,
                                       std::int32_t oldScanStart)
{
    const ScannedText scanned(text);
    if (text.empty())
        return std::nullopt;
    std::int32_t p = scanned.Inside(selStart);
    if (EndsSentence(scanned.At(p)))
        ++p;
    while (scanned.At(p).IsCarriageReturn() && oldScanStart >= 2)
        p += 2;
    const std::int32_t scanStart = ScanBack(scanned, p);
    const std::int32_t scanEnd = ScanForward(scanned, p);
    if (scanStart == 1 && !scanned.At(1).IsBlank())
        return SentenceFromFirstCharacter(scanned, scanEnd);
    return Sentence(scanned, scanStart, scanEnd);
}

std::optional<Section> NextSentence(std::wstring_view text, std::int32_t lastRead)
{
    const ScannedText scanned(text);
    const std::int32_t end = std::clamp(lastRead, 0, scanned.Length());
    if (OnlyBlanksAfter(text, end))
        return std::nullopt;
    if (end > 0)
        return Sentence(scanned, end, ScanForward(scanned, end + 1));
    // An end mark in the first place belongs to the sentence that follows it.
    const std::int32_t scanEnd = ScanForward(scanned, EndsSentence(scanned.At(1)) ? 2 : 1);
    return scanned.At(1).IsBlank() ? Sentence(scanned, 1, scanEnd)
                                   : SentenceFromFirstCharacter(scanned, scanEnd);
}

std::optional<Section> PreviousSentence(std::wstring_view text, std::int32_t startpos)
{
    const ScannedText scanned(text);
    for (std::int32_t end = std::min(startpos, scanned.Length()) - 1; end >= 2; --end) {
        if (EndsSentenceAt(scanned, end))
            return NextSentence(text, end);
    }
    return NextSentence(text, 0);
}

} // namespace voxtrel::textreader
