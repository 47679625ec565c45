#include "agent/speech/voice_engine.h"

#include "agent/speech/text_characters.h"

#include <algorithm>
#include <iterator>

namespace voxtrel::agent::speech {

namespace {

constexpr std::size_t kIdLength = 38; // {XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}

void AppendHex(std::wstring& text, std::uint64_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += L"0123456789ABCDEF"[(value >> shift) & 0xF];
}

// FNV-1a over the code points, so that both widths of wide characters give the same.
std::uint64_t Hash(std::wstring_view text, std::uint64_t hash)
{
    for (std::size_t i = 0; i < text.size();) {
        const CodePoint point = CodePointAt(text, i);
        i += point.length;
        for (int shift = 0; shift < 24; shift += 8)
            hash = (hash ^ ((point.value >> shift) & 0xFF)) * 0x100000001B3;
    }
    return hash;
}

int HexDigit(wchar_t c)
{
    const auto lower = LowerAscii(static_cast<char32_t>(c));
    if (IsAsciiDigit(lower))
        return static_cast<int>(lower - U'0');
    return lower >= U'a' && lower <= U'f' ? static_cast<int>(lower - U'a') + 10 : -1;
}

} // namespace

std::wstring PhraseText(const Phrase& phrase)
{
    std::wstring text;
    for (const PhraseWord& word : phrase.words) {
        if (!text.empty())
            text += L' ';
        text += word.text;
    }
    return text;
}

std::vector<std::size_t> WordOffsets(const Phrase& phrase)
{
    std::vector<std::size_t> offsets;
    std::size_t at = 0;
    for (const PhraseWord& word : phrase.words) {
        offsets.push_back(at);
        at += word.text.size() + 1;
    }
    return offsets;
}

std::size_t WordAtOffset(std::span<const std::size_t> offsets, std::size_t offset)
{
    const auto after = std::upper_bound(offsets.begin(), offsets.end(), offset);
    return after == offsets.begin() ? 0 : static_cast<std::size_t>(std::prev(after) - offsets.begin());
}

std::wstring VoiceModeId(std::uint32_t familyCode, std::wstring_view key)
{
    constexpr std::uint64_t kCustomVersion = 0x8, kVariant = 0x2;
    const std::uint64_t high = Hash(key, 0xCBF29CE484222325);
    const std::uint64_t low = Hash(key, high ^ familyCode);
    std::wstring id = L"{";
    AppendHex(id, familyCode, 8);
    id += L'-';
    AppendHex(id, high >> 48, 4);
    id += L'-';
    AppendHex(id, (kCustomVersion << 12) | ((high >> 36) & 0xFFF), 4);
    id += L'-';
    AppendHex(id, (kVariant << 14) | ((low >> 48) & 0x3FFF), 4);
    id += L'-';
    AppendHex(id, low & 0xFFFFFFFFFFFF, 12);
    id += L'}';
    return id;
}

std::uint32_t FamilyCodeOf(std::wstring_view modeId)
{
    if (modeId.size() != kIdLength || modeId.front() != L'{' || modeId.back() != L'}')
        return 0;
    std::uint32_t code = 0;
    for (const wchar_t c : modeId.substr(1, 8)) {
        const int digit = HexDigit(c);
        if (digit < 0)
            return 0;
        code = code << 4 | static_cast<std::uint32_t>(digit);
    }
    return code;
}

} // namespace voxtrel::agent::speech
