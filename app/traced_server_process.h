#pragma once

#include "app/trace.h"
#include "platform/server_process.h"

#include <memory>
#include <string>

namespace voxtrel::app {

// The accessibility server's process, with its starts and every line that it sends in the trace.
class TracedServerProcess final : public platform::ServerProcess {
public:
    // The trace outlives it; it may be opened later.
    TracedServerProcess(std::unique_ptr<platform::ServerProcess> process, Trace& trace);

    bool Start(const std::wstring& path) override;
    bool Running() override { return process_->Running(); }
    std::string Read() override;
    void Write(std::string_view bytes) override { process_->Write(bytes); }
    void Close() override { process_->Close(); }
    void Kill() override { process_->Kill(); }

private:
    std::unique_ptr<platform::ServerProcess> process_;
    Trace& trace_;
    std::string line_; // whose end has not come yet
};

} // namespace voxtrel::app
