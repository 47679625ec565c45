#include "settings/text_case.h"

#include <gtest/gtest.h>

namespace voxtrel::settings {
namespace {

struct LowerCase {
    char32_t codePoint;
    char32_t lower;
};

constexpr LowerCase kLowerCases[] = {
    {U'A', U'a'},       {U'z', U'z'},     {U'@', U'@'},     {U'[', U'['},         {U'0', U'0'},
    {0xC0, 0xE0},       {0xDE, 0xFE},     {0xD7, 0xD7},     {0xDF, 0xDF},         {0xF7, 0xF7},
    {0x178, 0xFF},      {0x130, U'i'},    {0x131, 0x131},   {0x212A, U'k'},       {0x212B, 0xE5},
    {0x3A3, 0x3C3},     {0x3C2, 0x3C2},   {0x410, 0x430},   {0x1E9E, 0xDF},       {0x10400, 0x10428},
    {0x1F600, 0x1F600}, {0xD800, 0xD800}, {0xDFFF, 0xDFFF}, {0x110000, 0x110000}, {0xFFFFFFFF, 0xFFFFFFFF},
};

TEST(SimpleLower, MapsOneCodePointToOne)
{
    for (const auto& [codePoint, lower] : kLowerCases) {
        SCOPED_TRACE(static_cast<unsigned>(codePoint));
        EXPECT_EQ(SimpleLower(codePoint), lower);
    }
}

TEST(SimpleLower, AgreesWithItsLatin1ShortCut)
{
    for (char32_t c = 0; c < 0x100; ++c)
        EXPECT_EQ(SimpleLower(c), SimpleLowerBeyondLatin1(c)) << static_cast<unsigned>(c);
}

TEST(SimpleLower, LowersWholeTexts) { EXPECT_EQ(SimpleLower(std::wstring_view(L"CAFÉ Σ 𐐀!")), L"café σ 𐐨!"); }

TEST(WithCapital, RaisesTheFirstLetterOnly)
{
    EXPECT_EQ(WithCapital(L""), L"");
    EXPECT_EQ(WithCapital(L"push button "), L"Push button ");
    EXPECT_EQ(WithCapital(L"\u00E9lan"), L"\u00C9lan");
    EXPECT_EQ(WithCapital(L"\U00010428x"), L"\U00010400x");
    EXPECT_EQ(WithCapital(L"12"), L"12");
    EXPECT_EQ(WithCapital(L"\u00DFx"), L"\u1E9Ex");
    EXPECT_EQ(WithCapital(std::wstring(1, static_cast<wchar_t>(0xD800)) + L"x"),
              std::wstring(1, static_cast<wchar_t>(0xD800)) + L"x");
}

TEST(WithCapital, KeepsTheNameTheSameSetting)
{
    // Dotless i, long s, Greek final sigma: their capitals are those of other letters.
    for (const wchar_t* name : {L"\u0131n", L"\u017Fo", L"\u03C2o"})
        EXPECT_EQ(WithCapital(name), name);
}

TEST(SameName, IgnoresCapitalsAndNothingElse)
{
    EXPECT_TRUE(SameName(L"", L""));
    EXPECT_TRUE(SameName(L"Speed", L"sPEED"));
    EXPECT_TRUE(SameName(L"ÉCOLE 𐐀", L"école 𐐨"));
    EXPECT_FALSE(SameName(L"speed", L"speed "));
    EXPECT_FALSE(SameName(L"speed", L"spee"));
    EXPECT_FALSE(SameName(L"straße", L"STRASSE"));
    EXPECT_FALSE(SameName(L"ς", L"σ"));
}

TEST(NameHash, IsTheSameForTheSameName)
{
    EXPECT_EQ(NameHash()(L"VOICES 𐐀 É"), NameHash()(L"voices 𐐨 é"));
    EXPECT_NE(NameHash()(L"voices"), NameHash()(L"voice"));
}

TEST(CodePointAt, TakesAPairAsOneAndATornHalfAsItself)
{
    const std::wstring face = L"😀x";
    const CodePoint first = CodePointAt(face, 0);
    EXPECT_EQ(first.value, 0x1F600u);
    EXPECT_EQ(CodePointAt(face, first.length).value, U'x');

    const std::wstring torn = {static_cast<wchar_t>(0xD83D), L'a'};
    EXPECT_EQ(CodePointAt(torn, 0).value, 0xD83Du);
    EXPECT_EQ(CodePointAt(torn, 0).length, 1u);
    EXPECT_EQ(CodePointAt(std::wstring_view(torn).substr(0, 1), 0).length, 1u);
}

struct Utf8Case {
    const char* bytes;
    const wchar_t* text;
};

constexpr Utf8Case kInvalidUtf8[] = {
    {"a\x80z", L"a\uFFFDz"},
    {"\xC0\xAF", L"\uFFFD\uFFFD"},                     // overlong
    {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},           // a surrogate
    {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"}, // beyond the last code point
    {"\xE2\x82", L"\uFFFD\uFFFD"},                     // cut off
    {"\xFF", L"\uFFFD"},
};

TEST(FromUtf8, PutsReplacementsForWhatIsNoUtf8)
{
    for (const auto& [bytes, text] : kInvalidUtf8) {
        SCOPED_TRACE(bytes);
        EXPECT_EQ(FromUtf8(bytes), text);
        EXPECT_NE(FindInvalidUtf8(bytes), std::string_view::npos);
    }
}

TEST(ToUtf8, GoesThereAndBack)
{
    const std::wstring text = std::wstring(L"plain é € 😀 \n") + L'\0' + L"end";
    EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
    EXPECT_EQ(FindInvalidUtf8(ToUtf8(text)), std::string_view::npos);
    EXPECT_EQ(ToUtf8(L"é€😀"), "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(ToUtf8, ReplacesATornSurrogate)
{
    EXPECT_EQ(ToUtf8(std::wstring(1, static_cast<wchar_t>(0xDC00)) + L"a"), "\xEF\xBF\xBD"
                                                                            "a");
}

} // namespace
} // namespace voxtrel::settings
