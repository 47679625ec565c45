// Commands from other programs as DDE execute strings: service "voxtrel", topic "speech". The program's own
// command line goes another way, see CommandWindow.

#include "platform/command_channel.h"

#include "platform/windows/command_window.h"
#include "settings/text_case.h"

#include <wx/app.h>
#include <wx/ipc.h>

namespace voxtrel::platform {
namespace {

const char* const kService = "voxtrel";
const char* const kTopic = "speech";

// The protocol does not say which of its two forms a client sent; a command begins with two ASCII characters,
// so the second byte tells. A closing zero is no part of the text.
std::wstring DecodeText(std::string_view bytes)
{
    wxString text;
    if (bytes.size() >= 2 && bytes[1] == '\0')
        text = wxString(bytes.data(), wxMBConvUTF16LE(), bytes.size() / 2 * 2);
    else if (settings::FindInvalidUtf8(bytes) == std::string_view::npos)
        text = wxString::FromUTF8(bytes.data(), bytes.size());
    else
        text = wxString(bytes.data(), wxConvLocal, bytes.size());
    std::wstring command = text.ToStdWstring();
    command.resize(command.find_last_not_of(L'\0') + 1);
    return command;
}

class Conversation final : public wxConnection {
public:
    explicit Conversation(const std::function<void(std::wstring)>& handle) : handle_(handle) {}

    bool OnExecute(const wxString&, const void* data, size_t size, wxIPCFormat) override
    {
        // Handled after the answer has gone out: a command may end the program or open a dialog.
        std::wstring command = DecodeText({static_cast<const char*>(data), size});
        wxTheApp->CallAfter([handle = handle_, command = std::move(command)] { handle(command); });
        return true;
    }

private:
    std::function<void(std::wstring)> handle_;
};

class DdeCommandServer final : public CommandServer, public wxServer {
public:
    explicit DdeCommandServer(std::function<void(std::wstring)> handle)
        : handle_(std::move(handle)), window_(MakeCommandWindow(handle_))
    {
    }

    wxConnectionBase* OnAcceptConnection(const wxString& topic) override
    {
        return topic.IsSameAs(kTopic, false) ? new Conversation(handle_) : nullptr;
    }

private:
    std::function<void(std::wstring)> handle_;
    std::unique_ptr<CommandWindow> window_;
};

} // namespace

std::unique_ptr<CommandServer> MakeCommandServer(std::function<void(std::wstring)> handle)
{
    auto server = std::make_unique<DdeCommandServer>(std::move(handle));
    if (!server->Create(kService))
        return nullptr;
    return server;
}

bool SendCommand(std::wstring_view command) { return SendToCommandWindow(command); }

} // namespace voxtrel::platform
