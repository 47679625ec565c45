#include "tests/agent/voices/speech_service.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace voxtrel::agent::voices {

namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

constexpr char kConfiguration[] = R"(LogLevel 0
DefaultVolume 100
AudioOutputMethod "pulse"
AddModule "espeak-ng" "sd_espeak-ng" "espeak-ng.conf"
AddModule "flite" "sd_flite" "flite.conf"
DefaultModule espeak-ng
DefaultLanguage "en"
)";

bool Answers(const fs::path& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool answers = connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(socket);
    return answers;
}

void End(pid_t& process, int signal)
{
    if (process <= 0)
        return;
    kill(process, SIGCONT);
    kill(process, signal);
    waitpid(process, nullptr, 0);
    process = 0;
}

// The process of this name whose parent is the one given; 0 if there is none.
pid_t ChildNamed(pid_t parent, const std::string& name)
{
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string number = entry.path().filename();
        if (number.find_first_not_of("0123456789") != std::string::npos)
            continue;
        std::ifstream status(entry.path() / "status");
        std::string line, found;
        pid_t above = 0;
        while (std::getline(status, line)) {
            if (line.starts_with("Name:\t"))
                found = line.substr(6);
            if (line.starts_with("PPid:\t"))
                above = std::atoi(line.c_str() + 6);
        }
        if (above == parent && found == name)
            return std::atoi(number.c_str());
    }
    return 0;
}

} // namespace

SpeechService::SpeechService()
{
    std::string pattern = (fs::temp_directory_path() / "voices-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    if (const char* before = std::getenv("XDG_RUNTIME_DIR"))
        runtimeBefore_ = before;
    setenv("XDG_RUNTIME_DIR", folder_.c_str(), 1);
    fs::create_directories(folder_ / "configuration/modules");
    fs::permissions(folder_, fs::perms::owner_all);
    std::ofstream(folder_ / "configuration/speechd.conf") << kConfiguration;
    for (const char* module : {"espeak-ng.conf", "flite.conf"})
        std::ofstream(folder_ / "configuration/modules" / module) << "";
    sound_ = Spawn({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                    "--load=module-null-sink", "--load=module-native-protocol-unix"});
    if (!WaitFor(folder_ / "pulse/native"))
        problem_ = "pulseaudio does not start";
    Start();
}

SpeechService::~SpeechService()
{
    End(service_, SIGTERM);
    End(sound_, SIGTERM);
    if (runtimeBefore_.empty())
        unsetenv("XDG_RUNTIME_DIR");
    else
        setenv("XDG_RUNTIME_DIR", runtimeBefore_.c_str(), 1);
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

void SpeechService::Start()
{
    service_ = Spawn({"speech-dispatcher", "--run-single", "--timeout", "0", "--config-dir",
                      (folder_ / "configuration").string(), "--log-dir", folder_.string()});
    if (!WaitFor(folder_ / "speech-dispatcher/speechd.sock"))
        problem_ = "speech-dispatcher does not start";
}

void SpeechService::Kill() { End(service_, SIGKILL); }

bool SpeechService::KillModule(const std::string& name)
{
    const pid_t module = ChildNamed(service_, name);
    return module > 0 && kill(module, SIGKILL) == 0;
}

void SpeechService::Freeze() { kill(service_, SIGSTOP); }
void SpeechService::Thaw() { kill(service_, SIGCONT); }

pid_t SpeechService::Spawn(const std::vector<std::string>& command) const
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    if (posix_spawnp(&process, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
        process = 0;
    posix_spawn_file_actions_destroy(&actions);
    return process;
}

bool SpeechService::WaitFor(const fs::path& path) const
{
    const auto until = std::chrono::steady_clock::now() + 20s;
    while (!Answers(path)) {
        if (std::chrono::steady_clock::now() > until)
            return false;
        std::this_thread::sleep_for(20ms);
    }
    return true;
}

} // namespace voxtrel::agent::voices
