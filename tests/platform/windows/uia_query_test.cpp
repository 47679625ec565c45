// The UI Automation query over elements of the test's own.

#include "platform/windows/uia_query.h"

#include "fake_uia.h"

#include <gtest/gtest.h>

#include <oleauto.h>
#include <uiautomationclient.h>

namespace voxtrel::platform {
namespace {

using namespace std::chrono_literals;
using tests::FakeClient;
using tests::FakeElement;

constexpr long kButton = 50000;
constexpr long kCheckBox = 50002;
constexpr long kComboBox = 50003;
constexpr long kEdit = 50004;
constexpr long kHyperlink = 50005;
constexpr long kProgressBar = 50012;
constexpr long kRadioButton = 50013;
constexpr long kSlider = 50015;
constexpr long kText = 50020;
constexpr long kDataItem = 50029;
constexpr long kDocument = 50030;
constexpr long kWindow = 50032;
constexpr long kPane = 50033;

class UiaQueryTest : public testing::Test {
protected:
    UiaQueryTest()
    {
        Describe(window, kWindow, L"Editor", L"window");
        Describe(thing, kButton, L"Save", L"button");
        thing.parent = &window;
        client.deepest = &thing;
    }
    ~UiaQueryTest() override
    {
        query.reset();
        for (const auto* element : {&window, &thing, &letters, &other})
            EXPECT_EQ(element->references, 0) << "what was taken is given back";
        EXPECT_EQ(client.References(), 0);
    }

    static void Describe(FakeElement& element, long kind, const wchar_t* name, const wchar_t* role)
    {
        element.Set(UIA_ControlTypePropertyId, kind)
            .Set(UIA_NamePropertyId, name)
            .Set(UIA_LocalizedControlTypePropertyId, role);
    }

    AccessibleAnswer Ask()
    {
        if (!query)
            query.emplace(client.Pointer());
        return query->ObjectAt({300, -20}, Deadline(400ms));
    }

    FakeElement window;
    FakeElement thing;
    FakeElement letters;
    FakeElement other;
    FakeClient client;
    std::optional<UiaQuery> query;
};

TEST_F(UiaQueryTest, TellsNameAndRoleOfTheElementAtThePoint)
{
    const AccessibleAnswer answer = Ask();
    EXPECT_EQ(answer.object, (AccessibleObject{.name = L"Save", .role = L"button"}));
    EXPECT_TRUE(answer.IsFinal());
    EXPECT_EQ(client.asked.x, 300);
    EXPECT_EQ(client.asked.y, -20);
}

TEST_F(UiaQueryTest, LettersStandForWhatTheyAreWrittenOn)
{
    for (const auto& [kind, role] :
         {std::pair{kHyperlink, L"link"}, {kDataItem, L"item"}, {kCheckBox, L"check box"}}) {
        SCOPED_TRACE(role);
        Describe(thing, kind, L"Terms of use", role);
        Describe(letters, kText, L"Terms", L"text");
        letters.parent = &thing;
        client.deepest = &letters;
        const AccessibleAnswer answer = Ask();
        EXPECT_EQ(answer.object.name, L"Terms of use");
        EXPECT_EQ(answer.object.role, role);
        EXPECT_TRUE(answer.deepest);
    }
}

TEST_F(UiaQueryTest, LettersOfAPageSpeakForThemselves)
{
    Describe(thing, kDocument, L"Sample page", L"document");
    Describe(letters, kText, L"A paragraph", L"text");
    letters.parent = &thing;
    client.deepest = &letters;
    EXPECT_EQ(Ask().object.name, L"A paragraph");
}

TEST_F(UiaQueryTest, LettersOnANamelessButtonSpeakForThemselves)
{
    thing.Set(UIA_NamePropertyId, L"");
    Describe(letters, kText, L"Save", L"text");
    letters.parent = &thing;
    client.deepest = &letters;
    EXPECT_EQ(Ask().object.role, L"text");
}

TEST_F(UiaQueryTest, WhatIsAroundSpeaksForANamelessElement)
{
    Describe(thing, kPane, L"", L"pane");
    const AccessibleAnswer answer = Ask();
    EXPECT_EQ(answer.object.name, L"Editor");
    EXPECT_FALSE(answer.deepest);
    EXPECT_FALSE(answer.IsFinal());
}

TEST_F(UiaQueryTest, AWindowIsNoFinalAnswer)
{
    client.deepest = &window;
    const AccessibleAnswer answer = Ask();
    EXPECT_TRUE(answer.deepest);
    EXPECT_FALSE(answer.kindKnown);
}

TEST_F(UiaQueryTest, HelpNamesWhatHasNoName)
{
    thing.Set(UIA_NamePropertyId, L" ").Set(UIA_HelpTextPropertyId, L"Makes the letters bold");
    EXPECT_EQ(Ask().object.name, L"Makes the letters bold");
}

TEST_F(UiaQueryTest, TellsTheTextOfAField)
{
    Describe(thing, kEdit, L"City", L"edit");
    thing.Set(UIA_IsValuePatternAvailablePropertyId, true).Set(UIA_ValueValuePropertyId, L"Graz");
    EXPECT_EQ(Ask().object.value, L"Graz");
}

TEST_F(UiaQueryTest, NeverAsksForAPassword)
{
    Describe(thing, kEdit, L"", L"edit");
    thing.Set(UIA_IsPasswordPropertyId, true)
        .Set(UIA_IsValuePatternAvailablePropertyId, true)
        .Set(UIA_ValueValuePropertyId, L"hunter2");
    const AccessibleAnswer answer = Ask();
    EXPECT_EQ(answer.object, (AccessibleObject{.name = L"edit", .role = L"edit"}));
    EXPECT_EQ(thing.asked[UIA_ValueValuePropertyId], 0);
}

TEST_F(UiaQueryTest, TellsThePositionOfASliderAndThePercentOfAProgressBar)
{
    thing.Set(UIA_IsRangeValuePatternAvailablePropertyId, true)
        .Set(UIA_RangeValueMinimumPropertyId, 100.0)
        .Set(UIA_RangeValueMaximumPropertyId, 300.0)
        .Set(UIA_RangeValueValuePropertyId, 150.254);
    Describe(thing, kSlider, L"Loudness", L"slider");
    EXPECT_EQ(Ask().object.value, L"150.25");
    Describe(thing, kProgressBar, L"Copying", L"progress bar");
    EXPECT_EQ(Ask().object.value, L"25%");
}

TEST_F(UiaQueryTest, TellsTheSelectedItemOfAComboBoxWithoutAField)
{
    Describe(thing, kComboBox, L"Paint", L"combo box");
    other.Set(UIA_NamePropertyId, L"Green");
    thing.Set(UIA_SelectionSelectionPropertyId, other);
    EXPECT_EQ(Ask().object.value, L"Green");
}

TEST_F(UiaQueryTest, AComboBoxWithoutASelectionHasNoValue)
{
    Describe(thing, kComboBox, L"Paint", L"combo box");
    EXPECT_EQ(Ask().object.value, L"");
}

struct StateCase {
    long kind;
    long toggled;
    SwitchState state;
};

TEST_F(UiaQueryTest, TellsWhatIsTickedAndPressed)
{
    for (const StateCase& one : {StateCase{kCheckBox, 0, SwitchState::Unchecked},
                                 {kCheckBox, 1, SwitchState::Checked},
                                 {kCheckBox, 2, SwitchState::PartlyChecked},
                                 {kButton, 0, SwitchState::Released},
                                 {kButton, 1, SwitchState::Pressed}}) {
        SCOPED_TRACE(testing::Message() << one.kind << " " << one.toggled);
        thing.Set(UIA_ControlTypePropertyId, one.kind)
            .Set(UIA_IsTogglePatternAvailablePropertyId, true)
            .Set(UIA_ToggleToggleStatePropertyId, one.toggled);
        EXPECT_EQ(Ask().object.state, one.state);
    }
}

TEST_F(UiaQueryTest, TellsWhichRadioButtonIsChosen)
{
    thing.Set(UIA_ControlTypePropertyId, kRadioButton)
        .Set(UIA_IsSelectionItemPatternAvailablePropertyId, true);
    EXPECT_EQ(Ask().object.state, SwitchState::Unchecked);
    thing.Set(UIA_SelectionItemIsSelectedPropertyId, true);
    EXPECT_EQ(Ask().object.state, SwitchState::Checked);
}

TEST_F(UiaQueryTest, SaysNothingWhereTheSystemCannotTell)
{
    client.answers = false;
    EXPECT_EQ(Ask().object.name, L"");
    client.answers = true;
    client.deepest = nullptr;
    EXPECT_EQ(Ask().object.name, L"");
    EXPECT_EQ(UiaQuery({}).ObjectAt({1, 1}, Deadline(400ms)).object.name, L"");
}

TEST_F(UiaQueryTest, AnEndlessRowOfAncestorsEnds)
{
    Describe(thing, kPane, L"", L"pane");
    thing.parent = &thing;
    EXPECT_EQ(Ask().object.name, L"");
}

TEST_F(UiaQueryTest, CallsAreLimitedToTheTimeThatIsLeft)
{
    Ask();
    EXPECT_GT(client.transactionTimeout, 0u);
    EXPECT_LE(client.transactionTimeout, 400u);
    EXPECT_EQ(client.connectionTimeout, client.transactionTimeout);
}

TEST_F(UiaQueryTest, NothingMoreIsAskedOnceTheTimeIsOver)
{
    Describe(thing, kPane, L"", L"pane");
    query.emplace(client.Pointer());
    const Deadline over(0ms);
    EXPECT_EQ(query->ObjectAt({1, 1}, over).object.name, L"");
    EXPECT_EQ(window.asked[UIA_NamePropertyId], 0);
}

TEST_F(UiaQueryTest, WorksWithTheClientOfOlderSystems)
{
    tests::FakeOldClient old;
    old.deepest = &thing;
    {
        UiaQuery oldQuery(old.Pointer());
        EXPECT_EQ(oldQuery.ObjectAt({1, 1}, Deadline(400ms)).object.name, L"Save");
    }
    EXPECT_EQ(old.References(), 0);
}

} // namespace
} // namespace voxtrel::platform
