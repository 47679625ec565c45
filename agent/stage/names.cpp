#include "agent/stage/names.h"

namespace voxtrel::agent::stage {

const acs::Animation* FindAnimation(const acs::CharacterFile& file, std::wstring_view name)
{
    for (const acs::Animation& animation : file.animations) {
        if (SameName(animation.name, name))
            return &animation;
    }
    return nullptr;
}

bool Playable(const acs::Animation& animation) { return !animation.damaged && !animation.frames.empty(); }

std::vector<const acs::Animation*> AnimationsOfState(const acs::CharacterFile& file, std::wstring_view state)
{
    std::vector<const acs::Animation*> found;
    for (const acs::State& candidate : file.states) {
        if (!SameName(candidate.name, state))
            continue;
        for (const std::wstring& name : candidate.animations) {
            const acs::Animation* animation = FindAnimation(file, name);
            if (animation != nullptr && Playable(*animation))
                found.push_back(animation);
        }
    }
    return found;
}

} // namespace voxtrel::agent::stage
