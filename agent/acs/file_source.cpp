#include "agent/acs/file_source.h"

#include "agent/acs/unicode.h"

#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

namespace voxtrel::agent::acs {

namespace {

bool Inside(const Locator& block, std::size_t size)
{
    return block.offset <= size && block.size <= size - block.offset;
}

class MemorySource : public FileSource {
public:
    explicit MemorySource(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

    std::size_t Size() const override { return bytes_.size(); }
    std::optional<std::vector<std::uint8_t>> Read(const Locator& block) const override
    {
        if (!Inside(block, bytes_.size()))
            return std::nullopt;
        const auto begin = bytes_.begin() + static_cast<std::ptrdiff_t>(block.offset);
        return std::vector<std::uint8_t>(begin, begin + static_cast<std::ptrdiff_t>(block.size));
    }

private:
    std::vector<std::uint8_t> bytes_;
};

class DiskSource : public FileSource {
public:
    DiskSource(std::ifstream stream, std::size_t size) : stream_(std::move(stream)), size_(size) {}

    std::size_t Size() const override { return size_; }
    std::optional<std::vector<std::uint8_t>> Read(const Locator& block) const override
    {
        if (!Inside(block, size_))
            return std::nullopt;
        std::vector<std::uint8_t> bytes(block.size);
        stream_.clear();
        stream_.seekg(static_cast<std::streamoff>(block.offset));
        stream_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!stream_)
            return std::nullopt;
        return bytes;
    }

private:
    mutable std::ifstream stream_;
    std::size_t size_;
};

} // namespace

std::shared_ptr<const FileSource> MakeMemorySource(std::vector<std::uint8_t> bytes)
{
    return std::make_shared<MemorySource>(std::move(bytes));
}

std::shared_ptr<const FileSource> OpenFileSource(std::wstring_view path)
{
    const std::filesystem::path place = PathFromWide(path);
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(place, error);
    std::ifstream stream(place, std::ios::binary);
    if (error || !stream)
        return nullptr;
    return std::make_shared<DiskSource>(std::move(stream), static_cast<std::size_t>(size));
}

} // namespace voxtrel::agent::acs
