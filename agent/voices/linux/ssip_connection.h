#pragma once

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::agent::voices {

// One message of the speech service: lines of the same code.
struct SsipMessage {
    int code = 0;                   // 2xx: done; 3xx to 5xx: refused; 7xx: an event
    std::vector<std::string> lines; // without the code; the last one is the words for people

    bool Done() const { return code >= 200 && code < 300; }
    bool IsEvent() const { return code >= 700; }
};

// A connection to Speech Dispatcher over its line protocol. Nothing waits longer than its limit; a service
// that misses one counts as gone.
class SsipConnection {
public:
    using Milliseconds = std::chrono::milliseconds;

    // Null when there is no service to be reached.
    static std::unique_ptr<SsipConnection> Open(Milliseconds limit);
    ~SsipConnection();
    SsipConnection(const SsipConnection&) = delete;
    SsipConnection& operator=(const SsipConnection&) = delete;

    // Sends a line and waits for the answer to it; nothing when the service is gone.
    std::optional<SsipMessage> Ask(std::string_view line, Milliseconds limit);

    // The next event, from those that came meanwhile or from the service; nothing when none has come.
    std::optional<SsipMessage> NextEvent(Milliseconds limit);

    bool Gone() const { return gone_; }

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    explicit SsipConnection(int socket) : socket_(socket) {}

    bool Send(std::string_view bytes, TimePoint until);
    std::optional<SsipMessage> NextMessage(TimePoint until);
    std::optional<SsipMessage> TakeMessage();
    bool Receive(TimePoint until);

    int socket_;
    bool gone_ = false;
    std::string received_; // bytes of lines that are not complete
    SsipMessage incoming_; // its last line has not come yet
    std::deque<SsipMessage> events_;
};

// Starts the service when it is not running, as far as its configuration allows, and waits for it.
void StartSpeechService(std::chrono::milliseconds limit);

} // namespace voxtrel::agent::voices
