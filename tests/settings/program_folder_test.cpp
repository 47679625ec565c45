#include "settings/program_folder.h"

#include "settings/text_case.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace voxtrel::settings {
namespace {

constexpr bool kWindowsPaths = std::filesystem::path::preferred_separator == '\\';

class ProgramFolderTest : public testing::Test {
protected:
    ProgramFolderTest()
        : path(std::filesystem::temp_directory_path() /
               ("voxtrel-folder-" +
                std::string(testing::UnitTest::GetInstance()->current_test_info()->name())))
    {
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path / "characters");
    }
    ~ProgramFolderTest() override { std::filesystem::remove_all(path); }

    void PutCharacter(const char8_t* name) const { std::ofstream(path / "characters" / name) << "x"; }
    std::wstring Path() const { return FromUtf8(path.string()); }

    static std::wstring Native(std::wstring path)
    {
        for (wchar_t& c : path)
            c = c == L'/' ? static_cast<wchar_t>(std::filesystem::path::preferred_separator) : c;
        return path;
    }

    std::filesystem::path path;
};

TEST_F(ProgramFolderTest, FindsACharacterUnderAnyCapitals)
{
    PutCharacter(u8"genie.acs");
    PutCharacter(u8"Zoë.ACS");
    const ProgramFolder folder(Path());
    for (const wchar_t* name : {L"genie", L"Genie", L"GENIE"}) {
        const std::wstring file = folder.CharacterFile(name);
        EXPECT_TRUE(SameName(file, Path() + Native(L"/characters/genie.acs")));
        EXPECT_TRUE(std::filesystem::exists(ToUtf8(file)));
    }
    EXPECT_TRUE(SameName(folder.CharacterFile(L"ZOË"), Path() + Native(L"/characters/zoë.acs")));
}

TEST_F(ProgramFolderTest, PrefersTheExactName)
{
    PutCharacter(u8"Genie.acs");
    PutCharacter(u8"genie.acs");
    EXPECT_EQ(ProgramFolder(Path()).CharacterFile(L"genie"), Path() + Native(L"/characters/genie.acs"));
}

TEST_F(ProgramFolderTest, SaysWhereAMissingCharacterWouldBe)
{
    EXPECT_EQ(ProgramFolder(Path()).CharacterFile(L"nobody"), Path() + Native(L"/characters/nobody.acs"));
    EXPECT_EQ(ProgramFolder(Path() + L"/none").CharacterFile(L"nobody"),
              Path() + L"/none" + Native(L"/characters/nobody.acs"));
}

TEST_F(ProgramFolderTest, ListsTheCharactersInOrder)
{
    PutCharacter(u8"robin.acs");
    PutCharacter(u8"Anna.ACS");
    PutCharacter(u8"notes.txt");
    PutCharacter(u8"acs");
    EXPECT_EQ(ProgramFolder(Path()).CharacterNames(), (std::vector<std::wstring>{L"Anna", L"robin"}));
    EXPECT_TRUE(ProgramFolder(Path() + L"/none").CharacterNames().empty());
}

TEST_F(ProgramFolderTest, NamesWhatLiesBesideTheProgram)
{
    const ProgramFolder folder(Native(L"/opt/voxtrel/"));
    EXPECT_EQ(folder.Path(), Native(L"/opt/voxtrel"));
    EXPECT_EQ(folder.AccServer(), Native(L"/opt/voxtrel/ovaccserver") + (kWindowsPaths ? L".exe" : L""));
    EXPECT_EQ(folder.HelpFile(), Native(L"/opt/voxtrel/Help/helpfile.hlp"));
}

} // namespace
} // namespace voxtrel::settings
