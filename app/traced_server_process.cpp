#include "app/traced_server_process.h"

#include "settings/text_case.h"

#include <utility>

namespace voxtrel::app {

TracedServerProcess::TracedServerProcess(std::unique_ptr<platform::ServerProcess> process, Trace& trace)
    : process_(std::move(process)), trace_(trace)
{
}

bool TracedServerProcess::Start(const std::wstring& path)
{
    const bool started = process_->Start(path);
    line_.clear();
    trace_.Write("server-start", {{"started", started}});
    return started;
}

std::string TracedServerProcess::Read()
{
    std::string bytes = process_->Read();
    if (!trace_.IsOpen())
        return bytes;
    line_ += bytes;
    for (auto end = line_.find('\n'); end != std::string::npos; end = line_.find('\n')) {
        trace_.Write("server", {{"text", std::wstring_view(settings::FromUtf8(line_.substr(0, end)))}});
        line_.erase(0, end + 1);
    }
    return bytes;
}

} // namespace voxtrel::app
