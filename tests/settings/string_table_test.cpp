#include "settings/string_table.h"

#include "settings/string_numbers.h"
#include "settings/text_case.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace voxtrel::settings {
namespace {

class StringFolder : public testing::Test {
protected:
    StringFolder()
        : path(std::filesystem::temp_directory_path() /
               ("voxtrel-strings-" +
                std::string(testing::UnitTest::GetInstance()->current_test_info()->name())))
    {
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~StringFolder() override { std::filesystem::remove_all(path); }

    void Put(const char* name, std::string_view bytes) const
    {
        std::ofstream(path / name, std::ios::binary) << bytes;
    }
    LoadedStringTable Load(std::wstring_view language) const
    {
        return LoadStringTable(FromUtf8(path.string()), language);
    }

    std::filesystem::path path;
};

TEST(ParseStringTable, ReadsNumbersTextsAndEscapes)
{
    const LoadedStringTable loaded =
        ParseStringTable("\xEF\xBB\xBF# comment\n\n1\tone\r\n20\ta\\nb\\tc\\\\d\n3\t\n"
                         "4\ttab\there \n5\t5 caf\xC3\xA9",
                         L"en.txt");
    EXPECT_TRUE(loaded.problems.empty());
    EXPECT_EQ(loaded.table.Text(1), L"one");
    EXPECT_EQ(loaded.table.Text(20), L"a\nb\tc\\d");
    EXPECT_EQ(loaded.table.Find(3), L"");
    EXPECT_EQ(loaded.table.Text(4), L"tab\there ");
    EXPECT_EQ(loaded.table.Text(5), L"5 café");
    EXPECT_FALSE(loaded.table.Find(6).has_value());
    EXPECT_EQ(loaded.table.Text(6), L"");
}

TEST(ParseStringTable, TellsFileLineAndFault)
{
    const LoadedStringTable loaded =
        ParseStringTable("1\tone\nno number\nx\tx\n0\tzero\n-1\tless\n1 \tblank\n"
                         "1\tagain\n2\tbad\\x\n3\tend\\\n4\t\xFF\n99999999999\thuge\n"
                         "7\tseven\n",
                         L"de.txt");
    EXPECT_EQ(loaded.table.Size(), 2u);
    EXPECT_EQ(loaded.table.Text(7), L"seven");
    ASSERT_EQ(loaded.problems.size(), 10u);
    EXPECT_EQ(loaded.problems[0], L"de.txt, line 2: there is no tab between the number and the text");
    EXPECT_EQ(loaded.problems[1],
              L"de.txt, line 3: the line does not begin with a number of 1 or more and a tab");
    EXPECT_EQ(loaded.problems[5], L"de.txt, line 7: the number 1 is used twice");
    EXPECT_EQ(loaded.problems[8], L"de.txt, line 10: the text is not UTF-8");
}

TEST_F(StringFolder, FallsBackToEnglishTextByText)
{
    Put("en.txt", "1\tcolour\n2\tshow\n3\tend\n");
    Put("de.txt", "1\tFarbe\n2\tzeigen\n");
    Put("de_AT.txt", "2\tanzeigen\n");
    for (const wchar_t* language : {L"de_AT.UTF-8", L"de-AT", L"de_AT@euro"}) {
        const LoadedStringTable loaded = Load(language);
        EXPECT_TRUE(loaded.problems.empty());
        EXPECT_EQ(loaded.table.Text(1), L"Farbe");
        EXPECT_EQ(loaded.table.Text(2), L"anzeigen");
        EXPECT_EQ(loaded.table.Text(3), L"end");
    }
    EXPECT_EQ(Load(L"de").table.Text(2), L"zeigen");
    EXPECT_EQ(Load(L"DE").table.Text(2), L"zeigen");
}

TEST_F(StringFolder, KnowsEnglishForAnyOtherLanguage)
{
    Put("en.txt", "1\tcolour\n");
    for (const wchar_t* language : {L"", L"C", L"POSIX", L"fr", L"../en", L"en", L"en_GB.UTF-8", L"\n"}) {
        const LoadedStringTable loaded = Load(language);
        EXPECT_TRUE(loaded.problems.empty());
        EXPECT_EQ(loaded.table.Text(1), L"colour");
    }
}

TEST_F(StringFolder, TellsThatEnglishIsMissing)
{
    const LoadedStringTable loaded = Load(L"en");
    ASSERT_EQ(loaded.problems.size(), 1u);
    EXPECT_NE(loaded.problems[0].find(L"en.txt"), std::wstring::npos);
    EXPECT_EQ(loaded.table.Size(), 0u);
}

struct EnglishText {
    int number;
    const wchar_t* text;
};

constexpr EnglishText kEnglishTexts[] = {
    {104, L"Text files"},
    {105, L"All files"},
    {1000, L"Voxtrel"},
    {1002, L"Start speech"},
    {1004, L"Open TextReader"},
    {1006, L"Stop speech"},
    {1008, L"Open text"},
    {1010, L"Open Speech Properties Panel"},
    {1011, L"Show Voxtrel Toolbar"},
    {1012, L"Hide Voxtrel Toolbar"},
    {1101, L"Show &Speech Options"},
    {1102, L"Show &Toolbar"},
    {1103, L"Hide &Toolbar"},
    {2902, L"Auto close ON"},
    {2903, L"Auto close OFF"},
    {2904, L"Choose a different color"},
    {2905, L"Reading in %s mode"},
    {2906, L"Block highlight ON"},
    {2907, L"Block highlight OFF"},
    {2908, L"Auto close ON/OFF"},
    {2909, L"Block highlight ON/OFF"},
    {3009, L"Your mouse is over this type of object ->"},
    {3010, L"Basic Text ="},
    {3011, L"Extra Info ="},
    {3012, L"Window"},
    {3013, L"Details..."},
    {3014, L"Close Details"},
    {3015, L"Screen Reading Details"},
    {3401, L"For this type of object you can"},
    {3403, L"Screen Reading"},
    {3406, L"Select items which you would like to be read"},
    {3407, L"I would like to use Screen Reading"},
    {3408, L"Select this box to use automatic Screen Reading"},
    {3409, L"Read &Basic Text"},
    {3410, L"Select this box to have the name of an item spoken"},
    {3411, L"Read &Extra Information"},
    {3412, L"Select this box to have the value of an item spoken"},
    {3910, L"This hot key is already in use. Please choose another"},
    {strings::kReachX11Only,
     L"On this desktop I can see only programs that use X11. Hot keys and speaking the "
     L"selection work while one of them is in front. Everything else works as usual."},
    {strings::kReachNothing,
     L"On this desktop I cannot reach other programs. Hot keys, speaking the selection and the "
     L"clipboard do not work. Text files, the Text Reader and commands work as usual."},
    {strings::kBlankFile, L"###This is a blank file."},
    {strings::kNothingYet, L"...."},
    {strings::kTestVoice, L"This is your new voice. Is it OK?"},
    {strings::kTestAppearance, L"This is what I'll look like with your current settings."},
    {strings::kTestLargeBalloon, L"This time I'll speak a little more, so you can see a bigger balloon."},
    {strings::kFirstSize, L"Large"},
    {strings::kFirstSize + 1, L"Normal"},
    {strings::kFirstSize + 2, L"Small"},
    {strings::kFirstPosition, L"Top Left"},
    {strings::kFirstPosition + 1, L"Top Right"},
    {strings::kFirstPosition + 2, L"Bottom Left"},
    {strings::kFirstPosition + 3, L"Bottom Right"},
};

TEST(EnglishTexts, AreCompleteAndNothingElse)
{
    std::ifstream file(VOXTREL_RESOURCES "/strings/en.txt", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const LoadedStringTable loaded = ParseStringTable(bytes, L"en.txt");
    EXPECT_TRUE(loaded.problems.empty());
    for (const auto& [number, text] : kEnglishTexts)
        EXPECT_EQ(loaded.table.Find(number), text) << number;
    EXPECT_FALSE(loaded.table.Find(strings::kWindowFontName).has_value());
    EXPECT_FALSE(loaded.table.Find(strings::kWindowFontSize).has_value());
}

TEST(FormatResString, FillsTheFirstPlaceOnly)
{
    EXPECT_EQ(FormatResString(L"Reading in %s mode", L"word"), L"Reading in word mode");
    EXPECT_EQ(FormatResString(L"%s and %s", L"one"), L"one and %s");
    EXPECT_EQ(FormatResString(L"100% sure", L"x"), L"100% sure");
    EXPECT_EQ(FormatResString(L"%S", L"x"), L"%S");
    EXPECT_EQ(FormatResString(L"%s", L"%s"), L"%s");
    EXPECT_EQ(FormatResString(L"%%s", L"x"), L"%x");
    EXPECT_EQ(FormatResString(L"", L"x"), L"");
}

} // namespace
} // namespace voxtrel::settings
