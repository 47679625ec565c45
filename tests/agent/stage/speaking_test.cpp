#include "tests/agent/stage/stage_test.h"

namespace voxtrel::agent::stage {
namespace {

using Speaking = StageTest;

TEST_F(Speaking, TakesTheSpeakingPoseAndBeginsAtOnceInItsLastFrame)
{
    ShowGenie();
    Ignore(genie->Speak(L"hello"));
    view->Run(0);
    EXPECT_EQ(frames, (Lines{L"RestPose 0"}));
    EXPECT_TRUE(engine->Speaking());
}

TEST_F(Speaking, LeavesTheAnimationBeforeFirst)
{
    ShowGenie();
    Ignore(genie->Play(L"getattention"));
    Ignore(genie->Speak(L"hello"));
    view->Run(550);
    EXPECT_TRUE(engine->spoken.empty());
    view->Run(100);
    EXPECT_EQ(frames, (Lines{L"GetAttention 0", L"GetAttention 1", L"GetAttention 2", L"GetAttentionReturn 0",
                             L"GetAttentionReturn 1", L"GetAttentionReturn 2", L"RestPose 0"}));
    EXPECT_EQ(engine->spoken.size(), 1U);
}

TEST_F(Speaking, StaysInAnAnimationWhoseLastFrameHasMouths)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.animations[3].frames[2].mouths.push_back({acs::Mouth::Open, false, kFirstMouth + 3, 3, 5});
    Rebuild(file);
    ShowGenie();
    Ignore(genie->Play(L"getattention"));
    Ignore(genie->Speak(L"hello"));
    view->Run(300);
    EXPECT_TRUE(engine->Speaking());
    view->Run(40);
    EXPECT_EQ(ShownImage(), 5);
    EXPECT_EQ(ShownMouth(), 3);
}

TEST_F(Speaking, MouthFollowsTheVoiceAndIsClosedAfterwards)
{
    ShowGenie();
    EXPECT_EQ(ShownMouth(), -1);
    Ignore(genie->Speak(L"hello there"));
    view->Run(50);
    EXPECT_EQ(ShownMouth(), 3);
    view->Run(500);
    EXPECT_EQ(ShownMouth(), 0);
}

TEST_F(Speaking, TakesAnEventAtItsMomentWhenTheEngineKnowsIt)
{
    ShowGenie();
    engine->tellsTheNextEvent = true;
    engine->wordTime = Time{93};
    const Time begin = view->now;
    Ignore(genie->Speak(L"one two"));
    view->Run(92);
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"one"}));
    view->RunUntil(begin + Time{93});
    EXPECT_EQ(BalloonLinesShown(), (Lines{L"one two"}));
}

TEST_F(Speaking, MouthIsGoneWithTheNextFrame)
{
    ShowGenie();
    Ignore(genie->Speak(L"hello"));
    Ignore(genie->Play(L"wave"));
    view->Run(150);
    EXPECT_EQ(ShownImage(), 6);
    EXPECT_EQ(ShownMouth(), -1);
}

TEST_F(Speaking, CharacterWithoutASpeakingPoseSpeaksWhereItStands)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.states = {{L"Showing", {L"Show"}}};
    Rebuild(file);
    ShowGenie();
    Ignore(genie->Speak(L"hello"));
    view->Run(1000);
    EXPECT_EQ(events.Take().at(2), L"done Speak");
    EXPECT_EQ(ShownMouth(), -1);
}

TEST_F(Speaking, BookmarksArriveInOrderAsTheyAreReached)
{
    ShowGenie();
    Ignore(genie->Speak(L"#1 one #2 two #3 #4"));
    view->Run(50);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"bookmark 1", L"balloon shown"}));
    view->Run(100);
    EXPECT_EQ(events.Take(), (Lines{L"bookmark 2"}));
    view->Run(100);
    EXPECT_EQ(events.Take(), (Lines{L"bookmark 3", L"bookmark 4", L"done Speak"}));
}

TEST_F(Speaking, BookmarksAreNeverMoreThanATickLate)
{
    ShowGenie();
    Ignore(genie->Speak(L"one two three #5 four"));
    const Time begun = view->now;
    Time arrived{};
    events.onEvent = [&](const std::wstring& line) {
        if (line == L"bookmark 5")
            arrived = view->now;
    };
    view->Run(1000);
    EXPECT_GE(arrived - begun, Time{300});
    EXPECT_LE(arrived - begun, Time{330});
}

TEST_F(Speaking, EmptyTextIsDoneAtOnceWithoutABalloon)
{
    ShowGenie();
    Ignore(genie->Speak(L""));
    view->Run(50);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"done Speak"}));
}

TEST_F(Speaking, OneCharacterWaitsUntilTheOtherIsSilent)
{
    ShowGenie();
    ASSERT_TRUE(control->Load(L"merle", L"other.acs").Ok());
    Character* merle = control->Find(L"merle");
    Ignore(merle->Show());
    view->Run(300);
    Ignore(genie->Speak(L"one two three"));
    view->Run(0);
    Ignore(merle->Speak(L"four"));
    view->Run(200);
    EXPECT_EQ(engine->spoken.size(), 1U);
    view->Run(500);
    EXPECT_EQ(engine->spoken, (Lines{L"one two three", L"four"}));
}

TEST_F(Speaking, VoiceThatIsNotThereFailsWithWordsAndKeepsTheOld)
{
    ASSERT_TRUE(genie->SetTTSModeID(L"{ONE}").Ok());
    const Result result = genie->SetTTSModeID(L"{NONE}");
    EXPECT_EQ(result.code, ErrorCode::VoiceNotAvailable);
    EXPECT_FALSE(result.description.empty());
    EXPECT_EQ(genie->TTSModeID(), L"{ONE}");
}

TEST_F(Speaking, CharacterBeginsWithTheVoiceOfItsFile)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.voice.emplace();
    file.voice->modeId = "{FILE}";
    Rebuild(file);
    EXPECT_EQ(genie->TTSModeID(), L"{FILE}");
    file.voice->modeId = "{NONE}";
    Rebuild(file);
    EXPECT_EQ(genie->TTSModeID(), L"{DEFAULT}");
}

TEST_F(Speaking, ParkedOutsideTheScreenItSpeaksWithoutABalloon)
{
    ShowGenie();
    Ignore(genie->SetLeft(-8));
    Ignore(genie->SetTop(-8));
    Ignore(genie->Speak(L"#1 hello"));
    view->Run(1000);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"bookmark 1", L"done Speak"}));
    EXPECT_EQ(engine->spoken.size(), 1U);
}

} // namespace
} // namespace voxtrel::agent::stage
