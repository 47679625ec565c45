#include "options/pronunciation_file.h"

#include "settings/text_case.h"

#include <algorithm>

namespace voxtrel::options {
namespace {

constexpr std::wstring_view kLineEnds = L"\r\n";
constexpr wchar_t kTab = L'\t';

} // namespace

ParsedPronunciations ParsePronunciations(std::wstring_view text)
{
    ParsedPronunciations parsed;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(kLineEnds), text.size());
        const std::wstring_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        const std::size_t tab = line.find(kTab);
        if (tab != std::wstring_view::npos && tab > 0)
            parsed.pairs.emplace_back(line.substr(0, tab), line.substr(tab + 1));
        else if (!line.empty())
            ++parsed.skipped;
    }
    return parsed;
}

FormattedPronunciations FormatPronunciations(const PronunciationPairs& pairs)
{
    FormattedPronunciations formatted;
    std::wstring text;
    for (const auto& [written, spoken] : pairs) {
        if (written.empty() || written.find(kTab) != std::wstring::npos ||
            written.find_first_of(kLineEnds) != std::wstring::npos ||
            spoken.find_first_of(kLineEnds) != std::wstring::npos)
            ++formatted.skipped;
        else
            text.append(written).append(1, kTab).append(spoken).append(1, L'\n');
    }
    formatted.bytes = settings::ToUtf8(text);
    return formatted;
}

} // namespace voxtrel::options
