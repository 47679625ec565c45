#include "textreader/line_positions.h"

#include <algorithm>
#include <iterator>

namespace voxtrel::textreader {

namespace {

// Adds the starts of the lines that begin after a break between the two positions.
void AddStartsWithin(std::wstring_view text, std::int32_t from, std::int32_t to,
                     std::vector<std::int32_t>& starts)
{
    const std::wstring_view part = text.substr(0, static_cast<std::size_t>(to));
    for (std::size_t at = part.find(L'\n', static_cast<std::size_t>(from)); at != std::wstring_view::npos;
         at = part.find(L'\n', at + 1))
        starts.push_back(static_cast<std::int32_t>(at) + 1);
}

} // namespace

void LinePositions::SetText(std::wstring_view text)
{
    starts_ = {0};
    AddStartsWithin(text, 0, static_cast<std::int32_t>(text.size()), starts_);
}

void LinePositions::TextEdited(std::wstring_view text, const TextEdit& edit)
{
    const auto first = std::upper_bound(starts_.begin(), starts_.end(), edit.position);
    const auto last = std::upper_bound(first, starts_.end(), edit.position + edit.removed);
    for (auto start = last; start != starts_.end(); ++start)
        *start += edit.added - edit.removed;
    std::vector<std::int32_t> found;
    AddStartsWithin(text, edit.position, edit.position + edit.added, found);
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
    for (std::size_t from = 0;;) {
        const std::size_t lineFeed = std::min(text.find(L'\n', from), text.size());
        // Up to here only carriage returns can be left.
        std::wstring_view line = text.substr(from, lineFeed - from);
        const bool crLf = lineFeed < text.size() && !line.empty() && line.back() == L'\r';
        line.remove_suffix(crLf ? 1 : 0);
        for (std::size_t at = line.find(L'\r'); at != std::wstring_view::npos; at = line.find(L'\r')) {
            normalised += line.substr(0, at);
            normalised += L"\r\n";
            line.remove_prefix(at + 1);
        }
        normalised += line;
        if (lineFeed == text.size())
            return normalised;
        normalised += L"\r\n";
        from = lineFeed + 1;
    }
}

std::wstring WithLf(std::wstring_view text)
{
    std::wstring shown;
    shown.reserve(text.size());
    for (std::size_t from = 0;;) {
        const std::size_t carriageReturn = std::min(text.find(L'\r', from), text.size());
        shown += text.substr(from, carriageReturn - from);
        if (carriageReturn == text.size())
            return shown;
        from = carriageReturn + 1;
    }
}

} // namespace voxtrel::textreader
