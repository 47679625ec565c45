// From sources to a character: every stance is drawn once, the pictures get one palette, are cropped and
// stored once each, and the frames refer to them.

#include "tools/acsc/compiler.h"

#include "agent/acs/file_images.h"
#include "tools/acsc/pixels.h"
#include "tools/acsc/quantizer.h"
#include "tools/acsc/renderer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace voxtrel::acsc {

namespace {

using agent::acs::Animation;
using agent::acs::CharacterFile;
using agent::acs::Frame;
using agent::acs::Image;
using agent::acs::Mouth;

// Mouths name their image by 16 bits.
constexpr std::size_t kMostImages = 0xFFFF;
constexpr const char* kSourceFile = "character.txt";

std::optional<std::vector<std::uint8_t>> ReadWhole(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream || std::filesystem::is_directory(path))
        return std::nullopt;
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(stream), {});
}

std::vector<std::uint8_t> ReadSound(const std::filesystem::path& folder, const std::string& file)
{
    constexpr std::array<std::uint8_t, 4> kRiff{'R', 'I', 'F', 'F'};
    auto bytes = ReadWhole(folder / file);
    if (!bytes)
        throw SourceError(0, "the sound '" + file + "' cannot be read");
    if (bytes->size() < kRiff.size() || !std::equal(kRiff.begin(), kRiff.end(), bytes->begin()))
        throw SourceError(0, "the sound '" + file + "' is no WAV file");
    return std::move(*bytes);
}

// A picture with its surroundings cut off.
struct Drawn {
    Pixels pixels; // empty when nothing is to be seen
    int x = 0;     // of the left-top corner, from the frame's
    int y = 0;
};

using SevenMouths = std::array<Drawn, 7>;

class Compiler {
public:
    Compiler(const CharacterSource& source, const std::filesystem::path& folder)
        : source_(source), renderer_(source, folder)
    {
    }

    CharacterFile Compile()
    {
        for (const SourceAnimation& animation : source_.animations) {
            for (const SourceFrame& frame : animation.frames)
                DrawFrame(frame);
        }
        CharacterFile character;
        character.palette = MakePalette(colors_);
        PaletteMapper mapper(character.palette);
        mapper_ = &mapper;
        for (const SourceAnimation& animation : source_.animations)
            character.animations.push_back(MakeAnimation(animation));
        character.images = std::make_shared<agent::acs::MemoryImages>(std::move(images_));

        character.guid = source_.guid;
        character.width = source_.width * source_.detail;
        character.height = source_.height * source_.detail;
        character.transparentIndex = kTransparentIndex;
        character.standardAnimationSet = source_.standardAnimationSet;
        character.localized = source_.localized;
        character.voice = source_.voice;
        character.balloon = source_.balloon;
        character.states = source_.states;
        return character;
    }

private:
    using MouthKey = std::pair<Stance, int>; // with the mouth set

    void DrawFrame(const SourceFrame& frame)
    {
        for (const Layer& layer : frame.layers) {
            if (drawn_.contains(layer.stance))
                continue;
            const Pixels whole = renderer_.Draw(layer.stance);
            const Box box = ContentBox(whole);
            const auto at = drawn_.emplace(layer.stance, Drawn{Crop(whole, box), box.left, box.top}).first;
            colors_.Add(at->second.pixels);
        }
        if (!frame.mouths)
            return;
        const MouthKey key{frame.layers.front().stance, *frame.mouths};
        if (!mouths_.contains(key))
            mouths_.emplace(key, DrawMouths(key, frame.line));
    }

    // The seven mouths in the rectangle that any of them changes.
    SevenMouths DrawMouths(const MouthKey& key, int line)
    {
        const MouthSet& set = source_.mouthSets[static_cast<std::size_t>(key.second)];
        const Pixels closed = renderer_.Draw(key.first);
        std::vector<Pixels> speaking;
        Box changed;
        for (const PoseSettings& mouth : set.mouths) {
            speaking.push_back(renderer_.Draw(Speaking(key.first, mouth)));
            changed.Include(DifferenceBox(closed, speaking.back()));
        }
        if (changed.Empty())
            throw SourceError(line, "the mouths '" + set.name + "' change nothing in this pose");
        SevenMouths mouths;
        for (std::size_t i = 0; i < mouths.size(); ++i) {
            mouths[i] = {Crop(speaking[i], changed), changed.left, changed.top};
            colors_.Add(mouths[i].pixels);
        }
        return mouths;
    }

    // The stance with what the mouth sets put over it.
    static Stance Speaking(Stance stance, const PoseSettings& mouth)
    {
        for (const auto& [part, settings] : mouth.parts)
            stance.Apply(part, settings);
        return stance;
    }

    Animation MakeAnimation(const SourceAnimation& from)
    {
        Animation animation{from.name, from.transition, from.returnAnimation, {}, false};
        for (const SourceFrame& frame : from.frames)
            animation.frames.push_back(MakeFrame(frame));
        return animation;
    }

    Frame MakeFrame(const SourceFrame& from)
    {
        Frame frame;
        frame.sound = from.sound;
        frame.duration = from.duration;
        frame.exitFrame = from.exitFrame;
        frame.branches = from.branches;
        // In a file the topmost comes first.
        for (auto layer = from.layers.rbegin(); layer != from.layers.rend(); ++layer) {
            const Drawn& drawn = drawn_.at(layer->stance);
            if (!drawn.pixels.data.empty())
                frame.images.push_back({Store(drawn.pixels), drawn.x + layer->x * source_.detail,
                                        drawn.y + layer->y * source_.detail});
        }
        if (!from.mouths)
            return frame;
        const Layer& speaker = from.layers.front();
        const SevenMouths& mouths = mouths_.at({speaker.stance, *from.mouths});
        for (std::size_t i = 0; i < mouths.size(); ++i)
            frame.mouths.push_back({static_cast<Mouth>(i), false, Store(mouths[i].pixels),
                                    mouths[i].x + speaker.x * source_.detail,
                                    mouths[i].y + speaker.y * source_.detail});
        return frame;
    }

    // The number of the image with these pixels, which is stored unless there is one already.
    std::uint32_t Store(const Pixels& pixels)
    {
        Image image = mapper_->Map(pixels);
        const auto next = static_cast<std::uint32_t>(images_.size());
        const auto [at, added] = stored_.emplace(std::pair(image.width, image.pixels), next);
        if (added)
            images_.push_back(std::move(image));
        if (images_.size() > kMostImages)
            throw SourceError(0,
                              "there are more than " + std::to_string(kMostImages) + " different pictures");
        return at->second;
    }

    const CharacterSource& source_;
    Renderer renderer_;
    std::map<Stance, Drawn> drawn_;
    std::map<MouthKey, SevenMouths> mouths_;
    ColorCount colors_;
    PaletteMapper* mapper_ = nullptr;
    std::vector<Image> images_;
    std::map<std::pair<int, std::vector<std::uint8_t>>, std::uint32_t>
        stored_; // width and pixels, to the number
};

} // namespace

std::variant<CharacterFile, CompileError> CompileCharacter(const std::filesystem::path& folder)
{
    const std::string file = (folder / kSourceFile).string();
    const auto text = ReadWhole(folder / kSourceFile);
    if (!text)
        return CompileError{file + ": cannot be read"};
    try {
        const CharacterSource source =
            ParseCharacterSource({reinterpret_cast<const char*>(text->data()), text->size()});
        CharacterFile character = Compiler(source, folder).Compile();
        std::vector<std::vector<std::uint8_t>> sounds;
        for (const std::string& name : source.usedSounds) {
            const SoundSource* sound = FindSound(source, name);
            sounds.push_back(sound ? RenderSound(*sound) : ReadSound(folder, name));
        }
        character.sounds = std::make_shared<agent::acs::MemoryWaves>(std::move(sounds));
        return character;
    } catch (const SourceError& error) {
        const std::string line = error.Line() > 0 ? ":" + std::to_string(error.Line()) : "";
        return CompileError{file + line + ": " + error.what()};
    }
}

} // namespace voxtrel::acsc
