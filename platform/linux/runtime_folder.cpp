#include "platform/linux/runtime_folder.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace voxtrel::platform {
namespace {

bool IsOursAlone(const std::string& folder)
{
    struct stat status{};
    return lstat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == getuid() &&
           (status.st_mode & 077) == 0;
}

} // namespace

std::string RuntimeFolder()
{
    const char* sessionFolder = std::getenv("XDG_RUNTIME_DIR");
    if (sessionFolder && IsOursAlone(sessionFolder))
        return sessionFolder;
    // Without a session manager; the name is public, so the folder is only used when nobody else can reach into it.
    const std::string folder = "/tmp/voxtrel-" + std::to_string(getuid());
    mkdir(folder.c_str(), 0700);
    return IsOursAlone(folder) ? folder : std::string();
}

} // namespace voxtrel::platform
