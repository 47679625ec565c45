// Writes a character as an .acs file: header, then the data of animations, images and sounds, then the lists
// that lead to them, and the description of the character last.

#include "agent/acs/writer.h"

#include "agent/acs/byte_cursor.h"
#include "agent/acs/compression.h"
#include "agent/acs/format.h"
#include "agent/acs/guid.h"
#include "agent/acs/names.h"
#include "agent/acs/unicode.h"

#include <algorithm>
#include <concepts>
#include <limits>
#include <span>
#include <string_view>

namespace voxtrel::agent::acs {

namespace {

class ByteSink {
public:
    explicit ByteSink(std::vector<std::uint8_t>& bytes) : bytes_(bytes) {}

    std::uint32_t Position() const { return static_cast<std::uint32_t>(bytes_.size()); }

    // What has been written since start.
    Locator Since(std::uint32_t start) const { return {start, Position() - start}; }

    void U8(std::uint8_t value) { bytes_.push_back(value); }
    void U16(std::uint16_t value) { Integer(value); }
    void U32(std::uint32_t value) { Integer(value); }
    void I16(int value) { Integer(static_cast<std::uint16_t>(static_cast<std::int16_t>(value))); }
    void I32(int value) { Integer(static_cast<std::uint32_t>(value)); }
    void Bool(bool value) { U8(value ? 1 : 0); }

    void Bytes(std::span<const std::uint8_t> bytes)
    {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    }

    void To(const Locator& locator)
    {
        U32(locator.offset);
        U32(locator.size);
    }

    void Text(std::wstring_view text)
    {
        const std::u16string units = Utf16FromWide(text);
        U32(static_cast<std::uint32_t>(units.size()));
        if (units.empty())
            return;
        for (const char16_t unit : units)
            U16(unit);
        U16(0);
    }

    // Writes all zeros for a text that is no GUID.
    void Guid(std::string_view text) { Bytes(ParseGuid(text).value_or(GuidBytes{})); }

    void ColorBytes(const Color& color)
    {
        U8(color.blue);
        U8(color.green);
        U8(color.red);
        U8(0);
    }

    // A count of the type Count, then that many items; items that the count cannot tell of are left out.
    template <std::unsigned_integral Count, typename Items, typename WriteItem>
    void List(const Items& items, WriteItem writeItem)
    {
        const std::size_t count = std::min<std::size_t>(items.size(), std::numeric_limits<Count>::max());
        Integer(static_cast<Count>(count));
        for (std::size_t i = 0; i < count; ++i)
            writeItem(items[i]);
    }

private:
    template <std::unsigned_integral T> void Integer(T value)
    {
        for (std::size_t i = 0; i < sizeof(T); ++i)
            bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }

    std::vector<std::uint8_t>& bytes_;
};

std::vector<std::uint8_t> BottomUpRows(const Image& image)
{
    const std::size_t stride = RowStride(image.width);
    std::vector<std::uint8_t> rows(stride * static_cast<std::size_t>(image.height), 0);
    for (int y = 0; y < image.height; ++y) {
        const auto from = image.pixels.begin() + static_cast<std::ptrdiff_t>(y) * image.width;
        std::copy_n(from, image.width,
                    rows.begin() + static_cast<std::ptrdiff_t>(stride) * (image.height - 1 - y));
    }
    return rows;
}

void WriteRectangle(ByteSink& sink, int width, int height)
{
    sink.I32(0);
    sink.I32(0);
    sink.I32(width);
    sink.I32(height);
}

// The whole picture as a region of one rectangle: the outline is found from the pixels.
void WriteRegion(ByteSink& sink, const Image& image)
{
    constexpr std::uint32_t kHeader = 32, kRectangles = 1, kRectangle = 16;
    sink.U32(0); // stored as it is
    sink.U32(kHeader + kRectangle);
    sink.U32(kHeader);
    sink.U32(kRectangles);
    sink.U32(1);
    sink.U32(kRectangle);
    WriteRectangle(sink, image.width, image.height);
    WriteRectangle(sink, image.width, image.height);
}

Locator WriteImage(ByteSink& sink, const Image& image)
{
    const std::uint32_t start = sink.Position();
    std::vector<std::uint8_t> rows = BottomUpRows(image);
    const std::vector<std::uint8_t> packed = Compress(rows);
    const bool compressed = packed.size() < rows.size();
    const std::vector<std::uint8_t>& stored = compressed ? packed : rows;
    sink.U8(0);
    sink.U16(static_cast<std::uint16_t>(image.width));
    sink.U16(static_cast<std::uint16_t>(image.height));
    sink.Bool(compressed);
    sink.U32(static_cast<std::uint32_t>(stored.size()));
    sink.Bytes(stored);
    WriteRegion(sink, image);
    return sink.Since(start);
}

// The image, or an empty one if its pixels do not fit its size.
Image SoundImage(const ImageSource& images, std::size_t index)
{
    Image image = images.Decode(index);
    const bool sound =
        image.width > 0 && image.height > 0 && image.width <= kLargestImageSide &&
        image.height <= kLargestImageSide &&
        image.pixels.size() == static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    return sound ? image : Image{};
}

class CharacterWriter {
public:
    CharacterWriter(const CharacterFile& character, std::vector<std::uint8_t>& bytes)
        : character_(character), sink_(bytes)
    {
    }

    void WriteAll()
    {
        constexpr std::size_t kHeaderSize = 36;
        sink_.Bytes(std::vector<std::uint8_t>(kHeaderSize, 0));
        WriteImages();
        WriteAnimations();
        WriteSounds();
        WriteLocalized();
        WriteCharacter();
    }

    std::vector<std::uint8_t> Header() const
    {
        std::vector<std::uint8_t> header;
        ByteSink sink(header);
        sink.U32(kCharacterSignature);
        for (const Locator& list : {characterInfo_, animationList_, imageList_, soundList_})
            sink.To(list);
        return header;
    }

private:
    struct Size {
        int width = 0;
        int height = 0;
    };

    void WriteImages()
    {
        std::vector<Locator> places;
        const std::size_t count = character_.images ? character_.images->Count() : 0;
        for (std::size_t i = 0; i < count; ++i) {
            const Image image = SoundImage(*character_.images, i);
            sizes_.push_back({image.width, image.height});
            places.push_back(WriteImage(sink_, image));
        }
        imageList_ = WriteDataList(places);
    }

    void WriteSounds()
    {
        std::vector<Locator> places;
        const std::size_t count = character_.sounds ? character_.sounds->Count() : 0;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t start = sink_.Position();
            sink_.Bytes(character_.sounds->Read(i));
            places.push_back(sink_.Since(start));
        }
        soundList_ = WriteDataList(places);
    }

    // Images and sounds: a locator and a checksum each, which nobody verifies.
    Locator WriteDataList(const std::vector<Locator>& places)
    {
        const std::uint32_t start = sink_.Position();
        sink_.List<std::uint32_t>(places, [&](const Locator& place) {
            sink_.To(place);
            sink_.U32(0);
        });
        return sink_.Since(start);
    }

    void WriteAnimations()
    {
        std::vector<Locator> places;
        for (const Animation& animation : character_.animations) {
            const std::uint32_t start = sink_.Position();
            WriteAnimation(animation);
            places.push_back(sink_.Since(start));
        }
        const std::uint32_t start = sink_.Position();
        sink_.U32(static_cast<std::uint32_t>(places.size()));
        for (std::size_t i = 0; i < places.size(); ++i) {
            sink_.Text(character_.animations[i].name);
            sink_.To(places[i]);
        }
        animationList_ = sink_.Since(start);
    }

    void WriteAnimation(const Animation& animation)
    {
        sink_.Text(UpperCase(animation.name));
        sink_.U8(static_cast<std::uint8_t>(animation.transition));
        sink_.Text(UpperCase(animation.returnAnimation));
        sink_.List<std::uint16_t>(animation.frames, [&](const Frame& frame) { WriteFrame(frame); });
    }

    void WriteFrame(const Frame& frame)
    {
        sink_.List<std::uint16_t>(frame.images, [&](const FrameImage& image) {
            sink_.U32(image.image);
            sink_.I16(image.x);
            sink_.I16(image.y);
        });
        sink_.U16(frame.sound ? static_cast<std::uint16_t>(*frame.sound) : kNoSound);
        sink_.U16(static_cast<std::uint16_t>(frame.duration));
        sink_.I16(frame.exitFrame.value_or(-1));
        sink_.List<std::uint8_t>(frame.branches, [&](const Branch& branch) {
            sink_.U16(static_cast<std::uint16_t>(branch.target));
            sink_.U16(static_cast<std::uint16_t>(branch.probability));
        });
        sink_.List<std::uint8_t>(frame.mouths, [&](const MouthOverlay& mouth) { WriteMouth(mouth); });
    }

    void WriteMouth(const MouthOverlay& mouth)
    {
        const Size size = mouth.image < sizes_.size() ? sizes_[mouth.image] : Size{};
        sink_.U8(static_cast<std::uint8_t>(mouth.mouth));
        sink_.Bool(mouth.replacesTopImage);
        sink_.U16(static_cast<std::uint16_t>(mouth.image));
        sink_.U8(0);
        sink_.Bool(false); // no region follows
        sink_.I16(mouth.x);
        sink_.I16(mouth.y);
        // Files hold half the size here.
        sink_.U16(static_cast<std::uint16_t>(size.width / 2));
        sink_.U16(static_cast<std::uint16_t>(size.height / 2));
    }

    void WriteLocalized()
    {
        const std::uint32_t start = sink_.Position();
        sink_.List<std::uint16_t>(character_.localized, [&](const LocalizedInfo& info) {
            sink_.U16(info.language);
            sink_.Text(info.name);
            sink_.Text(info.description);
            sink_.Text(info.extraData);
        });
        localizedList_ = sink_.Since(start);
    }

    void WriteCharacter()
    {
        const std::uint32_t start = sink_.Position();
        sink_.U16(kFormatMinor);
        sink_.U16(kFormatMajor);
        sink_.To(localizedList_);
        sink_.Guid(character_.guid);
        sink_.U16(static_cast<std::uint16_t>(character_.width));
        sink_.U16(static_cast<std::uint16_t>(character_.height));
        sink_.U8(character_.transparentIndex);
        sink_.U32(Flags());
        sink_.U16(character_.animationSet.major);
        sink_.U16(character_.animationSet.minor);
        if (character_.voice)
            WriteVoice(*character_.voice);
        if (character_.balloon)
            WriteBalloon(*character_.balloon);
        sink_.U32(kPaletteSize);
        for (const Color& color : character_.palette)
            sink_.ColorBytes(color);
        WriteTrayIcon();
        sink_.List<std::uint16_t>(character_.states, [&](const State& state) {
            sink_.Text(UpperCase(state.name));
            sink_.List<std::uint16_t>(state.animations, [&](const std::wstring& name) { sink_.Text(name); });
        });
        characterInfo_ = sink_.Since(start);
    }

    std::uint32_t Flags() const
    {
        std::uint32_t flags = character_.voice ? kFlagVoice | kFlagSpokenVoice : 0;
        if (const auto& balloon = character_.balloon) {
            flags |= kFlagBalloonOn;
            flags |= balloon->sizeToText ? kFlagSizeToText : 0;
            flags |= balloon->autoHide ? 0 : kFlagAutoHideOff;
            flags |= balloon->autoPace ? 0 : kFlagAutoPaceOff;
        } else {
            flags |= kFlagBalloonOff;
        }
        return flags | (character_.standardAnimationSet ? kFlagStandardSet : 0);
    }

    void WriteVoice(const VoiceInfo& voice)
    {
        sink_.Guid(voice.engineId);
        sink_.Guid(voice.modeId);
        sink_.U32(voice.speed);
        sink_.U16(voice.pitch);
        sink_.Bool(voice.traits.has_value());
        if (!voice.traits)
            return;
        sink_.U16(voice.traits->language);
        sink_.Text(voice.traits->dialect);
        sink_.U16(voice.traits->gender);
        sink_.U16(voice.traits->age);
        sink_.Text(voice.traits->style);
    }

    void WriteTrayIcon()
    {
        sink_.Bool(character_.trayIcon.has_value());
        if (!character_.trayIcon)
            return;
        for (const auto* picture : {&character_.trayIcon->mask, &character_.trayIcon->colors}) {
            sink_.U32(static_cast<std::uint32_t>(picture->size()));
            sink_.Bytes(*picture);
        }
    }

    void WriteBalloon(const BalloonInfo& balloon)
    {
        sink_.U8(static_cast<std::uint8_t>(balloon.lines));
        sink_.U8(static_cast<std::uint8_t>(balloon.charactersPerLine));
        for (const Color& color : {balloon.text, balloon.background, balloon.border})
            sink_.ColorBytes(color);
        sink_.Text(balloon.fontName);
        sink_.I32(balloon.fontHeight);
        sink_.I32(balloon.fontWeight);
        sink_.Bool(balloon.italic);
        sink_.U8(0);
    }

    const CharacterFile& character_;
    ByteSink sink_;
    std::vector<Size> sizes_; // of the images
    Locator characterInfo_, animationList_, imageList_, soundList_, localizedList_;
};

} // namespace

std::vector<std::uint8_t> WriteCharacterFile(const CharacterFile& character)
{
    std::vector<std::uint8_t> bytes;
    CharacterWriter writer(character, bytes);
    writer.WriteAll();
    const std::vector<std::uint8_t> header = writer.Header();
    std::copy(header.begin(), header.end(), bytes.begin());
    return bytes;
}

} // namespace voxtrel::agent::acs
