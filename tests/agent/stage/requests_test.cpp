#include "tests/agent/stage/stage_test.h"

namespace voxtrel::agent::stage {
namespace {

using Requests = StageTest;

TEST_F(Requests, RunStrictlyInTheirOrder)
{
    Ignore(genie->Show());
    Ignore(genie->Play(L"getattention"));
    Ignore(genie->Speak(L"hello"));
    Ignore(genie->Hide());
    view->Run(5000);
    EXPECT_EQ(events.Take(), (Lines{L"start Show", L"done Show", L"start Play getattention",
                                    L"done Play getattention", L"start Speak", L"balloon shown",
                                    L"done Speak", L"start Hide", L"balloon hidden", L"done Hide"}));
}

TEST_F(Requests, TellNothingFromInsideACall)
{
    Ignore(genie->Show());
    Ignore(genie->StopAll());
    Ignore(genie->Speak(L"hello"));
    EXPECT_TRUE(events.lines.empty());
    view->Run(0);
    EXPECT_FALSE(events.lines.empty());
}

TEST_F(Requests, ShowPlaysAShowingAnimationAndIsVisibleFromItsStart)
{
    Ignore(genie->Show());
    EXPECT_FALSE(genie->Visible());
    view->Run(0);
    EXPECT_TRUE(genie->Visible());
    EXPECT_EQ(ShownImage(), 1);
    EXPECT_EQ(Windows().at, (Point{400, 400}));
    view->Run(1000);
    EXPECT_EQ(frames, (Lines{L"Show 0", L"Show 1", L"Show 2"}));
    EXPECT_EQ(ShownImage(), 0);
}

TEST_F(Requests, ShowOfAVisibleCharacterIsDoneAtOnceWithoutAnimation)
{
    ShowGenie();
    Ignore(genie->Show());
    view->Run(0);
    EXPECT_EQ(events.Take(), (Lines{L"start Show", L"done Show"}));
    EXPECT_TRUE(frames.empty());
}

TEST_F(Requests, ShowWithoutAShowingAnimationStandsInTheSpeakingPose)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.states = {{L"Speaking", {L"RestPose"}}};
    Rebuild(file);
    Ignore(genie->Show());
    view->Run(0);
    EXPECT_EQ(ShownImage(), 0);
    EXPECT_EQ(events.Take(), (Lines{L"start Show", L"done Show"}));
}

TEST_F(Requests, HidePlaysAHidingAnimationAndThenHidesTheWindow)
{
    ShowGenie();
    Ignore(genie->Hide());
    view->Run(150);
    EXPECT_EQ(ShownImage(), 1);
    EXPECT_TRUE(genie->Visible());
    view->Run(1000);
    EXPECT_FALSE(genie->Visible());
    EXPECT_EQ(Windows().frame, nullptr);
}

TEST_F(Requests, HideOfAHiddenCharacterIsDoneAtOnce)
{
    Ignore(genie->Hide());
    view->Run(0);
    EXPECT_EQ(events.Take(), (Lines{L"start Hide", L"done Hide"}));
    EXPECT_TRUE(frames.empty());
}

TEST_F(Requests, UnknownAnimationFailsFromTheCallAndIsTold)
{
    ShowGenie();
    const Result result = genie->Play(L"Somersault");
    EXPECT_EQ(result.code, ErrorCode::NoSuchAnimation);
    EXPECT_NE(result.description.find(L"Somersault"), std::wstring::npos);
    EXPECT_TRUE(events.Take().empty()) << "from inside the call";
    view->Run(100);
    EXPECT_EQ(events.Take(), (Lines{L"unknown Play Somersault"}));
}

TEST_F(Requests, UnknownAnimationStopsNothing)
{
    ShowGenie();
    Ignore(genie->Speak(L"one two"));
    view->Run(50);
    Ignore(genie->Play(L"Somersault"));
    Ignore(genie->Play(L"wave"));
    EXPECT_TRUE(engine->Speaking());
    view->Run(1000);
    EXPECT_EQ(engine->stopped, 0);
    EXPECT_EQ(animations.back(), L"Wave");
}

TEST_F(Requests, DamagedAnimationFailsFromTheCall)
{
    EXPECT_EQ(genie->Play(L"damaged").code, ErrorCode::AnimationDamaged);
}

TEST_F(Requests, AnimationsAreFoundUnderAnyCapitalisation)
{
    ShowGenie();
    EXPECT_TRUE(genie->Play(L"GETATTENTION").Ok());
    view->Run(50);
    EXPECT_EQ(ShownImage(), 3);
}

TEST_F(Requests, PlayOnAHiddenCharacterRunsInvisiblyAndFails)
{
    Ignore(genie->Play(L"getattention"));
    view->Run(200);
    EXPECT_EQ(Windows().framesShown, 0);
    EXPECT_EQ(events.Take(), (Lines{L"start Play getattention"}));
    view->Run(200);
    EXPECT_EQ(events.Take(), (Lines{L"hidden Play getattention"}));
}

TEST_F(Requests, SpeakWhileHiddenFailsWithoutASound)
{
    Ignore(genie->Speak(L"hello"));
    view->Run(1000);
    EXPECT_EQ(events.Take(), (Lines{L"start Speak", L"hidden Speak"}));
    EXPECT_TRUE(engine->spoken.empty());
    EXPECT_EQ(Windows().balloonsShown, 0);
}

TEST_F(Requests, LoopingAnimationHoldsTheQueueUntilStopAll)
{
    ShowGenie();
    Ignore(genie->Play(L"loop"));
    Ignore(genie->Speak(L"hello"));
    view->Run(60'000);
    EXPECT_TRUE(engine->spoken.empty());
    Ignore(genie->StopAll());
    Ignore(genie->Speak(L"again"));
    view->Run(1000);
    EXPECT_EQ(engine->spoken, (Lines{L"again"}));
}

TEST_F(Requests, StatesPickAmongTheirAnimationsByChance)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.states = {{L"Showing", {L"Show", L"Nowhere", L"Wave"}}};
    Rebuild(file);
    chance = [](int bound) { return bound - 1; };
    Ignore(genie->Show());
    view->Run(0);
    EXPECT_EQ(animations, (Lines{L"Wave"}));
}

TEST_F(Requests, ThousandsThatTakeNoTimeDoNotHoldUpTheDesktop)
{
    ShowGenie();
    for (int i = 0; i < 5000; ++i)
        Ignore(genie->Show());
    const int before = view->ticks;
    view->Run(0);
    EXPECT_EQ(events.Take().size(), 10'000U);
    EXPECT_GT(view->ticks - before, 10);
}

TEST_F(Requests, HandlersMayCallAnything)
{
    events.onEvent = [this](const std::wstring& line) {
        if (line == L"done Show")
            Ignore(genie->Speak(L"hello"));
        if (line == L"done Speak")
            Ignore(control->Unload(L"genie"));
    };
    Ignore(genie->Show());
    view->Run(5000);
    EXPECT_EQ(control->Find(L"genie"), nullptr);
    EXPECT_EQ(events.Take(), (Lines{L"start Show", L"done Show", L"start Speak", L"balloon shown",
                                    L"done Speak", L"balloon hidden"}));
}

} // namespace
} // namespace voxtrel::agent::stage
