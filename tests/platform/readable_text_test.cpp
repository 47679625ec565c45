#include "platform/readable_text.h"

#include <gtest/gtest.h>

namespace voxtrel::platform {
namespace {

TEST(ReadableText, KeepsWhatCanBeSpoken)
{
    EXPECT_EQ(ReadableText(L"", 10), L"");
    EXPECT_EQ(ReadableText(L" \t\r\n\u00A0", 10), L"");
    EXPECT_EQ(ReadableText(L"  Save\x01 \uFFFCall\x7F ", 100), L"Save all");
    EXPECT_EQ(ReadableText(L"gr\u00FC\u00DFe \U0001F600", 100), L"gr\u00FC\u00DFe \U0001F600");
    EXPECT_EQ(ReadableText(L"a\tb", 100), L"a b");
}

TEST(ReadableText, EndsEveryLineTheSameWay)
{
    EXPECT_EQ(ReadableText(L"a\nb\r\nc\rd\n", 100), L"a\r\nb\r\nc\r\nd");
    EXPECT_EQ(ReadableText(L"a\n\nb", 100), L"a\r\n\r\nb");
}

TEST(ReadableText, CutsWithoutTearingACharacter)
{
    EXPECT_EQ(ReadableText(L"abcdef", 3), L"abc");
    EXPECT_EQ(ReadableText(L"ab cdef", 3), L"ab");
    EXPECT_EQ(ReadableText(L"abc", 0), L"");
    const std::wstring cut = ReadableText(L"ab\U0001F600", 3);
    EXPECT_EQ(cut, sizeof(wchar_t) == 2 ? L"ab" : L"ab\U0001F600");
}

} // namespace
} // namespace voxtrel::platform
