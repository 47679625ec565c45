#include "platform/windows/foreign_memory.h"

#include <algorithm>

namespace voxtrel::platform {
namespace {

bool HasOurLayout(HANDLE process)
{
    BOOL ours = FALSE;
    BOOL theirs = FALSE;
    return IsWow64Process(GetCurrentProcess(), &ours) && IsWow64Process(process, &theirs) && ours == theirs;
}

} // namespace

ForeignMemory::ForeignMemory(HWND window, std::size_t size)
{
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE |
                               PROCESS_QUERY_LIMITED_INFORMATION,
                           FALSE, id);
    if (process_ && HasOurLayout(process_))
        block_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
}

ForeignMemory::~ForeignMemory()
{
    if (block_)
        VirtualFreeEx(process_, block_, 0, MEM_RELEASE);
    if (process_)
        CloseHandle(process_);
}

bool ForeignMemory::Write(const void* data, std::size_t size)
{
    return WriteProcessMemory(process_, block_, data, size, nullptr) != FALSE;
}

bool ForeignMemory::Read(void* data, std::size_t size) const
{
    return ReadProcessMemory(process_, block_, data, size, nullptr) != FALSE;
}

std::wstring ForeignMemory::TextAt(const void* address, std::size_t room) const
{
    // What lies behind a text elsewhere need not be readable as far as the room goes.
    for (; address && room > 0; room /= 2) {
        std::wstring text(room, L'\0');
        if (!ReadProcessMemory(process_, address, text.data(), room * sizeof(wchar_t), nullptr))
            continue;
        text.resize(std::min(text.size(), text.find(L'\0')));
        return text;
    }
    return {};
}

void ForeignMemory::LeaveBehind() { block_ = nullptr; }

} // namespace voxtrel::platform
