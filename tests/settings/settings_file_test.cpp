#include "settings/settings_file.h"

#include <gtest/gtest.h>

#include <random>

namespace voxtrel::settings {
namespace {

std::wstring DamageOf(std::string_view bytes) { return ParseSettingsFile(bytes).damage; }

TEST(SerialiseSettingsFile, WritesWhatAPersonCanRead)
{
    SettingsTree tree;
    tree.Set(L"Orvella", L"voices", L"Adult Male 1, US English", L"{CA14}");
    tree.Set(L"Orvella", L"Agent", L"Speed", L"150");
    tree.Set(L"other", L"agent", L"say \"é\"", L"a\\b\n\r\t\x01");
    EXPECT_EQ(SerialiseSettingsFile(tree), "Voxtrel settings 1\n"
                                           "application \"Orvella\"\n"
                                           "section \"voices\"\n"
                                           "\"Adult Male 1, US English\" = \"{CA14}\"\n"
                                           "section \"Agent\"\n"
                                           "\"Speed\" = \"150\"\n"
                                           "application \"other\"\n"
                                           "section \"agent\"\n"
                                           "\"say \\\"é\\\"\" = \"a\\\\b\\n\\r\\t\\u{1}\"\n"
                                           "end\n");
}

TEST(ParseSettingsFile, TakesWhatAPersonWrote)
{
    const ParsedSettings parsed = ParseSettingsFile("Voxtrel settings 1\r\n"
                                                    "# my own voices\r\n"
                                                    "\r\n"
                                                    "application \"Orvella\"\r\n"
                                                    "section \"voices\"\r\n"
                                                    "\"Mine\" = \"{1}\"\r\n"
                                                    "section \"Agent\"\r\n"
                                                    "section \"VOICES\"\r\n"
                                                    "\"mine\" = \"{2}\"\r\n"
                                                    "\"Yours\" = \"\"\r\n"
                                                    "end");
    EXPECT_EQ(parsed.damage, L"");
    ASSERT_EQ(parsed.tree.Sections().size(), 1u);
    EXPECT_EQ(parsed.tree.Sections()[0].pairs,
              (std::vector<SettingsTree::Pair>{{L"Mine", L"{2}"}, {L"Yours", L""}}));
}

struct DamageCase {
    const char* bytes;
    const wchar_t* damage;
};

constexpr DamageCase kDamageCases[] = {
    {"", L"it is empty"},
    {"rubbish", L"line 1: it does not begin as a settings file does"},
    {"Voxtrel settings 2\nend\n", L"line 1: it does not begin as a settings file does"},
    {"Voxtrel settings 1\n", L"it is cut off: the last line is missing"},
    {"Voxtrel settings 1\nen", L"line 2: it is neither a section nor a value"},
    {"Voxtrel settings 1\n\"a\" = \"b\"\nend\n", L"line 2: the value stands in no section"},
    {"Voxtrel settings 1\nsection \"s\"\n\"a\" = \"b\"\nend\n", L"line 3: the value stands in no section"},
    {"Voxtrel settings 1\napplication \"A\"\nsection \"s\"\napplication \"B\"\n\"a\" = \"b\"\nend\n",
     L"line 5: the value stands in no section"},
    {"Voxtrel settings 1\napplication A\nend\n", L"line 2: a name between quotes is missing"},
    {"Voxtrel settings 1\napplication \"A\" B\nend\n", L"line 2: a name between quotes is missing"},
    {"Voxtrel settings 1\napplication \"A\"\nsection \"s\"\n\"a\" \"b\"\nend\n",
     L"line 4: a name between quotes and an equals sign are missing"},
    {"Voxtrel settings 1\napplication \"A\"\nsection \"s\"\n\"a\" = \"b\nend\n",
     L"line 4: a value between quotes is missing"},
    {"Voxtrel settings 1\napplication \"A\"\nsection \"s\"\n\"a\" = \"\\q\"\nend\n",
     L"line 4: a value between quotes is missing"},
    {"Voxtrel settings 1\napplication \"A\"\nsection \"s\"\n\"a\" = \"\\u{zz}\"\nend\n",
     L"line 4: a value between quotes is missing"},
    {"Voxtrel settings 1\napplication \"\xFF\"\nend\n", L"line 2: it is not UTF-8"},
};

TEST(ParseSettingsFile, TellsWhatIsDamaged)
{
    for (const auto& [bytes, damage] : kDamageCases) {
        SCOPED_TRACE(bytes);
        const ParsedSettings parsed = ParseSettingsFile(bytes);
        EXPECT_EQ(parsed.damage, damage);
        EXPECT_TRUE(parsed.tree.Sections().empty());
    }
}

TEST(ParseSettingsFile, NoticesAFileCutOffAnywhere)
{
    SettingsTree tree;
    tree.Set(L"A", L"s", L"key", L"value");
    tree.Set(L"A", L"t", L"é\n", L"end\nend");
    const std::string whole = SerialiseSettingsFile(tree);
    EXPECT_EQ(DamageOf(whole), L"");
    for (std::size_t length = 0; length + 1 < whole.size();
         ++length) // without the last line break it is whole
        EXPECT_NE(DamageOf(whole.substr(0, length)), L"") << length;
}

TEST(ParseSettingsFile, ReadsBackWhatIsWritten)
{
    std::mt19937 random(77);
    const auto randomText = [&] {
        constexpr char32_t kPool[] = {U'a', U'B', U' ', U'"',   U'\\',  U'\n',   U'\r',   U'=',   U'#',
                                      U'{', 0,    0x1B, 0x7F,   0x85,   0xE9,    0x20AC,  0x2028, 0xFEFF,
                                      U'u', U'}', U'n', 0xD800, 0xFFFF, 0x1F600, 0x10FFFF};
        std::wstring text;
        for (std::size_t i = random() % 12; i > 0; --i)
            AppendCodePoint(text, kPool[random() % std::size(kPool)]);
        return text;
    };
    for (int round = 0; round < 300; ++round) {
        SettingsTree tree;
        for (int i = 0; i < 20; ++i)
            tree.Set(randomText(), randomText(), randomText(), randomText());
        const ParsedSettings parsed = ParseSettingsFile(SerialiseSettingsFile(tree));
        ASSERT_EQ(parsed.damage, L"");
        ASSERT_EQ(parsed.tree.Sections().size(), tree.Sections().size());
        for (std::size_t i = 0; i < tree.Sections().size(); ++i) {
            ASSERT_EQ(parsed.tree.Sections()[i].application, tree.Sections()[i].application);
            ASSERT_EQ(parsed.tree.Sections()[i].name, tree.Sections()[i].name);
            ASSERT_EQ(parsed.tree.Sections()[i].pairs, tree.Sections()[i].pairs);
        }
    }
}

} // namespace
} // namespace voxtrel::settings
