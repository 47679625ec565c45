// Reads an .acs file: signature, four locators, and what they lead to. The description of the character must
// make sense; an animation, image or sound that does not is left out, and the rest of the character lives on.

#include "agent/acs/reader.h"

#include "agent/acs/animation_data.h"
#include "agent/acs/byte_cursor.h"
#include "agent/acs/character_info.h"
#include "agent/acs/file_images.h"
#include "agent/acs/file_source.h"
#include "agent/acs/format.h"

#include <algorithm>
#include <array>
#include <exception>
#include <memory>
#include <optional>
#include <utility>

namespace voxtrel::agent::acs {

namespace {

using Bytes = std::vector<std::uint8_t>;

// Larger files are not characters.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{256} << 20;

// Blocks may be shared, but a file in which many entries lead to the same large block is an attack: beyond
// this many times the size of the file nothing more is read.
constexpr std::size_t kMostReuse = 4;

constexpr std::array<std::uint8_t, 4> kCompoundFileStart{0xD0, 0xCF, 0x11, 0xE0};

ReadOutcome Failed(ErrorCode code, std::wstring words)
{
    ReadOutcome outcome;
    outcome.result = Result::Failure(code, std::move(words));
    return outcome;
}

ReadOutcome Damaged()
{
    return Failed(ErrorCode::DataInvalid,
                  L"The character file is damaged. Please install the character again.");
}

ReadOutcome OutOfMemory()
{
    return Failed(ErrorCode::DataInvalid, L"There is not enough memory to load the character.");
}

struct Header {
    Locator info, animations, images, sounds;
};

// Counts what has been read through locators.
class ReadBudget {
public:
    explicit ReadBudget(std::size_t fileSize) : left_(kMostReuse * fileSize) {}

    bool Take(std::size_t bytes)
    {
        if (bytes > left_)
            return false;
        left_ -= bytes;
        return true;
    }

private:
    std::size_t left_;
};

// Images and sounds: a locator and a checksum each.
std::vector<Locator> ReadDataList(const FileSource& file, const Locator& place)
{
    constexpr std::size_t kEntrySize = 12;
    std::vector<Locator> places;
    const Bytes list = file.Read(place).value_or(Bytes{});
    ByteCursor cursor(list);
    const std::size_t count = cursor.Count(cursor.U32(), kEntrySize);
    places.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        places.push_back(cursor.Place());
        cursor.U32();
    }
    return places;
}

Animation DamagedAnimation()
{
    Animation animation;
    animation.damaged = true;
    return animation;
}

std::vector<Animation> ReadAnimations(const FileSource& file, const Locator& listPlace,
                                      const IndexLimits& limits)
{
    constexpr std::size_t kSmallestEntry = 12;
    std::vector<Animation> animations;
    ReadBudget budget(file.Size());
    const Bytes list = file.Read(listPlace).value_or(Bytes{});
    ByteCursor cursor(list);
    const std::size_t count = cursor.Count(cursor.U32(), kSmallestEntry);
    for (std::size_t i = 0; i < count; ++i) {
        std::wstring name = cursor.Text();
        const Locator place = cursor.Place();
        if (!cursor.Ok())
            break;
        std::optional<Bytes> block;
        if (budget.Take(place.size))
            block = file.Read(place);
        Animation animation = block ? ReadAnimation(*block, limits) : DamagedAnimation();
        // The list has the name as its author wrote it, the animation itself only in capitals.
        if (!name.empty())
            animation.name = std::move(name);
        animations.push_back(std::move(animation));
    }
    return animations;
}

ReadOutcome WrongSignature(const Bytes& start)
{
    const bool compound = start.size() >= kCompoundFileStart.size() &&
                          std::equal(kCompoundFileStart.begin(), kCompoundFileStart.end(), start.begin());
    if (compound)
        return Failed(
            ErrorCode::FileVersionUnsupported,
            L"The character file is of an old kind that is not supported. Only characters of version "
            L"2 can be loaded.");
    return Failed(ErrorCode::NotACharacterFile, L"The file is not a character file.");
}

ReadOutcome ReadCharacter(const std::shared_ptr<const FileSource>& file)
{
    constexpr std::size_t kHeaderSize = 36;
    if (file->Size() > kLargestFile)
        return Failed(ErrorCode::NotACharacterFile, L"The file is too large to be a character file.");
    const auto start = static_cast<std::uint32_t>(std::min(file->Size(), kHeaderSize));
    const Bytes head = file->Read({0, start}).value_or(Bytes{});
    ByteCursor cursor(head);
    if (cursor.U32() != kCharacterSignature)
        return WrongSignature(head);
    Header header;
    for (Locator* place : {&header.info, &header.animations, &header.images, &header.sounds})
        *place = cursor.Place();
    const std::optional<Bytes> info = file->Read(header.info);
    const std::optional<FormatVersion> version = info ? ReadFormatVersion(*info) : std::nullopt;
    if (!cursor.Ok() || !version)
        return Damaged();
    if (version->major > kFormatMajor)
        return Failed(ErrorCode::FileTooNew, L"The character file is of a newer version than can be loaded.");
    if (version->major < kFormatMajor)
        return Failed(ErrorCode::FileVersionUnsupported,
                      L"The character file is of an older version that is not supported.");

    std::optional<CharacterFile> character = ReadCharacterInfo(*file, header.info, *info);
    if (!character)
        return Damaged();
    std::vector<Locator> images = ReadDataList(*file, header.images);
    std::vector<Locator> sounds = ReadDataList(*file, header.sounds);
    character->animations = ReadAnimations(*file, header.animations, {images.size(), sounds.size()});
    character->images = std::make_shared<FileImages>(file, std::move(images));
    character->sounds = std::make_shared<FileWaves>(file, std::move(sounds));
    return {Result::Success(), std::move(*character)};
}

} // namespace

ReadOutcome ReadCharacterFile(std::vector<std::uint8_t> bytes)
{
    try {
        return ReadCharacter(MakeMemorySource(std::move(bytes)));
    } catch (const std::exception&) {
        return OutOfMemory();
    }
}

ReadOutcome LoadCharacterFile(std::wstring_view path)
{
    std::shared_ptr<const FileSource> file;
    try {
        file = OpenFileSource(path);
    } catch (const std::exception&) {
        file = nullptr; // a path that the file system cannot take
    }
    if (file == nullptr)
        return Failed(ErrorCode::FileNotFound,
                      L"The character file \"" + std::wstring(path) + L"\" cannot be found or opened.");
    try {
        return ReadCharacter(file);
    } catch (const std::exception&) {
        return OutOfMemory();
    }
}

} // namespace voxtrel::agent::acs
