#include "tests/agent/acs/sample_characters.h"

#include "agent/acs/file_images.h"
#include "agent/acs/guid.h"
#include "agent/acs/static_palette.h"

#include <random>
#include <string>
#include <utility>

namespace voxtrel::agent::acs::samples {

namespace {

Image Checkered(int width, int height)
{
    Image image{width, height, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.pixels.push_back(static_cast<std::uint8_t>((x + 3 * y) % 7 == 0 ? 10 : 20 + y));
    }
    return image;
}

class Dice {
public:
    explicit Dice(std::uint32_t seed) : engine_(seed) {}

    // From low to high, both included. The engine's own numbers, so that every platform throws the same.
    int Between(int low, int high)
    {
        return low + static_cast<int>(engine_() % static_cast<std::uint32_t>(high - low + 1));
    }
    bool Coin() { return Between(0, 1) == 1; }
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Between(0, 255)); }
    Color AnyColor()
    {
        const std::uint8_t red = Byte(), green = Byte();
        return {red, green, Byte()};
    }

    std::wstring Text(int most)
    {
        static const std::wstring letters = L"AZ09 _-\"\\\n\u00C4\u20AC\u4E2D\U0001F600";
        static const std::vector<std::wstring> characters = [] {
            std::vector<std::wstring> whole;
            for (std::size_t i = 0; i < letters.size(); ++i) {
                const bool pair = letters[i] >= 0xD800 && letters[i] <= 0xDBFF;
                whole.push_back(letters.substr(i, pair ? 2 : 1));
                i += pair ? 1 : 0;
            }
            return whole;
        }();
        std::wstring text;
        for (int i = Between(0, most); i > 0; --i)
            text += characters[static_cast<std::size_t>(Between(0, static_cast<int>(characters.size()) - 1))];
        return text;
    }

    // Not empty, in capitals.
    std::wstring Name(int number) { return L"NAME" + std::to_wstring(number) + Text(5); }

    std::string Guid()
    {
        GuidBytes bytes{};
        for (std::uint8_t& byte : bytes)
            byte = Byte();
        return GuidText(bytes);
    }

private:
    std::mt19937 engine_;
};

Image RandomImage(Dice& dice)
{
    Image image{dice.Between(1, 40), dice.Between(1, 40), {}};
    const bool noisy = dice.Coin();
    std::uint8_t pixel = dice.Byte();
    for (int i = 0; i < image.width * image.height; ++i) {
        if (noisy || dice.Between(0, 9) == 0)
            pixel = dice.Byte();
        image.pixels.push_back(pixel);
    }
    return image;
}

Frame RandomFrame(Dice& dice, int frames, int images, int sounds)
{
    Frame frame;
    for (int i = images > 0 ? dice.Between(0, 3) : 0; i > 0; --i)
        frame.images.push_back({static_cast<std::uint32_t>(dice.Between(0, images - 1)),
                                dice.Between(-300, 300), dice.Between(-32768, 32767)});
    if (sounds > 0 && dice.Coin())
        frame.sound = dice.Between(0, sounds - 1);
    frame.duration = dice.Between(0, 65535);
    if (dice.Coin())
        frame.exitFrame = dice.Between(0, frames - 1);
    for (int i = dice.Between(0, 3); i > 0; --i)
        frame.branches.push_back({dice.Between(0, frames - 1), dice.Between(0, 100)});
    for (int mouth = 0; images > 0 && mouth < dice.Between(0, 7); ++mouth)
        frame.mouths.push_back({static_cast<Mouth>(mouth), dice.Coin(),
                                static_cast<std::uint32_t>(dice.Between(0, images - 1)),
                                dice.Between(-32768, 32767), dice.Between(-9, 9)});
    return frame;
}

BalloonInfo RandomBalloon(Dice& dice)
{
    BalloonInfo balloon;
    balloon.lines = dice.Between(1, 128);
    balloon.charactersPerLine = dice.Between(8, 255);
    balloon.text = dice.AnyColor();
    balloon.background = {255, 255, dice.Byte()};
    balloon.border = dice.AnyColor();
    balloon.fontName = dice.Text(20);
    balloon.fontHeight = dice.Between(-100, 100);
    balloon.fontWeight = dice.Between(0, 1000);
    balloon.italic = dice.Coin();
    balloon.sizeToText = dice.Coin();
    balloon.autoHide = dice.Coin();
    balloon.autoPace = dice.Coin();
    return balloon;
}

std::vector<Image> FillImages(Dice& dice, CharacterFile& character)
{
    std::vector<Image> images;
    for (int i = dice.Between(0, 12); i > 0; --i)
        images.push_back(RandomImage(dice));
    character.images = std::make_shared<MemoryImages>(images);
    std::vector<std::vector<std::uint8_t>> sounds(static_cast<std::size_t>(dice.Between(0, 2)));
    for (std::vector<std::uint8_t>& sound : sounds) {
        for (int bytes = dice.Between(0, 50); bytes > 0; --bytes)
            sound.push_back(dice.Byte());
    }
    character.sounds = std::make_shared<MemoryWaves>(std::move(sounds));
    return images;
}

void FillAnimations(Dice& dice, CharacterFile& character, int images)
{
    const int sounds = static_cast<int>(character.sounds->Count());
    for (int i = dice.Between(0, 6); i > 0; --i) {
        Animation animation;
        animation.name = dice.Name(i);
        animation.transition = static_cast<Transition>(dice.Between(0, 2));
        if (dice.Coin())
            animation.returnAnimation = dice.Name(i);
        const int frames = dice.Between(0, 8);
        for (int frame = 0; frame < frames; ++frame)
            animation.frames.push_back(RandomFrame(dice, frames, images, sounds));
        character.animations.push_back(animation);
    }
    for (int i = dice.Between(0, 4); i > 0; --i) {
        State& state = character.states.emplace_back();
        state.name = dice.Name(i);
        for (int name = dice.Between(0, 4); name > 0; --name)
            state.animations.push_back(dice.Name(name));
    }
}

} // namespace

CharacterFile Small(Voice voice, Balloon balloon)
{
    CharacterFile character;
    character.guid = "{5B9E1C46-2F0D-4C57-9C3B-6B3F1B0E7A11}";
    character.width = 12;
    character.height = 9;
    character.palette = StaticPalette();
    for (std::size_t i = 10; i < 246; ++i)
        character.palette[i] = {static_cast<std::uint8_t>(i), 40, 7};
    character.localized = {{0x0409, L"Sample", L"A character for tests.", L"extra"},
                           {0x0407, L"Muster", L"Eine Testfigur.", L""}};
    if (voice == Voice::Present)
        character.voice = VoiceInfo{"{CA141FD0-AC7F-11D1-97A3-006008273008}",
                                    "{CA141FD0-AC7F-11D1-97A3-006008273000}", 150, 110};
    if (balloon == Balloon::Present)
        character.balloon = BalloonInfo{};
    character.images = std::make_shared<MemoryImages>(
        std::vector<Image>{Checkered(12, 9), Checkered(5, 3), Checkered(3, 2), Checkered(30, 20)});

    Frame speaking{{{1, 2, 3}, {0, 0, 0}}, {}, 10, {}, {}, {}};
    for (int mouth = 0; mouth < 7; ++mouth)
        speaking.mouths.push_back({static_cast<Mouth>(mouth), mouth % 2 == 1, 2, 4, mouth});
    Frame branching{{{3, -4, -2}}, {}, 20, 0, {{0, 30}, {2, 70}}, {}};
    character.animations = {
        {L"RestPose", Transition::None, L"", {speaking}, false},
        {L"Wave", Transition::ReturnAnimation, L"RESTPOSE", {speaking, branching, Frame{}}, false}};
    character.states = {{L"SPEAKING", {L"RestPose"}}, {L"SHOWING", {}}};
    return character;
}

CharacterFile Random(std::uint32_t seed)
{
    Dice dice(seed);
    CharacterFile character;
    character.guid = dice.Guid();
    character.width = dice.Between(1, 300);
    character.height = dice.Between(1, 300);
    character.transparentIndex = dice.Byte();
    character.palette = StaticPalette();
    for (std::size_t i = kStaticColorsAtEachEnd; i < 256 - kStaticColorsAtEachEnd; ++i)
        character.palette[i] = dice.AnyColor();
    character.standardAnimationSet = dice.Coin();
    for (int i = dice.Between(0, 3); i > 0; --i) {
        LocalizedInfo& info = character.localized.emplace_back();
        info.language = static_cast<std::uint16_t>(dice.Between(0, 0xFFFF));
        info.name = dice.Text(32);
        info.description = dice.Text(256);
        info.extraData = dice.Text(9);
    }
    if (dice.Coin()) {
        VoiceInfo& voice = character.voice.emplace();
        voice.engineId = dice.Guid();
        voice.modeId = dice.Guid();
        voice.speed = static_cast<std::uint32_t>(dice.Between(0, 400));
        voice.pitch = static_cast<std::uint16_t>(dice.Between(0, 0xFFFF));
        if (dice.Coin())
            voice.traits = {static_cast<std::uint16_t>(dice.Between(0, 0xFFFF)), dice.Text(9), 2, 30,
                            dice.Text(9)};
    }
    if (dice.Coin())
        character.balloon = RandomBalloon(dice);
    character.animationSet = {2, static_cast<std::uint16_t>(dice.Between(0, 9))};
    if (dice.Coin())
        character.trayIcon = {std::vector<std::uint8_t>(112, dice.Byte()),
                              std::vector<std::uint8_t>(232, dice.Byte())};
    const std::vector<Image> images = FillImages(dice, character);
    FillAnimations(dice, character, static_cast<int>(images.size()));
    return character;
}

std::vector<std::vector<std::uint8_t>> Sounds(const CharacterFile& character)
{
    std::vector<std::vector<std::uint8_t>> sounds;
    for (std::size_t i = 0; character.sounds && i < character.sounds->Count(); ++i)
        sounds.push_back(character.sounds->Read(i));
    return sounds;
}

std::vector<Image> Images(const CharacterFile& character)
{
    std::vector<Image> images;
    for (std::size_t i = 0; i < character.images->Count(); ++i)
        images.push_back(character.images->Decode(i));
    return images;
}

} // namespace voxtrel::agent::acs::samples
