#include "agent/speech/speech_factory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

namespace voxtrel::agent::speech {
namespace {

std::uint32_t Number(const std::string& bytes, std::size_t at, int size = 4)
{
    std::uint32_t number = 0;
    for (int i = size; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
    return number;
}

TEST(RenderToWav, WritesAHeaderThatTellsTheTruth)
{
    std::ostringstream out;
    ASSERT_TRUE(RenderToWav(L"\\pau=1000\\", {}, out).Ok());
    const std::string wav = out.str();
    ASSERT_EQ(wav.size(), 44u + 32000u);
    EXPECT_EQ(wav.substr(0, 4), "RIFF");
    EXPECT_EQ(Number(wav, 4), wav.size() - 8);
    EXPECT_EQ(wav.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(Number(wav, 20, 2), 1u);
    EXPECT_EQ(Number(wav, 22, 2), 1u);
    EXPECT_EQ(Number(wav, 24), 16000u);
    EXPECT_EQ(Number(wav, 34, 2), 16u);
    EXPECT_EQ(wav.substr(36, 4), "data");
    EXPECT_EQ(Number(wav, 40), 32000u);
}

// Takes bytes and can neither tell where it is nor go back.
class Pipe : public std::streambuf {
public:
    std::string bytes;

protected:
    int overflow(int c) override
    {
        bytes += static_cast<char>(c);
        return c;
    }
};

TEST(RenderToWav, WritesIntoAPipe)
{
    Pipe pipe;
    std::ostream out(&pipe);
    ASSERT_TRUE(RenderToWav(L"\\pau=1000\\", {}, out).Ok());
    EXPECT_EQ(pipe.bytes.size(), 44u + 32000u);
    EXPECT_EQ(Number(pipe.bytes, 40), 0xFFFFFFFF);
}

class FullDisk : public std::streambuf {
protected:
    int overflow(int) override { return traits_type::eof(); }
};

TEST(RenderToWav, FailsInWordsWhenTheSoundCannotBeWritten)
{
    FullDisk disk;
    std::ostream out(&disk);
    const Result failed = RenderToWav(L"Hello", {}, out, {}, {.soundNotWritten = L"disk full"});
    EXPECT_EQ(failed.code, ErrorCode::AudioNotAccessible);
    EXPECT_EQ(failed.description, L"disk full");
}

TEST(RenderToWav, FailsInWordsForAnUnknownVoice)
{
    std::ostringstream out;
    const Result failed =
        RenderToWav(L"Hello", L"{nobody}", out, {}, {.voiceNotAvailable = L"no such voice"});
    EXPECT_EQ(failed.code, ErrorCode::VoiceNotAvailable);
    EXPECT_EQ(failed.description, L"no such voice");
    EXPECT_TRUE(out.str().empty());
}

TEST(RenderToWav, TellsItsProgressUpToTheEnd)
{
    std::vector<double> told;
    std::ostringstream out;
    ASSERT_TRUE(RenderToWav(L"One. Two. Three. Four.", {}, out, [&](double done) {
                    told.push_back(done);
                    return true;
                }).Ok());
    ASSERT_GE(told.size(), 4u);
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_GE(told.front(), 0.0);
    EXPECT_EQ(told.back(), 1.0);
}

TEST(RenderToWav, StopsWhenToldToAndLeavesAValidFile)
{
    std::ostringstream all, some;
    const std::wstring text = L"One. Two. Three. Four. Five. Six.";
    Ignore(RenderToWav(text, {}, all));
    int calls = 0;
    Ignore(RenderToWav(text, {}, some, [&](double) { return ++calls < 3; }));
    EXPECT_EQ(calls, 3);
    EXPECT_LT(some.str().size(), all.str().size());
    EXPECT_EQ(Number(some.str(), 40), some.str().size() - 44);
}

TEST(RenderToWav, SpeaksWithTheVoiceThatIsAskedFor)
{
    std::ostringstream usual, other;
    Ignore(RenderToWav(L"Hello.", ListVoices()[0].modeId, usual));
    Ignore(RenderToWav(L"Hello.", ListVoices()[6].modeId, other));
    EXPECT_NE(usual.str(), other.str());
}

TEST(ListVoices, HasSixMenAndTwoWomenFirst)
{
    const auto voices = ListVoices();
    ASSERT_GE(voices.size(), 8u);
    for (std::size_t i = 0; i < 8; ++i) {
        EXPECT_EQ(voices[i].female, i >= 6) << i;
        EXPECT_EQ(voices[i].modeId, L"{CA141FD0-AC7F-11D1-97A3-00600827300" + std::to_wstring(i) + L"}");
        EXPECT_FALSE(voices[i].name.empty());
    }
}

} // namespace
} // namespace voxtrel::agent::speech
