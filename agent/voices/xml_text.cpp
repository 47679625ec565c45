#include "agent/voices/xml_text.h"

namespace voxtrel::agent::voices {

std::wstring EscapedForXml(std::wstring_view text)
{
    std::wstring escaped;
    for (const wchar_t c : text) {
        switch (c) {
        case L'&':
            escaped += L"&amp;";
            break;
        case L'<':
            escaped += L"&lt;";
            break;
        case L'>':
            escaped += L"&gt;";
            break;
        case L'"':
            escaped += L"&quot;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

} // namespace voxtrel::agent::voices
