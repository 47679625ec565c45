#include "hotkeys/hot_key_poll.h"

#include "fakes/fake_keyboard.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace voxtrel::hotkeys {
namespace {

constexpr int kShift = 16;
constexpr int kCtrl = 17;
constexpr int kAlt = 18;
constexpr int kF3 = 114;
constexpr int kF4 = 115;
constexpr int kF5 = 116;
constexpr int kF6 = 117;
constexpr int kF7 = 118;

class FakeActions final : public HotKeyActions {
public:
    void UpdateTargetWindow() override { ++targetUpdates; }
    void RunHotKey(int row) override
    {
        rows.push_back(row);
        if (onRun)
            onRun(row);
    }
    bool SelectionRequestInProgress() const override { return inProgress; }

    std::vector<int> TakeRows() { return std::exchange(rows, {}); }

    std::vector<int> rows;
    int targetUpdates = 0;
    bool inProgress = false;
    std::function<void(int)> onRun;
};

class PollHotKeys : public ::testing::Test {
protected:
    std::vector<int> Tick(std::initializer_list<int> held)
    {
        keyboard.Hold(held);
        hotkeys::PollHotKeys(table, keyboard, actions);
        return actions.TakeRows();
    }

    using Rows = std::vector<int>;

    HotKeyTable table;
    tests::FakeKeyboard keyboard;
    FakeActions actions;
};

TEST_F(PollHotKeys, HeldKeyFiresOnce)
{
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{1});
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{});
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{});
}

TEST_F(PollHotKeys, FiresAgainAfterEitherKeyWasReleased)
{
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{1});
    EXPECT_EQ(Tick({kCtrl}), Rows{});
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{1});
    EXPECT_EQ(Tick({kF3}), Rows{});
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{1});
}

TEST_F(PollHotKeys, NeedsCtrlAndTheKeyInTheSameLook)
{
    EXPECT_EQ(Tick({kF3}), Rows{});
    EXPECT_EQ(Tick({kCtrl}), Rows{});
    EXPECT_EQ(Tick({kAlt, kF3}), Rows{});
}

TEST_F(PollHotKeys, AltAndShiftAreNoHindrance)
{
    EXPECT_EQ(Tick({kCtrl, kAlt, kF3}), Rows{1});
    Tick({});
    EXPECT_EQ(Tick({kCtrl, kShift, kF3}), Rows{1});
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{}) << "still the same press";
}

TEST_F(PollHotKeys, EachRowFiresOnItsKey)
{
    EXPECT_EQ(Tick({kCtrl, kF4}), Rows{2});
    EXPECT_EQ(Tick({kCtrl, kF5}), Rows{3});
    EXPECT_EQ(Tick({kCtrl, kF6}), Rows{4});
    EXPECT_EQ(Tick({kCtrl, kF7}), Rows{5});
}

TEST_F(PollHotKeys, OnlyOneMeansOn)
{
    for (const std::int16_t value : {0, -1, 2, 256, -32768}) {
        SCOPED_TRACE(value);
        table.HotKeyEnabled[1] = value;
        EXPECT_EQ(Tick({kCtrl, kF3}), Rows{});
    }
    table.HotKeyEnabled[1] = 1;
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{1});
}

TEST_F(PollHotKeys, EndsTheTickAfterRow1)
{
    EXPECT_EQ(Tick({kCtrl, kF3, kF5}), Rows{1});
    EXPECT_EQ(Tick({kCtrl, kF3, kF5}), Rows{3}) << "row 3 fires on the next tick while still held";
}

TEST_F(PollHotKeys, EndsTheTickAfterRow2)
{
    EXPECT_EQ(Tick({kCtrl, kF4, kF6, kF7}), Rows{2});
    EXPECT_EQ(Tick({kCtrl, kF4, kF6, kF7}), (Rows{4, 5}));
}

TEST_F(PollHotKeys, GoesOnAfterRows3To5) { EXPECT_EQ(Tick({kCtrl, kF5, kF6, kF7}), (Rows{3, 4, 5})); }

TEST_F(PollHotKeys, TwoRowsOnOneKeyBothFire)
{
    table.HotKeyCode[4] = kF5;
    EXPECT_EQ(Tick({kCtrl, kF5}), (Rows{3, 4}));
}

TEST_F(PollHotKeys, ARowBehindRow1KeepsItsLatchInThatTick)
{
    EXPECT_EQ(Tick({kCtrl, kF5}), Rows{3});
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{1}) << "F5 is up, but row 3 is not looked at in this tick";
    EXPECT_TRUE(table.HotKeyLatched[3]);
    EXPECT_EQ(Tick({kCtrl, kF3, kF5}), Rows{}) << "pressed again before anybody looked: the same press";
}

TEST_F(PollHotKeys, ARowThatIsSwitchedOffKeepsItsLatch)
{
    EXPECT_EQ(Tick({kCtrl, kF5}), Rows{3});
    table.HotKeyEnabled[3] = 0;
    EXPECT_EQ(Tick({}), Rows{});
    EXPECT_TRUE(table.HotKeyLatched[3]);
    table.HotKeyEnabled[3] = 1;
    EXPECT_EQ(Tick({kCtrl, kF5}), Rows{});
    EXPECT_EQ(Tick({}), Rows{});
    EXPECT_EQ(Tick({kCtrl, kF5}), Rows{3});
}

TEST_F(PollHotKeys, UpdatesTheTargetFirstOnEveryTick)
{
    actions.onRun = [this](int) { EXPECT_EQ(actions.targetUpdates, 1); };
    Tick({kCtrl, kF3});
    Tick({});
    EXPECT_EQ(actions.targetUpdates, 2);
}

TEST_F(PollHotKeys, CostsNoMoreThanTwoReadsForEachRowThatIsOn)
{
    Tick({});
    EXPECT_LE(keyboard.reads, 2 * kHotKeyRows);
    keyboard.reads = 0;
    table.HotKeyEnabled = {};
    Tick({});
    EXPECT_EQ(keyboard.reads, 0);
}

TEST_F(PollHotKeys, ALookInsideARequestStartsNoOtherSelectionRequest)
{
    actions.onRun = [this](int row) {
        if (row != 1)
            return;
        actions.inProgress = true;
        keyboard.Hold({kCtrl, kF3, kF4, kF5, kF7});
        hotkeys::PollHotKeys(table, keyboard, actions);
        actions.inProgress = false;
    };
    EXPECT_EQ(Tick({kCtrl, kF3}), (Rows{1, 3, 5})) << "clipboard and stop go on";
    EXPECT_EQ(Tick({kCtrl, kF3, kF4, kF5, kF7}), Rows{2}) << "row 2 has waited for the end of the request";
}

TEST_F(PollHotKeys, ReleasedAndPressedAgainInsideARequestFiresAfterIt)
{
    actions.onRun = [this](int) {
        actions.onRun = nullptr;
        actions.inProgress = true;
        keyboard.Hold({});
        hotkeys::PollHotKeys(table, keyboard, actions);
        keyboard.Hold({kCtrl, kF3});
        hotkeys::PollHotKeys(table, keyboard, actions);
        actions.inProgress = false;
    };
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{1});
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{1});
    EXPECT_EQ(Tick({kCtrl, kF3}), Rows{});
}

} // namespace
} // namespace voxtrel::hotkeys
