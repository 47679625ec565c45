#include "app/main.h"

#include "fakes/call_log.h"
#include "fakes/fake_character.h"
#include "fakes/fake_platform.h"
#include "settings/file_path.h"
#include "settings/memory_backend.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace voxtrel::app {
namespace {

using tests::CallLog;

// Settings in memory that write every access to the log.
class LoggingBackend final : public settings::MemoryBackend {
public:
    explicit LoggingBackend(CallLog& log) : log_(log) {}

    std::optional<std::wstring> Read(std::wstring_view application, std::wstring_view section,
                                     std::wstring_view key) override
    {
        log_.Add(L"Read " + Name(application, section, key));
        return MemoryBackend::Read(application, section, key);
    }
    void Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
               std::wstring_view value) override
    {
        log_.Add(L"Write " + Name(application, section, key));
        MemoryBackend::Write(application, section, key, value);
    }

private:
    static std::wstring Name(std::wstring_view application, std::wstring_view section, std::wstring_view key)
    {
        return std::wstring(application).append(L"/").append(section).append(L"/").append(key);
    }

    CallLog& log_;
};

class FakeInstances final : public platform::SingleInstance {
public:
    explicit FakeInstances(CallLog& log) : log_(log) {}
    bool AnotherIsRunning() override
    {
        log_.Add(L"AnotherIsRunning");
        return another;
    }
    bool another = false;

private:
    CallLog& log_;
};

class FakeForm final : public MainForm {
public:
    explicit FakeForm(CallLog& log) : log_(log) {}

    platform::NativeWindow hWnd() const override { return 4711; }
    void LocaliseForm(const settings::StringTable&) override { log_.Add(L"LocaliseForm"); }
    void SetTitle(std::wstring_view text) override
    {
        log_.Add(L"SetTitle");
        title = text;
    }
    void SetButtonToolTip(std::size_t number, std::wstring_view text) override { toolTips[number] = text; }
    std::wstring MenuCaption(MenuEntry entry) const override { return captions.at(entry); }
    void SetMenuCaption(MenuEntry entry, std::wstring_view caption) override { captions[entry] = caption; }
    void SetInTray(bool shown) override { log_.Add(shown ? L"InTray True" : L"InTray False"); }
    void SetTrayTip(std::wstring_view tip) override { trayTip = tip; }
    void PopupTrayMenu() override { log_.Add(L"PopupTrayMenu"); }
    void SetHelpFile(std::wstring_view path) override { log_.Add(L"HelpFile " + std::wstring(path)); }
    bool Visible() const override { return visible; }
    void SetVisible(bool now) override
    {
        visible = now;
        log_.Add(now ? L"SetVisible True" : L"SetVisible False");
    }
    void DoEvents() override { log_.Add(L"DoEvents"); }
    void End() override { log_.Add(L"End"); }

    std::wstring title;
    std::wstring trayTip;
    std::map<std::size_t, std::wstring> toolTips;
    std::map<MenuEntry, std::wstring> captions{{MenuEntry::mnu_root, L"ROOT"},
                                               {MenuEntry::mnu_showOptions, L"1101:designed"},
                                               {MenuEntry::mnu_toolbar, L"1103:designed"}};
    bool visible = false;

private:
    CallLog& log_;
};

class FakeRooms final : public Rooms {
public:
    explicit FakeRooms(CallLog& log) : log_(log) {}

    platform::DesktopReach Reach() const override { return reach; }
    void LoadHotKeys() override { log_.Add(L"LoadHotKeys"); }
    void UpdateTargetWindow() override { log_.Add(L"UpdateTargetWindow"); }
    void PollHotKeys() override { log_.Add(L"PollHotKeys"); }
    void SpeakSelected() override { log_.Add(L"SpeakSelected"); }
    void ReadSelected() override { log_.Add(L"ReadSelected"); }
    void OpenInTextReader() override { log_.Add(L"OpenInTextReader"); }
    void ReadScreen() override { log_.Add(L"ReadScreen"); }
    void ShowOptions() override { log_.Add(L"ShowOptions"); }
    void UnloadOptions() override { log_.Add(L"UnloadOptions"); }
    bool ReadInTextReader(const std::wstring& text) override
    {
        log_.Add(L"ReadInTextReader " + text);
        return true;
    }
    void UnloadTextReader() override { log_.Add(L"UnloadTextReader"); }
    bool closeTheWindow() const override { return closes; }
    void TextReaderBookmark(std::int32_t number) override
    {
        log_.Add(L"Bookmark " + std::to_wstring(number));
    }

    bool closes = false;
    platform::DesktopReach reach = platform::DesktopReach::Everything;

private:
    CallLog& log_;
};

const std::wstring kTopmostCall = L"SetWindowPos 4711 topmost 0 0 0 0 83";

class MainTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const int number :
             {1000, 1002, 1004, 1006, 1008, 1010, 1011, 1012, 1021, 1022, 1101, 1102, 1103})
            strings.Set(number, L"text " + std::to_wstring(number));
    }

    // The program as it runs, without anything in the log.
    void Run()
    {
        ASSERT_EQ(main.Form_Load(), Main::StartUp::Running);
        log.Clear();
    }

    tests::FakeCharacter& Character() { return *control.FindFake(shared.FavouriteAgent); }

    // The calls but those of reading and applying the settings.
    std::vector<std::wstring> Steps() const
    {
        std::vector<std::wstring> steps;
        for (const std::wstring& call : log.Calls()) {
            const bool voice = call.starts_with(L"Write Orvella/voices/");
            if (voice && !steps.empty() && steps.back() == L"SeedVoiceTable")
                continue;
            steps.push_back(voice ? L"SeedVoiceTable" : call);
        }
        return steps;
    }

    CallLog log;
    LoggingBackend backend{log};
    settings::SettingsStore store{backend};
    settings::StringTable strings;
    settings::SharedSettings shared;
    settings::ProgramFolder folder{L"program"};
    tests::FakeControl control{log};
    tests::FakeDesktop desktop{log};
    tests::FakeMessages messages{log};
    tests::FakeAccessibility access{log};
    FakeInstances instances{log};
    FakeForm form{log};
    FakeRooms rooms{log};
    Trace trace;
    Main main{
        {store, strings, shared, folder, control, desktop, messages, access, instances, form, rooms, trace}};
};

TEST_F(MainTest, FirstStartRunsItsStepsInOrder)
{
    EXPECT_EQ(main.Form_Load(), Main::StartUp::Running);
    std::vector<std::wstring> steps = Steps();
    // What LoadSettings does in the middle is tested where it lives.
    const auto first = std::find(steps.begin(), steps.end(), L"SoundEffectsOn False");
    const auto last = std::find(steps.begin(), steps.end(), L"Read Orvella/Agent/VoiceType");
    ASSERT_NE(first, steps.end());
    ASSERT_NE(last, steps.end());
    steps.erase(first, last + 1);
    const std::vector<std::wstring> expected{
        L"InTray True",
        L"LocaliseForm",
        L"SetTitle",
        L"SeedVoiceTable",
        L"AnotherIsRunning",
        L"Write Voxtrel/Startup/hWnd",
        L"HelpFile " + folder.HelpFile(),
        L"LoadHotKeys",
        L"Read Orvella/Agent/FavouriteAgent",
        L"Load Genie " + folder.CharacterFile(L"Genie"),
        L"Show",
        L"SetVisible True",
        L"Read orvella_reader/agent/rolestring",
        L"DoEvents",
        kTopmostCall,
    };
    EXPECT_EQ(steps, expected);
    EXPECT_EQ(backend.Read(L"Voxtrel", L"Startup", L"hWnd"), L"4711");
}

TEST_F(MainTest, SecondStartRestoresTheFirstWindowAndEnds)
{
    main.Form_Load();
    instances.another = true;
    log.Clear();
    Main second{
        {store, strings, shared, folder, control, desktop, messages, access, instances, form, rooms, trace}};
    EXPECT_EQ(second.Form_Load(), Main::StartUp::SecondInstance);
    const std::vector<std::wstring> expected{
        L"InTray True",       L"LocaliseForm", L"SetTitle", L"AnotherIsRunning", L"Read Voxtrel/Startup/hWnd",
        L"ShowWindow 4711 9",
    };
    EXPECT_EQ(log.Calls(), expected);
}

TEST_F(MainTest, SecondStartWithoutAStoredHandleJustEnds)
{
    instances.another = true;
    EXPECT_EQ(main.Form_Load(), Main::StartUp::SecondInstance);
    EXPECT_EQ(log.Calls().back(), L"Read Voxtrel/Startup/hWnd");
}

TEST_F(MainTest, CharacterThatCannotBeLoadedStopsTheStart)
{
    control.missingFiles.insert(folder.CharacterFile(L"Nobody"));
    store.SetApplicationName(L"Orvella");
    store.SaveSetting(L"Agent", L"FavouriteAgent", L"Nobody");
    EXPECT_EQ(main.Form_Load(), Main::StartUp::NoCharacter);
    EXPECT_EQ(main.StartUpError(), L"There is no such file.");
    EXPECT_EQ(log.Calls().back(), L"Load Nobody " + folder.CharacterFile(L"Nobody"));
}

TEST_F(MainTest, ReadsTheRoleStringOfTheReader)
{
    backend.Write(L"orvella_reader", L"agent", L"rolestring", L"roles");
    main.Form_Load();
    EXPECT_EQ(main.rolestring, L"roles");
}

TEST_F(MainTest, SaysAtStartWhatCannotBeReachedOnThisDesktop)
{
    for (const auto& [reach, text] : {std::pair(platform::DesktopReach::X11ProgramsOnly, L"text 1021"),
                                      std::pair(platform::DesktopReach::Nothing, L"text 1022")}) {
        shared.PendingSpeech.clear();
        agent::Ignore(control.Unload(L"Genie"));
        rooms.reach = reach;
        Run();
        EXPECT_NE(shared.PendingSpeech.find(text), std::wstring::npos) << shared.PendingSpeech;
    }
}

TEST_F(MainTest, SaysNothingAtStartWhereEverythingCanBeReached)
{
    Run();
    EXPECT_TRUE(shared.PendingSpeech.empty());
}

TEST_F(MainTest, GeneralTickRefreshesTheTargetThenPollsTheKeys)
{
    Run();
    main.Timer1_Timer();
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"UpdateTargetWindow", L"PollHotKeys"}));
}

TEST_F(MainTest, ScreenReadingTickReadsTheScreen)
{
    Run();
    main.Timer2_Timer();
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"ReadScreen"}));
}

TEST_F(MainTest, RequestsWithinOneTickAreOneUtterance)
{
    Run();
    main.Form_LinkExecute(L"1:one");
    main.Form_LinkExecute(L"1:two");
    main.hotkeytimer_Timer();
    ASSERT_EQ(Character().utterances.size(), 1u);
    EXPECT_LT(Character().utterances[0].find(L"one"), Character().utterances[0].find(L"two"));
    EXPECT_TRUE(shared.PendingSpeech.empty());
    main.hotkeytimer_Timer();
    EXPECT_EQ(Character().utterances.size(), 1u);
}

TEST_F(MainTest, QueueIsEmptiedAlsoWhenSpeakingFails)
{
    Run();
    Character().failure = agent::Result::Failure(agent::ErrorCode::CharacterHidden, L"hidden");
    main.Form_LinkExecute(L"1:one");
    main.hotkeytimer_Timer();
    EXPECT_TRUE(shared.PendingSpeech.empty());
}

TEST_F(MainTest, QuitCommandEndsAtTheNextTick)
{
    Run();
    main.Form_LinkExecute(L"4:");
    EXPECT_TRUE(log.Calls().empty());
    main.Timer1_Timer();
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"UpdateTargetWindow", L"PollHotKeys", L"Shutdown",
                                                      L"InTray False", L"End"}));
}

TEST_F(MainTest, CommandsReachTheirRooms)
{
    Run();
    main.Form_LinkExecute(L"2: a text ");
    main.Form_LinkExecute(L"3:whatever");
    main.Form_LinkExecute(L"2:");
    main.Form_LinkExecute(L"7:nothing");
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"ReadInTextReader  a text ", L"ShowOptions"}));
}

TEST_F(MainTest, ShutdownUnloadsWhatIsOpenAndWritesNoSettings)
{
    Run();
    shared.OptionsOpen = true;
    shared.TextReaderOpen = true;
    main.Form_Unload();
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"Shutdown", L"UnloadOptions", L"UnloadTextReader",
                                                      L"InTray False", L"End"}));
}

TEST_F(MainTest, BookmarksAreIgnoredWhileTheTextReaderIsClosed)
{
    Run();
    rooms.closes = true;
    main.Bookmark(kEndOfText);
    main.Bookmark(500001);
    EXPECT_TRUE(log.Calls().empty());
}

TEST_F(MainTest, BookmarksReachTheTextReader)
{
    Run();
    shared.TextReaderOpen = true;
    main.Bookmark(500001);
    main.Bookmark(999999999);
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"Bookmark 500001", L"Bookmark 999999999"}));
}

TEST_F(MainTest, EndOfTextClosesTheTextReaderOnlyWhenItIsToClose)
{
    Run();
    shared.TextReaderOpen = true;
    main.Bookmark(kEndOfText);
    EXPECT_TRUE(log.Calls().empty());
    rooms.closes = true;
    main.Bookmark(kEndOfText);
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"UnloadTextReader"}));
}

TEST_F(MainTest, ClickOnTheCharacterRaisesTheToolbarAndDoubleClickDoesNothing)
{
    Run();
    main.Click({});
    main.DblClick({});
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{kTopmostCall}));
}

TEST_F(MainTest, PlaceThatTheCharacterWasDraggedToIsKept)
{
    Run();
    ASSERT_NE(shared.character, nullptr);
    agent::Ignore(shared.character->SetTop(321));
    agent::Ignore(shared.character->SetLeft(-45));
    log.Clear();
    main.DragComplete({});
    EXPECT_EQ(store.GetSetting(L"Agent", L"Top"), L"321");
    EXPECT_EQ(store.GetSetting(L"Agent", L"Left"), L"-45");
}

TEST_F(MainTest, StopButtonLeavesTheQueue)
{
    Run();
    shared.PendingSpeech = L"waiting";
    main.tbrMenu_ButtonClick("stopspeaking");
    EXPECT_EQ(shared.PendingSpeech, L"waiting");
}

TEST_F(MainTest, ToolbarButtonsReachTheirActions)
{
    Run();
    for (const std::string_view key : kToolbarKeys)
        main.tbrMenu_ButtonClick(key);
    main.tbrMenu_ButtonClick("no such key");
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"SpeakSelected", L"ReadSelected", L"StopAll",
                                                      L"OpenInTextReader", L"ShowOptions"}));
}

TEST_F(MainTest, AfterStartUpTheTextsAreThoseOfTheTable)
{
    Run();
    EXPECT_EQ(form.title, L"text 1000");
    EXPECT_EQ(form.trayTip, L"text 1012");
    EXPECT_EQ(form.captions[MenuEntry::mnu_showOptions], L"text 1101");
    EXPECT_EQ(form.captions[MenuEntry::mnu_toolbar], L"text 1103");
    EXPECT_EQ(form.captions[MenuEntry::mnu_root], L"ROOT");
    EXPECT_EQ(
        form.toolTips,
        (std::map<std::size_t, std::wstring>{
            {1, L"text 1002"}, {2, L"text 1004"}, {3, L"text 1006"}, {4, L"text 1008"}, {5, L"text 1010"}}));
}

TEST_F(MainTest, ToggleHidesTheToolbarAndDescribesTheNextToggle)
{
    Run();
    main.mnu_toolbar_Click();
    EXPECT_FALSE(form.visible);
    EXPECT_EQ(form.captions[MenuEntry::mnu_toolbar], L"text 1102");
    EXPECT_EQ(form.trayTip, L"text 1011");
    main.SysTray_Click();
    EXPECT_TRUE(form.visible);
    EXPECT_EQ(form.captions[MenuEntry::mnu_toolbar], L"text 1103");
    EXPECT_EQ(form.trayTip, L"text 1012");
}

TEST_F(MainTest, OnlyTheRightButtonOpensTheTrayMenu)
{
    Run();
    main.SysTray_MouseUp(1);
    main.SysTray_MouseUp(4);
    EXPECT_TRUE(log.Calls().empty());
    main.SysTray_MouseUp(2);
    EXPECT_EQ(log.Calls(), (std::vector<std::wstring>{L"PopupTrayMenu"}));
}

TEST(Trace, WritesOneJsonObjectALine)
{
    const std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "voxtrel-trace-test.json";
    {
        Trace trace;
        trace.Write("lost");
        ASSERT_TRUE(trace.Open(settings::FromPath(file)));
        trace.Write(
            "speak",
            {{"markup", std::wstring_view(L"\"é\"\\\n")}, {"number", std::int64_t{-3}}, {"on", true}});
        trace.Write("end");
    }
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    EXPECT_EQ(line.substr(line.find(",\"event\"")),
              R"(,"event":"speak","markup":"\"é\"\\\u000a","number":-3,"on":true})");
    std::getline(stream, line);
    EXPECT_EQ(line.substr(line.find(",\"event\"")), R"(,"event":"end"})");
    EXPECT_FALSE(std::getline(stream, line));
}

TEST(Trace, WritesTheBeginningAndTheLengthOfALongText)
{
    const std::filesystem::path file = std::filesystem::path(testing::TempDir()) / "voxtrel-long-trace-test.json";
    {
        Trace trace;
        ASSERT_TRUE(trace.Open(settings::FromPath(file)));
        trace.Write("speak", {{"markup", std::wstring_view(std::wstring(5000, L'a'))}});
    }
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    EXPECT_LT(line.size(), 4200U);
    EXPECT_NE(line.find("aaa... (5000 characters)\"}"), std::string::npos) << line;
}

} // namespace
} // namespace voxtrel::app
