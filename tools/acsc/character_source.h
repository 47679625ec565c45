#pragma once

#include "agent/acs/character_file.h"
#include "tools/acsc/puppet.h"
#include "tools/acsc/sound_source.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A character as its author wrote it down, with every convenience already worked out: tweens, repeats and
// ranges have become frames, labels have become frame numbers.
namespace voxtrel::acsc {

struct Layer {
    Stance stance;
    int x = 0;
    int y = 0;
    friend auto operator<=>(const Layer&, const Layer&) = default;
};

struct SourceFrame {
    std::vector<Layer> layers; // lowest first; none for an empty frame
    int duration = 10;         // hundredths of a second
    std::optional<int> mouths; // index of the mouth set
    std::optional<int> exitFrame;
    std::vector<agent::acs::Branch> branches;
    std::optional<int> sound; // index into the used sounds
    int line = 0;
};

struct SourceAnimation {
    std::wstring name;
    agent::acs::Transition transition = agent::acs::Transition::None;
    std::wstring returnAnimation;
    std::vector<SourceFrame> frames;
    int line = 0;
};

struct MouthSet {
    std::string name;
    std::array<PoseSettings, 7> mouths; // by agent::acs::Mouth
};

struct CharacterSource {
    std::string guid;
    int width = 0; // of a frame, in the units of everything here
    int height = 0;
    int detail = 1; // pixels to a unit
    bool standardAnimationSet = false;
    std::vector<std::string> drawings;   // file names in the folder of the source
    std::vector<SoundSource> sounds;     // those written down as tones
    std::vector<std::string> usedSounds; // names of such, or of files in the folder of the source
    std::vector<agent::acs::LocalizedInfo> localized;
    std::optional<agent::acs::VoiceInfo> voice;
    std::optional<agent::acs::BalloonInfo> balloon;
    std::vector<Part> parts;
    std::vector<MouthSet> mouthSets;
    std::vector<SourceAnimation> animations;
    std::vector<agent::acs::State> states;
};

// The sound of this name that is written down as tones, or null.
const SoundSource* FindSound(const CharacterSource& source, std::string_view name);

// Reads the text of character.txt. Throws SourceError.
CharacterSource ParseCharacterSource(std::string_view text);

} // namespace voxtrel::acsc
