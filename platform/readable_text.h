#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace voxtrel::platform {

// The text of an accessible object made fit to be spoken: no control characters, no stand-ins for embedded
// objects, line ends as CR LF, nothing blank around it, and no longer than most elements.
std::wstring ReadableText(std::wstring_view text, std::size_t most);

// Enough of a text field or a name.
inline constexpr std::size_t kLongestText = 4000;
inline constexpr std::size_t kLongestLine = 500;

} // namespace voxtrel::platform
