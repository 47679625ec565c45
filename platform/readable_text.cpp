#include "platform/readable_text.h"

#include "settings/text_case.h"

#include <algorithm>

namespace voxtrel::platform {
namespace {

constexpr char32_t kEmbeddedObject = 0xFFFC;
constexpr std::wstring_view kBlank = L" \r\n\u00A0";

} // namespace

std::wstring ReadableText(std::wstring_view text, std::size_t most)
{
    std::wstring readable;
    for (std::size_t i = 0; i < text.size();) {
        const settings::CodePoint next = settings::CodePointAt(text, i);
        i += next.length;
        if (next.value == U'\n' || next.value == U'\r') {
            // However it was written, it is one line end.
            if (next.value == U'\r' && i < text.size() && text[i] == L'\n')
                ++i;
            readable += L"\r\n";
        } else if (next.value == U'\t') {
            readable += L' ';
        } else if (next.value >= U' ' && next.value != 0x7F && next.value != kEmbeddedObject) {
            settings::AppendCodePoint(readable, next.value);
        }
    }
    readable.erase(0, std::min(readable.find_first_not_of(kBlank), readable.size()));
    if (readable.size() > most) {
        // A character of two elements stays whole or goes.
        const bool pair = most > 0 && settings::CodePointAt(readable, most - 1).length == 2;
        readable.resize(pair ? most - 1 : most);
    }
    readable.resize(readable.find_last_not_of(kBlank) + 1);
    return readable;
}

} // namespace voxtrel::platform
