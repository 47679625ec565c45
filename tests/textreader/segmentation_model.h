#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace voxtrel::tests {

// The rules of the segmentation and of the markup once more, on one-character strings with positions from 1,
// step for step and without a thought for speed. What it shares with the program is nothing but the rules.
struct SegmentationModel {
    explicit SegmentationModel(std::wstring theText, std::int32_t caret = 0, std::int32_t start = 0,
                               std::int32_t length = 0)
        : text(std::move(theText)), selStart(caret), startpos(start), strlength(length)
    {
    }

    std::wstring text;
    std::int32_t selStart;
    std::int32_t startpos;
    std::int32_t strlength;
    std::int32_t scanStart = 0;
    std::int32_t scanEnd = 0;
    bool ranAway = false; // a loop took more steps than any text asks for

    void CurrentSentence();
    void CurrentParagraph();
    void NextParagraph();
    void PreviousParagraph();
    void CurrentWord();

private:
    std::int32_t Len() const { return static_cast<std::int32_t>(text.size()); }
    std::wstring Mid(std::int32_t position) const;
    bool Step();
    void ParagraphFrom(std::int32_t p);
    void Publish();
    int steps_ = 0;
};

// The markup between the quotes of the map tag, without the end mark.
std::wstring ModelBody(const std::wstring& text, std::int32_t start, std::int32_t length,
                       const std::map<std::wstring, std::wstring>& modify);

// Every sentence and word of the text from its beginning to its end, as first and last position of what is
// read.
struct Span {
    std::int32_t first = 0;
    std::int32_t last = 0;
    bool operator==(const Span&) const = default;
};
std::vector<Span> ModelSentences(const std::wstring& text);
std::vector<Span> ModelWords(const std::wstring& text);

} // namespace voxtrel::tests
