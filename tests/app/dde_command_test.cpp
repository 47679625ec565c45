#include "app/dde_command.h"

#include <gtest/gtest.h>

#include <cwchar>

namespace voxtrel::app {
namespace {

using Kind = DdeCommand::Kind;

TEST(ParseDdeCommand, SpeaksTheTextAsGiven)
{
    const auto command = ParseDdeCommand(L"1:  two blanks on each side  ");
    ASSERT_TRUE(command);
    EXPECT_EQ(command->kind, Kind::Speak);
    EXPECT_EQ(command->text, L"  two blanks on each side  ");
}

TEST(ParseDdeCommand, ReadsTheTextAsGiven)
{
    const auto command = ParseDdeCommand(L"2:1:not a command");
    ASSERT_TRUE(command);
    EXPECT_EQ(command->kind, Kind::Read);
    EXPECT_EQ(command->text, L"1:not a command");
}

TEST(ParseDdeCommand, OptionsAndQuitIgnoreWhatFollows)
{
    for (const wchar_t* text : {L"3:", L"3:anything"})
        EXPECT_EQ(ParseDdeCommand(text)->kind, Kind::ShowOptions);
    for (const wchar_t* text : {L"4:", L"4:anything"})
        EXPECT_EQ(ParseDdeCommand(text)->kind, Kind::Quit);
}

TEST(ParseDdeCommand, EverythingElseDoesNothing)
{
    for (const wchar_t* text : {L"", L"1", L":", L"1:", L"2:", L"0:x", L"5:x", L"1x", L" 1:x", L"12:x", L"x"})
        EXPECT_FALSE(ParseDdeCommand(text)) << std::string(text, text + std::wcslen(text));
}

} // namespace
} // namespace voxtrel::app
