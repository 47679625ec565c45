#include "agent/acs/unicode.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::acs {

TEST(WideFromUtf16, KeepsCharactersBeyondTheFirstPlane)
{
    EXPECT_EQ(WideFromUtf16(u"a\u20AC\U0001F600b"), L"a\u20AC\U0001F600b");
}

TEST(WideFromUtf16, ReplacesTornPairs)
{
    const char16_t torn[] = {0xD83D, u'a', 0xDE00, 0xD83D};
    EXPECT_EQ(WideFromUtf16({torn, 4}), L"\uFFFDa\uFFFD\uFFFD");
}

TEST(Utf16FromWide, IsTheWayBack) { EXPECT_EQ(Utf16FromWide(L"a\u20AC\U0001F600b"), u"a\u20AC\U0001F600b"); }

TEST(WideFromUtf8, IsTheWayBackFromUtf8FromWide)
{
    const std::wstring text = L"a\u00E4\u07FF\u0800\u20AC\uFFFD\U00010000\U0001F600\U0010FFFFz";
    EXPECT_EQ(WideFromUtf8(Utf8FromWide(text)), text);
}

TEST(WideFromUtf8, ReplacesWhatIsNoCharacter)
{
    EXPECT_EQ(WideFromUtf8("a\x80"
                           "b"),
              L"a\uFFFDb");
    EXPECT_EQ(WideFromUtf8("\xC3"), L"\uFFFD");
    EXPECT_EQ(WideFromUtf8("\xE2\x82z"), L"\uFFFD\uFFFDz");
    EXPECT_EQ(WideFromUtf8("\xC0\x80"), L"\uFFFD\uFFFD");           // too long a form
    EXPECT_EQ(WideFromUtf8("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD"); // half a surrogate pair
    EXPECT_EQ(WideFromUtf8("\xF4\x90\x80\x80").front(), L'\uFFFD'); // beyond the last character
}

} // namespace voxtrel::agent::acs
