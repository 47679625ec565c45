#pragma once

#include "platform/windows/windows_headers.h"

#include <cstddef>
#include <string>

namespace voxtrel::platform {

// A piece of memory of the program that owns a window. Empty when that program does not allow it, or is not
// of as many bits as this one.
class ForeignMemory {
public:
    ForeignMemory(HWND window, std::size_t size);
    ~ForeignMemory();
    ForeignMemory(const ForeignMemory&) = delete;
    ForeignMemory& operator=(const ForeignMemory&) = delete;

    explicit operator bool() const { return block_ != nullptr; }

    // As the other program sees it.
    void* At(std::size_t offset) const { return static_cast<std::byte*>(block_) + offset; }

    // From and to the beginning of the piece.
    bool Write(const void* data, std::size_t size);
    bool Read(void* data, std::size_t size) const;

    // Up to its zero, or as much of the room (in characters) as there is. Anywhere in the other program.
    std::wstring TextAt(const void* address, std::size_t room) const;

    // Does not give the piece back: a program that has not answered yet may still write to it.
    void LeaveBehind();

private:
    HANDLE process_ = nullptr;
    void* block_ = nullptr;
};

} // namespace voxtrel::platform
