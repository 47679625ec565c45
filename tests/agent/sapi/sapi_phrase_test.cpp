#include "agent/voices/sapi_phrase.h"

#include <gtest/gtest.h>

namespace voxtrel::agent::voices {
namespace {

using speech::Phrase;
using speech::Prosody;

Prosody Spoken(int pitch, int speed)
{
    Prosody prosody;
    prosody.pitch = pitch;
    prosody.speed = speed;
    return prosody;
}

TEST(SapiMarkupOf, MarksEachWordAndLosesNothing)
{
    const Phrase phrase{{{L"Tom"}, {L"&"}, {L"<b>\"Jerry's\"</b>"}, {L"1,250.50"}}, {}};
    const SapiMarkup markup = SapiMarkupOf(phrase);
    EXPECT_EQ(markup.text, L"<pitch absmiddle=\"0\"><bookmark mark=\"0\"/>Tom <bookmark mark=\"1\"/>&amp; "
                           L"<bookmark mark=\"2\"/>&lt;b&gt;&quot;Jerry&apos;s&quot;&lt;/b&gt; "
                           L"<bookmark mark=\"3\"/>1,250.50</pitch>");
}

TEST(SapiMarkupOf, EmphasizesTheWordsThatAre)
{
    const Phrase phrase{{{L"very", true}, {L"good"}}, {}};
    EXPECT_EQ(SapiMarkupOf(phrase).text, L"<pitch absmiddle=\"0\"><bookmark mark=\"0\"/><emph>very</emph> "
                                         L"<bookmark mark=\"1\"/>good</pitch>");
}

TEST(SapiMarkupOf, KnowsWhereEachWordBegins)
{
    const Phrase phrase{{{L"<a>"}, {L"b", true}, {L"\u00E4\u20AC"}}, Spoken(170, 150)};
    const SapiMarkup markup = SapiMarkupOf(phrase);
    ASSERT_EQ(markup.offsets.size(), 3u);
    EXPECT_EQ(markup.text.substr(markup.offsets[0], 4), L"&lt;");
    EXPECT_EQ(markup.text.substr(markup.offsets[1], 2), L"b<");
    EXPECT_EQ(markup.text.substr(markup.offsets[2], 2), L"\u00E4\u20AC");
}

TEST(SapiScales, FollowTheProsodyAndEndAtTheirLimits)
{
    struct Row {
        int pitch, speed;
        long sapiPitch, sapiRate;
    };
    constexpr Row rows[] = {
        {150, 150, 0, 0},   {200, 250, 10, 5}, {112, 50, -10, -10}, {400, 250, 10, 5},
        {50, 50, -10, -10}, {159, 167, 2, 1},  {141, 134, -2, -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.pitch);
        EXPECT_EQ(SapiPitch(Spoken(row.pitch, row.speed)), row.sapiPitch);
        EXPECT_EQ(SapiRate(Spoken(row.pitch, row.speed)), row.sapiRate);
    }
}

TEST(MouthOfViseme, KnowsAllOfThemAndClosesTheMouthForOthers)
{
    EXPECT_EQ(MouthOfViseme(0), acs::Mouth::Closed);
    EXPECT_EQ(MouthOfViseme(7), acs::Mouth::Narrow);
    EXPECT_EQ(MouthOfViseme(11), acs::Mouth::Fully);
    EXPECT_EQ(MouthOfViseme(21), acs::Mouth::Closed);
    EXPECT_EQ(MouthOfViseme(22), acs::Mouth::Closed);
    EXPECT_EQ(MouthOfViseme(65535), acs::Mouth::Closed);
}

} // namespace
} // namespace voxtrel::agent::voices
