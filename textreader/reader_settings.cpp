#include "textreader/reader_settings.h"

#include "settings/number_conversions.h"

#include <algorithm>
#include <cmath>

namespace voxtrel::textreader {

namespace {

using settings::FormatBoolean;
using settings::FormatNumber;

constexpr std::wstring_view kSection = L"TextReader";
constexpr int kTwipsPerInch = 1440;
constexpr double kMaxFontSize = 400;

std::int32_t Number(const settings::SettingsStore& store, std::wstring_view key, std::int32_t fallback)
{
    return settings::ToInt32(store.GetSetting(kSection, key, FormatNumber(fallback)));
}

bool Boolean(const settings::SettingsStore& store, std::wstring_view key)
{
    return settings::ToBoolean(store.GetSetting(kSection, key, L"False"));
}

std::int64_t VisibleArea(const PixelRect& window, const PixelRect& screen)
{
    const auto shared = [](int begin, int length, int otherBegin, int otherLength) -> std::int64_t {
        const std::int64_t end =
            std::min(std::int64_t{begin} + length, std::int64_t{otherBegin} + otherLength);
        return std::max(end - std::max(begin, otherBegin), std::int64_t{0});
    };
    return shared(window.x, window.width, screen.x, screen.width) *
           shared(window.y, window.height, screen.y, screen.height);
}

} // namespace

ReaderSettings LoadReaderSettings(const settings::SettingsStore& store)
{
    const ReaderSettings designed;
    ReaderSettings reader;
    reader.window.top = Number(store, L"WindowTop", designed.window.top);
    reader.window.left = Number(store, L"WindowLeft", designed.window.left);
    reader.window.height = Number(store, L"WindowHeight", designed.window.height);
    reader.window.width = Number(store, L"WindowWidth", designed.window.width);
    reader.wordColor = Number(store, L"WordColor", designed.wordColor) & 0xFFFFFF;
    reader.sentenceColor = Number(store, L"SentenceColor", designed.sentenceColor) & 0xFFFFFF;
    reader.font = store.GetSetting(kSection, L"Font", designed.font);
    reader.fontSize = settings::Val(store.GetSetting(kSection, L"FontSize", FormatNumber(designed.fontSize)));
    if (!(reader.fontSize >= 1 && reader.fontSize <= kMaxFontSize))
        reader.fontSize = designed.fontSize;
    reader.fontBold = Boolean(store, L"FontBold");
    reader.fontItalic = Boolean(store, L"FontItalic");
    reader.readMode = store.GetSetting(kSection, L"ReadMode", kModeSentence);
    if (reader.readMode != kModeWord && reader.readMode != kModeParagraph)
        reader.readMode = kModeSentence;
    reader.blockHighlight = Boolean(store, L"BlockHighlight");
    reader.autoClose = Boolean(store, L"AutoClose");
    return reader;
}

void SaveReaderSettings(settings::SettingsStore& store, const ReaderSettings& reader)
{
    store.SaveSetting(kSection, L"WindowTop", FormatNumber(reader.window.top));
    store.SaveSetting(kSection, L"WindowLeft", FormatNumber(reader.window.left));
    store.SaveSetting(kSection, L"WindowHeight", FormatNumber(reader.window.height));
    store.SaveSetting(kSection, L"WindowWidth", FormatNumber(reader.window.width));
    store.SaveSetting(kSection, L"WordColor", FormatNumber(reader.wordColor));
    store.SaveSetting(kSection, L"SentenceColor", FormatNumber(reader.sentenceColor));
    store.SaveSetting(kSection, L"Font", reader.font);
    store.SaveSetting(kSection, L"FontSize", FormatNumber(reader.fontSize));
    store.SaveSetting(kSection, L"FontBold", FormatBoolean(reader.fontBold));
    store.SaveSetting(kSection, L"FontItalic", FormatBoolean(reader.fontItalic));
    store.SaveSetting(kSection, L"ReadMode", reader.readMode);
    store.SaveSetting(kSection, L"AutoClose", FormatBoolean(reader.autoClose));
}

void SaveBlockHighlight(settings::SettingsStore& store, bool on)
{
    store.SaveSetting(kSection, L"BlockHighlight", FormatBoolean(on));
}

PixelRect ToPixels(const WindowLayout& layout, int dotsPerInch)
{
    const auto pixels = [&](std::int32_t twips) {
        return static_cast<int>(std::lround(static_cast<double>(twips) * dotsPerInch / kTwipsPerInch));
    };
    return {pixels(layout.left), pixels(layout.top), pixels(layout.width), pixels(layout.height)};
}

WindowLayout ToTwips(const PixelRect& pixels, int dotsPerInch)
{
    const auto twips = [&](int length) {
        return static_cast<std::int32_t>(
            std::lround(static_cast<double>(length) * kTwipsPerInch / dotsPerInch));
    };
    return {twips(pixels.y), twips(pixels.x), twips(pixels.height), twips(pixels.width)};
}

PixelRect KeptOnScreen(const PixelRect& window, const std::vector<PixelRect>& screens)
{
    if (screens.empty())
        return window;
    const PixelRect& screen =
        *std::max_element(screens.begin(), screens.end(), [&](const PixelRect& a, const PixelRect& b) {
            return VisibleArea(window, a) < VisibleArea(window, b);
        });
    PixelRect kept = window;
    kept.width = std::min(window.width, screen.width);
    kept.height = std::min(window.height, screen.height);
    kept.x = std::clamp(window.x, screen.x, screen.x + screen.width - kept.width);
    kept.y = std::clamp(window.y, screen.y, screen.y + screen.height - kept.height);
    return kept;
}

} // namespace voxtrel::textreader
