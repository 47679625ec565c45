#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Pronunciation lists as text files, for people who share them: one entry a line, the word, a tab, how it is
// said.
namespace voxtrel::options {

using PronunciationPairs = std::vector<std::pair<std::wstring, std::wstring>>;

struct ParsedPronunciations {
    PronunciationPairs pairs;
    std::size_t skipped =
        0; // lines that are no entry: without a tab or without a word; empty ones do not count
};

// Lines end with LF, CR LF or CR. Only the first tab of a line separates.
ParsedPronunciations ParsePronunciations(std::wstring_view text);

struct FormattedPronunciations {
    std::string bytes;       // UTF-8
    std::size_t skipped = 0; // entries that no line can hold: with a line end, or a tab in the word
};

FormattedPronunciations FormatPronunciations(const PronunciationPairs& pairs);

} // namespace voxtrel::options
