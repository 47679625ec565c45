// A settings file of any bytes is read or refused, and what was read is written and read back the same.

#include "settings/settings_file.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

using voxtrel::settings::ParsedSettings;
using voxtrel::settings::ParseSettingsFile;
using voxtrel::settings::SerialiseSettingsFile;

namespace {

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ParsedSettings parsed = ParseSettingsFile({reinterpret_cast<const char*>(data), size});
    Require(parsed.damage.empty() || parsed.tree.Sections().empty());
    if (!parsed.damage.empty())
        return 0;

    const std::string written = SerialiseSettingsFile(parsed.tree);
    const ParsedSettings again = ParseSettingsFile(written);
    Require(again.damage.empty());
    Require(again.tree.Sections().size() == parsed.tree.Sections().size());
    for (std::size_t i = 0; i < again.tree.Sections().size(); ++i) {
        Require(again.tree.Sections()[i].application == parsed.tree.Sections()[i].application);
        Require(again.tree.Sections()[i].name == parsed.tree.Sections()[i].name);
        Require(again.tree.Sections()[i].pairs == parsed.tree.Sections()[i].pairs);
    }
    Require(SerialiseSettingsFile(again.tree) == written);
    return 0;
}
