#pragma once

#include "agent/acs/byte_cursor.h"
#include "agent/acs/character_file.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace voxtrel::agent::acs {

// The images of a file whose bytes stay in memory; each is unpacked when it is asked for.
class FileImages : public ImageSource {
public:
    FileImages(std::shared_ptr<const std::vector<std::uint8_t>> file, std::vector<Locator> places);

    std::size_t Count() const override { return places_.size(); }
    Image Decode(std::size_t index) const override;

private:
    std::shared_ptr<const std::vector<std::uint8_t>> file_;
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

} // namespace voxtrel::agent::acs
