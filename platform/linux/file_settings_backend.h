#pragma once

#include "settings/settings_backend.h"
#include "settings/settings_tree.h"

#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace voxtrel::platform {

// Owns a file descriptor.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;
    ~FileDescriptor();

    int Get() const { return descriptor_; }
    explicit operator bool() const { return descriptor_ >= 0; }

private:
    int descriptor_ = -1;
};

// Settings in a file of the user's. The file is never written in place: a new one is written beside it and
// put in its stead, so that a kill or a full disk at any moment leaves the old settings or the new ones. A
// lock file makes programs that write at once wait for each other, and each takes in what the others wrote
// before it adds its own. A damaged file is kept aside under another name. What cannot be written is kept in
// memory and tried again with the next change. Complaints are one line each, and a complaint is made once.
class FileSettingsBackend final : public settings::SettingsBackend {
public:
    // Makes the folder of the file with the first writing. Complaints go to standard error unless told
    // otherwise.
    explicit FileSettingsBackend(std::filesystem::path file);
    FileSettingsBackend(std::filesystem::path file, std::ostream& complaints);

    // voxtrel/settings in the user's folder for configuration, by the environment.
    static std::filesystem::path DefaultFile();

    std::optional<std::wstring> Read(std::wstring_view application, std::wstring_view section,
                                     std::wstring_view key) override;
    void Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
               std::wstring_view value) override;
    std::vector<std::pair<std::wstring, std::wstring>> Pairs(std::wstring_view application,
                                                             std::wstring_view section) override;
    void DeleteKey(std::wstring_view application, std::wstring_view section, std::wstring_view key) override;
    void DeleteSection(std::wstring_view application, std::wstring_view section) override;
    std::uint64_t Generation() override;
    void BeginChanges() override { ++openChanges_; }
    void EndChanges() override;

private:
    using Change = std::function<void(settings::SettingsTree&)>;

    enum class FileState { Missing, Sound, Damaged, Unreadable };

    void Make(Change change);
    void Save();
    bool WriteBeside(const std::filesystem::path& target);

    void Refresh();
    bool IsFileUnchanged() const;
    void Load();
    void LoadKeepingDamageAside();
    FileState ReadFile();
    void KeepAside();

    FileDescriptor Lock();
    std::filesystem::path Target() const;
    void ComplainOfDamage(std::string_view what);
    void Complain(std::string_view what, std::string_view why);

    std::filesystem::path file_;
    std::ostream& complaints_;
    std::vector<std::string> made_; // complaints

    settings::SettingsTree tree_; // of the file, and the changes that are not in it yet
    std::vector<Change> unsaved_;
    int openChanges_ = 0;
    std::uint64_t generation_ = 0;

    FileState state_ = FileState::Missing;
    std::wstring damage_;
    FileDescriptor loaded_; // kept open so that no other file gets its inode number
    struct stat loadedStat_ = {};
    bool everLoaded_ = false;
};

} // namespace voxtrel::platform
