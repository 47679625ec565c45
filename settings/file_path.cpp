#include "settings/file_path.h"

#include "settings/text_case.h"

namespace voxtrel::settings {

std::filesystem::path ToPath(std::wstring_view text)
{
    const std::string bytes = ToUtf8(text);
    return {std::u8string(bytes.begin(), bytes.end())};
}

std::wstring FromPath(const std::filesystem::path& path)
{
    const std::u8string bytes = path.u8string();
    return FromUtf8({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

} // namespace voxtrel::settings
