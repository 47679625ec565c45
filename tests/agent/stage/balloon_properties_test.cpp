#include "agent/stage/balloon_properties.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::stage {
namespace {

constexpr std::uint32_t Sized(std::uint32_t lines, std::uint32_t characters)
{
    return lines << 24 | characters << 16;
}

TEST(BalloonProperties, BeginAsTheFileHasThem)
{
    acs::BalloonInfo info;
    info.lines = 3;
    info.charactersPerLine = 32;
    info.fontName = L"Serif";
    info.fontHeight = -16;
    info.fontWeight = 700;
    info.autoHide = true;
    info.autoPace = false;
    info.sizeToText = true;
    const BalloonProperties balloon(info);
    EXPECT_EQ(balloon.Style(),
              Sized(3, 32) | balloon_style::kOn | balloon_style::kAutoHide | balloon_style::kSizeToText);
    EXPECT_EQ(balloon.FontName(), L"Serif");
    EXPECT_EQ(balloon.FontSize(), 12);
    EXPECT_TRUE(balloon.Font().bold);
}

TEST(BalloonProperties, CharacterWithoutABalloonHasItSwitchedOff)
{
    BalloonProperties balloon(std::nullopt);
    EXPECT_FALSE(balloon.Has(balloon_style::kOn));
    EXPECT_EQ(balloon.Lines(), 2);
    EXPECT_EQ(balloon.CharactersPerLine(), 28);
    EXPECT_EQ(balloon.SetStyle(balloon.Style() | balloon_style::kOn).code, ErrorCode::NoBalloon);
    EXPECT_TRUE(balloon.SetStyle(balloon.Style() ^ balloon_style::kAutoPace).Ok());
    EXPECT_TRUE(balloon.SetFontName(L"Sans").Ok());
    EXPECT_TRUE(balloon.SetFontSize(20).Ok());
    EXPECT_EQ(balloon.FontSize(), 20);
}

struct StyleCase {
    std::uint32_t style;
    bool accepted;
};

TEST(BalloonProperties, StyleIsCheckedAsAWhole)
{
    for (const auto& [style, accepted] : {StyleCase{Sized(1, 8), true},
                                          {Sized(128, 255), true},
                                          {Sized(0, 28), false},
                                          {Sized(129, 28), false},
                                          {Sized(2, 7), false},
                                          {Sized(2, 0), false},
                                          {15, false},
                                          {Sized(2, 28) | 15, true}}) {
        SCOPED_TRACE(style);
        BalloonProperties balloon(acs::BalloonInfo{});
        const std::uint32_t before = balloon.Style();
        EXPECT_EQ(balloon.SetStyle(style).Ok(), accepted);
        EXPECT_EQ(balloon.Style(), accepted ? style : before);
    }
}

TEST(BalloonProperties, LinesCannotBeChangedWhileSizedToText)
{
    BalloonProperties balloon(acs::BalloonInfo{});
    ASSERT_TRUE(balloon.SetStyle(Sized(2, 28) | balloon_style::kOn | balloon_style::kSizeToText).Ok());
    EXPECT_FALSE(balloon.SetStyle(Sized(3, 28) | balloon_style::kOn | balloon_style::kSizeToText).Ok());
    EXPECT_TRUE(balloon.SetStyle(Sized(2, 40) | balloon_style::kOn | balloon_style::kSizeToText).Ok());
    EXPECT_TRUE(balloon.SetStyle(balloon.Style() | balloon_style::kAutoHide).Ok());
    EXPECT_TRUE(balloon.SetStyle(Sized(3, 40) | balloon_style::kOn).Ok());
}

TEST(BalloonProperties, FontSizeIsFromOneToItsLimit)
{
    BalloonProperties balloon(acs::BalloonInfo{});
    EXPECT_TRUE(balloon.SetFontSize(2160).Ok());
    EXPECT_FALSE(balloon.SetFontSize(2161).Ok());
    EXPECT_FALSE(balloon.SetFontSize(0).Ok());
    EXPECT_FALSE(balloon.SetFontSize(-14).Ok());
    EXPECT_EQ(balloon.FontSize(), 2160);
}

TEST(BalloonProperties, FontNeedsAName)
{
    BalloonProperties balloon(acs::BalloonInfo{});
    const Result result = balloon.SetFontName(L"");
    EXPECT_FALSE(result.Ok());
    EXPECT_FALSE(result.description.empty());
    EXPECT_EQ(balloon.FontName(), L"Arial");
}

TEST(BalloonProperties, AnyFontHeightOfAFileIsTaken)
{
    for (const int height : {0, -1, 1, 100000, -2147483647 - 1}) {
        acs::BalloonInfo info;
        info.fontHeight = height;
        const BalloonProperties balloon(info);
        EXPECT_GE(balloon.FontSize(), 1) << height;
        EXPECT_LE(balloon.FontSize(), 2160) << height;
    }
}

} // namespace
} // namespace voxtrel::agent::stage
