#include "app/dde_command.h"

namespace voxtrel::app {

std::optional<DdeCommand> ParseDdeCommand(std::wstring_view command)
{
    const std::wstring_view prefix = command.substr(0, 2);
    if (prefix == L"3:")
        return DdeCommand{DdeCommand::Kind::ShowOptions, {}};
    if (prefix == L"4:")
        return DdeCommand{DdeCommand::Kind::Quit, {}};
    if (command.size() <= 2)
        return std::nullopt;
    if (prefix == L"1:")
        return DdeCommand{DdeCommand::Kind::Speak, std::wstring(command.substr(2))};
    if (prefix == L"2:")
        return DdeCommand{DdeCommand::Kind::Read, std::wstring(command.substr(2))};
    return std::nullopt;
}

} // namespace voxtrel::app
