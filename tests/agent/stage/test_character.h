#pragma once

#include "agent/acs/character_file.h"
#include "agent/stage/picture.h"

#include <memory>
#include <set>

namespace voxtrel::agent::stage {

// Image n fills its whole size with one colour of its own, so that a test can tell from a pixel which it is.
// Images from kFirstMouth on are mouths of 2 x 2 pixels, the rest are 8 x 8.
inline constexpr int kFirstMouth = 40;
class TestImages : public acs::ImageSource {
public:
    std::size_t Count() const override { return 60; }
    acs::Image Decode(std::size_t index) const override;

    mutable std::multiset<std::size_t> decoded;
};

// A character of 8 x 8 pixels. The pictures of its animations, one digit a frame and 100 ms each:
//   RestPose            0, with seven mouths, serves Speaking
//   Show                1 2 0          Hide   2 1, then nothing
//   GetAttention        3 4 5, returns by GetAttentionReturn: 4 3 0
//   Wave                6 7 8, left backwards by exit frames: 7 6
//   Loop                9 10 for ever, left by a jump to 11
//   Blink               12 0           idle level 1
//   Yawn                13 14          idle level 2, returns by YawnReturn: 13 0
//   Sleep               15 16 for ever, idle level 3, left by a jump to 17
//   Spin                18, without any duration, for ever
//   Damaged             cannot be played
acs::CharacterFile MakeTestCharacter();

// The image that a pixel of the picture shows; -1 where it is transparent.
int ImageAt(const Picture& picture, int x, int y);

} // namespace voxtrel::agent::stage
