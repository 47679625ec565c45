#include "agent/stage/balloon_properties.h"

#include <algorithm>
#include <cstdlib>

namespace voxtrel::agent::stage {
namespace {

constexpr int kMostLines = 128;
constexpr int kFewestCharacters = 8;
constexpr int kMostCharacters = 255;
constexpr long kLargestFont = 2160;
constexpr int kBoldWeight = 600;
constexpr int kTallestFont = 1000; // pixels, in a file

Result OutOfRange(const wchar_t* words) { return Result::Failure(ErrorCode::DataInvalid, words); }

// A file's font height is in pixels of a screen with 96 dots an inch.
int PointsOf(int fontHeight)
{
    const int pixels = std::abs(std::clamp(fontHeight, -kTallestFont, kTallestFont));
    return std::max(1, (pixels * 72 + 48) / 96);
}

} // namespace

BalloonProperties::BalloonProperties(const std::optional<acs::BalloonInfo>& info) : exists_(info.has_value())
{
    const acs::BalloonInfo look = info.value_or(acs::BalloonInfo{});
    const int lines = std::clamp(look.lines, 1, kMostLines);
    const int characters = std::clamp(look.charactersPerLine, kFewestCharacters, kMostCharacters);
    style_ = static_cast<std::uint32_t>(lines) << 24 | static_cast<std::uint32_t>(characters) << 16;
    if (exists_)
        style_ |= balloon_style::kOn;
    if (look.sizeToText)
        style_ |= balloon_style::kSizeToText;
    if (look.autoHide)
        style_ |= balloon_style::kAutoHide;
    if (look.autoPace)
        style_ |= balloon_style::kAutoPace;

    font_ = {look.fontName, PointsOf(look.fontHeight), look.fontWeight >= kBoldWeight, look.italic};
    colors_ = {look.text, look.background, look.border};
}

Result BalloonProperties::SetFontName(std::wstring_view name)
{
    if (name.empty())
        return OutOfRange(L"The balloon needs the name of a font.");
    font_.name = name;
    return Result::Success();
}

Result BalloonProperties::SetFontSize(long points)
{
    if (points < 1 || points > kLargestFont)
        return OutOfRange(L"The font size of the balloon must be from 1 to 2160 points.");
    font_.points = static_cast<int>(points);
    return Result::Success();
}

Result BalloonProperties::SetStyle(std::uint32_t style)
{
    const int lines = static_cast<int>(style >> 24);
    const int characters = static_cast<int>(style >> 16 & 0xFF);
    if (lines < 1 || lines > kMostLines)
        return OutOfRange(L"The balloon must have from 1 to 128 lines.");
    if (characters < kFewestCharacters)
        return OutOfRange(L"The lines of the balloon must have from 8 to 255 characters.");
    if (lines != Lines() && Has(balloon_style::kSizeToText) && (style & balloon_style::kSizeToText) != 0)
        return OutOfRange(L"The balloon is sized to its text: its number of lines cannot be set.");
    if (!exists_ && (style & balloon_style::kOn) != 0)
        return Result::Failure(ErrorCode::NoBalloon, L"This character was made without a word balloon.");
    style_ = style;
    return Result::Success();
}

} // namespace voxtrel::agent::stage
