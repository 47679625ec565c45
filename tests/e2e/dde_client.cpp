// A program that sends command strings by DDE, written against the system's DDE library alone.
//
//   dde_client [OPTION]... SERVICE TOPIC [COMMAND]...
//
// Prints a line for each command: "ok", or "refused" and the library's error number; "no conversation N:
// ERROR" and exit code 1 when the Nth cannot be opened.
//
//   --ansi             sends the commands in the system's code page, not as Unicode
//   --hex              the commands are bytes, written in hexadecimal digits
//   --pad COUNT        every command is made longer by that many characters
//   --conversations N  opens so many conversations first, and sends everything through the last one
//   --stay             prints "staying" and keeps everything open until standard input ends

#include <windows.h>

#include <ddeml.h>
#include <shellapi.h>

#include <cstdio>
#include <cwchar>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

constexpr DWORD kTimeToAnswerMs = 30000;

struct Options {
    bool ansi = false;
    bool hex = false;
    bool stay = false;
    std::size_t pad = 0;
    int conversations = 1;
    std::vector<std::wstring> rest; // service, topic, commands
};

Options ReadOptions()
{
    Options options;
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const std::wstring_view argument = arguments[i];
        if (argument == L"--ansi")
            options.ansi = true;
        else if (argument == L"--hex")
            options.hex = true;
        else if (argument == L"--stay")
            options.stay = true;
        else if (argument == L"--pad" && i + 1 < count)
            options.pad = std::wcstoul(arguments[++i], nullptr, 10);
        else if (argument == L"--conversations" && i + 1 < count)
            options.conversations = static_cast<int>(std::wcstol(arguments[++i], nullptr, 10));
        else
            options.rest.emplace_back(argument);
    }
    LocalFree(arguments);
    return options;
}

std::string ToCodePage(const std::wstring& text)
{
    const int length = WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, bytes.data(), length, nullptr, nullptr);
    return bytes; // with its closing zero
}

std::string BytesOf(const Options& options, std::wstring command)
{
    if (options.hex) {
        std::string bytes;
        for (std::size_t i = 0; i + 1 < command.size(); i += 2)
            bytes += static_cast<char>(std::wcstoul(command.substr(i, 2).c_str(), nullptr, 16));
        return bytes;
    }
    for (std::size_t i = 0; i < options.pad; ++i)
        command += i % 6 == 5 ? L' ' : L'x';
    if (options.ansi)
        return ToCodePage(command);
    return {reinterpret_cast<const char*>(command.c_str()), (command.size() + 1) * sizeof(wchar_t)};
}

HDDEDATA CALLBACK OnDde(UINT, UINT, HCONV, HSZ, HSZ, HDDEDATA, ULONG_PTR, ULONG_PTR) { return nullptr; }

class Dde {
public:
    explicit Dde(bool ansi) : ansi_(ansi)
    {
        if (ansi_)
            DdeInitializeA(&instance_, &OnDde, APPCMD_CLIENTONLY, 0);
        else
            DdeInitializeW(&instance_, &OnDde, APPCMD_CLIENTONLY, 0);
    }
    ~Dde() { DdeUninitialize(instance_); }
    Dde(const Dde&) = delete;
    Dde& operator=(const Dde&) = delete;

    HCONV Connect(const std::wstring& service, const std::wstring& topic) const
    {
        const HSZ serviceName = Name(service);
        const HSZ topicName = Name(topic);
        const HCONV conversation = DdeConnect(instance_, serviceName, topicName, nullptr);
        DdeFreeStringHandle(instance_, serviceName);
        DdeFreeStringHandle(instance_, topicName);
        return conversation;
    }

    bool Execute(HCONV conversation, std::string bytes) const
    {
        DWORD result = 0;
        return DdeClientTransaction(reinterpret_cast<BYTE*>(bytes.data()), static_cast<DWORD>(bytes.size()),
                                    conversation, nullptr, 0, XTYP_EXECUTE, kTimeToAnswerMs,
                                    &result) != nullptr;
    }

    UINT LastError() const { return DdeGetLastError(instance_); }

private:
    HSZ Name(const std::wstring& name) const
    {
        return ansi_ ? DdeCreateStringHandleA(instance_, ToCodePage(name).c_str(), CP_WINANSI)
                     : DdeCreateStringHandleW(instance_, name.c_str(), CP_WINUNICODE);
    }

    bool ansi_;
    DWORD instance_ = 0;
};

// Answers its messages meanwhile: other clients ask every window for a server.
void Stay()
{
    std::printf("staying\n");
    std::fflush(stdout);
    std::thread([main = GetCurrentThreadId()] {
        while (std::getchar() != EOF) {
        }
        PostThreadMessageW(main, WM_QUIT, 0, 0);
    }).detach();
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
}

} // namespace

int main()
{
    const Options options = ReadOptions();
    if (options.rest.size() < 2)
        return 2;
    // Wine lets an instance of the library have one conversation with a server.
    std::vector<std::unique_ptr<Dde>> instances;
    HCONV conversation = nullptr;
    for (int i = 0; i < options.conversations; ++i) {
        instances.push_back(std::make_unique<Dde>(options.ansi));
        conversation = instances.back()->Connect(options.rest[0], options.rest[1]);
        if (conversation == nullptr) {
            std::printf("no conversation %d: %u\n", i + 1, instances.back()->LastError());
            return 1;
        }
    }
    const Dde& dde = *instances.back();
    for (std::size_t i = 2; i < options.rest.size(); ++i) {
        if (dde.Execute(conversation, BytesOf(options, options.rest[i])))
            std::printf("ok\n");
        else
            std::printf("refused %u\n", dde.LastError());
    }
    if (options.stay)
        Stay();
    return 0;
}
