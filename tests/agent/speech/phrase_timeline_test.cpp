#include "agent/speech/phrase_timeline.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::speech {
namespace {

using Starts = std::vector<std::int64_t>;

const Phrase kPhrase{.words = {{L"abc"}, {L"abc"}, {L"abc"}, {L"abc"}}, .prosody = {}};

struct PlaceCase {
    const char* what;
    std::vector<ReportedWord> reported;
    Starts expected;
};

const PlaceCase kPlaceCases[] = {
    {"each word", {{100, 0}, {200, 1}, {300, 2}, {400, 3}}, {100, 200, 300, 400}},
    {"nothing", {}, {100, 200, 300, 400}},
    {"one between is missing", {{100, 0}, {200, 1}, {480, 3}}, {100, 200, 340, 480}},
    {"the last ones are missing", {{100, 0}, {200, 1}}, {100, 200, 300, 400}},
    {"the first is missing", {{180, 1}, {300, 2}, {400, 3}}, {100, 180, 300, 400}},
    {"one comes twice", {{100, 0}, {200, 1}, {250, 1}, {300, 2}, {400, 3}}, {100, 200, 300, 400}},
    {"one comes late", {{100, 0}, {300, 2}, {310, 1}, {400, 3}}, {100, 200, 300, 400}},
    {"time goes back", {{100, 0}, {300, 1}, {200, 2}, {400, 3}}, {100, 300, 350, 400}},
    {"before the sound", {{0, 0}, {200, 1}, {300, 2}, {400, 3}}, {100, 200, 300, 400}},
    {"behind the sound", {{100, 0}, {200, 1}, {300, 2}, {900, 3}}, {100, 200, 300, 500}},
    {"no such word", {{100, 0}, {150, 17}, {200, 1}, {300, 2}, {400, 3}}, {100, 200, 300, 400}},
};

TEST(PlaceWords, GivesEachWordItsPlace)
{
    for (const auto& [what, reported, expected] : kPlaceCases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(PlaceWords(kPhrase, reported, 100, 500), expected);
    }
}

TEST(PlaceWords, GivesLongWordsMoreTime)
{
    const Phrase phrase{.words = {{L"a"}, {L"abcdefg"}, {L"a"}}, .prosody = {}};
    EXPECT_EQ(PlaceWords(phrase, {}, 0, 1200), (Starts{0, 200, 1000}));
}

TEST(MouthsOfWord, OpensForVowels)
{
    const auto mouths = MouthsOfWord(L"\u201EMama!", 1000, 1400);
    ASSERT_EQ(mouths.size(), 5U); // the quotation mark counts as a letter that is not known
    EXPECT_EQ(mouths[1].mouth, acs::Mouth::Closed);
    EXPECT_EQ(mouths[2].mouth, acs::Mouth::Fully);
    EXPECT_EQ(mouths[0].start, 1000);
    EXPECT_LT(mouths[4].start, 1400);
    EXPECT_TRUE(MouthsOfWord(L"...", 0, 100).empty());
}

} // namespace
} // namespace voxtrel::agent::speech
