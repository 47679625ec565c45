#include "app/main.h"

#include "settings/number_conversions.h"
#include "settings/setting_keys.h"
#include "settings/string_numbers.h"
#include "settings/voice_table.h"
#include "speech/character_settings.h"
#include "speech/speech_markup.h"

#include <iterator>
#include <utility>

namespace voxtrel::app {

Main::StartUp Main::Form_Load()
{
    MainServices& s = services_;
    s.form.SetInTray(true);
    s.store.SetApplicationName(settings::kApplicationName);
    s.form.LocaliseForm(s.strings);
    LocaliseMain();
    settings::SeedVoiceTable(s.store);
    if (s.instances.AnotherIsRunning()) {
        RestoreFirstInstance();
        return StartUp::SecondInstance;
    }
    s.store.SaveSettingOf(kApplicationTitle, L"Startup", L"hWnd", std::to_wstring(s.form.hWnd()));
    s.form.SetHelpFile(s.folder.HelpFile());
    s.rooms.LoadHotKeys();
    s.shared.FavouriteAgent = s.store.GetSetting(L"Agent", L"FavouriteAgent", L"Genie");
    if (!LoadCharacter())
        return StartUp::NoCharacter;
    speech::LoadSettings({s.store, s.shared, s.desktop, s.access, s.messages, s.folder});
    agent::Ignore(s.shared.character->Show());
    s.form.SetVisible(true);
    rolestring = s.store.GetSettingOf(L"orvella_reader", L"agent", L"rolestring", L"");
    s.form.DoEvents();
    MakeTopmost();
    TellReach();
    s.trace.Write("started", {{"character", std::wstring_view(s.shared.FavouriteAgent)}});
    return StartUp::Running;
}

void Main::RestoreFirstInstance()
{
    const std::wstring handle = services_.store.GetSettingOf(kApplicationTitle, L"Startup", L"hWnd", L"");
    if (!handle.empty())
        services_.desktop.ShowWindow(static_cast<platform::NativeWindow>(settings::Val(handle)),
                                     platform::kShowRestore);
}

bool Main::LoadCharacter()
{
    settings::SharedSettings& shared = services_.shared;
    services_.agent1.SetEvents(this);
    const agent::Result loaded =
        services_.agent1.Load(shared.FavouriteAgent, services_.folder.CharacterFile(shared.FavouriteAgent));
    shared.character = loaded.Ok() ? services_.agent1.Find(shared.FavouriteAgent) : nullptr;
    if (!shared.character)
        startUpError_ = loaded.description;
    return shared.character != nullptr;
}

void Main::MakeTopmost()
{
    services_.desktop.SetWindowPos(services_.form.hWnd(), platform::kTopmost, 0, 0, 0, 0,
                                   platform::kNoSizeNoMoveNoActivateShow);
}

void Main::TellReach()
{
    switch (services_.rooms.Reach()) {
    case platform::DesktopReach::Everything:
        return;
    case platform::DesktopReach::X11ProgramsOnly:
        return Speak(services_.strings.Text(settings::strings::kReachX11Only));
    case platform::DesktopReach::Nothing:
        return Speak(services_.strings.Text(settings::strings::kReachNothing));
    }
}

void Main::Timer1_Timer()
{
    services_.rooms.UpdateTargetWindow();
    services_.rooms.PollHotKeys();
    if (QuitRequested)
        Form_Unload();
}

void Main::Timer2_Timer() { services_.rooms.ReadScreen(); }

void Main::hotkeytimer_Timer()
{
    settings::SharedSettings& shared = services_.shared;
    if (shared.PendingSpeech.empty() || !shared.character)
        return;
    services_.trace.Write("speak", {{"markup", std::wstring_view(shared.PendingSpeech)}});
    agent::Ignore(shared.character->Speak(std::exchange(shared.PendingSpeech, {})));
}

void Main::LocaliseMain()
{
    MainForm& form = services_.form;
    const settings::StringTable& strings = services_.strings;
    form.SetTitle(strings.Text(settings::strings::kMainTitle));
    form.SetTrayTip(strings.Text(settings::strings::kTrayTipShown));
    for (std::size_t number = 1; number <= std::size(kToolbarKeys); ++number)
        form.SetButtonToolTip(number,
                              strings.Text(settings::strings::kToolTipBase + 2 * static_cast<int>(number)));
    for (const MenuEntry entry : kMenuEntries) {
        const std::int32_t number = settings::ToInt32(form.MenuCaption(entry));
        if (number != 0)
            form.SetMenuCaption(entry, strings.Text(number));
    }
}

void Main::mnu_toolbar_Click()
{
    MainForm& form = services_.form;
    // True is -1: the texts describe the next toggle, and their numbers lie one apart.
    const int v = form.Visible() ? -1 : 0;
    form.SetMenuCaption(MenuEntry::mnu_toolbar,
                        services_.strings.Text(settings::strings::kMenuHideToolbar + v));
    form.SetTrayTip(services_.strings.Text(settings::strings::kTrayTipShown + v));
    form.SetVisible(v == 0);
}

void Main::SysTray_MouseUp(int button)
{
    constexpr int kRightButton = 2;
    if (button == kRightButton)
        services_.form.PopupTrayMenu();
}

void Main::tbrMenu_ButtonClick(std::string_view key)
{
    if (key == "speakselected")
        services_.rooms.SpeakSelected();
    else if (key == "speakall")
        services_.rooms.ReadSelected();
    else if (key == "stopspeaking")
        agent::Ignore(services_.shared.character->StopAll());
    else if (key == "openfile")
        services_.rooms.OpenInTextReader();
    else if (key == "options")
        services_.rooms.ShowOptions();
}

void Main::Form_LinkExecute(std::wstring_view command)
{
    services_.trace.Write("command", {{"text", command}});
    std::optional<DdeCommand> understood = ParseDdeCommand(command);
    if (!understood)
        return;
    switch (understood->kind) {
    case DdeCommand::Kind::Speak:
        Speak(std::move(understood->text));
        break;
    case DdeCommand::Kind::Read:
        Read(std::move(understood->text));
        break;
    case DdeCommand::Kind::ShowOptions:
        services_.rooms.ShowOptions();
        break;
    case DdeCommand::Kind::Quit:
        // Left to the timer, so that the sender has its answer before the window goes.
        QuitRequested = true;
        break;
    }
}

void Main::Speak(std::wstring text) { speech::BuildSpeechText(text, services_.shared, pronunciations_); }

void Main::Read(std::wstring text)
{
    if (!services_.rooms.ReadInTextReader(text))
        Speak(std::move(text));
}

void Main::Form_Unload()
{
    MainServices& s = services_;
    s.trace.Write("unload");
    s.access.Shutdown();
    if (s.shared.OptionsOpen)
        s.rooms.UnloadOptions();
    if (s.shared.TextReaderOpen)
        s.rooms.UnloadTextReader();
    s.form.SetInTray(false);
    s.form.End();
}

void Main::Bookmark(std::int32_t number)
{
    if (!services_.shared.TextReaderOpen)
        return;
    if (number != kEndOfText)
        services_.rooms.TextReaderBookmark(number);
    else if (services_.rooms.closeTheWindow())
        services_.rooms.UnloadTextReader();
}

void Main::Click(const agent::PointerEvent&)
{
    // The toolbar stays above the character that was just clicked.
    MakeTopmost();
}

void Main::DragComplete(const agent::PointerEvent&)
{
    if (services_.shared.character != nullptr)
        speech::SavePosition(services_.store, *services_.shared.character);
}

} // namespace voxtrel::app
