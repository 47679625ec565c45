#pragma once

#include "agent/acs/character_file.h"
#include "agent/acs/file_source.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace voxtrel::agent::acs {

// The images of a file; each is read and unpacked when it is asked for.
class FileImages : public ImageSource {
public:
    FileImages(std::shared_ptr<const FileSource> file, std::vector<Locator> places);

    std::size_t Count() const override { return places_.size(); }
    Image Decode(std::size_t index) const override;

private:
    std::shared_ptr<const FileSource> file_;
    std::vector<Locator> places_;
};

// The sounds of a file; each is read when it is asked for.
class FileWaves : public WaveSource {
public:
    FileWaves(std::shared_ptr<const FileSource> file, std::vector<Locator> places);

    std::size_t Count() const override { return places_.size(); }
    std::vector<std::uint8_t> Read(std::size_t index) const override;

private:
    std::shared_ptr<const FileSource> file_;
    std::vector<Locator> places_;
};

// Images that stand unpacked in memory, for a character that is just being made.
class MemoryImages : public ImageSource {
public:
    explicit MemoryImages(std::vector<Image> images) : images_(std::move(images)) {}

    std::size_t Count() const override { return images_.size(); }
    Image Decode(std::size_t index) const override
    {
        return index < images_.size() ? images_[index] : Image{};
    }

private:
    std::vector<Image> images_;
};

class MemoryWaves : public WaveSource {
public:
    explicit MemoryWaves(std::vector<std::vector<std::uint8_t>> sounds) : sounds_(std::move(sounds)) {}

    std::size_t Count() const override { return sounds_.size(); }
    std::vector<std::uint8_t> Read(std::size_t index) const override
    {
        return index < sounds_.size() ? sounds_[index] : std::vector<std::uint8_t>{};
    }

private:
    std::vector<std::vector<std::uint8_t>> sounds_;
};

} // namespace voxtrel::agent::acs
