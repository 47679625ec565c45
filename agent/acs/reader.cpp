// Reads an .acs file: signature, four locators, and what they lead to. The description of the character must
// make sense; an animation, image or sound that does not is left out, and the rest of the character lives on.

#include "agent/acs/reader.h"

#include "agent/acs/animation_data.h"
#include "agent/acs/byte_cursor.h"
#include "agent/acs/character_info.h"
#include "agent/acs/file_images.h"
#include "agent/acs/format.h"
#include "agent/acs/unicode.h"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <system_error>
#include <utility>

namespace voxtrel::agent::acs {

namespace {

using FileBytes = std::span<const std::uint8_t>;

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
std::vector<Locator> ReadDataList(FileBytes file, const Locator& block)
{
    constexpr std::size_t kEntrySize = 12;
    std::vector<Locator> places;
    ByteCursor cursor(file, block);
    const std::size_t count = cursor.Count(cursor.U32(), kEntrySize);
    places.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        places.push_back(cursor.Place());
        cursor.U32();
    }
    return places;
}

std::vector<std::vector<std::uint8_t>> ReadSounds(FileBytes file, const std::vector<Locator>& places)
{
    std::vector<std::vector<std::uint8_t>> sounds;
    ReadBudget budget(file.size());
    for (const Locator& place : places) {
        std::vector<std::uint8_t>& sound = sounds.emplace_back();
        if (!budget.Take(place.size))
            continue;
        ByteCursor cursor(file, place);
        const FileBytes bytes = cursor.Bytes(place.size);
        sound.assign(bytes.begin(), bytes.end());
    }
    return sounds;
}

std::vector<Animation> ReadAnimations(FileBytes file, const Locator& block, const IndexLimits& limits)
{
    constexpr std::size_t kSmallestEntry = 12;
    std::vector<Animation> animations;
    ReadBudget budget(file.size());
    ByteCursor cursor(file, block);
    const std::size_t count = cursor.Count(cursor.U32(), kSmallestEntry);
    for (std::size_t i = 0; i < count; ++i) {
        std::wstring name = cursor.Text();
        const Locator place = cursor.Place();
        if (!cursor.Ok())
            break;
        Animation animation;
        if (budget.Take(place.size))
            animation = ReadAnimation(file, place, limits);
        else
            animation.damaged = true;
        // The list has the name as its author wrote it, the animation itself only in capitals.
        if (!name.empty())
            animation.name = std::move(name);
        animations.push_back(std::move(animation));
    }
    return animations;
}

ReadOutcome WrongSignature(FileBytes file)
{
    const bool compound = file.size() >= kCompoundFileStart.size() &&
                          std::equal(kCompoundFileStart.begin(), kCompoundFileStart.end(), file.begin());
    if (compound)
        return Failed(
            ErrorCode::FileVersionUnsupported,
            L"The character file is of an old kind that is not supported. Only characters of version "
            L"2 can be loaded.");
    return Failed(ErrorCode::NotACharacterFile, L"The file is not a character file.");
}

ReadOutcome ReadBytes(std::vector<std::uint8_t> bytes)
{
    const auto file = std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes));
    ByteCursor cursor(*file, 0, file->size());
    if (cursor.U32() != kCharacterSignature)
        return WrongSignature(*file);
    Header header;
    for (Locator* place : {&header.info, &header.animations, &header.images, &header.sounds})
        *place = cursor.Place();
    const std::optional<FormatVersion> version = ReadFormatVersion(*file, header.info);
    if (!cursor.Ok() || !version)
        return Damaged();
    if (version->major > kFormatMajor)
        return Failed(ErrorCode::FileTooNew, L"The character file is of a newer version than can be loaded.");
    if (version->major < kFormatMajor)
        return Failed(ErrorCode::FileVersionUnsupported,
                      L"The character file is of an older version that is not supported.");

    std::optional<CharacterFile> character = ReadCharacterInfo(*file, header.info);
    if (!character)
        return Damaged();
    character->sounds = ReadSounds(*file, ReadDataList(*file, header.sounds));
    std::vector<Locator> images = ReadDataList(*file, header.images);
    character->animations =
        ReadAnimations(*file, header.animations, {images.size(), character->sounds.size()});
    character->images = std::make_shared<FileImages>(file, std::move(images));
    return {Result::Success(), std::move(*character)};
}

} // namespace

ReadOutcome ReadCharacterFile(std::vector<std::uint8_t> bytes)
{
    try {
        return ReadBytes(std::move(bytes));
    } catch (const std::exception&) {
        return Failed(ErrorCode::DataInvalid, L"There is not enough memory to load the character.");
    }
}

ReadOutcome LoadCharacterFile(std::wstring_view path)
{
    try {
        const std::filesystem::path place = PathFromWide(path);
        std::error_code error;
        const std::uintmax_t size = std::filesystem::file_size(place, error);
        std::ifstream stream(place, std::ios::binary);
        if (error || !stream)
            return Failed(ErrorCode::FileNotFound,
                          L"The character file \"" + std::wstring(path) + L"\" cannot be found or opened.");
        if (size > kLargestFile)
            return Failed(ErrorCode::NotACharacterFile, L"The file is too large to be a character file.");
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
        stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        bytes.resize(static_cast<std::size_t>(stream.gcount()));
        return ReadCharacterFile(std::move(bytes));
    } catch (const std::exception&) {
        return Failed(ErrorCode::FileNotFound,
                      L"The character file \"" + std::wstring(path) + L"\" cannot be opened.");
    }
}

} // namespace voxtrel::agent::acs
