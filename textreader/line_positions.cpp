#include "textreader/line_positions.h"

#include <algorithm>
#include <iterator>

namespace voxtrel::textreader {

namespace {

// The starts of the lines that begin after a break between the two positions.
std::vector<std::int32_t> StartsWithin(std::wstring_view text, std::int32_t from, std::int32_t to)
{
    std::vector<std::int32_t> starts;
    const std::wstring_view part = text.substr(0, static_cast<std::size_t>(to));
    for (std::size_t at = part.find(L'\n', static_cast<std::size_t>(from)); at != std::wstring_view::npos;
         at = part.find(L'\n', at + 1))
        starts.push_back(static_cast<std::int32_t>(at) + 1);
    return starts;
}

} // namespace

void LinePositions::SetText(std::wstring_view text)
{
    starts_ = {0};
    const std::vector<std::int32_t> found = StartsWithin(text, 0, static_cast<std::int32_t>(text.size()));
    starts_.insert(starts_.end(), found.begin(), found.end());
}

void LinePositions::TextEdited(std::wstring_view text, const TextEdit& edit)
{
    const auto first = std::upper_bound(starts_.begin(), starts_.end(), edit.position);
    const auto last = std::upper_bound(first, starts_.end(), edit.position + edit.removed);
    for (auto start = last; start != starts_.end(); ++start)
        *start += edit.added - edit.removed;
    const std::vector<std::int32_t> found = StartsWithin(text, edit.position, edit.position + edit.added);
    const auto kept = starts_.erase(first, last);
    starts_.insert(kept, found.begin(), found.end());
}

std::size_t LinePositions::LineOf(std::int32_t position) const
{
    const auto after = std::upper_bound(starts_.begin(), starts_.end(), std::max(position, 0));
    return static_cast<std::size_t>(std::distance(starts_.begin(), after)) - 1;
}

std::int32_t LinePositions::ToControl(std::int32_t position) const
{
    return std::max(position, 0) - static_cast<std::int32_t>(LineOf(position));
}

std::int32_t LinePositions::EndToControl(std::int32_t position) const
{
    const std::size_t line = LineOf(position);
    const bool betweenCrAndLf = line + 1 < starts_.size() && position == starts_[line + 1] - 1;
    return std::max(position, 0) - static_cast<std::int32_t>(line) - (betweenCrAndLf ? 1 : 0);
}

std::int32_t LinePositions::FromControl(std::int32_t controlPosition) const
{
    // The control's start of line number n lies n characters before the text's.
    std::size_t low = 0;
    std::size_t high = starts_.size();
    while (high - low > 1) {
        const std::size_t middle = (low + high) / 2;
        if (starts_[middle] - static_cast<std::int32_t>(middle) <= controlPosition)
            low = middle;
        else
            high = middle;
    }
    return std::max(controlPosition, 0) + static_cast<std::int32_t>(low);
}

std::wstring WithCrLf(std::wstring_view text)
{
    std::wstring normalised;
    normalised.reserve(text.size() + text.size() / 32);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'\r' && text[i] != L'\n') {
            normalised += text[i];
            continue;
        }
        normalised += L"\r\n";
        if (text[i] == L'\r' && i + 1 < text.size() && text[i + 1] == L'\n')
            ++i;
    }
    return normalised;
}

std::wstring WithLf(std::wstring_view text)
{
    std::wstring shown;
    shown.reserve(text.size());
    for (const wchar_t c : text) {
        if (c != L'\r')
            shown += c;
    }
    return shown;
}

} // namespace voxtrel::textreader
