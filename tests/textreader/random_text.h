#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace voxtrel::tests {

// Texts that are hard on the scans: rich in marks, blanks and line breaks, with letters, numbers and what
// lies beyond Latin-1 between them. The same seed gives the same texts everywhere.
class RandomTexts {
public:
    explicit RandomTexts(unsigned seed) : random_(seed) {}

    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

    std::wstring Next(std::size_t maxPieces) { return Build(Below(maxPieces + 1), true); }

    // Lines end with CR LF only, as in the text box.
    std::wstring NextInBox(std::size_t maxPieces) { return Build(Below(maxPieces + 1), false); }

private:
    std::wstring Build(std::size_t pieces, bool loneBreaks)
    {
        static const std::wstring kPieces[] = {
            L".",      L"!",      L"?",      L",",          L" ",
            L" ",      L" ",      L"\r\n",   L"\r\n\r\n",   L". ",
            L".\r\n",  L"a",      L"I",      L"word",       L"Hello",
            L"7",      L"3.14",   L"\"",     L"'",          L"-",
            L":",      L";",      L"%",      L"\t",         L"\u00E9t\u00E9",
            L"\u00DF", L"\u00A3", L"\u201C", L"\U0001F600", L"\\",
            L"...",    L"Dr. ",   L"don't",  L"(",          L")"};
        static const std::wstring kLoneBreaks[] = {L"\r", L"\n", L"\r\r", L"\n\r"};
        std::wstring text;
        for (std::size_t i = 0; i < pieces; ++i) {
            if (loneBreaks && Below(12) == 0)
                text += kLoneBreaks[Below(std::size(kLoneBreaks))];
            else
                text += kPieces[Below(std::size(kPieces))];
        }
        return text;
    }

    std::mt19937 random_;
};

} // namespace voxtrel::tests
