#include "agent/stage/names.h"

#include <gtest/gtest.h>

#include <clocale>

namespace voxtrel::agent::stage {
namespace {

struct NameCase {
    std::wstring_view left;
    std::wstring_view right;
    bool same;
};

constexpr NameCase kCases[] = {
    {L"GETATTENTION", L"GetAttention", true},
    {L"Idle1_1", L"IDLE1_1", true},
    {L"Écoute", L"éCOUTE", true},
    {L"Wave", L"Waves", false},
    {L"Waves", L"Wave", false},
    {L"", L"", true},
    {L"", L"a", false},
    {L"\U00010400", L"\U00010428", true},
};

TEST(SameName, IgnoresCase)
{
    for (const auto& [left, right, same] : kCases) {
        SCOPED_TRACE(std::wstring(left));
        EXPECT_EQ(SameName(left, right), same);
    }
}

TEST(SameName, DoesNotDependOnTheLocale)
{
    if (std::setlocale(LC_ALL, "tr_TR.UTF-8") == nullptr)
        std::setlocale(LC_ALL, "C.UTF-8");
    EXPECT_TRUE(SameName(L"IDLINGLEVEL1", L"idlinglevel1"));
    std::setlocale(LC_ALL, "C");
}

TEST(AnimationsOfState, LeavesOutWhatCannotBePlayed)
{
    acs::CharacterFile file;
    file.animations.resize(4);
    file.animations[0].name = L"A";
    file.animations[0].frames.emplace_back();
    file.animations[1].name = L"Damaged";
    file.animations[1].frames.emplace_back();
    file.animations[1].damaged = true;
    file.animations[2].name = L"Empty";
    file.animations[3].name = L"B";
    file.animations[3].frames.emplace_back();
    file.states = {{L"SPEAKING", {L"b", L"Damaged", L"Nowhere", L"Empty", L"a"}}};
    EXPECT_EQ(AnimationsOfState(file, L"Speaking"),
              (std::vector<const acs::Animation*>{&file.animations[3], &file.animations[0]}));
    EXPECT_TRUE(AnimationsOfState(file, L"Hiding").empty());
}

} // namespace
} // namespace voxtrel::agent::stage
