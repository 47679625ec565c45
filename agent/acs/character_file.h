#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// A character as its file holds it: images, animations made of them, the states they serve, and the look of
// its balloon. Plain data; reader.h and writer.h bring it from and to the bytes of an .acs file.
namespace voxtrel::agent::acs {

struct Color {
    std::uint8_t red = 0, green = 0, blue = 0;
    friend bool operator==(const Color&, const Color&) = default;
};

// Palette indexes, rows from the top, without padding.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
    friend bool operator==(const Image&, const Image&) = default;
};

struct FrameImage {
    std::uint32_t image = 0; // index into the images
    int x = 0;               // of the image's top-left corner from the frame's, pixels; may be negative
    int y = 0;
    friend bool operator==(const FrameImage&, const FrameImage&) = default;
};

struct Branch {
    int target = 0;      // frame, from 0
    int probability = 0; // percent
    friend bool operator==(const Branch&, const Branch&) = default;
};

// The seven mouths, numbered as in the file.
enum class Mouth : std::uint8_t {
    Closed = 0,
    Slight = 1,
    Partly = 2,
    Open = 3,
    Fully = 4,
    Medium = 5,
    Narrow = 6
};

struct MouthOverlay {
    Mouth mouth = Mouth::Closed;
    bool replacesTopImage = false;
    std::uint32_t image = 0;
    int x = 0;
    int y = 0;
    friend bool operator==(const MouthOverlay&, const MouthOverlay&) = default;
};

struct Frame {
    std::vector<FrameImage> images; // the first is the topmost
    std::optional<int> sound;       // index into the sounds
    int duration = 0;               // hundredths of a second
    std::optional<int> exitFrame;   // frame to go to when the animation is left
    std::vector<Branch> branches;
    std::vector<MouthOverlay> mouths;
    friend bool operator==(const Frame&, const Frame&) = default;
};

enum class Transition : std::uint8_t { ReturnAnimation = 0, ExitBranches = 1, None = 2 };

struct Animation {
    std::wstring name;
    Transition transition = Transition::None;
    std::wstring returnAnimation;
    std::vector<Frame> frames;
    bool damaged = false; // its block could not be read; playing it fails
    friend bool operator==(const Animation&, const Animation&) = default;
};

struct State {
    std::wstring name;
    std::vector<std::wstring> animations;
    friend bool operator==(const State&, const State&) = default;
};

struct LocalizedInfo {
    std::uint16_t language = 0x0409;
    std::wstring name;
    std::wstring description;
    std::wstring extraData;
    friend bool operator==(const LocalizedInfo&, const LocalizedInfo&) = default;
};

// What kind of speaker the character has; this program chooses its voices by the mode alone.
struct VoiceTraits {
    std::uint16_t language = 0x0409;
    std::wstring dialect;
    std::uint16_t gender = 0; // 0 neutral, 1 female, 2 male
    std::uint16_t age = 0;    // years
    std::wstring style;
    friend bool operator==(const VoiceTraits&, const VoiceTraits&) = default;
};

struct VoiceInfo {
    std::string engineId; // GUIDs as text in braces, upper case
    std::string modeId;
    std::uint32_t speed = 0; // words per minute
    std::uint16_t pitch = 0; // Hz; 0xFFFF for the engine's default
    std::optional<VoiceTraits> traits = {};
    friend bool operator==(const VoiceInfo&, const VoiceInfo&) = default;
};

struct BalloonInfo {
    int lines = 2;
    int charactersPerLine = 28;
    Color text{0, 0, 0};
    Color background{255, 255, 225};
    Color border{0, 0, 0};
    std::wstring fontName = L"Arial";
    int fontHeight = -13; // logical units: negative for the character height in pixels
    int fontWeight = 400;
    bool italic = false;
    bool sizeToText = false;
    bool autoHide = true;
    bool autoPace = true;
    friend bool operator==(const BalloonInfo&, const BalloonInfo&) = default;
};

// Two pictures in the form of a bitmap file without its first header: what is cut out, and what is put there.
struct TrayIcon {
    std::vector<std::uint8_t> mask;
    std::vector<std::uint8_t> colors;
    friend bool operator==(const TrayIcon&, const TrayIcon&) = default;
};

struct AnimationSetVersion {
    std::uint16_t major = 2;
    std::uint16_t minor = 0;
    friend bool operator==(const AnimationSetVersion&, const AnimationSetVersion&) = default;
};

// Gives the images of a file one at a time, so that a file with a thousand of them costs only what is shown.
class ImageSource {
public:
    virtual ~ImageSource() = default;
    virtual std::size_t Count() const = 0;
    // Empty (width 0) when the image is damaged.
    virtual Image Decode(std::size_t index) const = 0;
};

// Likewise its sounds: whole RIFF files.
class WaveSource {
public:
    virtual ~WaveSource() = default;
    virtual std::size_t Count() const = 0;
    // Empty when the sound is damaged.
    virtual std::vector<std::uint8_t> Read(std::size_t index) const = 0;
};

struct CharacterFile {
    std::string guid; // in braces, upper case
    int width = 0;    // of a frame, pixels
    int height = 0;
    std::uint8_t transparentIndex = 10;
    std::array<Color, 256> palette{};
    bool standardAnimationSet = false;
    AnimationSetVersion animationSet;
    std::vector<LocalizedInfo> localized;
    std::optional<VoiceInfo> voice;
    std::optional<BalloonInfo> balloon; // nothing: the character was made without one
    std::optional<TrayIcon> trayIcon;
    std::vector<State> states;
    std::vector<Animation> animations;
    std::shared_ptr<const ImageSource> images; // null for none, like the sounds
    std::shared_ptr<const WaveSource> sounds;
};

} // namespace voxtrel::agent::acs
