#include "reader_fixture.h"

#include <limits>

namespace voxtrel::screenreading {
namespace {

class ScreenReaderTest : public tests::ReaderFixture {};

TEST_F(ScreenReaderTest, SpeaksANewKindOfObjectByItsNameAndLearnsIt)
{
    PointAt(L"Save", L"push button", L"pressed");
    EXPECT_EQ(Tick(), Markup(L"Save      "));
    EXPECT_EQ(Table(), (Pairs{{L"push button ", L"name"}}));
}

TEST_F(ScreenReaderTest, SpeaksAnObjectOnceHoweverLongThePointerRests)
{
    PointAt(L"Save", L"push button");
    EXPECT_NE(Tick(), L"");
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(Tick(), L"");
    PointAt(L"Save", L"link"); // another object with the same text
    EXPECT_EQ(Tick(), L"");
    PointAt(L"Open", L"link");
    EXPECT_EQ(Tick(), Markup(L"Open      "));
    PointAt(L"Save", L"push button");
    EXPECT_EQ(Tick(), Markup(L"Save      "));
}

TEST_F(ScreenReaderTest, SpeaksWhatTheChoiceContainsInFixedOrder)
{
    Choose(L"slider ", L"value,role,name,");
    PointAt(L"Volume", L"slider", L"50");
    EXPECT_EQ(Tick(), Markup(L"Volume   slider   50      "));
    Choose(L"slider ", L"value,");
    EXPECT_EQ(Tick(), Markup(L"50      "));
    Choose(L"slider ", L"VALUE,Name");
    EXPECT_EQ(Tick(), L"");
}

TEST_F(ScreenReaderTest, DropsTheLastCharacterOfEachTextWhateverItIs)
{
    Choose(L"slider", L"name,role,value");
    access.name = L"Volume";
    access.role = L"slider";
    access.value = L""; // gives nothing, not even its blank
    EXPECT_EQ(Tick(), Markup(L"Volum   slide      "));
}

TEST_F(ScreenReaderTest, KeepsQuietOverSilencedRoles)
{
    PointAt(L"Save", L"push button");
    Choose(L"push button ", L"False");
    EXPECT_EQ(Tick(), L"");
    EXPECT_EQ(log.Calls(), std::vector<std::wstring>{});
}

TEST_F(ScreenReaderTest, ForgetsTheLastTextOverARoleWithNothingToSpeak)
{
    for (const wchar_t* choice : {L"false", L"True"}) {
        PointAt(L"Save", L"push button");
        EXPECT_EQ(Tick(), Markup(L"Save      ")) << choice;
        Choose(L"panel ", choice);
        PointAt(L"Top", L"panel");
        EXPECT_EQ(Tick(), L"");
    }
}

TEST_F(ScreenReaderTest, RemembersTheLastTextOverSilencedRolesAndNothing)
{
    Choose(L"panel ", L"False");
    PointAt(L"Save", L"push button");
    EXPECT_NE(Tick(), L"");
    PointAt(L"Top", L"panel");
    EXPECT_EQ(Tick(), L"");
    access.name = access.role = access.value = L"";
    EXPECT_EQ(Tick(), L"");
    PointAt(L"Save", L"push button");
    EXPECT_EQ(Tick(), L"");
}

TEST_F(ScreenReaderTest, NeverSpeaksAnObjectWithABlankName)
{
    Choose(L"slider ", L"name,role,value,");
    for (const wchar_t* name : {L"", L" ", L"   "}) {
        PointAt(name, L"slider", L"50");
        EXPECT_EQ(Tick(), L"");
    }
    PointAt(L"", L"never met");
    EXPECT_EQ(Tick(), L"");
    EXPECT_EQ(Table().size(), 1u);
}

TEST_F(ScreenReaderTest, SpeaksPlaceHolderRolesWithoutLearningThem)
{
    int number = 0;
    for (const wchar_t* role : {L".....", L"&Keyboard:", L"42", L"", L"1,000.5"}) {
        PointAt(std::to_wstring(++number), role);
        EXPECT_EQ(Tick(), Markup(std::to_wstring(number) + L"      ")) << role;
    }
    EXPECT_EQ(Table(), Pairs{});
}

TEST_F(ScreenReaderTest, IsSuspendedWhileTheTextReaderIsOpen)
{
    PointAt(L"Save", L"push button");
    shared.TextReaderOpen = true;
    shared.PendingSpeech = L"waiting";
    EXPECT_EQ(Tick(), L"waiting");
    EXPECT_EQ(label, L"");
    shared.TextReaderOpen = false;
    EXPECT_EQ(Tick(), Markup(L"Save      "));
}

TEST_F(ScreenReaderTest, MirrorsTheQueueInTheLabelEvenWhenSwitchedOff)
{
    shared.usescreenreading = false;
    shared.PendingSpeech = L"waiting";
    PointAt(L"Save", L"push button");
    EXPECT_EQ(Tick(), L"waiting");
    EXPECT_EQ(label, L"waiting");
    EXPECT_EQ(Table(), Pairs{});
}

TEST_F(ScreenReaderTest, OverwritesWhatWaitsAndInterruptsTheCharacterFirst)
{
    doEvents = [this] { shared.PendingSpeech += L" and more"; };
    shared.PendingSpeech = L"waiting";
    PointAt(L"Save", L"push button");
    EXPECT_EQ(Tick(), Markup(L"Save      "));
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"StopAll", L"DoEvents"}));
}

TEST_F(ScreenReaderTest, TakesTheVoiceAsItIsAfterTheEvents)
{
    doEvents = [this] { shared.Speed = 200; };
    PointAt(L"Save", L"push button");
    EXPECT_TRUE(Tick().starts_with(L"\\Spd=200\\"));
}

TEST_F(ScreenReaderTest, IgnoresTicksThatComeWhileItSpeaks)
{
    doEvents = [this] {
        PointAt(L"Open", L"push button");
        reader.Timer2_Timer();
        EXPECT_EQ(shared.PendingSpeech, L"");
    };
    PointAt(L"Save", L"push button");
    EXPECT_EQ(Tick(), Markup(L"Save      "));
    doEvents = [] {};
    EXPECT_EQ(Tick(), Markup(L"Open      "));
}

TEST_F(ScreenReaderTest, GoesOnWithoutACharacterAndWhenItFails)
{
    shared.character = nullptr;
    PointAt(L"Save", L"push button");
    EXPECT_EQ(Tick(), Markup(L"Save      "));
    shared.character = &character;
    character.failure = agent::Result::Failure(agent::ErrorCode::FileNotFound, L"It is gone.");
    PointAt(L"Open", L"push button");
    EXPECT_EQ(Tick(), Markup(L"Open      "));
}

TEST_F(ScreenReaderTest, WaitsOnlyForTheFirstMomentsAfterTheSystemStarted)
{
    struct Case {
        std::int32_t count;
        bool spoken;
    };
    int number = 0;
    for (const auto& [count, spoken] :
         {Case{1, false}, Case{299, false}, Case{300, true}, Case{0, true}, Case{-1, true},
          Case{std::numeric_limits<std::int32_t>::min(), true}}) {
        tickCount = count;
        PointAt(L"object " + std::to_wstring(++number), L"push button");
        EXPECT_EQ(!Tick().empty(), spoken) << count;
    }
}

TEST_F(ScreenReaderTest, PausesAtACarriageReturnAndKeepsANumberWhole)
{
    PointAt(L"first\rsecond", L"label");
    EXPECT_EQ(Tick(), Markup(L"first\r\\pau=600\\second      "));
    PointAt(L"1,250.5 kg", L"label");
    EXPECT_EQ(Tick(), Markup(L"1,250.5   kg      "));
    PointAt(L"a,b", L"label");
    EXPECT_EQ(Tick(), Markup(L"a , b      "));
}

TEST_F(ScreenReaderTest, UsesAChangedPronunciationAtOnce)
{
    store.SaveSetting(L"modify", L"ok", L"okay");
    PointAt(L"OK", L"push button");
    EXPECT_EQ(Tick(), Markup(L"okay      "));
    store.SaveSetting(L"modify", L"cancel", L"kansel");
    PointAt(L"Cancel", L"push button");
    EXPECT_EQ(Tick(), Markup(L"kansel      "));
}

} // namespace
} // namespace voxtrel::screenreading
