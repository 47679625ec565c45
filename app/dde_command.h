#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace voxtrel::app {

// "1:" text   speak          "2:" text   read in the Text Reader
// "3:"        options        "4:"        quit
// Anything else gives nothing: it is accepted and ignored.
struct DdeCommand {
    enum class Kind { Speak, Read, ShowOptions, Quit };
    Kind kind = Kind::Speak;
    std::wstring text; // as sent, for Speak and Read; never empty there
};

std::optional<DdeCommand> ParseDdeCommand(std::wstring_view command);

} // namespace voxtrel::app
