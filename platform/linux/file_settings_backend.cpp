#include "platform/linux/file_settings_backend.h"

#include "settings/settings_file.h"
#include "settings/text_case.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <thread>
#include <utility>

namespace voxtrel::platform {

namespace {

// Another program holds the lock for as long as it writes a small file; one that holds it longer is stopped.
constexpr std::chrono::milliseconds kLockPatience{1000};
constexpr std::chrono::milliseconds kLockRetry{5};
constexpr int kMostKeptAside = 1000;

std::string ErrorText(int error) { return std::strerror(error); }

bool ReadAll(int descriptor, std::string& bytes)
{
    std::array<char, 65536> buffer;
    for (;;) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count == 0)
            return true;
        if (count > 0)
            bytes.append(buffer.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return false;
    }
}

bool WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            return false;
    }
    return true;
}

// The new name of a file is on the disk when its folder is.
void SyncFolder(const std::filesystem::path& folder)
{
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor)
        ::fsync(descriptor.Get());
}

bool SameTime(const timespec& left, const timespec& right)
{
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

std::filesystem::path WithSuffix(std::filesystem::path path, std::string_view suffix)
{
    path += suffix;
    return path;
}

std::filesystem::path HomeFolder()
{
    if (const char* const home = std::getenv("HOME"); home != nullptr && *home == '/')
        return home;
    const passwd* const user = ::getpwuid(::getuid());
    return user != nullptr ? user->pw_dir : "/";
}

} // namespace

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : descriptor_(std::exchange(other.descriptor_, -1))
{
}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept
{
    std::swap(descriptor_, other.descriptor_);
    return *this;
}

FileDescriptor::~FileDescriptor()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

FileSettingsBackend::FileSettingsBackend(std::filesystem::path file)
    : FileSettingsBackend(std::move(file), std::cerr)
{
}

FileSettingsBackend::FileSettingsBackend(std::filesystem::path file, std::ostream& complaints)
    : file_(std::move(file)), complaints_(complaints)
{
}

std::filesystem::path FileSettingsBackend::DefaultFile()
{
    const char* const folder = std::getenv("XDG_CONFIG_HOME");
    const bool given = folder != nullptr && *folder == '/'; // a relative one is to be ignored
    return (given ? std::filesystem::path(folder) : HomeFolder() / ".config") / "voxtrel" / "settings";
}

std::optional<std::wstring> FileSettingsBackend::Read(std::wstring_view application,
                                                      std::wstring_view section, std::wstring_view key)
{
    Refresh();
    const std::wstring* const value = tree_.Find(application, section, key);
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

std::vector<std::pair<std::wstring, std::wstring>> FileSettingsBackend::Pairs(std::wstring_view application,
                                                                              std::wstring_view section)
{
    Refresh();
    const settings::SettingsTree::Section* const found = tree_.FindSection(application, section);
    return found != nullptr ? found->pairs : std::vector<settings::SettingsTree::Pair>{};
}

void FileSettingsBackend::Write(std::wstring_view application, std::wstring_view section,
                                std::wstring_view key, std::wstring_view value)
{
    Refresh();
    const std::wstring* const stored = tree_.Find(application, section, key);
    if (stored != nullptr && *stored == value)
        return;
    Make([application = std::wstring(application), section = std::wstring(section), key = std::wstring(key),
          value = std::wstring(value)](settings::SettingsTree& tree) {
        tree.Set(application, section, key, value);
    });
}

void FileSettingsBackend::DeleteKey(std::wstring_view application, std::wstring_view section,
                                    std::wstring_view key)
{
    Refresh();
    if (tree_.Find(application, section, key) == nullptr)
        return;
    Make([application = std::wstring(application), section = std::wstring(section),
          key = std::wstring(key)](settings::SettingsTree& tree) { tree.Remove(application, section, key); });
}

void FileSettingsBackend::DeleteSection(std::wstring_view application, std::wstring_view section)
{
    Refresh();
    if (tree_.FindSection(application, section) == nullptr)
        return;
    Make([application = std::wstring(application), section = std::wstring(section)](
             settings::SettingsTree& tree) { tree.RemoveSection(application, section); });
}

std::uint64_t FileSettingsBackend::Generation()
{
    Refresh();
    return generation_;
}

void FileSettingsBackend::EndChanges()
{
    if (--openChanges_ == 0 && !unsaved_.empty())
        Save();
}

void FileSettingsBackend::Make(Change change)
{
    change(tree_);
    unsaved_.push_back(std::move(change));
    ++generation_;
    if (openChanges_ == 0)
        Save();
}

// Under the lock: takes in what others have written, adds the changes, and puts the whole in the file's
// stead.
void FileSettingsBackend::Save()
{
    std::error_code failure;
    std::filesystem::create_directories(file_.parent_path(), failure);
    const FileDescriptor lock = Lock();
    if (!lock)
        return;
    if (!IsFileUnchanged())
        LoadKeepingDamageAside();
    if (state_ == FileState::Unreadable || state_ == FileState::Damaged)
        return; // writing would destroy what could not be read
    if (!WriteBeside(Target()))
        return;
    unsaved_.clear();
    made_.clear();
}

bool FileSettingsBackend::WriteBeside(const std::filesystem::path& target)
{
    const std::filesystem::path beside = WithSuffix(target, ".new");
    const std::string bytes = settings::SerialiseSettingsFile(tree_);
    FileDescriptor descriptor(
        ::open(beside.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    const bool written = descriptor && WriteAll(descriptor.Get(), bytes) && ::fsync(descriptor.Get()) == 0;
    if (!written || ::rename(beside.c_str(), target.c_str()) != 0) {
        const int error = errno;
        ::unlink(beside.c_str());
        Complain("cannot be written; changes last until the program ends", ErrorText(error));
        return false;
    }
    SyncFolder(target.parent_path());
    state_ = FileState::Sound;
    loaded_ = std::move(descriptor);
    ::fstat(loaded_.Get(), &loadedStat_);
    return true;
}

void FileSettingsBackend::Refresh()
{
    if (!IsFileUnchanged())
        Load();
}

bool FileSettingsBackend::IsFileUnchanged() const
{
    if (!everLoaded_)
        return false;
    struct stat now = {};
    if (::stat(file_.c_str(), &now) != 0)
        return state_ == FileState::Missing || state_ == FileState::Unreadable;
    return now.st_ino == loadedStat_.st_ino && now.st_dev == loadedStat_.st_dev &&
           now.st_size == loadedStat_.st_size && SameTime(now.st_mtim, loadedStat_.st_mtim) &&
           SameTime(now.st_ctim, loadedStat_.st_ctim);
}

void FileSettingsBackend::Load()
{
    if (ReadFile() == FileState::Damaged) {
        // Only with the lock is it sure that no other program keeps the file aside at this moment.
        const FileDescriptor lock = Lock();
        if (lock)
            LoadKeepingDamageAside();
        else
            ComplainOfDamage("is damaged and cannot be kept aside; defaults are used and nothing is saved");
    }
}

void FileSettingsBackend::LoadKeepingDamageAside()
{
    if (ReadFile() == FileState::Damaged)
        KeepAside();
}

// Reads the file as it is now, and adds the changes that are not in it.
FileSettingsBackend::FileState FileSettingsBackend::ReadFile()
{
    everLoaded_ = true;
    ++generation_;
    tree_ = {};
    loadedStat_ = {};
    loaded_ = FileDescriptor(::open(file_.c_str(), O_RDONLY | O_CLOEXEC));
    std::string bytes;
    if (!loaded_) {
        const int error = errno;
        state_ = error == ENOENT || error == ENOTDIR ? FileState::Missing : FileState::Unreadable;
        if (state_ == FileState::Unreadable)
            Complain("cannot be read; defaults are used and nothing is saved", ErrorText(error));
    } else if (::fstat(loaded_.Get(), &loadedStat_) != 0 || !ReadAll(loaded_.Get(), bytes)) {
        const int error = errno;
        state_ = FileState::Unreadable;
        Complain("cannot be read; defaults are used and nothing is saved", ErrorText(error));
    } else {
        settings::ParsedSettings parsed = settings::ParseSettingsFile(bytes);
        state_ = parsed.damage.empty() ? FileState::Sound : FileState::Damaged;
        damage_ = std::move(parsed.damage);
        tree_ = std::move(parsed.tree);
    }
    for (const Change& change : unsaved_)
        change(tree_);
    return state_;
}

void FileSettingsBackend::KeepAside()
{
    const std::filesystem::path target = Target();
    for (int number = 1; number <= kMostKeptAside; ++number) {
        const std::filesystem::path aside = WithSuffix(target, ".damaged-" + std::to_string(number));
        if (::renameat2(AT_FDCWD, target.c_str(), AT_FDCWD, aside.c_str(), RENAME_NOREPLACE) == 0) {
            ComplainOfDamage("is damaged; defaults are used and the damaged file is kept as " +
                             aside.string());
            ReadFile();
            return;
        }
        if (errno != EEXIST)
            break;
    }
    ComplainOfDamage("is damaged and cannot be kept aside; defaults are used and nothing is saved");
}

// Empty when the lock cannot be had.
FileDescriptor FileSettingsBackend::Lock()
{
    const std::filesystem::path name = WithSuffix(Target(), ".lock");
    FileDescriptor lock(::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!lock) {
        Complain("cannot be written; changes last until the program ends", ErrorText(errno));
        return {};
    }
    const auto end = std::chrono::steady_clock::now() + kLockPatience;
    while (::flock(lock.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return lock; // a file system without locks: better to write without than not at all
        if (std::chrono::steady_clock::now() > end) {
            Complain("is locked by another program; changes are saved with the next one", name.string());
            return {};
        }
        std::this_thread::sleep_for(kLockRetry);
    }
    return lock;
}

// A user may have made the file a link to another folder; it is written there.
std::filesystem::path FileSettingsBackend::Target() const
{
    std::error_code failure;
    std::filesystem::path target = std::filesystem::canonical(file_, failure);
    return failure ? file_ : target;
}

void FileSettingsBackend::ComplainOfDamage(std::string_view what)
{
    Complain(what, settings::ToUtf8(damage_));
}

void FileSettingsBackend::Complain(std::string_view what, std::string_view why)
{
    std::string complaint = "voxtrel: the settings file " + file_.string() + " " + std::string(what) + " (" +
                            std::string(why) + ")";
    if (std::find(made_.begin(), made_.end(), complaint) != made_.end())
        return;
    complaints_ << complaint << '\n' << std::flush;
    made_.push_back(std::move(complaint));
}

} // namespace voxtrel::platform
