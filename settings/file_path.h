#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace voxtrel::settings {

// Between the program's texts and the names of files, by way of UTF-8 and in no locale.
std::filesystem::path ToPath(std::wstring_view text);
std::wstring FromPath(const std::filesystem::path& path);

} // namespace voxtrel::settings
