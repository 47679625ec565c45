#include "agent/stage/names.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::stage {
namespace {

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
