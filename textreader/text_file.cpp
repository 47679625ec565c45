// Text files are told apart in this order: a byte order mark decides; zero bytes in every other place mean
// UTF-16; any other zero byte means that the file is no text; what is valid UTF-8 is UTF-8; the rest is the
// Western code page.

#include "textreader/text_file.h"

#include "settings/file_path.h"
#include "settings/text_case.h"
#include "textreader/line_positions.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <utility>

namespace voxtrel::textreader {
namespace {

constexpr std::uintmax_t kMaxFileBytes = 256u << 20;

enum class ByteOrder { Little, Big };

std::wstring FromUtf16(std::string_view bytes, ByteOrder order)
{
    const auto unitAt = [&](std::size_t i) -> char32_t {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        return order == ByteOrder::Little ? first | second << 8 : first << 8 | second;
    };
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const char32_t unit = unitAt(i);
        const char32_t next = i + 3 < bytes.size() ? unitAt(i + 2) : 0;
        const bool pair = unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000;
        settings::AppendCodePoint(text, pair ? 0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00) : unit);
        i += pair ? 2 : 0;
    }
    return text;
}

// In which order the bytes are UTF-16 without a mark: in Western text every other byte is zero.
std::optional<ByteOrder> UnmarkedUtf16(std::string_view bytes)
{
    if (bytes.size() % 2 != 0 || bytes.find('\0') == std::string_view::npos)
        return std::nullopt;
    std::array<std::size_t, 2> zeros{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        zeros[i % 2] += bytes[i] == '\0';
    const std::size_t half = bytes.size() / 2;
    if (zeros[1] > half * 3 / 4 && zeros[0] == 0)
        return ByteOrder::Little;
    if (zeros[0] > half * 3 / 4 && zeros[1] == 0)
        return ByteOrder::Big;
    return std::nullopt;
}

std::optional<std::wstring> Decode(std::string_view bytes)
{
    if (bytes.starts_with("\xEF\xBB\xBF"))
        return settings::FromUtf8(bytes.substr(3));
    if (bytes.starts_with("\xFF\xFE"))
        return FromUtf16(bytes.substr(2), ByteOrder::Little);
    if (bytes.starts_with("\xFE\xFF"))
        return FromUtf16(bytes.substr(2), ByteOrder::Big);
    if (const auto order = UnmarkedUtf16(bytes))
        return FromUtf16(bytes, *order);
    if (bytes.find('\0') != std::string_view::npos)
        return std::nullopt;
    if (settings::FindInvalidUtf8(bytes) == std::string_view::npos)
        return settings::FromUtf8(bytes);
    return FromWestern(bytes);
}

} // namespace

std::wstring FromWestern(std::string_view bytes)
{
    static constexpr std::array<wchar_t, 32> kUpperControls{
        0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    std::wstring text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto code = static_cast<unsigned char>(byte);
        text += code >= 0x80 && code < 0xA0 ? kUpperControls[code - 0x80] : static_cast<wchar_t>(code);
    }
    return text;
}

LoadedText DecodeText(std::string_view bytes)
{
    if (std::optional<std::wstring> text = Decode(bytes))
        return {WithCrLf(*text), {}};
    return {{}, L"This is not a text file."};
}

LoadedText LoadTextFile(const std::wstring& path)
{
    const std::filesystem::path file = settings::ToPath(path);
    std::error_code error;
    if (!std::filesystem::exists(file, error))
        return {{}, L"There is no file \"" + path + L"\"."};
    if (std::filesystem::is_directory(file, error))
        return {{}, L"\"" + path + L"\" is a folder, not a text file."};
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return {{}, L"The file \"" + path + L"\" cannot be read."};
    if (std::filesystem::is_regular_file(file, error) &&
        std::filesystem::file_size(file, error) > kMaxFileBytes)
        return {{}, L"The file \"" + path + L"\" is too large to be read aloud."};
    std::ostringstream buffer;
    buffer << stream.rdbuf();
    const std::string bytes = std::move(buffer).str();
    if (stream.bad())
        return {{}, L"The file \"" + path + L"\" cannot be read."};
    LoadedText loaded = DecodeText(bytes);
    if (!loaded.error.empty())
        loaded.error = L"The file \"" + path + L"\" is not a text file.";
    return loaded;
}

} // namespace voxtrel::textreader
