#pragma once

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace voxtrel::textreader {

// One character of a scan; past the end of the text there is the empty one. The empty character is a member
// of every set but equal to none: that is what stops the scans at the end of the text.
class Scanned {
public:
    Scanned() = default;
    explicit Scanned(wchar_t c) : c_(c), empty_(false) {}

    bool Empty() const { return empty_; }
    bool IsBlank() const { return !empty_ && c_ == L' '; }
    bool IsCarriageReturn() const { return !empty_ && c_ == L'\r'; }
    bool IsFullStop() const { return !empty_ && c_ == L'.'; }
    bool In(std::wstring_view set) const { return empty_ || set.find(c_) != std::wstring_view::npos; }

private:
    wchar_t c_ = 0;
    bool empty_ = true;
};

// A text by 1-based positions.
class ScannedText {
public:
    explicit ScannedText(std::wstring_view text) : text_(text) {}

    std::int32_t Length() const { return static_cast<std::int32_t>(text_.size()); }

    Scanned At(std::int32_t position) const
    {
        if (position < 1 || position > Length())
            return {};
        return Scanned(text_[static_cast<std::size_t>(position) - 1]);
    }

    std::int32_t Inside(std::int32_t position) const
    {
        return std::clamp(position, 1, std::max(1, Length()));
    }

private:
    std::wstring_view text_;
};

} // namespace voxtrel::textreader
