#pragma once

#include <string>
#include <string_view>

namespace voxtrel::agent::speech {

// What the balloon part of a Map shows: literal text, tags taken out.
std::wstring MappedBalloonText(std::wstring_view balloon);

} // namespace voxtrel::agent::speech
