#pragma once

#include "agent/acs/byte_cursor.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace voxtrel::agent::acs {

// The bytes of a character file, in memory or on disk. Of a file on disk only what is asked for is read; it
// stays open as long as its source lives. Used by one thread at a time.
class FileSource {
public:
    virtual ~FileSource() = default;

    virtual std::size_t Size() const = 0;

    // Nothing when the block does not lie in the file, or can no longer be read.
    virtual std::optional<std::vector<std::uint8_t>> Read(const Locator& block) const = 0;
};

std::shared_ptr<const FileSource> MakeMemorySource(std::vector<std::uint8_t> bytes);

// Null when there is no such file.
std::shared_ptr<const FileSource> OpenFileSource(std::wstring_view path);

} // namespace voxtrel::agent::acs
