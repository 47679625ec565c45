#include "selection_fixture.h"

#include "fakes/fake_keyboard.h"
#include "hotkeys/hot_key_poll.h"

#include <random>

namespace voxtrel::hotkeys {
namespace {

using namespace std::chrono_literals;

// A user and a desktop gone wild: keys, clicks, windows that hang, close and refuse to come to the front,
// programs that hold the clipboard. After each step the world must be as the user left it.
class RandomUse : public SelectionFixture, public ::testing::WithParamInterface<unsigned> {
protected:
    int Pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    bool OneIn(int count) { return Pick(count) == 0; }

    void TypeSomething()
    {
        keyboard_.ReleaseAll();
        if (!OneIn(3))
            keyboard_.held.insert(17);
        for (int key = 114; key <= 118; ++key) {
            if (OneIn(4))
                keyboard_.held.insert(key);
        }
    }

    void ChangeTheDesktop()
    {
        tests::FakeTarget& target = windows.targets[Pick(2) == 0 ? kEditor : kOther];
        target.selection = OneIn(4) ? L"" : L"text " + std::to_wstring(Pick(1000));
        target.copiesOn.clear();
        if (OneIn(2))
            target.copiesOn.insert(L"^{INSERT}");
        if (OneIn(2))
            target.copiesOn.insert(L"^c");
        target.copiesOnMessage = OneIn(3);
        target.hung = OneIn(5);
        target.comesToFront = !OneIn(5);
        target.emptiesFirst = OneIn(5);
        target.onKey = nullptr;
        if (OneIn(6))
            target.onKey = [this] { clipboard.heldFor = std::chrono::milliseconds(Pick(4000)); };
        const platform::NativeWindow front[] = {0, kEditor, kOther, kOwn};
        windows.foreground = front[Pick(4)];
    }

    void UserCopies()
    {
        user_ = std::wstring(static_cast<std::size_t>(Pick(40)), static_cast<wchar_t>(L'a' + Pick(26)));
        clipboard.Copy(user_);
    }

    void Tick()
    {
        // Programs let go of the clipboard some time.
        clipboard.heldFor = std::max(0ms, clipboard.heldFor - 100ms);
        hotkeys::PollHotKeys(table_, keyboard_, selection);
    }

    void Step()
    {
        switch (Pick(6)) {
        case 0:
            return ChangeTheDesktop();
        case 1:
            return clipboard.heldFor.count() > 0 ? Tick() : UserCopies();
        case 2:
            return OneIn(2) ? selection.SpeakSelected() : selection.ReadSelected();
        default:
            TypeSomething();
            return Tick();
        }
    }

    std::mt19937 random_{GetParam()};
    tests::FakeKeyboard keyboard_;
    HotKeyTable table_;
    std::wstring user_ = L"mine";
};

TEST_P(RandomUse, LosesNothingAndSticksNowhere)
{
    int depth = 0;
    onYield = [&] {
        if (depth == 2)
            return;
        ++depth;
        TypeSomething();
        Tick();
        if (OneIn(8))
            ChangeTheDesktop();
        --depth;
    };
    for (int step = 0; step < 4000; ++step) {
        Step();
        ASSERT_FALSE(selection.SelectionRequestInProgress());
        if (clipboard.heldFor.count() == 0)
            selection.UpdateTargetWindow();
        if (clipboard.heldFor.count() == 0) {
            ASSERT_EQ(clipboard.text, user_) << "step " << step;
        }
    }
    for (const Typed& typed : windows.typed)
        ASSERT_TRUE(typed.window == kEditor || typed.window == kOther);
    onYield = nullptr;
    clipboard.heldFor = 0ms;
    Editor() = {};
    Editor().selection = L"still alive";
    Editor().copiesOn = {L"^c"};
    windows.foreground = kEditor;
    keyboard_.ReleaseAll();
    Tick();
    Tick();
    spoken.clear();
    keyboard_.Hold({17, 114});
    Tick();
    EXPECT_EQ(spoken, Texts{L"still alive"});
    EXPECT_EQ(clipboard.text, user_);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomUse, ::testing::Range(1u, 9u));

} // namespace
} // namespace voxtrel::hotkeys
