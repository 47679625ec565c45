#include "screenreading/role_table.h"

#include <gtest/gtest.h>

namespace voxtrel::screenreading {
namespace {

struct NumericCase {
    const wchar_t* text;
    bool numeric;
};

constexpr NumericCase kCases[] = {
    {L"0", true},      {L"12", true},     {L"12 ", true},      {L" \t7\r\n", true},
    {L"", false},      {L" ", false},     {L"a", false},       {L"12a", false},
    {L"a12", false},   {L"1 2", false},   {L"1,250", true},    {L"1,250.5", true},
    {L"1,", true},     {L",1", false},    {L"1,2,3", true},    {L"1.5", true},
    {L".5", true},     {L"5.", true},     {L".", false},       {L"1.2.3", false},
    {L"1.2,3", false}, {L"-3", true},     {L"+3", true},       {L"3-", true},
    {L"--3", false},   {L"-3-", false},   {L"- 3", true},      {L"(3)", true},
    {L"( 3 )", true},  {L"(3", false},    {L"3)", false},      {L"(-3)", false},
    {L"()", false},    {L"$3", true},     {L"3$", true},       {L"-$3.50", true},
    {L"($3)", true},   {L"$$3", false},   {L"\u20AC 5", true}, {L"$", false},
    {L"1e5", true},    {L"1E+5", true},   {L"1D-5", true},     {L"1e", false},
    {L"e5", false},    {L"1e5.5", false}, {L"1e+", false},     {L"&H10", false},
    {L"'5", false},    {L"True", false},  {L"1.,2", false},    {L"5\r\\pau=600\\", false},
};

TEST(IsNumeric, TakesNumbersAndNothingElse)
{
    for (const auto& [text, numeric] : kCases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(IsNumeric(text), numeric);
    }
}

} // namespace
} // namespace voxtrel::screenreading
