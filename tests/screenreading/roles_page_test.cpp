#include "screenreading/roles_page.h"

#include "fakes/call_log.h"
#include "fakes/fake_platform.h"
#include "screenreading/role_table.h"
#include "settings/memory_backend.h"

#include <gtest/gtest.h>

#include <utility>

namespace voxtrel::screenreading {
namespace {

class RolesPageTest : public testing::Test {
protected:
    using Pairs = std::vector<std::pair<std::wstring, std::wstring>>;

    RolesPageTest() { store.SetApplicationName(L"Orvella"); }

    void Fill(const Pairs& table)
    {
        for (const auto& [role, choice] : table)
            store.SaveSetting(kRolesSection, role, choice);
        page.FillRolesList();
    }
    std::vector<std::wstring> Listed() const
    {
        std::vector<std::wstring> texts;
        for (const RolesPage::Role& role : page.roleslist())
            texts.push_back((role.ticked ? L"+" : L"-") + role.text);
        return texts;
    }
    std::wstring Choice(std::wstring_view role) const
    {
        return store.GetSetting(kRolesSection, role, L"none");
    }

    tests::CallLog log;
    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    tests::FakeAccessibility access{log};
    settings::ProgramFolder folder{L"/program"};
    RolesPage page{{store, shared, access, folder}};
};

TEST_F(RolesPageTest, ListsRolesWithACapitalInTheOrderOfTheSettings)
{
    Fill(
        {{L"push button ", L"name"}, {L"link ", L"False"}, {L"\u00E9lan ", L"false"}, {L"Slider ", L"True"}});
    EXPECT_EQ(Listed(),
              (std::vector<std::wstring>{L"+Push button ", L"-Link ", L"+\u00C9lan ", L"+Slider "}));
}

TEST_F(RolesPageTest, NeverListsNumbers)
{
    Fill({{L"12", L"name"},
          {L"0", L"name"},
          {L"Button", L"name"},
          {L"3D view ", L"name"},
          {L" 7", L"name"},
          {L"-1", L"name"}});
    EXPECT_EQ(Listed(), (std::vector<std::wstring>{L"+0", L"+Button"}));
}

TEST_F(RolesPageTest, KeepsALetterWhoseCapitalNamesAnotherSetting)
{
    Fill({{L"\u0131n ", L"name"}}); // the capital of the dotless i is the I of the dotted one
    EXPECT_EQ(Listed(), (std::vector<std::wstring>{L"+\u0131n "}));
    page.Check_value_Click(true);
    EXPECT_EQ(Choice(L"\u0131n "), L"name,value,");
}

TEST_F(RolesPageTest, LeavesTheBoxesAloneWithoutRoles)
{
    page.Check_value_Click(true);
    Fill({});
    EXPECT_EQ(Listed(), std::vector<std::wstring>{});
    EXPECT_EQ(page.Selected(), std::nullopt);
    EXPECT_FALSE(page.Check_name());
    EXPECT_TRUE(page.Check_value());
    EXPECT_EQ(store.GetAllSettings(kRolesSection), Pairs{});
}

struct ShownCase {
    const wchar_t* choice;
    bool ticked, name, value;
};

TEST_F(RolesPageTest, ShowsTheChoiceOfTheSelectedRole)
{
    for (const auto& [choice, ticked, name, value] :
         {ShownCase{L"name", true, true, false}, ShownCase{L"name,", true, true, false},
          ShownCase{L"value,", true, false, true}, ShownCase{L"name,value,", true, true, true},
          ShownCase{L"false", true, false, false}, ShownCase{L"False", false, false, false},
          ShownCase{L"True", true, true, false}, ShownCase{L"role", true, false, false}}) {
        SCOPED_TRACE(choice);
        Fill({{L"link ", choice}});
        EXPECT_EQ(page.Selected(), 0u);
        EXPECT_EQ(page.roleslist()[0].ticked, ticked);
        EXPECT_EQ(page.Check_name(), name);
        EXPECT_EQ(page.Check_value(), value);
        EXPECT_EQ(Choice(L"link "), choice) << "showing stores nothing";
    }
}

TEST_F(RolesPageTest, ARoleThatIsGoneShowsAsTheName)
{
    Fill({{L"link ", L"value,"}});
    store.DeleteSetting(kRolesSection, L"link ");
    page.roleslist_ItemClick(0);
    EXPECT_TRUE(page.Check_name());
    EXPECT_FALSE(page.Check_value());
}

TEST_F(RolesPageTest, BoxesStoreTheirCombinationUnderTheSelectedRole)
{
    Fill({{L"link ", L"name"}, {L"slider ", L"name"}});
    page.roleslist_ItemClick(1);
    page.Check_value_Click(true);
    EXPECT_EQ(Choice(L"slider "), L"name,value,");
    page.Check_name_Click(false);
    EXPECT_EQ(Choice(L"slider "), L"value,");
    page.Check_value_Click(false);
    EXPECT_EQ(Choice(L"slider "), L"false");
    EXPECT_TRUE(page.roleslist()[1].ticked) << "both clear leaves the tick";
    page.Check_name_Click(true);
    EXPECT_EQ(Choice(L"slider "), L"name,");
    EXPECT_EQ(Choice(L"link "), L"name");
    EXPECT_EQ(store.GetAllSettings(kRolesSection).size(), 2u) << "the key is the same under its capital";
}

TEST_F(RolesPageTest, TickingStoresTheNameAndUntickingSilences)
{
    Fill({{L"link ", L"name,value,"}});
    page.roleslist_ItemCheck(0, false);
    EXPECT_EQ(Choice(L"link "), L"False");
    EXPECT_FALSE(page.Check_name());
    EXPECT_FALSE(page.Check_value());
    page.roleslist_ItemCheck(0, true);
    EXPECT_EQ(Choice(L"link "), L"name");
    EXPECT_TRUE(page.Check_name());
    EXPECT_FALSE(page.Check_value());
}

TEST_F(RolesPageTest, TickingAnotherRoleRewritesTheSelectedOne)
{
    Fill({{L"link ", L"name,value,"}, {L"slider ", L"value,"}});
    page.roleslist_ItemCheck(1, false);
    EXPECT_EQ(Choice(L"link "), L"false");
    EXPECT_EQ(Choice(L"slider "), L"False");
    page.roleslist_ItemCheck(1, true);
    EXPECT_EQ(Choice(L"link "), L"name,");
    EXPECT_EQ(Choice(L"slider "), L"name");
    EXPECT_EQ(page.Selected(), 0u);
}

TEST_F(RolesPageTest, TickingAnotherRoleRewritesTheSelectedOneEvenWhenTheBoxesStayAsTheyAre)
{
    Fill({{L"link ", L"True"}, {L"slider ", L"False"}});
    page.roleslist_ItemCheck(1, true);
    EXPECT_EQ(Choice(L"link "), L"name,");
}

TEST_F(RolesPageTest, TheSwitchIsSharedStoredAndHandedToTheControl)
{
    page.Check_usescreenreading_Click(true);
    EXPECT_TRUE(shared.usescreenreading);
    EXPECT_EQ(store.GetSetting(L"speech", L"usescreenreading"), L"True");
    EXPECT_EQ(log.Calls(),
              (std::vector<std::wstring>{L"StartServer " + folder.AccServer(), L"StartMonitoring"}));
    log.Clear();
    page.Check_usescreenreading_Click(false);
    EXPECT_FALSE(shared.usescreenreading);
    EXPECT_EQ(store.GetSetting(L"speech", L"usescreenreading"), L"False");
    EXPECT_EQ(log.Calls(), std::vector<std::wstring>{L"StopMonitoring"});
}

TEST_F(RolesPageTest, DetailsCutTheRoleAtItsBracketAndNothingElse)
{
    access.role = L"link (visited) ";
    access.name = L"Home (start) ";
    access.value = L"x (y) ";
    EXPECT_EQ(DetailsOf(access), (std::array<std::wstring, 3>{L"link ", L"Home (start) ", L"x (y) "}));
    access.role = L"( ";
    EXPECT_EQ((*DetailsOf(access))[0], L"");
    access.role = access.name = access.value = L" ";
    EXPECT_EQ(DetailsOf(access), (std::array<std::wstring, 3>{L" ", L" ", L" "}));
}

TEST_F(RolesPageTest, DetailsStayAsTheyAreWhileTheControlKnowsNothing)
{
    EXPECT_EQ(DetailsOf(access), std::nullopt);
}

} // namespace
} // namespace voxtrel::screenreading
