#include "segmentation_model.h"

#include "speech/speech_markup.h"

#include <cmath>

namespace voxtrel::tests {

namespace {

const std::wstring kCr = L"\r";

// As a search does it: the empty string is found in every string.
bool InStr(const std::wstring& set, const std::wstring& c) { return set.find(c) != std::wstring::npos; }

} // namespace

std::wstring SegmentationModel::Mid(std::int32_t position) const
{
    return position >= 1 && position <= Len() ? text.substr(static_cast<std::size_t>(position) - 1, 1)
                                              : std::wstring();
}

bool SegmentationModel::Step()
{
    if (++steps_ <= 20 * (Len() + 10))
        return true;
    ranAway = true;
    return false;
}

void SegmentationModel::Publish()
{
    startpos = scanStart;
    strlength = scanEnd - scanStart;
    selStart = scanStart;
}

void SegmentationModel::CurrentSentence()
{
    if (text.empty())
        return;
    std::int32_t p = selStart;
    if (p < 1)
        p = 1;
    std::wstring c = Mid(p);
    if (InStr(L".!?", c)) {
        p = p + 1;
        c = Mid(p);
    }
    while (c == kCr && scanStart >= 2 && Step()) {
        p = p + 2;
        c = Mid(p);
    }
    scanStart = p;
    scanEnd = p;
    bool found = false;
    while (!found && Step()) {
        while (!InStr(L".!?", c) && c != kCr && scanStart != 1 && Step()) {
            scanStart = scanStart - 1;
            c = Mid(scanStart);
        }
        while (InStr(L".!?", c) && Mid(scanStart + 1) != L" " && scanStart != 1 && Step()) {
            scanStart = scanStart - 1;
            c = Mid(scanStart);
        }
        while (c == kCr && scanStart != 1 && Step()) {
            scanStart = scanStart - 1;
            c = Mid(scanStart);
        }
        if (Mid(scanStart + 1) == L" " && InStr(L".!?", c))
            found = true;
        if (Mid(scanStart + 1) == kCr && InStr(L".!?", c))
            found = true;
        if (scanStart == 1)
            found = true;
    }
    const auto blank = [](const std::wstring& next) { return next == L" " || next.empty(); };
    const auto lineBreak = [](const std::wstring& next) { return next == kCr || next.empty(); };
    c = Mid(scanEnd);
    bool done = false;
    while (scanEnd < Len() && !done && Step()) {
        while (scanEnd < Len() && !InStr(L"!.?", c) && Step()) {
            scanEnd = scanEnd + 1;
            c = Mid(scanEnd);
        }
        while (!lineBreak(Mid(scanEnd + 1)) && !blank(Mid(scanEnd + 1)) && InStr(L"!?.", c) && Step()) {
            scanEnd = scanEnd + 1;
            c = Mid(scanEnd);
        }
        if (InStr(L"!?.", c)) {
            if (blank(Mid(scanEnd + 1)))
                done = true;
            else if (lineBreak(Mid(scanEnd + 1)))
                done = true;
        }
    }
    if (Mid(1) != L" " && scanStart == 1) {
        scanStart = 0;
        scanEnd = scanEnd - 1;
    }
    Publish();
}

void SegmentationModel::ParagraphFrom(std::int32_t p)
{
    std::wstring c = Mid(p);
    scanStart = p;
    scanEnd = p;
    while (c == kCr && Step()) {
        scanStart = scanStart + 1;
        c = Mid(scanStart);
        scanEnd = scanStart;
    }
    while (c != kCr && scanStart != 1 && Step()) {
        scanStart = scanStart - 1;
        c = Mid(scanStart);
    }
    c = Mid(scanEnd);
    // The scan ends at the text's edge also when it begins beyond it.
    while (c != kCr && scanEnd < Len() && Step()) {
        scanEnd = scanEnd + 1;
        c = Mid(scanEnd);
    }
    if (scanEnd > Len())
        scanEnd = Len();
    if (scanStart == 1 && Mid(1) != kCr && !InStr(L"!.?", Mid(1)))
        scanStart = 0;
    Publish();
    if (strlength + 1 <= Len())
        strlength = strlength + 1;
}

void SegmentationModel::CurrentParagraph()
{
    if (text.empty())
        return;
    std::int32_t p = selStart + 1;
    if (p < 1)
        p = 1;
    if (p > Len())
        p = Len();
    ParagraphFrom(p);
}

void SegmentationModel::NextParagraph()
{
    if (text.empty())
        return;
    std::int32_t p = startpos + strlength + 1;
    if (p > Len())
        p = startpos + strlength - 1;
    if (p < 1)
        p = 1;
    if (!(p < Len() - 1))
        p = p - 1;
    if (p < 1)
        p = 1;
    if (p > Len())
        p = Len();
    ParagraphFrom(p);
}

void SegmentationModel::PreviousParagraph()
{
    if (text.empty())
        return;
    std::int32_t p = selStart - 1;
    if (p < 1)
        p = 1;
    std::wstring c = Mid(p);
    scanStart = p;
    scanEnd = p;
    if (c == kCr && scanStart != 2) {
        while (c == kCr && scanStart != 1 && Step()) {
            scanStart = scanStart - 2;
            if (scanStart < 1)
                scanStart = 1;
            c = Mid(scanStart);
        }
    }
    while (c != kCr && scanStart != 1 && Step()) {
        scanStart = scanStart - 1;
        c = Mid(scanStart);
    }
    if (scanStart == 1 && Mid(1) != kCr)
        scanStart = 0;
    c = Mid(scanEnd);
    while (c != kCr && scanEnd != Len() && Step()) {
        scanEnd = scanEnd + 1;
        c = Mid(scanEnd);
    }
    if (scanStart == 0)
        scanEnd = scanEnd - 1;
    Publish();
    strlength = strlength + 1;
}

void SegmentationModel::CurrentWord()
{
    if (text.empty())
        return;
    std::int32_t p = selStart;
    if (p < 1)
        p = 1;
    std::wstring c = Mid(p);
    if (c == L" ") {
        p = p + 1;
        c = Mid(p);
    }
    scanStart = p;
    scanEnd = p;
    while (c != L" " && c != kCr && scanStart != 1 && Step()) {
        scanStart = scanStart - 1;
        c = Mid(scanStart);
    }
    c = Mid(scanEnd);
    const auto forward = [&] {
        while (c != kCr && !InStr(L" !%,.?:;", c) && Step()) {
            scanEnd = scanEnd + 1;
            c = Mid(scanEnd);
        }
    };
    forward();
    if (c == L"." && Mid(scanEnd + 1) != L" ") {
        scanEnd = scanEnd + 1;
        c = Mid(scanEnd);
        forward();
    }
    if (scanStart == 1 && Mid(1) != L" ") {
        scanStart = 0;
        scanEnd = scanEnd - 1;
    }
    Publish();
}

std::wstring ModelBody(const std::wstring& text, std::int32_t start, std::int32_t length,
                       const std::map<std::wstring, std::wstring>& modify)
{
    const auto find = [&](const std::wstring& key) {
        const auto entry = modify.find(key);
        return entry == modify.end() ? std::wstring() : entry->second;
    };
    const bool fromZero = start == 0;
    std::wstring word;
    int count = 0;
    std::wstring body;
    int i = 1;
    if (fromZero && length > 0 && !text.empty()) {
        // Where a character is two elements of the text, both begin the word.
        const bool pair = text.size() > 1 && text[0] >= 0xD800 && text[0] < 0xDC00;
        count = pair ? 2 : 1;
        word = text.substr(0, static_cast<std::size_t>(count));
        i = count;
        start = 1;
    }
    const auto end = [&] {
        if (count == 0)
            return;
        const std::wstring said = find(word).empty() ? word : find(word);
        body += L"\\Mrk=" + std::to_wstring(start + i - count + 100000 * count) + L"\\" + said + L" ";
        word.clear();
        count = 0;
    };
    for (; i <= length; ++i) {
        if (start + i > static_cast<int>(text.size()))
            break;
        std::wstring c = text.substr(static_cast<std::size_t>(start + i) - 1, 1);
        if (fromZero && i == length && count == 0)
            break;
        if (speech::IsLetter(static_cast<char32_t>(c[0])) || InStr(L"1234567890,.", c)) {
            word += c;
            ++count;
        } else if (InStr(L"-=+_)(*&^%$\u00A3\"![]{}#~;:@'/?.>,<`\u00AC|", c)) {
            word += find(c).empty() ? c : find(c);
            ++count;
        } else if (c == kCr) {
            word += c + L"\\pau=700\\";
            ++count;
        } else {
            end();
        }
    }
    end();
    return body;
}

std::vector<Span> ModelSentences(const std::wstring& text)
{
    const auto size = static_cast<std::int32_t>(text.size());
    std::vector<Span> sentences;
    std::int32_t first = !text.empty() && text.front() == L' ' ? 2 : 1;
    const std::size_t lastSeen = text.find_last_not_of(L" \t\r\n");
    for (std::int32_t i = 2; i <= size; ++i) {
        const bool mark = InStr(L".!?", text.substr(static_cast<std::size_t>(i) - 1, 1));
        const bool open = i < size && text[static_cast<std::size_t>(i)] != L' ' &&
                          text[static_cast<std::size_t>(i)] != L'\r';
        if (mark && !open) {
            sentences.push_back({first, i});
            first = i + 1;
        }
    }
    if (lastSeen != std::wstring::npos && static_cast<std::int32_t>(lastSeen) + 1 >= first)
        sentences.push_back({first, size});
    return sentences;
}

std::vector<Span> ModelWords(const std::wstring& text)
{
    // Stretches without a blank or carriage return, each cut from the left.
    std::vector<Span> words;
    const std::wstring delimiters = L" !%,.?:;";
    const auto size = text.size();
    for (std::size_t from = 0; from < size;) {
        std::size_t to = text.find_first_of(L" \r", from);
        if (to == std::wstring::npos)
            to = size;
        std::size_t left = from;
        while (left < to) {
            std::size_t first = left;
            while (first < to &&
                   (InStr(delimiters, text.substr(first, 1)) || InStr(L"\t\n", text.substr(first, 1))))
                ++first;
            if (first == to)
                break;
            std::size_t begin = first;
            while (begin > left && InStr(delimiters, text.substr(begin - 1, 1)))
                --begin;
            if (begin == left && left > from && InStr(L".!?", text.substr(left - 1, 1)))
                begin = first;
            std::size_t last = text.find_first_of(L" !%,.?:;\r", first);
            if (last != std::wstring::npos && text[last] == L'.' && text.substr(last + 1, 1) != L" ") {
                ++last;
                last = last < size ? text.find_first_of(L" !%,.?:;\r", last) : std::wstring::npos;
            }
            if (last == std::wstring::npos)
                last = size - 1;
            words.push_back({static_cast<std::int32_t>(begin) + 1, static_cast<std::int32_t>(last) + 1});
            left = last + 1;
        }
        from = std::max(to, left > from ? left - 1 : from) + 1;
    }
    return words;
}

} // namespace voxtrel::tests
