#include "agent/stage/idling.h"

#include "agent/stage/names.h"

#include <utility>

namespace voxtrel::agent::stage {

Idling::Idling(const acs::CharacterFile& file, Random random) : random_(std::move(random))
{
    levels_[0] = AnimationsOfState(file, L"IdlingLevel1");
    levels_[1] = AnimationsOfState(file, L"IdlingLevel2");
    levels_[2] = AnimationsOfState(file, L"IdlingLevel3");
    for (std::size_t level = 1; level < levels_.size(); ++level) {
        if (levels_[level].empty())
            levels_[level] = levels_[level - 1];
    }
}

bool Idling::Interrupt(Time now)
{
    if (!levels_[0].empty() || !levels_[1].empty() || !levels_[2].empty())
        dueAt_ = now + kIdleAfter;
    return std::exchange(idleSince_, std::nullopt).has_value();
}

const acs::Animation& Idling::Choose(Time now)
{
    if (!idleSince_)
        idleSince_ = now;
    const Time idle = now - *idleSince_;
    std::size_t level = idle >= kThirdIdleLevel ? 2 : idle >= kSecondIdleLevel ? 1 : 0;
    while (levels_[level].empty())
        ++level;
    const auto& choices = levels_[level];
    return *choices[random_(static_cast<int>(choices.size()))];
}

void Idling::Pause(Time now)
{
    const auto span = static_cast<int>((kLongestIdlePause - kShortestIdlePause).count());
    dueAt_ = now + kShortestIdlePause + Time{random_(span + 1)};
}

} // namespace voxtrel::agent::stage
