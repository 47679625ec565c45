#pragma once

#include <filesystem>
#include <string>
#include <string_view>

// Texts of a file are UTF-16, its sources and paths UTF-8; std::wstring is UTF-32 on some systems and UTF-16
// on others. What is no proper character becomes U+FFFD.
namespace voxtrel::agent::acs {

std::wstring WideFromUtf16(std::u16string_view text);

std::u16string Utf16FromWide(std::wstring_view text);

std::wstring WideFromUtf8(std::string_view text);

std::string Utf8FromWide(std::wstring_view text);

// A path as the file system takes it, whatever the locale.
std::filesystem::path PathFromWide(std::wstring_view path);

} // namespace voxtrel::agent::acs
