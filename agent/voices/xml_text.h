#pragma once

#include <string>
#include <string_view>

namespace voxtrel::agent::voices {

// The text as it stands between the tags of any XML.
std::wstring EscapedForXml(std::wstring_view text);

} // namespace voxtrel::agent::voices
