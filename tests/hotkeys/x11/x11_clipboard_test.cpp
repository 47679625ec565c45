#include "desktop_fixture.h"

#include "settings/text_case.h"

#include <csignal>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatienceOfACall = 1000ms;

class X11ClipboardTest : public X11Test {
protected:
    // Another program copies; it stays as long as the object that is returned.
    std::unique_ptr<Child> OtherCopies(std::vector<std::string> options)
    {
        const std::uint32_t before = clipboard.GetClipboardSequenceNumber();
        NativeWindow window = 0;
        auto other = StartTarget(std::move(options), window);
        EXPECT_TRUE(keystrokes.SendKeys(kCtrlInsert, window));
        EXPECT_TRUE(clipboard.AwaitChange(before, std::chrono::steady_clock::now() + kPatience));
        return other;
    }

    std::string Pasted(const char* target = "UTF8_STRING")
    {
        return Ask({"xclip", "-o", "-selection", "clipboard", "-t", target});
    }
};

TEST_F(X11ClipboardTest, GivesOtherProgramsWhatWasSet)
{
    const std::wstring texts[] = {L"short", L"", L"two\nlines\n",
                                  L"a smile \U0001F600 and \u00fcml\u00e4uts"};
    for (const std::wstring& text : texts) {
        ASSERT_TRUE(clipboard.SetText(text, kPatienceOfACall));
        EXPECT_EQ(Pasted(), settings::ToUtf8(text));
        EXPECT_EQ(clipboard.GetText(kPatienceOfACall), text);
    }
}

TEST_F(X11ClipboardTest, GivesALongTextInPieces)
{
    std::wstring text;
    while (text.size() < 3'000'000)
        text += L"A line with an \u00e4 in it.\n";
    ASSERT_TRUE(clipboard.SetText(text, kPatienceOfACall));
    EXPECT_TRUE(Pasted() == settings::ToUtf8(text));
}

TEST_F(X11ClipboardTest, IsMarkedToStayOutOfHistories)
{
    ASSERT_TRUE(clipboard.SetText(L"mine", kPatienceOfACall));
    EXPECT_NE(Pasted("TARGETS").find("x-kde-passwordManagerHint"), std::string::npos);
    EXPECT_EQ(Pasted("x-kde-passwordManagerHint"), "secret");
}

TEST_F(X11ClipboardTest, OldProgramsGetLatin1)
{
    ASSERT_TRUE(clipboard.SetText(L"\u00fc \u20ac", kPatienceOfACall));
    EXPECT_EQ(Pasted("STRING"), "\xfc ?");
}

TEST_F(X11ClipboardTest, ReadsWhatOthersCopied)
{
    const auto other = OtherCopies({"--text", "caf\xc3\xa9 \xf0\x9f\x98\x80"});
    EXPECT_EQ(clipboard.GetText(kPatienceOfACall), L"caf\u00e9 \U0001F600");
}

TEST_F(X11ClipboardTest, ReadsLatin1OfProgramsThatHaveNothingElse)
{
    const auto other = OtherCopies({"--latin1", "--text", "caf\xe9"});
    EXPECT_EQ(clipboard.GetText(kPatienceOfACall), L"caf\u00e9");
}

TEST_F(X11ClipboardTest, ReadsALongTextInPieces)
{
    const auto other = OtherCopies({"--size", "5000000"});
    const std::optional<std::wstring> text = clipboard.GetText(kPatienceOfACall);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->size(), 5'000'000u);
}

TEST_F(X11ClipboardTest, AnOwnerThatHangsCostsNoMoreThanThePatience)
{
    const auto other = OtherCopies({});
    other->Signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(clipboard.GetText(200ms), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
    other->Signal(SIGCONT);
    EXPECT_TRUE(Until([&] { return clipboard.GetText(kPatienceOfACall) == L"Hello."; }))
        << "the late answer to the first question must not be taken for one to the second";
}

TEST_F(X11ClipboardTest, WithoutAnOwnerThereIsNoText)
{
    OtherCopies({}).reset();
    EXPECT_TRUE(Until([&] { return clipboard.GetText(kPatienceOfACall) == L""; }));
}

TEST_F(X11ClipboardTest, ARequestorThatHangsInTheMiddleStopsNobody)
{
    const std::wstring text(2'000'000, L'x');
    ASSERT_TRUE(clipboard.SetText(text, kPatienceOfACall));
    Child hung({"xclip", "-o", "-selection", "clipboard", "-t", "UTF8_STRING"});
    // Its output is a pipe that nobody reads, so it stops taking some time; or it is stopped before.
    hung.Signal(SIGSTOP);
    EXPECT_EQ(Pasted().size(), text.size());
    EXPECT_EQ(clipboard.GetText(kPatienceOfACall), text);
}

TEST_F(X11ClipboardTest, TheTextOutlivesTheProgram)
{
    {
        X11Clipboard ending;
        ASSERT_TRUE(ending.SetText(L"left \u00fc", kPatienceOfACall));
    }
    EXPECT_EQ(Pasted(), "left \xc3\xbc");
    EXPECT_EQ(Pasted("TARGETS").find("x-kde-passwordManagerHint"), std::string::npos)
        << "it is the user's now";
    ASSERT_TRUE(clipboard.SetText(L"newer", kPatienceOfACall));
    EXPECT_EQ(Pasted(), "newer");
}

TEST_F(X11ClipboardTest, TheDesktopsClipboardManagerTakesTheTextOver)
{
    NativeWindow window = 0;
    const auto manager = StartTarget({"--manager"}, window);
    const std::uint32_t before = clipboard.GetClipboardSequenceNumber();
    {
        X11Clipboard ending;
        ASSERT_TRUE(ending.SetText(L"left", kPatienceOfACall));
    }
    EXPECT_NE(clipboard.GetClipboardSequenceNumber(), before);
    EXPECT_EQ(Pasted(), "left");
    manager->Signal(SIGKILL);
    EXPECT_TRUE(Until([&] { return Pasted().empty(); })) << "nobody else has kept it";
}

TEST_F(X11ClipboardTest, TheSequenceMovesWithEveryChange)
{
    const std::uint32_t first = clipboard.GetClipboardSequenceNumber();
    EXPECT_EQ(clipboard.GetClipboardSequenceNumber(), first);
    ASSERT_TRUE(clipboard.SetText(L"one", kPatienceOfACall));
    const std::uint32_t second = clipboard.GetClipboardSequenceNumber();
    EXPECT_NE(second, first);
    const auto other = OtherCopies({});
    EXPECT_NE(clipboard.GetClipboardSequenceNumber(), second);
}

TEST_F(X11ClipboardTest, AwaitingInVainEndsAtTheDeadline)
{
    const std::uint32_t now = clipboard.GetClipboardSequenceNumber();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(clipboard.AwaitChange(now, begin + 100ms));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 100ms);
}

} // namespace
} // namespace voxtrel::platform
