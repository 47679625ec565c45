#include "app/traced_server_process.h"

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace voxtrel::app {
namespace {

class ScriptedProcess final : public platform::ServerProcess {
public:
    explicit ScriptedProcess(std::deque<std::string> pieces) : pieces_(std::move(pieces)) {}

    bool Start(const std::wstring& path) override { return !path.empty(); }
    bool Running() override { return true; }
    std::string Read() override
    {
        if (pieces_.empty())
            return {};
        std::string piece = std::move(pieces_.front());
        pieces_.pop_front();
        return piece;
    }
    void Write(std::string_view) override {}
    void Close() override {}
    void Kill() override {}

private:
    std::deque<std::string> pieces_;
};

// Removed when nobody has it open any more.
struct TraceFile {
    ~TraceFile() { std::filesystem::remove(path); }
    std::filesystem::path path = std::filesystem::temp_directory_path() / "voxtrel-traced-server-test";
};

class TracedServerProcessTest : public testing::Test {
protected:
    std::string Traced() const
    {
        std::ifstream stream(file.path);
        std::ostringstream text;
        text << stream.rdbuf();
        return text.str();
    }

    TraceFile file;
    Trace trace;
    TracedServerProcess process{
        std::make_unique<ScriptedProcess>(std::deque<std::string>{"object\tlin", "k\nalive\n"}), trace};
};

TEST_F(TracedServerProcessTest, HandsEveryByteOnWithoutATrace)
{
    EXPECT_EQ(process.Read(), "object\tlin");
    EXPECT_EQ(process.Read(), "k\nalive\n");
    EXPECT_EQ(process.Read(), "");
}

TEST_F(TracedServerProcessTest, TracesWholeLinesAndStarts)
{
    ASSERT_TRUE(trace.Open(file.path.wstring()));
    EXPECT_FALSE(process.Start(L""));
    EXPECT_TRUE(process.Start(L"server"));
    process.Read();
    EXPECT_EQ(Traced().find(R"("server")"), std::string::npos) << "the line is not at its end";
    process.Read();
    EXPECT_NE(Traced().find(R"("started":false)"), std::string::npos) << Traced();
    EXPECT_NE(Traced().find(R"("started":true)"), std::string::npos);
    EXPECT_NE(Traced().find(R"("text":"object\u0009link")"), std::string::npos);
    EXPECT_NE(Traced().find(R"("text":"alive")"), std::string::npos);
}

} // namespace
} // namespace voxtrel::app
