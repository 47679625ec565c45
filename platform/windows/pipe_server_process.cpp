#include "platform/server_process.h"

#include "platform/windows/windows_headers.h"

#include <memory>
#include <utility>
#include <vector>

namespace voxtrel::platform {
namespace {

constexpr DWORD kPipeBytes = 65536;

struct CloseHandleOf {
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using OwnedHandle = std::unique_ptr<HANDLE, CloseHandleOf>;

struct Pipe {
    OwnedHandle reading;
    OwnedHandle writing;
};

bool MakePipe(Pipe& pipe)
{
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
    if (!CreatePipe(&reading, &writing, &inheritable, kPipeBytes))
        return false;
    pipe.reading.reset(reading);
    pipe.writing.reset(writing);
    return true;
}

void KeepToOurselves(const OwnedHandle& handle)
{
    SetHandleInformation(handle.get(), HANDLE_FLAG_INHERIT, 0);
}

// The list of the handles that a new process is given: these two and no other of this program.
class HandleList {
public:
    HandleList(HANDLE first, HANDLE second) : handles_{first, second}
    {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        memory_.resize(size);
        valid_ = InitializeProcThreadAttributeList(Get(), 1, 0, &size) &&
                 UpdateProcThreadAttribute(Get(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_,
                                           sizeof handles_, nullptr, nullptr);
    }
    ~HandleList()
    {
        if (valid_)
            DeleteProcThreadAttributeList(Get());
    }
    HandleList(const HandleList&) = delete;
    HandleList& operator=(const HandleList&) = delete;

    bool IsValid() const { return valid_; }
    LPPROC_THREAD_ATTRIBUTE_LIST Get()
    {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory_.data());
    }

private:
    HANDLE handles_[2];
    std::vector<char> memory_;
    bool valid_ = false;
};

class PipeServerProcess final : public ServerProcess {
public:
    bool Start(const std::wstring& path) override
    {
        Kill();
        Pipe commands;
        Pipe reports;
        if (!MakePipe(commands) || !MakePipe(reports))
            return false;
        KeepToOurselves(commands.writing);
        KeepToOurselves(reports.reading);
        if (!Launch(path, commands.reading.get(), reports.writing.get()))
            return false;
        commands_ = std::move(commands.writing);
        reports_ = std::move(reports.reading);
        return true;
    }

    bool Running() override { return process_ && WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT; }

    std::string Read() override
    {
        DWORD waiting = 0;
        if (!reports_ || !PeekNamedPipe(reports_.get(), nullptr, 0, nullptr, &waiting, nullptr) ||
            waiting == 0)
            return {};
        std::string bytes(waiting, '\0');
        DWORD count = 0;
        if (!ReadFile(reports_.get(), bytes.data(), waiting, &count, nullptr))
            return {};
        bytes.resize(count);
        return bytes;
    }

    // The pipe has room for far more than the few commands that the server is ever sent.
    void Write(std::string_view bytes) override
    {
        DWORD count = 0;
        if (commands_)
            WriteFile(commands_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    }

    void Close() override
    {
        commands_.reset();
        reports_.reset();
    }

    void Kill() override
    {
        Close();
        if (process_)
            TerminateProcess(process_.get(), 1);
        process_.reset();
    }

private:
    bool Launch(const std::wstring& path, HANDLE input, HANDLE output)
    {
        HandleList handles(input, output);
        STARTUPINFOEXW startup = {};
        startup.StartupInfo.cb = handles.IsValid() ? sizeof startup : sizeof startup.StartupInfo;
        startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
        startup.StartupInfo.hStdInput = input;
        startup.StartupInfo.hStdOutput = output;
        startup.lpAttributeList = handles.IsValid() ? handles.Get() : nullptr;
        const DWORD flags = CREATE_NO_WINDOW | (handles.IsValid() ? EXTENDED_STARTUPINFO_PRESENT : 0);
        std::wstring commandLine = L"\"" + path + L"\"";
        PROCESS_INFORMATION process = {};
        if (!CreateProcessW(path.c_str(), commandLine.data(), nullptr, nullptr, TRUE, flags, nullptr, nullptr,
                            &startup.StartupInfo, &process))
            return false;
        CloseHandle(process.hThread);
        process_.reset(process.hProcess);
        return true;
    }

    OwnedHandle process_;
    OwnedHandle commands_;
    OwnedHandle reports_;
};

} // namespace

std::unique_ptr<ServerProcess> MakeServerProcess() { return std::make_unique<PipeServerProcess>(); }

} // namespace voxtrel::platform
