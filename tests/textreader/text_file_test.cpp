#include "textreader/text_file.h"

#include "settings/file_path.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace voxtrel::textreader {
namespace {

using namespace std::string_literals;

TEST(DecodeText, TellsTheEncodingsApart)
{
    struct Row {
        std::string bytes;
        std::wstring text;
    };
    const Row rows[] = {
        {"plain", L"plain"},
        {"caf\xC3\xA9", L"café"},
        {"\xEF\xBB\xBF"
         "caf\xC3\xA9",
         L"café"},
        {"caf\xE9 \x93quoted\x94 \x80", L"café “quoted” €"},
        {"\xFF\xFEh\0\xE9\0"s, L"hé"},
        {"\xFE\xFF\0h\0\xE9"s, L"hé"},
        {"w\0o\0r\0d\0"s, L"word"},
        {"\0w\0o\0r\0d"s, L"word"},
        {"\xFF\xFE\x3D\xD8\x00\xDE!\0"s, L"\U0001F600!"},
        {"", L""},
    };
    for (const Row& row : rows) {
        const LoadedText loaded = DecodeText(row.bytes);
        EXPECT_EQ(loaded.error, L"");
        EXPECT_EQ(loaded.text, row.text) << row.bytes;
    }
}

TEST(DecodeText, LineEndsBecomeCrLf)
{
    EXPECT_EQ(DecodeText("a\nb\rc\r\nd\n\ne\r\r\n").text, L"a\r\nb\r\nc\r\nd\r\n\r\ne\r\n\r\n");
}

TEST(DecodeText, BytesThatAreNoTextAreAnError)
{
    EXPECT_NE(DecodeText("\x7F"
                         "ELF\0\x01\x02 and more"s)
                  .error,
              L"");
}

TEST(LoadTextFile, ErrorsNameTheFile)
{
    const std::filesystem::path folder = std::filesystem::path(testing::TempDir()) / "voxtrel-text-file";
    std::filesystem::create_directories(folder);
    const std::filesystem::path binary = folder / "data.bin";
    std::ofstream(binary, std::ios::binary) << "\x01\0\x02\0\0\0"s;

    EXPECT_NE(LoadTextFile((folder / "none.txt").wstring()).error.find(L"none.txt"), std::wstring::npos);
    EXPECT_NE(LoadTextFile(folder.wstring()).error.find(L"folder"), std::wstring::npos);
    EXPECT_NE(LoadTextFile(binary.wstring()).error.find(L"data.bin"), std::wstring::npos);
}

TEST(LoadTextFile, ReadsTheFile)
{
    const std::filesystem::path file =
        std::filesystem::path(testing::TempDir()) / settings::ToPath(L"grüße.txt");
    std::ofstream(file, std::ios::binary) << "one\ntwo";
    EXPECT_EQ(LoadTextFile(settings::FromPath(file)).text, L"one\r\ntwo");
}

} // namespace
} // namespace voxtrel::textreader
