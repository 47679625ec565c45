#include "tools/acsc/check.h"

#include "agent/acs/unicode.h"
#include "tools/acsc/compose.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <set>
#include <string_view>
#include <utility>

namespace voxtrel::acsc {

namespace {

using agent::acs::Animation;
using agent::acs::CharacterFile;
using agent::acs::Frame;
using agent::acs::Mouth;
using agent::acs::State;
using agent::acs::Transition;
using agent::acs::Utf8FromWide;

constexpr int kLongestAnimation = 600; // hundredths of a second
constexpr int kShortestFrame = 10;     // hundredths of a second
constexpr std::size_t kMostBranches = 3;
constexpr std::size_t kMouths = 7;

struct StandardAnimation {
    std::wstring_view name;
    bool speaks = false; // needs mouths and a way back to the neutral pose
};

constexpr StandardAnimation kStandardSet[] = {
    {L"Acknowledge"},
    {L"Alert", true},
    {L"Announce", true},
    {L"Blink"},
    {L"Confused", true},
    {L"Congratulate", true},
    {L"Decline", true},
    {L"DoMagic1"},
    {L"DoMagic2"},
    {L"DontRecognize", true},
    {L"Explain", true},
    {L"GestureDown", true},
    {L"GestureLeft", true},
    {L"GestureRight", true},
    {L"GestureUp", true},
    {L"GetAttention"},
    {L"GetAttentionContinued"},
    {L"GetAttentionReturn"},
    {L"Greet", true},
    {L"Hearing1"},
    {L"Hearing2"},
    {L"Hide"},
    {L"Idle1_1"},
    {L"Idle1_2"},
    {L"Idle2_1"},
    {L"Idle2_2"},
    {L"Idle3_1"},
    {L"Idle3_2"},
    {L"LookDown"},
    {L"LookLeft"},
    {L"LookRight"},
    {L"LookUp"},
    {L"MoveDown"},
    {L"MoveLeft"},
    {L"MoveRight"},
    {L"MoveUp"},
    {L"Pleased", true},
    {L"Process"},
    {L"Processing"},
    {L"Read"},
    {L"ReadContinued"},
    {L"ReadReturn"},
    {L"Reading"},
    {L"RestPose"},
    {L"Sad", true},
    {L"Search"},
    {L"Searching"},
    {L"Show"},
    {L"StartListening", true},
    {L"StopListening", true},
    {L"Suggest", true},
    {L"Surprised", true},
    {L"Think", true},
    {L"Uncertain", true},
    {L"Wave", true},
    {L"Write"},
    {L"WriteContinued"},
    {L"WriteReturn"},
    {L"Writing"},
};

// The last frame that a plain run through the animation shows; null when it shows none.
const Frame* LastShown(const Animation& animation)
{
    const auto found = std::find_if(animation.frames.rbegin(), animation.frames.rend(),
                                    [](const Frame& frame) { return !IsUnseen(frame); });
    return found == animation.frames.rend() ? nullptr : &*found;
}

bool Speaks(const Animation& animation)
{
    const Frame* const last = LastShown(animation);
    if (!last)
        return false;
    std::set<Mouth> mouths;
    for (const auto& overlay : last->mouths)
        mouths.insert(overlay.mouth);
    return mouths.size() == kMouths;
}

bool CanBeLeft(const Animation& animation) { return animation.transition != Transition::None; }

bool Loops(const Animation& animation)
{
    for (std::size_t i = 0; i < animation.frames.size(); ++i) {
        for (const auto& branch : animation.frames[i].branches) {
            if (branch.target <= static_cast<int>(i) && branch.probability > 0)
                return true;
        }
    }
    return false;
}

class Checker {
public:
    explicit Checker(const CharacterFile& character) : character_(character) {}

    std::vector<Finding> Check()
    {
        CheckStates();
        CheckSpeaking();
        for (const Animation& animation : character_.animations)
            CheckAnimation(animation);
        if (character_.standardAnimationSet)
            CheckStandardSet();
        return std::move(findings_);
    }

private:
    void Error(std::string text) { findings_.push_back({Finding::Weight::Error, std::move(text)}); }
    void Warning(std::string text) { findings_.push_back({Finding::Weight::Warning, std::move(text)}); }

    void CheckStates()
    {
        for (const std::wstring_view needed : {L"Showing", L"Hiding", L"Speaking"}) {
            const State* const state = FindState(character_, needed);
            if (!state || state->animations.empty())
                Error("the state " + Utf8FromWide(needed) + " has no animations");
        }
        for (const State& state : character_.states) {
            for (const std::wstring& name : state.animations) {
                if (!FindAnimation(character_, name))
                    Error("the state " + Utf8FromWide(state.name) + " names the animation " +
                          Utf8FromWide(name) + ", which is not there");
            }
        }
    }

    void CheckSpeaking()
    {
        const State* const speaking = FindState(character_, L"Speaking");
        if (!speaking)
            return;
        for (const std::wstring& name : speaking->animations) {
            const Animation* const animation = FindAnimation(character_, name);
            if (!animation)
                continue;
            if (!Speaks(*animation))
                Error(Utf8FromWide(name) +
                      " serves the state Speaking, but its last visible frame has not all seven mouths");
            else if (!neutral_)
                neutral_ = LastShown(*animation);
        }
    }

    void CheckAnimation(const Animation& animation)
    {
        const std::string name = Utf8FromWide(animation.name);
        if (animation.damaged) {
            Error(name + " is damaged");
            return;
        }
        if (!LastShown(animation))
            Error(name + " shows no frame");
        CheckDurations(animation, name);
        CheckLeaving(animation, name);
        for (std::size_t i = 0; i < animation.frames.size(); ++i)
            CheckFrame(animation, i, name + ", frame " + std::to_string(i));
    }

    void CheckDurations(const Animation& animation, const std::string& name)
    {
        int duration = 0;
        std::size_t tooShort = 0;
        for (const Frame& frame : animation.frames) {
            duration += frame.duration;
            tooShort += frame.duration > 0 && frame.duration < kShortestFrame ? 1 : 0;
        }
        if (tooShort > 0)
            Warning(name + " has " + std::to_string(tooShort) + " frames that last less than " +
                    std::to_string(kShortestFrame) + " hundredths");
        if (duration > kLongestAnimation && !Loops(animation))
            Warning(name + " takes " + std::to_string(duration) + " hundredths of a second, more than " +
                    std::to_string(kLongestAnimation));
    }

    void CheckLeaving(const Animation& animation, const std::string& name)
    {
        if (animation.transition == Transition::ReturnAnimation &&
            !FindAnimation(character_, animation.returnAnimation))
            Error(name + " returns by " + Utf8FromWide(animation.returnAnimation) + ", which is not there");
        const Frame* const last = LastShown(animation);
        if (animation.transition != Transition::None || !last || !neutral_)
            return;
        const Pixels end = ComposeFrame(character_, *last);
        const bool empty = ContentBox(end).Empty();
        if (!empty && end.data != ComposeFrame(character_, *neutral_).data)
            Warning(name + " ends away from the neutral pose and has neither a return animation nor exits");
    }

    void CheckFrame(const Animation& animation, std::size_t number, const std::string& where)
    {
        const Frame& frame = animation.frames[number];
        int together = 0;
        for (const auto& branch : frame.branches)
            together += branch.probability;
        if (together > 100 || frame.branches.size() > kMostBranches)
            Error(where + " has more than three branches or more than 100 % in them");
        if (!frame.mouths.empty() && &frame != LastShown(animation))
            Warning(where + " has mouths but is not the last visible frame");
        CheckMouths(frame, where);
        CheckPictures(frame, where);
    }

    void CheckPictures(const Frame& frame, const std::string& where)
    {
        for (const auto& image : frame.images) {
            if (character_.images->Decode(image.image).width == 0)
                Error(where + " shows image " + std::to_string(image.image) + ", which is damaged");
        }
    }

    // Beyond the outline of its frame a mouth is cut off.
    void CheckMouths(const Frame& frame, const std::string& where)
    {
        if (frame.mouths.empty())
            return;
        const Pixels base = ComposeFrame(character_, frame);
        for (const auto& overlay : frame.mouths) {
            if (overlay.replacesTopImage)
                continue;
            const Pixels speaking = ComposeFrame(character_, frame, overlay.mouth);
            std::size_t outside = 0;
            for (std::size_t i = 0; i < base.data.size(); ++i)
                outside += base.data[i].alpha == 0 && speaking.data[i].alpha != 0 ? 1 : 0;
            if (outside > 0)
                Warning(where + ": the mouth '" + MouthName(overlay.mouth) + "' reaches " +
                        std::to_string(outside) + " pixels beyond the outline");
        }
    }

    void CheckStandardSet()
    {
        for (const StandardAnimation& standard : kStandardSet) {
            const std::string name = Utf8FromWide(standard.name);
            const Animation* const animation = FindAnimation(character_, standard.name);
            if (!animation)
                Error("the standard animation " + name + " is missing");
            else if (standard.speaks && !Speaks(*animation))
                Error(name + " must have all seven mouths in its last visible frame");
            else if (standard.speaks && !CanBeLeft(*animation))
                Error(name + " must have a return animation or exits");
        }
    }

    const CharacterFile& character_;
    std::vector<Finding> findings_;
    const Frame* neutral_ = nullptr; // how the character stands when it speaks
};

} // namespace

std::vector<Finding> CheckCharacter(const CharacterFile& character) { return Checker(character).Check(); }

} // namespace voxtrel::acsc
