#include "platform/linux/file_settings_backend.h"

#include "settings/backend_contract.h"
#include "settings/settings_file.h"

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace voxtrel::platform {
namespace {

namespace fs = std::filesystem;

// A folder of its own for each test, gone afterwards.
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        // In memory where there is such a folder: the tests write thousands of times.
        const fs::path memory = "/dev/shm";
        const fs::path parent = fs::is_directory(memory) ? memory : fs::temp_directory_path();
        std::string name = (parent / "voxtrel-settings-XXXXXX").string();
        path_ = ::mkdtemp(name.data());
    }
    ~TemporaryFolder() { fs::remove_all(path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const fs::path& Path() const { return path_; }

private:
    fs::path path_;
};

class FileBackendTest : public testing::Test {
protected:
    std::string Bytes(const fs::path& path) const
    {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    void Put(std::string_view bytes) const { std::ofstream(file, std::ios::binary) << bytes; }
    std::wstring Stored(std::wstring_view key) const
    {
        const settings::ParsedSettings parsed = settings::ParseSettingsFile(Bytes(file));
        EXPECT_EQ(parsed.damage, L"");
        const std::wstring* const value = parsed.tree.Find(L"App", L"s", key);
        return value != nullptr ? *value : L"(missing)";
    }
    std::size_t ComplaintCount() const
    {
        const std::string all = complaints.str();
        return static_cast<std::size_t>(std::count(all.begin(), all.end(), '\n'));
    }

    TemporaryFolder folder;
    fs::path file = folder.Path() / "voxtrel" / "settings";
    std::ostringstream complaints;
    FileSettingsBackend backend{file, complaints};
};

// Keeps its folder as long as it lives.
class FileBackendInItsFolder final : public settings::SettingsBackend {
public:
    std::optional<std::wstring> Read(std::wstring_view application, std::wstring_view section,
                                     std::wstring_view key) override
    {
        return backend_.Read(application, section, key);
    }
    void Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
               std::wstring_view value) override
    {
        backend_.Write(application, section, key, value);
    }
    std::vector<std::pair<std::wstring, std::wstring>> Pairs(std::wstring_view application,
                                                             std::wstring_view section) override
    {
        // Through the file, not through what this backend remembers.
        return FileSettingsBackend(folder_.Path() / "settings").Pairs(application, section);
    }
    void DeleteKey(std::wstring_view application, std::wstring_view section, std::wstring_view key) override
    {
        backend_.DeleteKey(application, section, key);
    }
    void DeleteSection(std::wstring_view application, std::wstring_view section) override
    {
        backend_.DeleteSection(application, section);
    }
    std::uint64_t Generation() override { return backend_.Generation(); }
    void BeginChanges() override { backend_.BeginChanges(); }
    void EndChanges() override { backend_.EndChanges(); }

private:
    TemporaryFolder folder_;
    FileSettingsBackend backend_{folder_.Path() / "settings"};
};

} // namespace
} // namespace voxtrel::platform

namespace voxtrel::tests {

INSTANTIATE_TEST_SUITE_P(FileSettingsBackend, BackendContract, testing::Values([] {
                             return std::make_unique<platform::FileBackendInItsFolder>();
                         }));

} // namespace voxtrel::tests

namespace voxtrel::platform {
namespace {

using FileSettingsBackendTest = FileBackendTest;

TEST_F(FileSettingsBackendTest, MakesItsFolderWithTheFirstWriting)
{
    EXPECT_FALSE(backend.Read(L"App", L"s", L"key").has_value());
    EXPECT_FALSE(fs::exists(file.parent_path()));
    backend.Write(L"App", L"s", L"key", L"value");
    EXPECT_EQ(Stored(L"key"), L"value");
    EXPECT_EQ(complaints.str(), "");
}

TEST_F(FileSettingsBackendTest, KeepsSettingsForTheNextRun)
{
    for (std::size_t i = 0; i < tests::AwkwardTexts().size(); ++i)
        backend.Write(L"App", L"s", tests::AwkwardTexts()[i], tests::AwkwardTexts()[i]);
    FileSettingsBackend next(file, complaints);
    EXPECT_EQ(next.Pairs(L"App", L"s"), backend.Pairs(L"App", L"s"));
    EXPECT_EQ(next.Pairs(L"App", L"s").size(), tests::AwkwardTexts().size());
    EXPECT_EQ(complaints.str(), "");
}

TEST_F(FileSettingsBackendTest, SeesWhatAnotherProgramWrote)
{
    FileSettingsBackend other(file, complaints);
    for (int i = 0; i < 200; ++i) {
        const std::uint64_t before = backend.Generation();
        other.Write(L"App", L"s", L"key", std::to_wstring(i % 10));
        EXPECT_EQ(backend.Read(L"App", L"s", L"key"), std::to_wstring(i % 10));
        EXPECT_NE(backend.Generation(), before);
    }
}

TEST_F(FileSettingsBackendTest, SeesWhatAPersonWroteWithAnEditor)
{
    backend.Write(L"App", L"s", L"key", L"old");
    std::string bytes = Bytes(file);
    bytes.replace(bytes.find("old"), 3, "by hand");
    Put(bytes);
    EXPECT_EQ(backend.Read(L"App", L"s", L"key"), L"by hand");
}

TEST_F(FileSettingsBackendTest, LosesNothingOfWhatTwoBackendsWriteInTurn)
{
    FileSettingsBackend other(file, complaints);
    for (int i = 0; i < 50; ++i) {
        backend.Write(L"App", L"s", L"mine" + std::to_wstring(i), L"1");
        other.Write(L"App", L"s", L"theirs" + std::to_wstring(i), L"2");
    }
    EXPECT_EQ(backend.Pairs(L"App", L"s").size(), 100u);
}

TEST_F(FileSettingsBackendTest, WritesChangesMadeAsOneOnce)
{
    backend.Write(L"App", L"s", L"before", L"0");
    backend.BeginChanges();
    backend.Write(L"App", L"s", L"one", L"1");
    backend.Write(L"App", L"s", L"two", L"2");
    EXPECT_EQ(Stored(L"one"), L"(missing)");

    FileSettingsBackend other(file, complaints);
    other.Write(L"App", L"s", L"other", L"3"); // and what comes in between is kept
    EXPECT_EQ(backend.Read(L"App", L"s", L"one"), L"1");
    backend.EndChanges();
    for (const wchar_t* key : {L"before", L"one", L"two", L"other"})
        EXPECT_NE(Stored(key), L"(missing)");
}

TEST_F(FileSettingsBackendTest, DoesNotWriteWhatIsStoredAlready)
{
    backend.Write(L"App", L"s", L"key", L"value");
    const fs::file_time_type before = fs::last_write_time(file);
    fs::last_write_time(file, before - std::chrono::hours(1));
    backend.Write(L"App", L"S", L"KEY", L"value");
    backend.DeleteKey(L"App", L"s", L"none");
    EXPECT_LT(fs::last_write_time(file), before);
}

struct DamageCase {
    const char* bytes;
    const char* why;
};

constexpr DamageCase kDamage[] = {
    {"", "it is empty"},
    {"Voxtrel settings 1\n", "cut off"},
    {"\xFF\xFE\x00", "line 1"},
    {"Voxtrel settings 1\napplication \"\xFF\"\nend\n", "line 2: it is not UTF-8"},
};

TEST_F(FileSettingsBackendTest, KeepsADamagedFileAside)
{
    fs::create_directories(file.parent_path());
    int number = 0;
    for (const auto& [bytes, why] : kDamage) {
        ++number;
        complaints.str("");
        Put(bytes);
        EXPECT_FALSE(backend.Read(L"App", L"s", L"key").has_value());
        EXPECT_FALSE(backend.Read(L"App", L"s", L"key").has_value());
        const std::string aside = file.string() + ".damaged-" + std::to_string(number);
        EXPECT_EQ(Bytes(aside), bytes);
        EXPECT_EQ(ComplaintCount(), 1u);
        EXPECT_NE(complaints.str().find(aside), std::string::npos) << complaints.str();
        EXPECT_NE(complaints.str().find(why), std::string::npos) << complaints.str();
        backend.Write(L"App", L"s", L"key", L"new");
        EXPECT_EQ(Stored(L"key"), L"new");
        EXPECT_EQ(Bytes(aside), bytes);
    }
}

TEST_F(FileSettingsBackendTest, KeepsADamagedFileAsideBeforeItWrites)
{
    backend.Write(L"App", L"s", L"key", L"value");
    backend.BeginChanges();
    backend.Write(L"App", L"s", L"other", L"1");
    Put("rubbish");
    backend.EndChanges();
    EXPECT_EQ(Stored(L"other"), L"1");
    EXPECT_EQ(Bytes(file.string() + ".damaged-1"), "rubbish");
}

TEST_F(FileSettingsBackendTest, TellsOnceThatItCannotWriteAndGoesOn)
{
    backend.Write(L"App", L"s", L"key", L"old");
    const fs::path obstacle = file.string() + ".new";
    fs::create_directories(obstacle / "in the way");
    backend.Write(L"App", L"s", L"key", L"new");
    backend.Write(L"App", L"s", L"other", L"too");
    EXPECT_EQ(ComplaintCount(), 1u) << complaints.str();
    EXPECT_EQ(backend.Read(L"App", L"s", L"key"), L"new");
    EXPECT_EQ(Stored(L"key"), L"old");

    fs::remove_all(obstacle);
    backend.Write(L"App", L"s", L"third", L"3");
    EXPECT_EQ(Stored(L"key"), L"new");
    EXPECT_EQ(Stored(L"other"), L"too");
    EXPECT_EQ(Stored(L"third"), L"3");
}

TEST_F(FileSettingsBackendTest, GoesOnWithoutAFolder)
{
    std::ofstream(folder.Path() / "voxtrel") << "a file where the folder should be";
    backend.Write(L"App", L"s", L"key", L"value");
    EXPECT_EQ(backend.Read(L"App", L"s", L"key"), L"value");
    EXPECT_EQ(ComplaintCount(), 1u) << complaints.str();
}

TEST_F(FileSettingsBackendTest, KeepsTheOldFileWhenTheDiskIsFull)
{
    backend.Write(L"App", L"s", L"key", L"old");
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{50, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    backend.Write(L"App", L"s", L"key", std::wstring(1000, L'n'));
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(Stored(L"key"), L"old");
    EXPECT_EQ(ComplaintCount(), 1u);
    EXPECT_FALSE(fs::exists(file.string() + ".new"));
    EXPECT_EQ(backend.Read(L"App", L"s", L"key"), std::wstring(1000, L'n'));
}

TEST_F(FileSettingsBackendTest, WritesNothingOverAFileThatItCannotRead)
{
    fs::create_directories(file); // a folder cannot be read as a file
    EXPECT_FALSE(backend.Read(L"App", L"s", L"key").has_value());
    backend.Write(L"App", L"s", L"key", L"value");
    EXPECT_TRUE(fs::is_directory(file));
    EXPECT_EQ(backend.Read(L"App", L"s", L"key"), L"value");
    EXPECT_EQ(ComplaintCount(), 1u) << complaints.str();
}

TEST_F(FileSettingsBackendTest, WaitsNoLongerThanItsPatienceForAStoppedProgram)
{
    backend.Write(L"App", L"s", L"key", L"old");
    const FileDescriptor held(::open((file.string() + ".lock").c_str(), O_RDWR | O_CLOEXEC));
    ASSERT_EQ(::flock(held.Get(), LOCK_EX), 0);
    const auto start = std::chrono::steady_clock::now();
    backend.Write(L"App", L"s", L"key", L"new");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    EXPECT_EQ(Stored(L"key"), L"old");
    EXPECT_EQ(ComplaintCount(), 1u);
    ASSERT_EQ(::flock(held.Get(), LOCK_UN), 0);
    backend.Write(L"App", L"s", L"other", L"too");
    EXPECT_EQ(Stored(L"key"), L"new");
}

TEST_F(FileSettingsBackendTest, FollowsALinkToTheFile)
{
    const fs::path real = folder.Path() / "elsewhere";
    FileSettingsBackend(real, complaints).Write(L"App", L"s", L"key", L"old");
    fs::create_directories(file.parent_path());
    fs::create_symlink(real, file);
    backend.Write(L"App", L"s", L"key", L"new");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(FileSettingsBackend(real, complaints).Read(L"App", L"s", L"key"), L"new");
}

// Runs the work in a process of its own, which ends without the tests' clean-up.
template <typename Work> pid_t Fork(Work work)
{
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    return child;
}

TEST_F(FileSettingsBackendTest, LosesNothingOfWhatTwoProgramsWriteAtOnce)
{
    constexpr int kWrites = 150;
    const auto writer = [this](const wchar_t* name) {
        return [this, name] {
            FileSettingsBackend own(file);
            for (int i = 0; i < kWrites; ++i)
                own.Write(L"App", L"s", name + std::to_wstring(i), L"value");
        };
    };
    const pid_t children[] = {Fork(writer(L"one")), Fork(writer(L"two"))};
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(backend.Pairs(L"App", L"s").size(), 2u * kWrites);
    EXPECT_EQ(complaints.str(), "");
}

TEST_F(FileSettingsBackendTest, IsOldOrNewAfterAKillAtAnyMoment)
{
    std::mt19937 random(99);
    int lastSeen = 0;
    for (int round = 0; round < 60; ++round) {
        int began[2];
        ASSERT_EQ(::pipe(began), 0);
        const pid_t child = Fork([&] {
            FileSettingsBackend own(file);
            for (int i = lastSeen + 1;; ++i) {
                own.BeginChanges();
                own.Write(L"App", L"s", L"number", std::to_wstring(i));
                own.Write(L"App", L"s", L"long",
                          std::wstring(static_cast<std::size_t>(i * 37 % 20000), L'é'));
                own.Write(L"App", L"s", L"again", std::to_wstring(i));
                own.EndChanges();
                if (i == lastSeen + 1 && ::write(began[1], "x", 1) != 1)
                    ::_exit(1);
            }
        });
        char byte = 0;
        ASSERT_EQ(::read(began[0], &byte, 1), 1);
        ::usleep(static_cast<useconds_t>(random() % 4000)); // the random moment
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        ::close(began[0]);
        ::close(began[1]);

        FileSettingsBackend after(file, complaints);
        const auto number = after.Read(L"App", L"s", L"number");
        ASSERT_TRUE(number.has_value());
        EXPECT_EQ(after.Read(L"App", L"s", L"again"), number);
        const int seen = std::stoi(*number);
        EXPECT_EQ(after.Read(L"App", L"s", L"long")->size(), static_cast<std::size_t>(seen * 37 % 20000));
        EXPECT_GT(seen, lastSeen);
        lastSeen = seen;
    }
    EXPECT_EQ(complaints.str(), "");
}

class Environment {
public:
    Environment(const char* name, const char* value) : name_(name)
    {
        if (const char* const before = std::getenv(name))
            before_ = before;
        value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~Environment() { before_ ? ::setenv(name_, before_->c_str(), 1) : ::unsetenv(name_); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    const char* name_;
    std::optional<std::string> before_;
};

TEST(DefaultFile, FollowsTheEnvironment)
{
    const Environment home("HOME", "/home/someone");
    {
        const Environment folder("XDG_CONFIG_HOME", "/somewhere");
        EXPECT_EQ(FileSettingsBackend::DefaultFile(), "/somewhere/voxtrel/settings");
    }
    for (const char* useless : {static_cast<const char*>(nullptr), "", "relative"}) {
        const Environment folder("XDG_CONFIG_HOME", useless);
        EXPECT_EQ(FileSettingsBackend::DefaultFile(), "/home/someone/.config/voxtrel/settings");
    }
}

} // namespace
} // namespace voxtrel::platform
