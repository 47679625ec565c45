#include "options_fixture.h"

namespace voxtrel::options {
namespace {

constexpr const wchar_t* kPrefix = L"\\Spd=150\\\\Pit=150\\\\Vol=30000\\  ";

TEST_F(OptionsTest, OkSavesTheSettingsThenTheHotKeysAndCloses)
{
    Load();
    form.hotKeysTicked[3] = false;
    options.hotkeycheck_Click(3);
    EXPECT_TRUE(backend.writes.empty());
    options.ok_but_Click();
    ASSERT_EQ(backend.writes.size(), 21u + 10u);
    EXPECT_EQ(backend.writes.front().key, L"Agent_Position_List_Index");
    EXPECT_EQ(backend.writes[20].key, L"Volume");
    EXPECT_EQ(backend.writes[21].key, L"1key");
    EXPECT_EQ(Stored(L"hotkeys", L"4keyenabled"), L"0");
    EXPECT_EQ(log.Calls(), (Texts{L"Close"}));
}

TEST_F(OptionsTest, CancelOnlyCloses)
{
    Load();
    form.sliders[Slider::pitchslider] = 200;
    options.Slider_Change(Slider::pitchslider);
    form.hotKeysTicked[0] = false;
    options.hotkeycheck_Click(0);
    options.cancel_but_Click();
    EXPECT_TRUE(backend.writes.empty());
    EXPECT_EQ(log.Calls(), (Texts{L"Close"}));
    EXPECT_EQ(shared.Pitch, 200) << "stays in force until the program ends";
    EXPECT_EQ(hotKeys.HotKeyEnabled[1], 0);
    speech::LoadSettings(surroundings);
    EXPECT_EQ(shared.Pitch, 150) << "the next start reads what is stored";
}

TEST_F(OptionsTest, SlidersSetTheirSettingsAndLabels)
{
    Load();
    form.sliders = {{Slider::pitchslider, 75},
                    {Slider::speedslider, 225},
                    {Slider::volumeslider, 65535},
                    {Slider::slider_interword, 120}};
    for (const Slider slider : kAllSliders)
        options.Slider_Change(slider);
    EXPECT_EQ(shared.Pitch, 75);
    EXPECT_EQ(shared.Speed, 225);
    EXPECT_EQ(shared.Volume, 65535);
    EXPECT_EQ(shared.interwordpause, 120);
    EXPECT_EQ(form.labels[Slider::pitchslider], L"75 (50 %)");
    EXPECT_EQ(form.labels[Slider::speedslider], L"225 (150 %)");
    EXPECT_EQ(form.labels[Slider::volumeslider], L"65535 (218 %)");
    EXPECT_EQ(form.labels[Slider::slider_interword], L"120 ms");
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(OptionsTest, EachBalloonBoxChangesItsOwnBitOnly)
{
    Load();
    Character().balloon.style |= 0x02200000;
    for (const auto& [box, bit] : {std::pair{CheckBox::Check1, 4u}, std::pair{CheckBox::Check2, 8u},
                                   std::pair{CheckBox::Check3, 2u}}) {
        for (const bool ticked : {true, false, true}) {
            const std::uint32_t others = Character().balloon.style & ~bit;
            form.ticked[box] = ticked;
            options.Check_Click(box);
            EXPECT_EQ(Character().balloon.style, ticked ? others | bit : others);
        }
    }
    EXPECT_TRUE(shared.autohide);
    EXPECT_TRUE(shared.autopace);
    EXPECT_TRUE(shared.autosize);
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(OptionsTest, BalloonModeIsTheIndexOfItsButton)
{
    Load();
    for (const int mode : {2, 0, 1}) {
        form.options[OptionGroup::showballoonbox] = mode;
        options.showballoonbox_Click();
        EXPECT_EQ(shared.Agent_Balloon_Always, mode);
    }
}

TEST_F(OptionsTest, FontAndSizeGoToTheBalloonAtOnce)
{
    Load();
    form.Choose(DropDown::Fontlist, L"Verdana");
    options.Fontlist_Click();
    form.Choose(DropDown::Sizelist, L"24");
    options.Sizelist_Click();
    EXPECT_EQ(log.Calls(), (Texts{L"FontName Verdana", L"FontSize 24"}));
    EXPECT_EQ(form.sample, L"Verdana 24");
}

TEST_F(OptionsTest, HidingParksTheCharacterBeyondTheChosenCorner)
{
    Load();
    form.ticked[CheckBox::visiblebox] = true;
    options.visiblebox_Click();
    EXPECT_EQ(shared.Agent_Hidden, L"1");
    EXPECT_EQ(Character().top, -200);
    EXPECT_EQ(Character().left, 1930);
    form.Choose(DropDown::positionlist, L"Bottom Right");
    options.positionlist_Click();
    EXPECT_EQ(shared.Agent_Position_List_Index, 3);
    EXPECT_EQ(Character().top, 1090);
    EXPECT_EQ(Character().left, 1930);
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(OptionsTest, CornerOfACharacterThatIsSeenOnlyIsRemembered)
{
    Load();
    form.Choose(DropDown::positionlist, L"Top Left");
    options.positionlist_Click();
    EXPECT_EQ(shared.Agent_Position_List_Index, 0);
    EXPECT_EQ(Character().top, 100);
    EXPECT_EQ(Character().left, 100);
}

TEST_F(OptionsTest, ShowingBringsTheCharacterBackToWhereItStood)
{
    Load();
    Character().top = 333;
    Character().left = 444;
    form.ticked[CheckBox::visiblebox] = true;
    options.visiblebox_Click();
    form.Choose(DropDown::positionlist, L"Top Left");
    options.positionlist_Click();
    form.ticked[CheckBox::visiblebox] = false;
    options.visiblebox_Click();
    EXPECT_EQ(shared.Agent_Hidden, L"0");
    EXPECT_EQ(Character().top, 333);
    EXPECT_EQ(Character().left, 444);
}

TEST_F(OptionsTest, CharacterHiddenSinceTheStartComesBackToItsStoredPlace)
{
    Save(L"Agent", L"Agent_Hidden", L"1");
    Save(L"Agent", L"Top", L"250");
    Save(L"Agent", L"Left", L"350");
    Load();
    EXPECT_EQ(Character().top, -200);
    form.ticked[CheckBox::visiblebox] = false;
    options.visiblebox_Click();
    EXPECT_EQ(Character().top, 250);
    EXPECT_EQ(Character().left, 350);
}

TEST_F(OptionsTest, StoredPlaceOfAParkedCharacterIsNoPlaceToComeBackTo)
{
    Save(L"Agent", L"Agent_Hidden", L"1");
    Load();
    options.ok_but_Click();
    EXPECT_EQ(Stored(L"Agent", L"Left"), L"1930");
    form.ticked[CheckBox::visiblebox] = false;
    options.visiblebox_Click();
    EXPECT_EQ(Character().top, 100);
    EXPECT_EQ(Character().left, 100);
}

TEST_F(OptionsTest, SmallSizeGivesFiftyPixelsAndPlaysTheTwoAnimations)
{
    Load();
    form.Choose(DropDown::AgentSizeList, L"Small");
    options.AgentSizeList_Click();
    EXPECT_EQ(log.Calls(),
              (Texts{L"Height 50", L"Width 50", L"Play getattention", L"Play getattentionreturn", L"Show"}));
    EXPECT_EQ(shared.Agent_Size_IDX, 2);
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(OptionsTest, CharacterChangeSavesEveryPendingChoice)
{
    Load();
    form.sliders[Slider::speedslider] = 200;
    options.Slider_Change(Slider::speedslider);
    form.Choose(DropDown::AgentSizeList, L"Normal");
    options.AgentSizeList_Click();
    form.Choose(DropDown::Fontlist, L"Verdana");
    options.Fontlist_Click();
    form.Choose(DropDown::AgentList, L"robin");
    options.AgentList_Click();
    options.cancel_but_Click();
    EXPECT_EQ(shared.character, control.FindFake(L"robin"));
    EXPECT_EQ(Character().height, 85);
    EXPECT_EQ(Character().balloon.fontName, L"Verdana");
    EXPECT_EQ(Stored(L"Agent", L"FavouriteAgent"), L"robin");
    EXPECT_EQ(Stored(L"Agent", L"Speed"), L"200");
    EXPECT_EQ(Stored(L"Agent", L"Font"), L"Verdana");
    EXPECT_EQ(Stored(L"Agent", L"Agent_Size_IDX"), L"1");
    EXPECT_EQ(shared.Speed, 200);
}

TEST_F(OptionsTest, CharacterThatCannotBeLoadedIsToldAndTheOldOneComesBack)
{
    Load();
    control.missingFiles.insert(folder.CharacterFile(L"robin"));
    form.Choose(DropDown::AgentList, L"robin");
    options.AgentList_Click();
    EXPECT_EQ(log.Calls().back(), L"ShowExclamation There is no such file.");
    EXPECT_EQ(form.ListText(DropDown::AgentList), L"genie");
    EXPECT_EQ(shared.character, control.FindFake(L"genie"));
    EXPECT_TRUE(Character().visible);
}

TEST_F(OptionsTest, VoiceChangesAtOnceAndIsSavedByOk)
{
    Load();
    form.Choose(DropDown::voicelist, L"Adult Female 1, US English");
    options.voicelist_Click();
    EXPECT_EQ(Character().mode, L"{CA141FD0-AC7F-11D1-97A3-006008273006}");
    EXPECT_EQ(shared.AgentVoice, L"Adult Female 1, US English");
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(OptionsTest, VoiceThatThisMachineLacksIsToldAndStaysChosen)
{
    Save(L"voices", L"Ghost", L"{00000000-0000-0000-0000-000000000000}");
    Load();
    form.Choose(DropDown::voicelist, L"Ghost");
    options.voicelist_Click();
    EXPECT_EQ(log.Calls().back(), L"ShowExclamation This voice is not available.");
    EXPECT_EQ(shared.AgentVoice, L"Ghost");
}

TEST_F(OptionsTest, VoiceStyleIsSavedAtOnceEvenIfCancelled)
{
    Load();
    form.options[OptionGroup::cr] = 1;
    options.cr_Click();
    options.cancel_but_Click();
    EXPECT_EQ(shared.VoiceType, L"\\chr=\"Whisper\"\\");
    ASSERT_EQ(backend.writes.size(), 1u);
    EXPECT_EQ(Stored(L"Agent", L"VoiceType"), L"\\chr=\"Whisper\"\\");
}

TEST_F(OptionsTest, TestButtonsSilenceThenQueueTheirTexts)
{
    const std::pair<void (Options::*)(), const wchar_t*> cases[] = {{&Options::cmdTestVoice_Click, L"voice?"},
                                                                    {&Options::Command3_Click, L"look?"},
                                                                    {&Options::Command5_Click, L"more?"}};
    Load();
    shared.Agent_Balloon_Always = 0;
    for (const auto& [click, text] : cases) {
        log.Clear();
        shared.PendingSpeech.clear();
        (options.*click)();
        EXPECT_EQ(log.Calls(), (Texts{L"StopAll"}));
        EXPECT_EQ(shared.PendingSpeech, std::wstring(kPrefix) + L" " + text + L" ");
    }
}

TEST_F(OptionsTest, AcceptedHotKeySavesTheWholeTableWithTheBoxesTickedBefore)
{
    Load();
    form.hotKeysTicked[4] = false;
    options.hotkeycheck_Click(4);
    form.hotKeyPositions[1] = 8;
    options.hotkeycombo_Click(1);
    options.cancel_but_Click();
    EXPECT_EQ(hotKeys.HotKeyCode[2], 121);
    EXPECT_EQ(backend.writes.size(), 10u);
    EXPECT_EQ(Stored(L"hotkeys", L"2key"), L"121");
    EXPECT_EQ(Stored(L"hotkeys", L"5keyenabled"), L"0");
}

TEST_F(OptionsTest, HotKeyOfAnotherRowIsRefusedAloudAndSavesNothing)
{
    Load();
    shared.Agent_Balloon_Always = 0;
    hotKeys.HotKeyEnabled[4] = 0; // a row that is off keeps its key
    form.hotKeyPositions[1] = 4;
    options.hotkeycombo_Click(1);
    EXPECT_EQ(form.hotKeyPositions[1], 2);
    EXPECT_EQ(hotKeys.HotKeyCode[2], 115);
    EXPECT_TRUE(backend.writes.empty());
    EXPECT_EQ(shared.PendingSpeech, std::wstring(kPrefix) + L" in use ");
    EXPECT_EQ(log.Calls(), (Texts{L"Select hotkeycombo 1"})) << "no message box";
}

TEST_F(OptionsTest, HotKeyThatTheRowAlreadyHasIsAccepted)
{
    Load();
    options.hotkeycombo_Click(1);
    EXPECT_EQ(hotKeys.HotKeyCode[2], 115);
    EXPECT_EQ(backend.writes.size(), 10u);
    EXPECT_TRUE(shared.PendingSpeech.empty());
}

TEST_F(OptionsTest, TickedBoxSwitchesARowOn)
{
    Save(L"hotkeys", L"3keyenabled", L"-1");
    Load();
    form.hotKeysTicked[2] = true;
    options.hotkeycheck_Click(2);
    EXPECT_EQ(hotKeys.HotKeyEnabled[3], 1);
    EXPECT_TRUE(backend.writes.empty());
}

TEST_F(OptionsTest, HelpIsOpened)
{
    Load();
    options.Command1_Click();
    EXPECT_EQ(log.Calls(), (Texts{L"OpenHelp"}));
}

} // namespace
} // namespace voxtrel::options
