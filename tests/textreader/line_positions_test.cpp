#include "textreader/line_positions.h"

#include "random_text.h"

#include <gtest/gtest.h>

#include <string>

namespace voxtrel::textreader {
namespace {

TEST(WithCrLf, TakesAnyLineEnd)
{
    EXPECT_EQ(WithCrLf(L"a\nb\rc\r\nd\r\r\n\n"), L"a\r\nb\r\nc\r\nd\r\n\r\n\r\n");
    EXPECT_EQ(WithCrLf(L""), L"");
    EXPECT_EQ(WithLf(L"a\r\nb\r\n"), L"a\nb\n");
}

// The control's text is the same with one character for each line break.
TEST(LinePositions, EveryCharacterOfTheControlIsFoundInTheTextAndBack)
{
    tests::RandomTexts texts(5);
    for (int round = 0; round < 500; ++round) {
        const std::wstring text = texts.NextInBox(40);
        const std::wstring shown = WithLf(text);
        LinePositions lines;
        lines.SetText(text);
        for (std::int32_t at = 0; at < static_cast<std::int32_t>(shown.size()); ++at) {
            const std::int32_t position = lines.FromControl(at);
            ASSERT_EQ(lines.ToControl(position), at);
            ASSERT_EQ(lines.EndToControl(position), at);
            const wchar_t there = text[static_cast<std::size_t>(position)];
            ASSERT_EQ(there == L'\r' ? L'\n' : there, shown[static_cast<std::size_t>(at)]);
        }
        ASSERT_EQ(lines.ToControl(static_cast<std::int32_t>(text.size())),
                  static_cast<std::int32_t>(shown.size()));
    }
}

TEST(LinePositions, BetweenCrAndLfARangeBeginsOnTheNextLineAndEndsOnThisOne)
{
    LinePositions lines;
    lines.SetText(L"ab\r\ncd");
    EXPECT_EQ(lines.ToControl(3), 3);
    EXPECT_EQ(lines.EndToControl(3), 2);
    EXPECT_EQ(lines.EndToControl(4), 3);
}

TEST(LinePositions, FollowEditsAsIfTheTextWereNew)
{
    tests::RandomTexts texts(6);
    for (int round = 0; round < 2000; ++round) {
        std::wstring text = texts.NextInBox(20);
        LinePositions lines;
        lines.SetText(text);
        for (int i = 0; i < 4; ++i) {
            LinePositions before;
            before.SetText(text);
            // As a control edits: line breaks stay whole.
            const auto shownSize = WithLf(text).size();
            const auto from = static_cast<std::int32_t>(texts.Below(shownSize + 1));
            const auto to = static_cast<std::int32_t>(from + texts.Below(shownSize - from + 1));
            const std::wstring inserted = texts.NextInBox(3);
            const std::int32_t begin = before.FromControl(from);
            const TextEdit edit{begin, before.FromControl(to) - begin,
                                static_cast<std::int32_t>(inserted.size())};
            text.replace(static_cast<std::size_t>(edit.position), static_cast<std::size_t>(edit.removed),
                         inserted);
            lines.TextEdited(text, edit);
            LinePositions anew;
            anew.SetText(text);
            for (std::int32_t at = 0; at <= static_cast<std::int32_t>(text.size()); ++at)
                ASSERT_EQ(lines.ToControl(at), anew.ToControl(at)) << round;
        }
    }
}

} // namespace
} // namespace voxtrel::textreader
