#include "options_fixture.h"

namespace voxtrel::options {
namespace {

constexpr const wchar_t* kPrefix = L"\\Spd=150\\\\Pit=150\\\\Vol=30000\\  ";

TEST_F(OptionsTest, LoadingGoesThroughTheControlsInItsOrder)
{
    Load();
    log.Clear();
    options.Form_Load();
    const Texts expected = {L"LocaliseForm",
                            L"LoadScreenReadingPage",
                            L"Select hotkeycombo 0",
                            L"Select hotkeycombo 1",
                            L"Select hotkeycombo 2",
                            L"Select hotkeycombo 3",
                            L"Select hotkeycombo 4",
                            L"Set Check1",
                            L"Style 13",
                            L"Set Check2",
                            L"Style 13",
                            L"Set Check3",
                            L"Style 13",
                            L"Select cr",
                            L"Fill voicelist",
                            L"Fill AgentList",
                            L"Fill AgentSizeList",
                            L"Select showballoonbox",
                            L"Set visiblebox",
                            L"Fill positionlist",
                            L"Fill Fontlist",
                            L"Fill Sizelist",
                            L"Set slider 0",
                            L"Set slider 1",
                            L"Set slider 2",
                            L"Set slider 3",
                            L"Fill List1",
                            L"CentreOnScreen"};
    EXPECT_EQ(log.Calls(), expected);
}

TEST_F(OptionsTest, LoadingSavesNothingAndSaysNothing)
{
    Save(L"hotkeys", L"2key", L"114"); // the same as row 1
    Load();
    options.Form_Load();
    EXPECT_TRUE(backend.writes.empty());
    EXPECT_TRUE(shared.PendingSpeech.empty());
    EXPECT_TRUE(Character().utterances.empty());
}

TEST_F(OptionsTest, FirstRunShowsTheDefaults)
{
    Load();
    EXPECT_EQ(form.ListText(DropDown::AgentList), L"genie");
    EXPECT_EQ(form.ListText(DropDown::AgentSizeList), L"Large");
    EXPECT_EQ(form.ListText(DropDown::voicelist), L"Adult Male 1, US English");
    EXPECT_EQ(form.lists[DropDown::voicelist].entries.size(), 8u);
    EXPECT_EQ(form.ListText(DropDown::positionlist), L"Top Right");
    EXPECT_EQ(form.ListText(DropDown::Fontlist), L"Arial");
    EXPECT_EQ(form.ListText(DropDown::Sizelist), L"14");
    EXPECT_EQ(form.sample, L"Arial 14");
    EXPECT_TRUE(form.Ticked(CheckBox::Check1));
    EXPECT_TRUE(form.Ticked(CheckBox::Check2));
    EXPECT_FALSE(form.Ticked(CheckBox::Check3));
    EXPECT_FALSE(form.Ticked(CheckBox::visiblebox));
    EXPECT_EQ(form.SelectedOption(OptionGroup::cr), 0);
    EXPECT_EQ(form.SelectedOption(OptionGroup::showballoonbox), 1);
    EXPECT_EQ(form.labels[Slider::pitchslider], L"150 (100 %)");
    EXPECT_EQ(form.labels[Slider::speedslider], L"150 (100 %)");
    EXPECT_EQ(form.labels[Slider::volumeslider], L"30000 (100 %)");
    EXPECT_EQ(form.labels[Slider::slider_interword], L"0 ms");
    EXPECT_EQ(form.hotKeyPositions, (std::array{1, 2, 3, 4, 5}));
    EXPECT_EQ(form.hotKeysTicked, (std::array{true, true, true, true, true}));
    EXPECT_TRUE(form.pronunciation.written.empty());
    EXPECT_TRUE(form.pronunciations.entries.empty());
}

TEST_F(OptionsTest, BalloonStyleMatchesTheBoxesAfterLoading)
{
    Load();
    Character().balloon.style = 1 | 2 | 0x02200000; // as somebody else has left it
    options.Form_Load();
    EXPECT_EQ(Character().balloon.style, 1u | 4 | 8 | 0x02200000);
}

TEST_F(OptionsTest, OpenFlagFollowsTheDialog)
{
    EXPECT_FALSE(shared.OptionsOpen);
    Load();
    EXPECT_TRUE(shared.OptionsOpen);
    options.Form_Unload();
    EXPECT_FALSE(shared.OptionsOpen);
}

TEST_F(OptionsTest, VoiceStyleIsFoundByItsWholeTag)
{
    const std::pair<const wchar_t*, int> cases[] = {{L"\\chr=\"Whisper\"\\", 1}, {L"\\chr=\"Monotone\"\\", 2},
                                                    {L"\\chr=\"Normal\"\\", 0},  {L"", 0},
                                                    {L"\\chr=\"Shout\"\\", 0},   {L"Whisper", 0},
                                                    {L"\\chr=\"whisper\"\\", 0}};
    Load();
    for (const auto& [tag, index] : cases) {
        shared.VoiceType = tag;
        options.Form_Load();
        EXPECT_EQ(form.SelectedOption(OptionGroup::cr), index) << std::string(tag, tag + std::wcslen(tag));
        EXPECT_EQ(shared.VoiceType, tag);
    }
}

TEST_F(OptionsTest, EmptyCharactersFolderLeavesTheListEmpty)
{
    Load();
    std::filesystem::remove_all(path / "characters");
    options.Form_Load();
    EXPECT_TRUE(form.lists[DropDown::AgentList].entries.empty());
    EXPECT_EQ(form.ListIndex(DropDown::AgentList), -1);
}

TEST_F(OptionsTest, CharacterIsFoundUnderOtherCapitals)
{
    Load();
    shared.FavouriteAgent = L"ROBIN";
    options.Form_Load();
    EXPECT_EQ(form.lists[DropDown::AgentList].entries, (Texts{L"genie", L"robin"}));
    EXPECT_EQ(form.ListText(DropDown::AgentList), L"robin");
}

TEST_F(OptionsTest, VoiceAndFontThatAreMissingAreShownByTheirNames)
{
    Save(L"agent", L"AgentVoice", L"My Old Voice");
    Save(L"Agent", L"Font", L"No Such Font");
    Load();
    EXPECT_EQ(form.ListText(DropDown::voicelist), L"My Old Voice");
    EXPECT_EQ(form.ListText(DropDown::Fontlist), L"No Such Font");
    options.ok_but_Click();
    EXPECT_EQ(Stored(L"agent", L"AgentVoice"), L"My Old Voice");
    EXPECT_EQ(Stored(L"Agent", L"Font"), L"No Such Font");
}

TEST_F(OptionsTest, VoicesThatTheUserHasAddedAreListed)
{
    Save(L"voices", L"Aunt Emma", L"{CA141FD0-AC7F-11D1-97A3-006008273006}");
    Load();
    form.Choose(DropDown::voicelist, L"Aunt Emma");
    options.voicelist_Click();
    EXPECT_EQ(Character().mode, L"{CA141FD0-AC7F-11D1-97A3-006008273006}");
}

TEST_F(OptionsTest, SizeBetweenTheListedOnesIsShownInItsPlace)
{
    Save(L"Agent", L"FontSize", L"13");
    Load();
    const Texts& sizes = form.lists[DropDown::Sizelist].entries;
    EXPECT_EQ(form.ListText(DropDown::Sizelist), L"13");
    EXPECT_TRUE(std::is_sorted(sizes.begin(), sizes.end(),
                               [](const auto& a, const auto& b) { return std::stoi(a) < std::stoi(b); }));
    EXPECT_EQ(std::count(sizes.begin(), sizes.end(), L"14"), 1);

    agent::Ignore(Character().balloon.SetFontSize(100));
    options.Form_Load();
    EXPECT_EQ(form.ListText(DropDown::Sizelist), L"100");
}

TEST_F(OptionsTest, ForeignNumbersShowNothingAndAreKept)
{
    Save(L"Agent", L"Agent_Size_IDX", L"5");
    Save(L"Agent", L"Agent_Position_List_Index", L"1.5");
    Save(L"Agent", L"Agent_Balloon_Always", L"3");
    Save(L"Agent", L"Pitch", L"1000");
    Load();
    EXPECT_EQ(form.ListIndex(DropDown::AgentSizeList), -1);
    EXPECT_EQ(form.ListIndex(DropDown::positionlist), -1);
    EXPECT_EQ(form.labels[Slider::pitchslider], L"1000 (667 %)");
    options.ok_but_Click();
    EXPECT_EQ(Stored(L"Agent", L"Agent_Size_IDX"), L"5");
    EXPECT_EQ(Stored(L"Agent", L"Agent_Position_List_Index"), L"1.5");
    EXPECT_EQ(Stored(L"Agent", L"Agent_Balloon_Always"), L"3");
    EXPECT_EQ(Stored(L"Agent", L"Pitch"), L"1000");
}

TEST_F(OptionsTest, OnlyTheDigitOneHides)
{
    for (const wchar_t* value : {L"0", L"true", L"2", L""}) {
        shared.Agent_Hidden = value;
        Load();
        EXPECT_FALSE(form.Ticked(CheckBox::visiblebox));
    }
    shared.Agent_Hidden = L"1";
    Load();
    EXPECT_TRUE(form.Ticked(CheckBox::visiblebox));
}

TEST_F(OptionsTest, UserTagsStandInTheFirstPronunciationBox)
{
    Save(L"Agent", L"Agent_User_Tags", L"tagged");
    Load();
    EXPECT_EQ(form.pronunciation.written, L"tagged");
    EXPECT_TRUE(form.pronunciation.spoken.empty());
}

TEST_F(OptionsTest, HotKeyOutsideTheListShowsNoEntryAndStays)
{
    Save(L"hotkeys", L"1key", L"65");
    Save(L"hotkeys", L"3keyenabled", L"-1");
    Load();
    EXPECT_EQ(form.hotKeyPositions[0], 65 - 113);
    EXPECT_FALSE(form.hotKeysTicked[2]);
    options.ok_but_Click();
    EXPECT_EQ(Stored(L"hotkeys", L"1key"), L"65");
    EXPECT_EQ(Stored(L"hotkeys", L"3keyenabled"), L"-1");
}

TEST_F(OptionsTest, DialogWithoutACharacterWorks)
{
    speech::LoadSettings(surroundings);
    shared.Agent_Balloon_Always = 0;
    options.Form_Load();
    form.ticked[CheckBox::visiblebox] = true;
    options.visiblebox_Click();
    form.ticked[CheckBox::visiblebox] = false;
    options.visiblebox_Click();
    options.Check_Click(CheckBox::Check1);
    form.Choose(DropDown::Fontlist, 0);
    options.Fontlist_Click();
    options.cmdSpeak_Click();
    options.cmdTestVoice_Click();
    EXPECT_EQ(shared.PendingSpeech, std::wstring(kPrefix) + L" voice? ");
    EXPECT_EQ(form.ListIndex(DropDown::Sizelist), -1);
}

} // namespace
} // namespace voxtrel::options
