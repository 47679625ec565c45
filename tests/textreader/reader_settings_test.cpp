#include "textreader/reader_settings.h"

#include "fakes/recording_backend.h"
#include "textreader/readable_color.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace voxtrel::textreader {
namespace {

TEST(LoadReaderSettings, EmptyStoreGivesTheDesignedWindow)
{
    settings::MemoryBackend backend;
    const ReaderSettings reader = LoadReaderSettings(settings::SettingsStore(backend));
    EXPECT_EQ(reader.window, (WindowLayout{100, 100, 7560, 8000}));
    EXPECT_EQ(reader.font, L"Arial");
    EXPECT_EQ(reader.fontSize, 14);
    EXPECT_FALSE(reader.fontBold);
    EXPECT_FALSE(reader.fontItalic);
    EXPECT_EQ(reader.readMode, L"sentence");
    EXPECT_EQ(reader.wordColor, 255);
    EXPECT_EQ(reader.sentenceColor, 16711680);
    EXPECT_FALSE(reader.blockHighlight);
    EXPECT_FALSE(reader.autoClose);
}

TEST(LoadReaderSettings, NonsenseInTheStoreStillGivesAWindow)
{
    settings::MemoryBackend backend;
    settings::SettingsStore store(backend);
    for (const wchar_t* key : {L"WindowTop", L"WordColor", L"FontSize", L"ReadMode", L"BlockHighlight"})
        store.SaveSetting(L"TextReader", key, L"nonsense");
    const ReaderSettings reader = LoadReaderSettings(store);
    EXPECT_EQ(reader.window.top, 0);
    EXPECT_EQ(reader.fontSize, 14);
    EXPECT_EQ(reader.readMode, L"sentence");
    EXPECT_FALSE(reader.blockHighlight);
}

TEST(SaveReaderSettings, WritesTheKeysInTheirOrderAndIsReadBack)
{
    tests::RecordingBackend backend;
    settings::SettingsStore store(backend);
    ReaderSettings reader;
    reader.window = {150, -300, 9000, 12000};
    reader.wordColor = 0x123456;
    reader.font = L"Sans";
    reader.fontSize = 10.5;
    reader.fontBold = true;
    reader.readMode = kModeWord;
    reader.autoClose = true;
    SaveReaderSettings(store, reader);
    std::vector<std::wstring> keys;
    for (const auto& write : backend.writes)
        keys.push_back(write.key);
    EXPECT_EQ(keys, (std::vector<std::wstring>{L"WindowTop", L"WindowLeft", L"WindowHeight", L"WindowWidth",
                                               L"WordColor", L"SentenceColor", L"Font", L"FontSize",
                                               L"FontBold", L"FontItalic", L"ReadMode", L"AutoClose"}));
    EXPECT_EQ(LoadReaderSettings(store), reader);
    SaveBlockHighlight(store, true);
    EXPECT_TRUE(LoadReaderSettings(store).blockHighlight);
}

TEST(WindowPlace, TwipsArePixelsAndBack)
{
    const PixelRect pixels = ToPixels({100, 100, 7560, 8000}, 96);
    EXPECT_EQ(pixels.x, 7);
    EXPECT_EQ(pixels.width, 533);
    EXPECT_EQ(pixels.height, 504);
    for (const int dotsPerInch : {96, 120, 192}) {
        const PixelRect again = ToPixels(ToTwips(pixels, dotsPerInch), dotsPerInch);
        EXPECT_EQ(again.x, pixels.x);
        EXPECT_EQ(again.y, pixels.y);
        EXPECT_EQ(again.width, pixels.width);
        EXPECT_EQ(again.height, pixels.height);
    }
}

struct PlaceCase {
    PixelRect window;
    PixelRect kept;
};

// A screen of 1000 by 800 with a panel of 40 on top, and a second one on its right.
const std::vector<PixelRect> kScreens{{0, 40, 1000, 760}, {1000, 0, 800, 600}};

constexpr PlaceCase kPlaceCases[] = {
    {{100, 100, 500, 400}, {100, 100, 500, 400}},   // all of it visible
    {{100, 0, 500, 400}, {100, 40, 500, 400}},      // below the panel
    {{900, 100, 500, 400}, {1000, 100, 500, 400}},  // to the screen with most of it
    {{5000, 5000, 500, 400}, {500, 400, 500, 400}}, // a screen that is gone
    {{-300, 100, 500, 400}, {0, 100, 500, 400}},
    {{0, 0, 3000, 2000}, {0, 40, 1000, 760}}, // larger than any
};

TEST(WindowPlace, IsKeptOnAScreen)
{
    for (const PlaceCase& row : kPlaceCases) {
        SCOPED_TRACE(testing::Message() << row.window.x << " " << row.window.y);
        const PixelRect kept = KeptOnScreen(row.window, kScreens);
        EXPECT_EQ(kept.x, row.kept.x);
        EXPECT_EQ(kept.y, row.kept.y);
        EXPECT_EQ(kept.width, row.kept.width);
        EXPECT_EQ(kept.height, row.kept.height);
    }
    EXPECT_EQ(KeptOnScreen({5, 6, 7, 8}, {}).x, 5);
}

TEST(ReadableOn, LeavesTheDesignedColoursOnWhite)
{
    EXPECT_EQ(ReadableOn(0xFFFFFF, 0x0000FF), 0x0000FF);
    EXPECT_EQ(ReadableOn(0xFFFFFF, 0xFF0000), 0xFF0000);
}

TEST(ReadableOn, MovesEveryColourUntilItCanBeRead)
{
    for (const std::int32_t background : {0x000000, 0x2D2D2D, 0x808080, 0xF0F0F0, 0xFFFFFF, 0x400000}) {
        for (const std::int32_t color : {0x0000FF, 0xFF0000, 0x00FFFF, 0x000000, 0xFFFFFF, 0x808080}) {
            SCOPED_TRACE(testing::Message() << std::hex << background << " " << color);
            EXPECT_GE(Contrast(background, ReadableOn(background, color)), 3.9);
        }
    }
}

} // namespace
} // namespace voxtrel::textreader
