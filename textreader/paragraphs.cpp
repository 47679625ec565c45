// Paragraphs.
//
// A paragraph is a line: it ends at a carriage return and begins after the one before. The box position of
// its start is that of the line feed before it. Caret, forward and backward operation differ in small ways
// (where they begin, what they do with empty lines, whether the closing line break is counted), and each is
// kept as it is.
//
// The scan forward asks for "not at the end of the text" as "before the end": a position that a line break at
// the very end has pushed past it would otherwise run on for ever.

#include "textreader/scanned_text.h"
#include "textreader/segmentation.h"

namespace voxtrel::textreader {

namespace {

std::int32_t ScanBack(const ScannedText& text, std::int32_t scanStart)
{
    while (!text.At(scanStart).IsCarriageReturn() && scanStart > 1)
        --scanStart;
    return scanStart;
}

std::int32_t ScanForward(const ScannedText& text, std::int32_t scanEnd)
{
    while (!text.At(scanEnd).IsCarriageReturn() && scanEnd < text.Length())
        ++scanEnd;
    return std::min(scanEnd, text.Length());
}

Section Publish(const ScannedText& text, Section section)
{
    section.startpos = section.scanStart;
    section.lastRead = std::min(section.startpos + section.strlength, text.Length());
    return section;
}

Section ParagraphAt(const ScannedText& text, std::int32_t p)
{
    while (text.At(p).IsCarriageReturn())
        ++p;
    Section section{ScanBack(text, p), ScanForward(text, p)};
    const Scanned first = text.At(1);
    if (section.scanStart == 1 && !first.IsCarriageReturn() && !first.In(L".!?"))
        section.scanStart = 0;
    section.strlength = section.scanEnd - section.scanStart;
    if (section.strlength + 1 <= text.Length())
        ++section.strlength;
    return Publish(text, section);
}

} // namespace

std::optional<Section> CurrentParagraph(std::wstring_view text, std::int32_t selStart)
{
    if (text.empty())
        return std::nullopt;
    const ScannedText scanned(text);
    return ParagraphAt(scanned, scanned.Inside(selStart + 1));
}

std::optional<Section> NextParagraph(std::wstring_view text, std::int32_t startpos, std::int32_t strlength)
{
    if (text.empty())
        return std::nullopt;
    const ScannedText scanned(text);
    std::int32_t p = startpos + strlength + 1;
    if (p > scanned.Length())
        p = startpos + strlength - 1;
    p = std::max(p, 1);
    if (p >= scanned.Length() - 1)
        --p;
    return ParagraphAt(scanned, scanned.Inside(p));
}

std::optional<Section> PreviousParagraph(std::wstring_view text, std::int32_t selStart)
{
    if (text.empty())
        return std::nullopt;
    const ScannedText scanned(text);
    const std::int32_t p = scanned.Inside(selStart - 1);
    Section section{p, p};
    if (section.scanStart != 2) {
        while (scanned.At(section.scanStart).IsCarriageReturn() && section.scanStart > 1)
            section.scanStart = std::max(section.scanStart - 2, 1);
    }
    section.scanStart = ScanBack(scanned, section.scanStart);
    if (section.scanStart == 1 && !scanned.At(1).IsCarriageReturn())
        section.scanStart = 0;
    section.scanEnd = ScanForward(scanned, section.scanEnd);
    if (section.scanStart == 0)
        --section.scanEnd;
    section.strlength = section.scanEnd - section.scanStart + 1;
    return Publish(scanned, section);
}

} // namespace voxtrel::textreader
