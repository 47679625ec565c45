#include "agent/speech/speech_factory.h"
#include "agent/speech/wav_reader.h"
#include "tests/agent/speech/engine_fixtures.h"
#include "tests/agent/speech/engine_listener.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <thread>

namespace voxtrel::agent::speech {
namespace {

using std::chrono::steady_clock;
using namespace std::chrono_literals;
using Kind = SpeechEvent::Kind;

class SilentEngine : public testing::Test {
protected:
    std::unique_ptr<SpeechEngine> Make(SpeechEngineOptions options = {})
    {
        options.output = SpeechEngineOptions::Output::Silent;
        options.wake = bell_.Ringer();
        return MakeSpeechEngine(std::move(options));
    }

    bool RunToEnd(SpeechEngine& engine)
    {
        return bell_.WaitFor([&] {
            Take(engine);
            return !engine.Speaking();
        });
    }

    void Take(SpeechEngine& engine)
    {
        for (SpeechEvent& event : engine.TakeDueEvents())
            events_.push_back(std::move(event));
    }

    std::wstring Told() const { return ToldBy(events_); }

    Bell bell_;
    std::vector<SpeechEvent> events_;
};

TEST_F(SilentEngine, TellsWordsBookmarksAndTheEndInOrder)
{
    const auto engine = Make();
    EXPECT_FALSE(engine->Speaking());
    engine->Start(L"\\Spd=250\\One \\Mrk=1\\two\n\\map=\"\\Mrk=2\\three\"=\"3\"\\. \\Mrk=3\\");
    EXPECT_TRUE(engine->Speaking());
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(Told(), L"One #1 two / #2 3. #3 .");
    EXPECT_TRUE(engine->TakeDueEvents().empty());
}

TEST_F(SilentEngine, MovesTheMouthAndClosesIt)
{
    const auto engine = Make();
    engine->Start(L"Hello.");
    ASSERT_TRUE(RunToEnd(*engine));
    std::vector<acs::Mouth> mouths;
    for (const SpeechEvent& event : events_) {
        if (event.kind == Kind::Mouth)
            mouths.push_back(event.mouth);
    }
    ASSERT_GE(mouths.size(), 3u);
    EXPECT_EQ(mouths.back(), acs::Mouth::Closed);
    EXPECT_EQ(std::adjacent_find(mouths.begin(), mouths.end()), mouths.end());
}

TEST_F(SilentEngine, TakesTheTimeThatSpeakingTakes)
{
    const auto engine = Make();
    const auto begin = steady_clock::now();
    engine->Start(L"\\Vol=0\\\\Mrk=1\\\\pau=400\\\\Mrk=2\\");
    ASSERT_TRUE(RunToEnd(*engine));
    const auto taken = steady_clock::now() - begin;
    EXPECT_GE(taken, 390ms);
    EXPECT_LT(taken, 2s); // a busy machine may be late
    EXPECT_EQ(Told(), L"#1 #2 .");
}

TEST_F(SilentEngine, PassesBookmarksOfTextThatHasNoSound)
{
    for (const wchar_t* markup :
         {L"\\Mrk=1\\\\Mrk=2\\", L"\\Mrk=1\\  \\Mrk=2\\ ", L"\\map=\"\\Mrk=1\\\\Mrk=2\\\"=\"\"\\",
          L"\\map=\"\\Mrk=1\\\u65E5\u672C \\Mrk=2\\\u8A9E\"=\"\"\\"}) {
        SCOPED_TRACE(testing::PrintToString(std::wstring(markup)));
        const auto engine = Make();
        events_.clear();
        engine->Start(markup);
        ASSERT_TRUE(RunToEnd(*engine));
        EXPECT_EQ(Told(), L"#1 #2 .");
    }
}

TEST_F(SilentEngine, EndsAnEmptyUtterance)
{
    const auto engine = Make();
    engine->Start(L"");
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(Told(), L".");
}

TEST_F(SilentEngine, TellsNothingOfAStoppedUtterance)
{
    const auto engine = Make();
    engine->Start(L"\\Mrk=1\\One two three four five six seven. \\Mrk=2\\Eight nine ten.");
    ASSERT_TRUE(bell_.WaitFor([&] {
        Take(*engine);
        return !events_.empty();
    }));
    engine->Stop();
    EXPECT_FALSE(engine->Speaking());
    EXPECT_TRUE(engine->TakeDueEvents().empty());
    events_.clear();
    engine->Start(L"\\Mrk=7\\");
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(Told(), L"#7 .");
}

TEST_F(SilentEngine, BeginsAnewRightAfterAStop)
{
    const auto engine = Make();
    std::wstring book;
    for (int i = 0; i < 100000; ++i)
        book += L"This sentence is part of a long book that nobody wants to hear to its end, ";
    for (int round = 0; round < 20; ++round) {
        engine->Start(book);
        engine->Stop();
    }
    engine->Start(book);
    events_.clear();
    engine->Start(L"\\Spd=250\\\\Mrk=5\\Done.");
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(Told(), L"#5 Done. .");
}

TEST_F(SilentEngine, StopIsHarmlessWithoutSpeech)
{
    const auto engine = Make();
    engine->Stop();
    EXPECT_FALSE(engine->Speaking());
}

TEST_F(SilentEngine, WakesTheUserInterface)
{
    const auto engine = Make();
    engine->Start(L"\\Mrk=1\\");
    EXPECT_TRUE(bell_.WaitFor([&] { return bell_.Rung() > 0; }));
}

TEST_F(SilentEngine, RepeatsTheLastStatementWithoutItsBookmarks)
{
    const auto engine = Make();
    engine->Start(L"\\Spd=250\\\\Mrk=1\\Hello.");
    ASSERT_TRUE(RunToEnd(*engine));
    events_.clear();
    engine->Start(L" \\Lst\\ ");
    ASSERT_TRUE(RunToEnd(*engine));
    EXPECT_EQ(Told(), L"Hello. .");
}

TEST_F(SilentEngine, SpeaksOneAlternativeOnlyWhenAskedTo)
{
    const auto plain = Make();
    plain->Start(L"\\Mrk=1\\|\\Mrk=2\\");
    ASSERT_TRUE(RunToEnd(*plain));
    EXPECT_EQ(Told(), L"#1 | #2 .");
    events_.clear();
    const auto picking = Make({.alternatives = true});
    picking->Start(L"\\Mrk=1\\|\\Mrk=2\\");
    ASSERT_TRUE(RunToEnd(*picking));
    EXPECT_TRUE(Told() == L"#1 ." || Told() == L"#2 .");
}

TEST_F(SilentEngine, KnowsItsVoices)
{
    const auto engine = Make();
    const std::wstring usual = engine->Mode();
    EXPECT_EQ(usual, ListVoices().front().modeId);
    EXPECT_TRUE(engine->SetMode(L"{ca141fd0-ac7f-11d1-97a3-006008273006}").Ok());
    EXPECT_EQ(engine->Mode(), L"{CA141FD0-AC7F-11D1-97A3-006008273006}");
    const Result unknown = engine->SetMode(L"{00000000-0000-0000-0000-000000000000}");
    EXPECT_EQ(unknown.code, ErrorCode::VoiceNotAvailable);
    EXPECT_FALSE(unknown.description.empty());
    EXPECT_EQ(engine->Mode(), L"{CA141FD0-AC7F-11D1-97A3-006008273006}");
}

std::uint32_t Number(const std::string& bytes, std::size_t at)
{
    return static_cast<std::uint32_t>(
        static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1]) << 8 |
        static_cast<unsigned char>(bytes[at + 2]) << 16 | static_cast<unsigned char>(bytes[at + 3]) << 24);
}

std::string FileContent(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::filesystem::path NewRecording()
{
    return std::filesystem::temp_directory_path() /
           ("voxtrel-recording-" + std::to_string(std::hash<std::thread::id>()(std::this_thread::get_id())) +
            std::to_string(steady_clock::now().time_since_epoch().count()) + ".wav");
}

TEST_F(SilentEngine, RecordsWhatIsSpokenInAFileThatIsValidAtAnyMoment)
{
    const std::filesystem::path path = NewRecording();
    auto engine = Make({.record = path});
    engine->Start(L"\\pau=500\\\\Mrk=1\\\\pau=500\\");
    ASSERT_TRUE(bell_.WaitFor([&] { return FileContent(path).size() > 5000; }));
    const std::string early = FileContent(path);
    EXPECT_GT(Number(early, 40), 0u);
    EXPECT_LE(Number(early, 40), early.size() - 44 + 2000);
    ASSERT_TRUE(RunToEnd(*engine));
    ASSERT_TRUE(bell_.WaitFor([&] { return Number(FileContent(path), 40) == 32000; }));
    EXPECT_EQ(FileContent(path).size(), 44u + 32000u);
    EXPECT_EQ(FileContent(path).substr(0, 4), "RIFF");
    engine.reset();
    std::filesystem::remove(path);
}

TEST_F(SilentEngine, PlaysSoundsInTheirTimeAndRecordsThem)
{
    const std::filesystem::path path = NewRecording();
    auto engine = Make({.record = path});
    const auto begun = steady_clock::now();
    engine->Sounds()->StartSound(LevelWave(5000, 3200));
    EXPECT_TRUE(bell_.WaitFor([&] { return Number(FileContent(path), 40) == 6400; }));
    EXPECT_GE(steady_clock::now() - begun, 150ms);
    engine.reset();
    const std::vector<std::int16_t> recorded = [&] {
        const std::string bytes = FileContent(path);
        return ReadWav({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    }();
    EXPECT_EQ(recorded, std::vector<std::int16_t>(3200, 5000));
    std::filesystem::remove(path);
}

} // namespace
} // namespace voxtrel::agent::speech
