#include "screenreading/role_table.h"

#include "settings/memory_backend.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace voxtrel::screenreading {
namespace {

class RoleTable : public testing::Test {
protected:
    using Pairs = std::vector<std::pair<std::wstring, std::wstring>>;

    RoleTable() { store.SetApplicationName(L"Orvella"); }

    Pairs Table() const { return store.GetAllSettings(L"ScreenReadingRoles"); }

    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
};

TEST_F(RoleTable, LearnsANewRoleWithItsClosingCharacter)
{
    EXPECT_EQ(ChoiceFor(L"push button ", store), L"name");
    EXPECT_EQ(Table(), (Pairs{{L"push button ", L"name"}}));
    EXPECT_EQ(ChoiceFor(L"Push Button ", store), L"name");
    EXPECT_EQ(Table().size(), 1u);
}

TEST_F(RoleTable, NeverLearnsPlaceHoldersAndNumbers)
{
    for (const wchar_t* role :
         {L".....", L"..... ", L"&Keyboard:", L"&Keyboard: ", L"12", L"12 ", L"$1,000.5 "}) {
        SCOPED_TRACE(role);
        EXPECT_EQ(ChoiceFor(role, store), L"name");
    }
    EXPECT_EQ(Table(), Pairs{});
}

TEST_F(RoleTable, SpeaksAnObjectWithoutARoleAndLearnsNothing)
{
    for (const wchar_t* role : {L"", L" ", L"  "})
        EXPECT_EQ(ChoiceFor(role, store), L"name");
    EXPECT_EQ(Table(), Pairs{});
}

TEST_F(RoleTable, SilencesOnlyOnFalseWithACapital)
{
    for (const wchar_t* choice : {L"false", L"True", L"FALSE", L"", L"name,value,", L"False "}) {
        store.SaveSetting(kRolesSection, L"link ", choice);
        EXPECT_EQ(ChoiceFor(L"link ", store), choice);
    }
    store.SaveSetting(kRolesSection, L"link ", L"False");
    EXPECT_EQ(ChoiceFor(L"link ", store), std::nullopt);
}

TEST_F(RoleTable, TakesAStoredPlaceHolderAsNew)
{
    store.SaveSetting(kRolesSection, L"link ", L"name_new");
    EXPECT_EQ(ChoiceFor(L"link ", store), L"name");
    EXPECT_EQ(Table(), (Pairs{{L"link ", L"name"}}));
}

TEST(WithoutClosingCharacter, DropsOneCharacterAndTearsNone)
{
    EXPECT_EQ(WithoutClosingCharacter(L""), L"");
    EXPECT_EQ(WithoutClosingCharacter(L" "), L"");
    EXPECT_EQ(WithoutClosingCharacter(L"OK "), L"OK");
    EXPECT_EQ(WithoutClosingCharacter(L"OK  "), L"OK ");
    EXPECT_EQ(WithoutClosingCharacter(L"a\U0001F600"), L"a");
    EXPECT_EQ(WithoutClosingCharacter(L"\U0001F600 "), L"\U0001F600");
}

} // namespace
} // namespace voxtrel::screenreading
