#pragma once

#include "agent/control.h"
#include "agent/stage/stage_view.h"

#include <optional>

namespace voxtrel::agent::stage {

// The balloon's properties as the client sets them, beginning with those of the file. They serve the next
// text.
class BalloonProperties : public Balloon {
public:
    explicit BalloonProperties(const std::optional<acs::BalloonInfo>& info);

    std::wstring FontName() const override { return font_.name; }
    Result SetFontName(std::wstring_view name) override;
    long FontSize() const override { return font_.points; }
    Result SetFontSize(long points) override;
    std::uint32_t Style() const override { return style_; }
    // Fails, and changes nothing, when lines or characters per line are out of range, when the lines are
    // changed while the balloon is sized to its text, or when a character without a balloon is given one.
    Result SetStyle(std::uint32_t style) override;

    bool Has(std::uint32_t styleBit) const { return (style_ & styleBit) != 0; }
    int Lines() const { return static_cast<int>(style_ >> 24); }
    int CharactersPerLine() const { return static_cast<int>(style_ >> 16 & 0xFF); }
    const FontSpec& Font() const { return font_; }
    const BalloonColors& Colors() const { return colors_; }

private:
    bool exists_;
    std::uint32_t style_ = 0;
    FontSpec font_;
    BalloonColors colors_;
};

} // namespace voxtrel::agent::stage
