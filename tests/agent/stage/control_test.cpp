#include "agent/stage/balloon_shape.h"
#include "tests/agent/stage/stage_test.h"

namespace voxtrel::agent::stage {
namespace {

using ControlTest = StageTest;

TEST_F(ControlTest, LoadDoesNotShowTheCharacter)
{
    view->Run(1000);
    EXPECT_FALSE(genie->Visible());
    EXPECT_EQ(Windows().framesShown, 0);
}

TEST_F(ControlTest, LoadDecodesNoImageAndShowOnlyTheFirst)
{
    acs::CharacterFile file = MakeTestCharacter();
    const auto images = std::make_shared<TestImages>();
    file.images = images;
    Rebuild(file);
    EXPECT_TRUE(images->decoded.empty());
    Ignore(genie->Show());
    view->Run(0);
    EXPECT_EQ(images->decoded, (std::multiset<std::size_t>{1}));
}

TEST_F(ControlTest, IdentifiersAreFoundUnderAnyCapitalisation)
{
    EXPECT_EQ(control->Find(L"GENIE"), genie);
    EXPECT_EQ(control->Load(L"Genie", L"other.acs").code, ErrorCode::CharacterAlreadyLoaded);
    EXPECT_TRUE(control->Unload(L"gENIE").Ok());
    EXPECT_EQ(control->Find(L"genie"), nullptr);
}

TEST_F(ControlTest, SameCharacterIsNotLoadedTwice)
{
    const Result result = control->Load(L"twin", L"genie.acs");
    EXPECT_EQ(result.code, ErrorCode::CharacterAlreadyLoaded);
    EXPECT_FALSE(result.description.empty());
    EXPECT_TRUE(control->Load(L"other", L"other.acs").Ok());
}

TEST_F(ControlTest, IdentifierIsFreeAfterAFailedLoad)
{
    EXPECT_EQ(control->Load(L"merle", L"missing.acs").code, ErrorCode::FileNotFound);
    EXPECT_EQ(control->Find(L"merle"), nullptr);
    EXPECT_TRUE(control->Load(L"merle", L"other.acs").Ok());
}

TEST_F(ControlTest, UnloadOfAnUnknownIdentifierFails)
{
    EXPECT_EQ(control->Unload(L"merle").code, ErrorCode::CharacterIdNotValid);
}

TEST_F(ControlTest, UnloadSilencesAndHidesAtOnceWithoutAnimation)
{
    ShowGenie();
    Ignore(genie->Speak(L"#1 one #2 two"));
    Ignore(genie->Hide());
    view->Run(50);
    events.Take();
    frames.clear();
    ASSERT_TRUE(control->Unload(L"genie").Ok());
    EXPECT_FALSE(engine->Speaking());
    EXPECT_FALSE(Windows().alive);
    view->Run(5000);
    EXPECT_EQ(events.Take(), (Lines{L"interrupted Speak", L"removed Hide", L"balloon hidden"}));
    EXPECT_TRUE(frames.empty());
}

TEST_F(ControlTest, CharacterBeginsWhereTheUnloadedOneStood)
{
    Ignore(genie->SetTop(345));
    Ignore(genie->SetLeft(-67));
    ASSERT_TRUE(control->Unload(L"genie").Ok());
    ASSERT_TRUE(control->Load(L"merle", L"other.acs").Ok());
    EXPECT_EQ(control->Find(L"merle")->Top(), 345);
    EXPECT_EQ(control->Find(L"merle")->Left(), -67);
}

TEST_F(ControlTest, AnotherCharacterSpeaksAfterAnUnload)
{
    ShowGenie();
    Ignore(genie->Speak(L"one two"));
    view->Run(50);
    ASSERT_TRUE(control->Unload(L"genie").Ok());
    ASSERT_TRUE(control->Load(L"merle", L"other.acs").Ok());
    Ignore(control->Find(L"merle")->Show());
    Ignore(control->Find(L"merle")->Speak(L"three"));
    view->Run(500);
    EXPECT_EQ(engine->spoken.back(), L"three");
}

TEST_F(ControlTest, WindowHasTheEnglishNameOfTheCharacter) { EXPECT_EQ(Windows().name, L"Tester"); }

TEST_F(ControlTest, WorksWithoutAnybodyToTell)
{
    control->SetEvents(nullptr);
    Ignore(genie->Show());
    Ignore(genie->Speak(L"#1 one"));
    view->Run(1000);
    EXPECT_TRUE(events.Take().empty());
    EXPECT_EQ(engine->spoken.size(), 1U);
}

TEST_F(ControlTest, PositionTakesAnyValueAtOnce)
{
    for (const long value : {-2'000'000'000L, -129L, 0L, 99'999L, 2'000'000'000L}) {
        EXPECT_TRUE(genie->SetLeft(value).Ok());
        EXPECT_TRUE(genie->SetTop(value).Ok());
        EXPECT_EQ(genie->Left(), value);
        EXPECT_EQ(genie->Top(), value);
    }
}

TEST_F(ControlTest, SizeScalesThePictureAndKeepsTheCorner)
{
    ShowGenie();
    EXPECT_EQ(genie->Width(), 8);
    Ignore(genie->SetHeight(50));
    Ignore(genie->SetWidth(30));
    EXPECT_EQ(Windows().frame->size, (Size{30, 50}));
    EXPECT_EQ(Windows().at, (Point{400, 400}));
    EXPECT_EQ(ShownImage(), 0);
}

TEST_F(ControlTest, ImpossibleSizesFailAndChangeNothing)
{
    for (const long size : {0L, -1L, 4097L, 2'000'000'000L}) {
        EXPECT_EQ(genie->SetWidth(size).code, ErrorCode::DataInvalid);
        EXPECT_EQ(genie->SetHeight(size).code, ErrorCode::DataInvalid);
    }
    EXPECT_EQ(genie->Width(), 8);
    EXPECT_EQ(genie->Height(), 8);
}

TEST_F(ControlTest, SoundEffectsArePlainProperty)
{
    EXPECT_TRUE(genie->SoundEffectsOn());
    Ignore(genie->SetSoundEffectsOn(false));
    EXPECT_FALSE(genie->SoundEffectsOn());
}

TEST_F(ControlTest, CharacterIsAsLargeAsTheScreensResolutionAsksFor)
{
    view->pixelScale = 1.5;
    Ignore(genie->SetHeight(50));
    Ignore(genie->SetWidth(50));
    ShowGenie();
    EXPECT_EQ(Windows().size, (Size{75, 75}));
    EXPECT_EQ(Windows().frame->size, (Size{75, 75}));
    EXPECT_EQ(genie->Height(), 50);
    EXPECT_EQ(genie->ShownHeight(), 75);
    EXPECT_EQ(genie->ShownWidth(), 75);
}

TEST_F(ControlTest, PictureIsFinerThanItsPlaceOnADesktopThatDrawsEverythingLarger)
{
    view->pictureDetail = 2;
    Ignore(genie->SetHeight(50));
    Ignore(genie->SetWidth(50));
    ShowGenie();
    EXPECT_EQ(Windows().size, (Size{50, 50}));
    EXPECT_EQ(Windows().frame->size, (Size{100, 100}));
    Ignore(genie->Speak(L"hello"));
    view->Run(50);
    ASSERT_TRUE(Windows().balloon);
    EXPECT_LE(BalloonBounds(*Windows().balloon).Bottom(), 400 + 50);
}

} // namespace
} // namespace voxtrel::agent::stage
