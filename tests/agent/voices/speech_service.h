#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

namespace voxtrel::agent::voices {

// A speech service of the tests' own, with a sound server that plays into nothing, in real time. While it
// lives, XDG_RUNTIME_DIR leads to it.
class SpeechService {
public:
    SpeechService();
    ~SpeechService();
    SpeechService(const SpeechService&) = delete;
    SpeechService& operator=(const SpeechService&) = delete;

    // Empty, or what is missing.
    const std::string& Problem() const { return problem_; }

    // As if it had crashed.
    void Kill();
    void Start();

    // Ends the process of an output module: "sd_espeak-ng".
    bool KillModule(const std::string& name);

    // Lets the service sleep, or wakes it.
    void Freeze();
    void Thaw();

private:
    pid_t Spawn(const std::vector<std::string>& command) const;
    bool WaitFor(const std::filesystem::path& path) const;

    std::filesystem::path folder_;
    std::string problem_;
    std::string runtimeBefore_;
    pid_t sound_ = 0, service_ = 0;
};

} // namespace voxtrel::agent::voices
