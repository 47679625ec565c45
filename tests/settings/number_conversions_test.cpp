#include "settings/number_conversions.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace voxtrel::settings {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

struct ValCase {
    const wchar_t* text;
    double value;
};

constexpr ValCase kValCases[] = {
    {L"", 0},
    {L"   ", 0},
    {L"14", 14},
    {L"  -12.5 pixels", -12.5},
    {L"+7", 7},
    {L"--7", 0},
    {L"+-7", 0},
    {L"- 7", -7},
    {L"1 6 15 198th Street", 1615198},
    {L"1\t2\n3", 123},
    {L"1\r2", 1},
    {L"1\u00A0"
     L"2",
     1},
    {L"1,000", 1},
    {L"24 and 57", 24},
    {L".5", 0.5},
    {L"5.", 5},
    {L".", 0},
    {L"-.", 0},
    {L"1.2.3", 1.2},
    {L"1..2", 1},
    {L"1101:Show &Speech Options", 1101},
    {L"ROOT", 0},
    {L"Information", 0},
    {L"Infinity", 0},
    {L"nan", 0},
    {L"0x10", 0},
    {L"1e3", 1000},
    {L"1E+3", 1000},
    {L"1e-3", 0.001},
    {L"1d3", 1000},
    {L"1D+2", 100},
    {L"1 e 3", 1000},
    {L"1e", 1},
    {L"1e+", 1},
    {L"1ex", 1},
    {L"1e3.5", 1000},
    {L"e3", 0},
    {L"1e308", 1e308},
    {L"1e309", kLargest},
    {L"-1e999999999999999999999", -kLargest},
    {L"1e-400", 0},
    {L"0e999999", 0},
    {L"0.0000000001e310", 1e300},
    {L"&H10", 16},
    {L"&hff", 255},
    {L"&HFFFF", -1},
    {L"&H8000", -32768},
    {L"&HFFFF&", 65535},
    {L"&H10000", 65536},
    {L"&HFFFFFFFF", -1},
    {L"&H1FFFFFFFF", 8589934591.0},
    {L"&O17", 15},
    {L"&o8", 0},
    {L"&HG", 0},
    {L"&", 0},
    {L"&X1", 0},
    {L"& H 1 0", 16},
    {L"١٢", 0},
    {L"７", 0},
};

TEST(Val, TakesTheLeadingNumber)
{
    for (const auto& [text, value] : kValCases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        EXPECT_DOUBLE_EQ(Val(text), value);
    }
}

TEST(Val, TakesNumbersOfAnyLength)
{
    EXPECT_EQ(Val(std::wstring(100000, L'9')), kLargest);
    EXPECT_EQ(Val(L"0." + std::wstring(100000, L'0') + L"1"), 0);
    EXPECT_EQ(Val(L"&H" + std::wstring(100000, L'F')), kLargest);
    EXPECT_EQ(Val(std::wstring(100000, L' ') + L"1"), 1);
}

TEST(Val, DoesNotAskTheLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "German_Germany"})
        std::setlocale(LC_ALL, name);
    EXPECT_EQ(Val(L"1.5"), 1.5);
    EXPECT_EQ(Val(L"1,5"), 1);
    EXPECT_EQ(FormatNumber(1.5), L"1.5");
    std::setlocale(LC_ALL, before.c_str());
}

struct IntegerCase {
    const wchar_t* text;
    int as16;
    int as32;
};

constexpr IntegerCase kIntegerCases[] = {
    {L"", 0, 0},
    {L"150", 150, 150},
    {L"not a number", 0, 0},
    {L"0.5", 0, 0},
    {L"1.5", 2, 2},
    {L"2.5", 2, 2},
    {L"-0.5", 0, 0},
    {L"-1.5", -2, -2},
    {L"-2.5", -2, -2},
    {L"2.5000001", 3, 3},
    {L"2.4999999", 2, 2},
    {L"32767.4", 32767, 32767},
    {L"32767.5", 32767, 32768},
    {L"40000", 32767, 40000},
    {L"-40000", -32768, -40000},
    {L"-32768.5", -32768, -32768},
    {L"1e300", 32767, 2147483647},
    {L"-1e300", -32768, -2147483647 - 1},
    {L"2147483647.5", 32767, 2147483647},
};

TEST(ToInteger, RoundsHalvesToEvenAndStopsAtTheLimits)
{
    for (const auto& [text, as16, as32] : kIntegerCases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        EXPECT_EQ(ToInt16(text), as16);
        EXPECT_EQ(ToInt32(text), as32);
    }
}

struct BooleanCase {
    const wchar_t* text;
    bool value;
};

constexpr BooleanCase kBooleanCases[] = {
    {L"True", true}, {L"true", true},    {L"TRUE", true}, {L"False", false}, {L"FALSE", false},
    {L"-1", true},   {L"1", true},       {L"0.25", true}, {L"0", false},     {L"", false},
    {L"yes", false}, {L"Truely", false}, {L"0.0", false}, {L"&H1", true},
};

TEST(ToBoolean, ReadsWordsAndNumbers)
{
    for (const auto& [text, value] : kBooleanCases) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(text)));
        EXPECT_EQ(ToBoolean(text), value);
    }
}

TEST(FormatNumber, WritesPlainDecimals)
{
    EXPECT_EQ(FormatNumber(30000), L"30000");
    EXPECT_EQ(FormatNumber(std::int16_t{-32768}), L"-32768");
    EXPECT_EQ(FormatNumber(1.0), L"1");
    EXPECT_EQ(FormatNumber(-0.0), L"0");
    EXPECT_EQ(FormatNumber(0.1), L"0.1");
    EXPECT_EQ(FormatNumber(1e21), L"1000000000000000000000");
    EXPECT_EQ(FormatNumber(1e-7), L"0.0000001");
}

TEST(FormatNumber, IsReadBackAsTheSameNumber)
{
    for (const double value :
         {0.0, 1.0, 2.5, -3.75, 1.0 / 3, kLargest, std::numeric_limits<double>::denorm_min()})
        EXPECT_EQ(Val(FormatNumber(value)), value);
}

TEST(FormatBoolean, WritesTheTwoWords)
{
    EXPECT_EQ(FormatBoolean(true), L"True");
    EXPECT_EQ(FormatBoolean(false), L"False");
}

} // namespace
} // namespace voxtrel::settings
