#include "agent/acs/file_images.h"
#include "tests/agent/stage/stage_test.h"

namespace voxtrel::agent::stage {
namespace {

// Wave begins with sound 0, which lasts half a second and so longer than the animation; the way back from
// GetAttention has sound 1, Blink has sound 2 of three seconds.
class Sounds : public StageTest {
protected:
    Sounds()
    {
        acs::CharacterFile file = MakeTestCharacter();
        file.sounds = Waves({std::vector<std::uint8_t>(5, 10), std::vector<std::uint8_t>(2, 11),
                             std::vector<std::uint8_t>(30, 12)});
        Animation(file, L"Wave").frames[0].sound = 0;
        Animation(file, L"GetAttentionReturn").frames[0].sound = 1;
        Animation(file, L"Blink").frames[0].sound = 2;
        Animation(file, L"Hide").frames[1].sound = 0;
        Rebuild(file);
    }

    static std::shared_ptr<acs::WaveSource> Waves(std::vector<std::vector<std::uint8_t>> waves)
    {
        return std::make_shared<acs::MemoryWaves>(std::move(waves));
    }

    static acs::Animation& Animation(acs::CharacterFile& file, const std::wstring& name)
    {
        return *std::find_if(file.animations.begin(), file.animations.end(),
                             [&](const acs::Animation& animation) { return animation.name == name; });
    }

    using Started = std::vector<int>;
};

TEST_F(Sounds, AreHeardWhenTheirFrameComes)
{
    ShowGenie();
    Ignore(genie->Play(L"wave"));
    view->Run(0);
    EXPECT_EQ(engine->soundsStarted, (Started{10}));
    EXPECT_TRUE(engine->SoundsPlaying());
}

TEST_F(Sounds, AreNotHeardWhenSoundEffectsAreOff)
{
    ShowGenie();
    Ignore(genie->SetSoundEffectsOn(false));
    Ignore(genie->Play(L"wave"));
    view->Run(1000);
    EXPECT_TRUE(engine->soundsStarted.empty());
}

TEST_F(Sounds, EndWhenSoundEffectsAreSwitchedOff)
{
    ShowGenie();
    Ignore(genie->Play(L"wave"));
    view->Run(50);
    Ignore(genie->SetSoundEffectsOn(false));
    EXPECT_FALSE(engine->SoundsPlaying());
}

TEST_F(Sounds, AreNotHeardOfAHiddenCharacter)
{
    Ignore(genie->Play(L"wave"));
    view->Run(1000);
    EXPECT_TRUE(engine->soundsStarted.empty());
}

TEST_F(Sounds, KeepARequestFromBeingComplete)
{
    ShowGenie();
    Ignore(genie->Play(L"wave"));
    view->Run(450);
    EXPECT_EQ(events.Take(), (Lines{L"start Play wave"}));
    view->Run(100);
    EXPECT_EQ(events.Take(), (Lines{L"done Play wave"}));
}

TEST_F(Sounds, GoOnWhileACharacterIsGoneAlready)
{
    ShowGenie();
    Ignore(genie->Hide());
    view->Run(300);
    EXPECT_FALSE(genie->Visible());
    EXPECT_TRUE(engine->SoundsPlaying());
}

TEST_F(Sounds, AreNotHeardAgainOnTheWayOut)
{
    ShowGenie();
    Ignore(genie->Play(L"wave"));
    view->Run(600);
    Ignore(genie->Play(L"getattentionreturn"));
    view->Run(1000);
    EXPECT_EQ(engine->soundsStarted, (Started{10, 11}));
}

TEST_F(Sounds, EndBeforeTheVoiceBegins)
{
    ShowGenie();
    Ignore(genie->Play(L"wave"));
    Ignore(genie->Speak(L"one"));
    view->Run(499);
    EXPECT_TRUE(engine->spoken.empty());
    view->Run(300);
    EXPECT_EQ(engine->spoken.size(), 1u);
    EXPECT_FALSE(engine->SoundsPlaying());
}

TEST_F(Sounds, DoNotKeepTheVoiceWaitingForLong)
{
    acs::CharacterFile file = MakeTestCharacter();
    file.sounds = Waves({std::vector<std::uint8_t>(250, 10)});
    Animation(file, L"GetAttentionReturn").frames[0].sound = 0;
    Rebuild(file);
    ShowGenie();
    Ignore(genie->Play(L"getattention"));
    Ignore(genie->Speak(L"one"));
    view->Run(2000);
    EXPECT_EQ(engine->spoken.size(), 1u);
    EXPECT_FALSE(engine->SoundsPlaying());
}

TEST_F(Sounds, OfAnIdleAnimationEndWithIt)
{
    ShowGenie();
    view->Run(10'100);
    ASSERT_TRUE(engine->SoundsPlaying());
    Ignore(genie->Speak(L"one"));
    view->Run(150);
    EXPECT_EQ(engine->spoken.size(), 1u);
}

TEST_F(Sounds, EndInsideAStop)
{
    ShowGenie();
    Ignore(genie->Play(L"wave"));
    view->Run(50);
    Ignore(genie->StopAll());
    EXPECT_FALSE(engine->SoundsPlaying());
}

TEST_F(Sounds, DoNotBeginAfterAStopOnTheWayBack)
{
    ShowGenie();
    Ignore(genie->Play(L"getattention"));
    view->Run(150);
    Ignore(genie->StopAll());
    view->Run(1000);
    EXPECT_EQ(animations.back(), L"GetAttentionReturn");
    EXPECT_TRUE(engine->soundsStarted.empty());
    Ignore(genie->Play(L"wave"));
    view->Run(50);
    EXPECT_EQ(engine->soundsStarted, (Started{10}));
}

TEST_F(Sounds, EndWhenTheCharacterIsUnloaded)
{
    ShowGenie();
    Ignore(genie->Play(L"wave"));
    view->Run(50);
    Ignore(control->Unload(L"genie"));
    EXPECT_FALSE(engine->SoundsPlaying());
}

} // namespace
} // namespace voxtrel::agent::stage
