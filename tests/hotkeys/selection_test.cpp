#include "selection_fixture.h"

#include <stdexcept>

namespace voxtrel::hotkeys {
namespace {

using namespace std::chrono_literals;

using UpdateTargetWindow = SelectionFixture;
using CopySelection = SelectionFixture;
using SelectionRequest = SelectionFixture;
using HotKey1 = SelectionFixture;
using HotKey2 = SelectionFixture;
using HotKey3 = SelectionFixture;
using HotKey4 = SelectionFixture;
using HotKey5 = SelectionFixture;
using SpeakSelected = SelectionFixture;
using ReadSelected = SelectionFixture;
using NestedRequest = SelectionFixture;

TEST_F(UpdateTargetWindow, FollowsTheWindowInFront)
{
    EXPECT_EQ(selection.TargetWindow(), kEditor);
    windows.foreground = kOther;
    selection.UpdateTargetWindow();
    EXPECT_EQ(selection.TargetWindow(), kOther);
}

TEST_F(UpdateTargetWindow, StaysWhileTheProgramsOwnWindowIsInFront)
{
    windows.foreground = kOwn;
    selection.UpdateTargetWindow();
    EXPECT_EQ(selection.TargetWindow(), kEditor);
}

TEST_F(UpdateTargetWindow, StaysWhileNoWindowIsInFront)
{
    windows.foreground = 0;
    selection.UpdateTargetWindow();
    EXPECT_EQ(selection.TargetWindow(), kEditor);
}

TEST_F(UpdateTargetWindow, AWindowOfUnknownOwnerIsATarget)
{
    windows.targets[kOther].thread = 0;
    windows.foreground = kOther;
    selection.UpdateTargetWindow();
    EXPECT_EQ(selection.TargetWindow(), kOther);
}

TEST_F(UpdateTargetWindow, TellsTheTitleOncePerChange)
{
    selection.UpdateTargetWindow();
    selection.UpdateTargetWindow();
    EXPECT_EQ(targets,
              (std::vector<std::pair<platform::NativeWindow, std::wstring>>{{kEditor, L"note.txt"}}));
}

TEST_F(CopySelection, TakesTheTextOfTheFirstKeystroke)
{
    ForEachRequest([this] {
        request();
        EXPECT_EQ(Heard(), Texts{L"Hello."});
        EXPECT_EQ(windows.typed, (std::vector<Typed>{{kEditor, L"^{INSERT}"}}));
        EXPECT_TRUE(windows.messages.empty());
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, TargetThatCopiesOnCtrlCOnly)
{
    Editor().copiesOn = {L"^c"};
    ForEachRequest([this] {
        request();
        EXPECT_EQ(Heard(), Texts{L"Hello."});
        EXPECT_EQ(windows.typed, (std::vector<Typed>{{kEditor, L"^{INSERT}"}, {kEditor, L"^c"}}));
        EXPECT_TRUE(windows.messages.empty());
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, TargetThatCopiesOnTheCopyMessageOnly)
{
    Editor().copiesOn = {};
    Editor().copiesOnMessage = true;
    ForEachRequest([this] {
        request();
        EXPECT_EQ(Heard(), Texts{L"Hello."});
        EXPECT_EQ(windows.messages, (std::vector<platform::NativeWindow>{kEditor}));
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, TargetThatNeverCopies)
{
    Editor().copiesOn = {};
    ForEachRequest([this] {
        request();
        EXPECT_EQ(Heard(), Texts{});
        EXPECT_EQ(windows.typed.size(), 2u);
        EXPECT_EQ(windows.messages.size(), 1u);
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, TargetThatEmptiesTheClipboardBeforeItFillsIt)
{
    Editor().emptiesFirst = true;
    ForEachRequest([this] {
        request();
        EXPECT_EQ(Heard(), Texts{L"Hello."});
        EXPECT_EQ(windows.typed.size(), 1u);
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, TrimsSpacesAndNothingElse)
{
    Editor().selection = L"  \t Hello.\u00a0\r\n  ";
    ForEachRequest([this] {
        request();
        EXPECT_EQ(Heard(), Texts{L"\t Hello.\u00a0\r\n"});
    });
}

TEST_F(CopySelection, SelectionOfSpacesCountsAsEmpty)
{
    Editor().selection = L"   ";
    ForEachRequest([this] {
        request();
        EXPECT_EQ(Heard(), Texts{});
        EXPECT_EQ(windows.typed.size(), 2u) << "both keystrokes were tried";
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, KeepsEveryKindOfClipboardText)
{
    const std::wstring kept[] = {
        L"", L"   ", L"one\r\ntwo\r\n", L"a smile: \U0001F600", L"caf\u00e9", std::wstring(1 << 20, L'x')};
    for (const std::wstring& text : kept) {
        SCOPED_TRACE(text.size());
        clipboard.Copy(text);
        ForEachRequest([this, &text] {
            request();
            EXPECT_EQ(Heard(), Texts{L"Hello."});
            EXPECT_EQ(clipboard.text, text);
        });
    }
}

TEST_F(CopySelection, ClipboardWithoutTextEndsAsEmptyText)
{
    ForEachRequest([this] {
        clipboard.CopyOther();
        request();
        EXPECT_EQ(clipboard.text, L"");
        EXPECT_TRUE(clipboard.ours);
    });
}

TEST_F(CopySelection, WithoutATargetNothingIsAskedOfAnybody)
{
    Selection fresh(Services());
    fresh.RunHotKey(1);
    fresh.RunHotKey(2);
    fresh.ReadSelected();
    EXPECT_TRUE(steps.empty());
    fresh.SpeakSelected();
    EXPECT_EQ(spoken, Texts{L""});
    EXPECT_TRUE(windows.typed.empty());
    EXPECT_TRUE(windows.messages.empty());
    EXPECT_TRUE(windows.brought.empty());
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(CopySelection, NoKeyIsTypedWhenTheTargetDoesNotComeToTheFront)
{
    Editor().comesToFront = false;
    Editor().copiesOnMessage = true;
    windows.foreground = kOther;
    ForEachRequest([this] {
        request();
        EXPECT_TRUE(windows.typed.empty());
        EXPECT_EQ(Heard(), Texts{L"Hello."}) << "the copy message needs no focus";
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, AHungTargetIsLeftAlone)
{
    Editor().hung = true;
    ForEachRequest([this] {
        request();
        EXPECT_TRUE(windows.typed.empty());
        EXPECT_TRUE(windows.messages.empty());
        EXPECT_EQ(Heard(), Texts{});
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, ATargetThatHangsOnTheFirstKeyGetsNoOther)
{
    Editor().onKey = [this] { Editor().hung = true; };
    ForEachRequest([this] {
        Editor().hung = false;
        request();
        EXPECT_EQ(windows.typed.size(), 1u);
        EXPECT_TRUE(windows.messages.empty());
        EXPECT_EQ(Heard(), Texts{});
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, ATargetThatClosesInTheMiddle)
{
    const tests::FakeTarget editor = Editor();
    ForEachRequest([this, &editor] {
        Editor() = editor;
        Editor().onKey = [this] { windows.Close(kEditor); };
        windows.foreground = kEditor;
        request();
        EXPECT_EQ(windows.typed.size(), 1u);
        EXPECT_EQ(Heard(), Texts{});
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, AUserWhoGoesToAnotherWindowIsNotTornBack)
{
    Editor().copiesOn = {};
    for (const int row : {1, 2}) {
        SCOPED_TRACE(row);
        windows.foreground = kEditor;
        selection.UpdateTargetWindow();
        windows.brought.clear();
        windows.typed.clear();
        onYield = [this] {
            windows.foreground = kOther;
            selection.UpdateTargetWindow();
        };
        selection.RunHotKey(row);
        EXPECT_EQ(windows.brought, (std::vector<platform::NativeWindow>{kEditor}));
        EXPECT_TRUE(windows.typed.empty());
        EXPECT_TRUE(windows.messages.empty());
        EXPECT_EQ(clipboard.text, L"mine");
    }
}

TEST_F(CopySelection, AClipboardThatCannotBeReadIsLeftAlone)
{
    clipboard.ownerHangs = true;
    ForEachRequest([this] {
        request();
        EXPECT_TRUE(windows.typed.empty());
        EXPECT_EQ(Heard(), Texts{});
        EXPECT_TRUE(clipboard.written.empty());
    });
}

TEST_F(CopySelection, AnotherProgramHoldsTheClipboardForAWhile)
{
    ForEachRequest([this] {
        clipboard.heldFor = 900ms;
        Editor().onKey = [this] {
            clipboard.Copy(L"Hello.");
            clipboard.heldFor = 900ms;
        };
        request();
        EXPECT_EQ(Heard(), Texts{L"Hello."});
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(CopySelection, HeldLongerTheTextComesBackOnALaterTick)
{
    ForEachRequest([this] {
        Editor().onKey = [this] { clipboard.heldFor = 1h; };
        request();
        EXPECT_EQ(Heard(), Texts{});
        EXPECT_EQ(clipboard.text, L"");
        selection.UpdateTargetWindow();
        EXPECT_EQ(clipboard.text, L"");
        clipboard.heldFor = 0ms;
        selection.UpdateTargetWindow();
        EXPECT_EQ(clipboard.text, L"mine");
    });
}

TEST_F(SelectionRequest, AnErrorOnTheWayPutsTheTextBackAndBlocksNothing)
{
    ForEachRequest([this] {
        Editor().onKey = [] { throw std::runtime_error("a fault"); };
        EXPECT_THROW(request(), std::runtime_error);
        EXPECT_EQ(clipboard.text, L"mine");
        Editor().onKey = nullptr;
        onSpeak = onReadInTextReader = [] { throw std::runtime_error("another"); };
        EXPECT_THROW(request(), std::runtime_error);
        EXPECT_EQ(clipboard.text, L"mine");
        EXPECT_FALSE(selection.SelectionRequestInProgress());
        onSpeak = onReadInTextReader = nullptr;
    });
}

TEST_F(HotKey1, SpeaksReturnsTheFocusAndThenRestores)
{
    selection.RunHotKey(1);
    EXPECT_EQ(steps, (Texts{L"yield", L"speak", L"yield", L"yield"}));
    EXPECT_EQ(windows.brought, (std::vector<platform::NativeWindow>{kEditor, kEditor}));
    EXPECT_EQ(clipboardWhenSpoken, L"Hello.");
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(HotKey1, EmptySelectionOnlyRestores)
{
    Editor().copiesOn = {};
    selection.RunHotKey(1);
    EXPECT_EQ(steps, (Texts{L"yield", L"yield"})) << "one for each keystroke";
    EXPECT_EQ(windows.brought.size(), 2u);
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(HotKey2, ReadsReturnsTheFocusAndThenRestores)
{
    onReadInTextReader = [this] { windows.foreground = kOwn; };
    selection.RunHotKey(2);
    EXPECT_EQ(steps, (Texts{L"yield", L"read", L"yield", L"yield"}));
    EXPECT_EQ(windows.foreground, kEditor);
    EXPECT_EQ(clipboardWhenRead, L"Hello.");
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(HotKey2, GivesTheFocusBackAlsoFromAWindowThatAppearsLate)
{
    onReadInTextReader = [this] { windows.ownWindowIsComing = true; };
    selection.RunHotKey(2);
    windows.AwaitOwnWindow();
    EXPECT_EQ(windows.foreground, kEditor);
}

TEST_F(HotKey2, EmptySelectionOpensNothing)
{
    Editor().copiesOn = {};
    selection.RunHotKey(2);
    EXPECT_EQ(steps, (Texts{L"yield", L"yield"}));
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(SpeakSelected, RestoresThenSpeaksAndNeverYields)
{
    windows.foreground = kOwn;
    selection.UpdateTargetWindow();
    selection.SpeakSelected();
    EXPECT_EQ(steps, Texts{L"speak"});
    EXPECT_EQ(spoken, Texts{L"Hello."});
    EXPECT_EQ(clipboardWhenSpoken, L"mine");
    EXPECT_EQ(windows.brought, (std::vector<platform::NativeWindow>{kEditor})) << "the focus is not returned";
}

TEST_F(SpeakSelected, PassesAnEmptyTextOn)
{
    Editor().copiesOn = {};
    selection.SpeakSelected();
    EXPECT_EQ(spoken, Texts{L""});
    EXPECT_EQ(steps, Texts{L"speak"});
}

TEST_F(ReadSelected, YieldsRestoresThenReads)
{
    windows.foreground = kOwn;
    selection.ReadSelected();
    EXPECT_EQ(steps, (Texts{L"yield", L"read"}));
    EXPECT_EQ(clipboardWhenRead, L"mine");
}

TEST_F(ReadSelected, SecondBringingToTheFrontYieldsToo)
{
    Editor().copiesOn = {L"^c"};
    selection.ReadSelected();
    EXPECT_EQ(steps, (Texts{L"yield", L"yield", L"read"}));
}

TEST_F(ReadSelected, EmptySelectionOpensNothing)
{
    Editor().copiesOn = {};
    selection.ReadSelected();
    EXPECT_TRUE(read.empty());
}

TEST_F(HotKey3, SpeaksTheClipboardAsItIs)
{
    clipboard.Copy(L"  two\r\nlines  ");
    selection.RunHotKey(3);
    EXPECT_EQ(spoken, Texts{L"  two\r\nlines  "});
    EXPECT_EQ(steps, Texts{L"speak"});
    EXPECT_TRUE(clipboard.written.empty());
}

TEST_F(HotKey3, EmptyClipboardIsPassedOn)
{
    clipboard.Copy(L"");
    selection.RunHotKey(3);
    EXPECT_EQ(spoken, Texts{L""});
}

TEST_F(HotKey4, ReadsTheClipboardAlsoWhenItIsBlank)
{
    clipboard.Copy(L"  ");
    selection.RunHotKey(4);
    EXPECT_EQ(read, Texts{L"  "});
    clipboard.Copy(L"");
    selection.RunHotKey(4);
    EXPECT_EQ(read.size(), 1u) << "an empty clipboard opens nothing";
}

TEST_F(HotKey5, Stops)
{
    selection.RunHotKey(5);
    EXPECT_EQ(steps, Texts{L"stop"});
}

TEST_F(NestedRequest, EveryYieldRefusesASecondSelectionRequest)
{
    onYield = [this] {
        EXPECT_TRUE(selection.SelectionRequestInProgress());
        for (const int row : {1, 2})
            selection.RunHotKey(row);
        selection.SpeakSelected();
        selection.ReadSelected();
    };
    ForEachRequest([this] {
        request();
        EXPECT_EQ(Heard(), Texts{L"Hello."});
        EXPECT_LE(spoken.size() + read.size(), 1u);
        EXPECT_EQ(windows.typed.size(), 1u);
        EXPECT_EQ(clipboard.text, L"mine");
        EXPECT_FALSE(selection.SelectionRequestInProgress());
    });
}

TEST_F(NestedRequest, ClipboardRequestsGetTheUsersTextMeanwhile)
{
    onYield = [this] {
        onYield = nullptr;
        selection.RunHotKey(3);
        selection.RunHotKey(4);
    };
    selection.RunHotKey(2);
    EXPECT_EQ(spoken, Texts{L"mine"});
    EXPECT_EQ(read, (Texts{L"mine", L"Hello."}));
}

} // namespace
} // namespace voxtrel::hotkeys
