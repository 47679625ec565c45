#include "agent/stage/names.h"

#include <utf8proc.h>

#include <cstddef>

namespace voxtrel::agent::stage {
namespace {

// The code point at position, which moves behind it. A torn surrogate stands for itself.
utf8proc_int32_t NextCodePoint(std::wstring_view text, std::size_t& position)
{
    const auto unit = static_cast<utf8proc_int32_t>(text[position++]);
    if (sizeof(wchar_t) == 2 && unit >= 0xD800 && unit < 0xDC00 && position < text.size()) {
        const auto low = static_cast<utf8proc_int32_t>(text[position]);
        if (low >= 0xDC00 && low < 0xE000) {
            ++position;
            return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
    }
    return unit;
}

} // namespace

bool SameName(std::wstring_view left, std::wstring_view right)
{
    std::size_t l = 0;
    std::size_t r = 0;
    while (l < left.size() && r < right.size()) {
        if (utf8proc_tolower(NextCodePoint(left, l)) != utf8proc_tolower(NextCodePoint(right, r)))
            return false;
    }
    return l == left.size() && r == right.size();
}

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
