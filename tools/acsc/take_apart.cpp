#include "tools/acsc/take_apart.h"

#include "agent/acs/file_images.h"
#include "tools/acsc/frames_text.h"
#include "tools/acsc/png_file.h"
#include "tools/acsc/statement.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace voxtrel::acsc {

namespace {

using agent::acs::CharacterFile;
using agent::acs::Image;

constexpr const char* kFramesFile = "frames.txt";
constexpr const char* kTrayMaskFile = "tray-mask.dib";
constexpr const char* kTrayColorsFile = "tray-colors.dib";

std::string FileName(const char* kind, std::size_t number, const char* ending)
{
    std::array<char, 32> name{};
    std::snprintf(name.data(), name.size(), "%s-%04zu.%s", kind, number, ending);
    return name.data();
}

template <typename Bytes> bool WriteBytes(const std::filesystem::path& path, const Bytes& bytes)
{
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(stream.flush());
}

template <typename Bytes> std::optional<Bytes> ReadBytes(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    if (!stream || std::filesystem::is_directory(path))
        return std::nullopt;
    return Bytes(std::istreambuf_iterator<char>(stream), {});
}

Image ReadImage(const std::filesystem::path& folder, const std::string& name)
{
    if (name.empty())
        return {};
    auto read = ReadIndexedPng(folder / name);
    if (const auto* complaint = std::get_if<std::string>(&read))
        throw SourceError(0, name + ": " + *complaint);
    return std::get<Image>(std::move(read));
}

using Bytes = std::vector<std::uint8_t>;

Bytes ReadPart(const std::filesystem::path& folder, const std::string& name, const char* what)
{
    auto bytes = ReadBytes<Bytes>(folder / name);
    if (!bytes)
        throw SourceError(0, name + ": " + what + " cannot be read");
    return std::move(*bytes);
}

CharacterFile Assemble(TakenApart parts, const std::filesystem::path& folder)
{
    std::vector<Image> images;
    for (const std::string& name : parts.images)
        images.push_back(ReadImage(folder, name));
    std::vector<Bytes> sounds;
    for (const std::string& name : parts.sounds)
        sounds.push_back(ReadPart(folder, name, "the sound"));
    if (!parts.trayMask.empty())
        parts.character.trayIcon = {ReadPart(folder, parts.trayMask, "the tray icon"),
                                    ReadPart(folder, parts.trayColors, "the tray icon")};
    parts.character.images = std::make_shared<agent::acs::MemoryImages>(std::move(images));
    parts.character.sounds = std::make_shared<agent::acs::MemoryWaves>(std::move(sounds));
    return std::move(parts.character);
}

} // namespace

bool IsTakenApart(const std::filesystem::path& folder)
{
    return std::filesystem::exists(folder / kFramesFile);
}

std::string TakeApart(const CharacterFile& character, const std::filesystem::path& folder)
{
    const auto refused = [&](const std::string& name) {
        return (folder / name).string() + " cannot be written";
    };
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    TakenApart parts{character, {}, {}, {}, {}};
    if (const auto& icon = character.trayIcon) {
        parts.trayMask = kTrayMaskFile;
        parts.trayColors = kTrayColorsFile;
        if (!WriteBytes(folder / kTrayMaskFile, icon->mask) ||
            !WriteBytes(folder / kTrayColorsFile, icon->colors))
            return refused("the tray icon");
    }
    for (std::size_t i = 0; character.images && i < character.images->Count(); ++i) {
        const Image image = character.images->Decode(i);
        std::string& name = parts.images.emplace_back();
        if (image.pixels.empty())
            continue;
        name = FileName("image", i, "png");
        if (!WriteIndexedPng(folder / name, image, character.palette, character.transparentIndex))
            return refused(name);
    }
    for (std::size_t i = 0; character.sounds && i < character.sounds->Count(); ++i) {
        const std::string& name = parts.sounds.emplace_back(FileName("sound", i, "wav"));
        if (!WriteBytes(folder / name, character.sounds->Read(i)))
            return refused(name);
    }
    return WriteBytes(folder / kFramesFile, WriteFramesText(parts)) ? std::string() : refused(kFramesFile);
}

std::variant<CharacterFile, CompileError> PutTogether(const std::filesystem::path& folder)
{
    const std::string file = (folder / kFramesFile).string();
    const auto text = ReadBytes<std::string>(folder / kFramesFile);
    if (!text)
        return CompileError{file + ": cannot be read"};
    try {
        return Assemble(ParseFramesText(*text), folder);
    } catch (const SourceError& error) {
        const std::string line = error.Line() > 0 ? ":" + std::to_string(error.Line()) : "";
        return CompileError{file + line + ": " + error.what()};
    }
}

} // namespace voxtrel::acsc
