#include "platform/linux/runtime_folder.h"
#include "platform/single_instance.h"

#include <fcntl.h>
#include <memory>
#include <sys/file.h>
#include <unistd.h>

namespace voxtrel::platform {
namespace {

// A lock that the kernel gives back when the program ends, however it ends.
class InstanceLock final : public SingleInstance {
public:
    ~InstanceLock() override
    {
        if (file_ >= 0)
            close(file_);
    }

    bool AnotherIsRunning() override
    {
        if (file_ >= 0)
            return false;
        const std::string folder = RuntimeFolder();
        if (folder.empty())
            return false;
        const int file = open((folder + "/voxtrel.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        if (file < 0)
            return false;
        if (flock(file, LOCK_EX | LOCK_NB) == 0) {
            file_ = file;
            return false;
        }
        close(file);
        return true;
    }

private:
    int file_ = -1;
};

} // namespace

std::unique_ptr<SingleInstance> MakeSingleInstance() { return std::make_unique<InstanceLock>(); }

} // namespace voxtrel::platform
