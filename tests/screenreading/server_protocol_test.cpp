#include "screenreading/server_protocol.h"

#include <gtest/gtest.h>

namespace voxtrel::screenreading {
namespace {

using platform::AccessibleObject;
using platform::SwitchState;

const AccessibleObject kLink{L"Home", L"link", L"https://example.org/", SwitchState::None};

TEST(ServerProtocol, IsOneReadableLine)
{
    EXPECT_EQ(EncodeObject(kLink), "object\tlink\tHome\thttps://example.org/\t-\n");
    EXPECT_EQ(EncodeObject({}), "object\t\t\t\t-\n");
}

TEST(ServerProtocol, BringsEveryTextBackAsItWas)
{
    for (const SwitchState state :
         {SwitchState::None, SwitchState::Unchecked, SwitchState::Checked, SwitchState::PartlyChecked,
          SwitchState::Released, SwitchState::Pressed}) {
        const AccessibleObject object{L"a\tb\\n\r\n\\", L"gr\u00FC\u00DFe \U0001F600", L"  \\t", state};
        EXPECT_EQ(ObjectReader().Take(EncodeObject(object)), object);
    }
}

TEST(ServerProtocol, PutsPiecesTogether)
{
    const std::string line = EncodeObject(kLink);
    for (std::size_t cut = 0; cut < line.size(); ++cut) {
        ObjectReader reader;
        EXPECT_EQ(reader.Take(line.substr(0, cut)), std::nullopt);
        EXPECT_EQ(reader.Take(line.substr(cut)), kLink);
    }
}

TEST(ServerProtocol, GivesTheLastOfSeveralObjects)
{
    const AccessibleObject button{L"OK", L"push button", L"", SwitchState::None};
    EXPECT_EQ(ObjectReader().Take(EncodeObject(kLink) + "alive\n" + EncodeObject(button) + "alive\n"),
              button);
}

TEST(ServerProtocol, LeavesOutWhatItDoesNotKnow)
{
    for (const char* bytes : {"\n", "alive\n", "object\n", "object\ta\tb\tc\n", "object\ta\tb\tc\td\te\n",
                              "object\ta\tb\tc\tunknown\n", "Object\ta\tb\tc\t-\n", "start\n"})
        EXPECT_EQ(ObjectReader().Take(bytes), std::nullopt) << bytes;
    ObjectReader reader;
    EXPECT_EQ(reader.Take("garbage\xFF\xFE\n" + EncodeObject(kLink)), kLink);
}

TEST(ServerProtocol, ReplacesBytesThatAreNoText)
{
    const auto object = ObjectReader().Take("object\tr\x80\tn\\x\tv\\\t-\n");
    ASSERT_TRUE(object);
    EXPECT_EQ(*object, (AccessibleObject{L"n", L"r\uFFFD", L"v\\", SwitchState::None}));
}

TEST(ServerProtocol, ForgetsALineThatNeverEnds)
{
    ObjectReader reader;
    const std::string piece(ObjectReader::kMaxLine / 2, 'x');
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(reader.Take(piece), std::nullopt);
    EXPECT_EQ(reader.Take("\n" + EncodeObject(kLink)), kLink);
}

} // namespace
} // namespace voxtrel::screenreading
