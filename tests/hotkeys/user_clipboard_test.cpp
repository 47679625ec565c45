#include "hotkeys/user_clipboard.h"

#include "fakes/fake_clipboard.h"

#include <gtest/gtest.h>

namespace voxtrel::hotkeys {
namespace {

using namespace std::chrono_literals;

class UserClipboardTest : public ::testing::Test {
protected:
    UserClipboardTest() { clipboard.Copy(L"mine"); }

    tests::FakeClipboard clipboard;
    UserClipboard user{clipboard};
};

TEST_F(UserClipboardTest, BorrowingEmptiesAndPuttingBackRestores)
{
    ASSERT_TRUE(user.Borrow());
    EXPECT_EQ(clipboard.text, L"");
    user.PutBack();
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(UserClipboardTest, PuttingBackTwiceWritesOnce)
{
    ASSERT_TRUE(user.Borrow());
    user.PutBack();
    clipboard.Copy(L"newer");
    user.PutBack();
    EXPECT_EQ(clipboard.text, L"newer");
}

TEST_F(UserClipboardTest, AClipboardWithoutTextEndsAsEmptyText)
{
    clipboard.CopyOther();
    ASSERT_TRUE(user.Borrow());
    user.PutBack();
    EXPECT_EQ(clipboard.text, L"");
    EXPECT_EQ(clipboard.written, (std::vector<std::wstring>{L"", L""}));
}

TEST_F(UserClipboardTest, AnotherProgramHoldingItForAWhileOnlyCostsTime)
{
    clipboard.heldFor = 600ms;
    ASSERT_TRUE(user.Borrow());
    clipboard.heldFor = 600ms;
    user.PutBack();
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(UserClipboardTest, WhatCannotBeReadIsNotTouched)
{
    clipboard.ownerHangs = true;
    EXPECT_FALSE(user.Borrow());
    user.PutBack();
    EXPECT_TRUE(clipboard.written.empty());
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(UserClipboardTest, WhatCannotBeEmptiedIsNotBorrowed)
{
    clipboard.onRead = [this] { clipboard.heldFor = 1h; };
    EXPECT_FALSE(user.Borrow());
    clipboard.heldFor = 0ms;
    user.PutBack();
    EXPECT_TRUE(clipboard.written.empty());
}

TEST_F(UserClipboardTest, HeldForLongTheTextIsOwedUntilATickCanPutItBack)
{
    ASSERT_TRUE(user.Borrow());
    clipboard.heldFor = 1h;
    user.PutBack();
    EXPECT_EQ(clipboard.text, L"");
    user.Retry();
    EXPECT_EQ(clipboard.text, L"");
    clipboard.heldFor = 0ms;
    user.Retry();
    EXPECT_EQ(clipboard.text, L"mine");
    clipboard.Copy(L"newer");
    user.Retry();
    EXPECT_EQ(clipboard.text, L"newer") << "nothing is owed any more";
}

TEST_F(UserClipboardTest, WhatIsOwedNeverOverwritesSomethingNewer)
{
    ASSERT_TRUE(user.Borrow());
    clipboard.heldFor = 1h;
    user.PutBack();
    clipboard.Copy(L"newer");
    clipboard.heldFor = 0ms;
    user.Retry();
    EXPECT_EQ(clipboard.text, L"newer");
}

TEST_F(UserClipboardTest, ABorrowerInBetweenKeepsWhatIsOwed)
{
    ASSERT_TRUE(user.Borrow());
    clipboard.heldFor = 1h;
    user.PutBack();
    clipboard.heldFor = 500ms; // too long for a tick, not for a request
    ASSERT_TRUE(user.Borrow());
    user.PutBack();
    EXPECT_EQ(clipboard.text, L"mine");
}

TEST_F(UserClipboardTest, TheTextIsTheUsersAlsoWhileBorrowedOrOwed)
{
    EXPECT_EQ(user.Text(), L"mine");
    ASSERT_TRUE(user.Borrow());
    clipboard.Copy(L"the selection");
    EXPECT_EQ(user.Text(), L"mine");
    clipboard.heldFor = 1h;
    user.PutBack();
    EXPECT_EQ(user.Text(), L"mine");
}

TEST_F(UserClipboardTest, BorrowedTwiceIsRefused)
{
    ASSERT_TRUE(user.Borrow());
    EXPECT_FALSE(user.Borrow());
    user.PutBack();
    EXPECT_EQ(clipboard.text, L"mine");
}

} // namespace
} // namespace voxtrel::hotkeys
