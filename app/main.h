#pragma once

#include "agent/control.h"
#include "app/dde_command.h"
#include "app/main_form.h"
#include "app/rooms.h"
#include "app/trace.h"
#include "platform/accessibility.h"
#include "platform/desktop.h"
#include "platform/messages.h"
#include "platform/single_instance.h"
#include "settings/program_folder.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"
#include "settings/string_table.h"
#include "speech/pronunciation_list.h"

#include <string>
#include <string_view>

namespace voxtrel::app {

// The program's own application title: where the running instance leaves its window handle.
inline constexpr std::wstring_view kApplicationTitle = L"Voxtrel";

// Bookmark that ends the reading of a whole text whose window is to close.
inline constexpr std::int32_t kEndOfText = 88888888;

// What Main works with. Everything outlives it.
struct MainServices {
    settings::SettingsStore& store;
    const settings::StringTable& strings;
    settings::SharedSettings& shared;
    const settings::ProgramFolder& folder;
    agent::Control& agent1;
    platform::Desktop& desktop;
    platform::Messages& messages;
    platform::OVAccessibility& access;
    platform::SingleInstance& instances;
    MainForm& form;
    Rooms& rooms;
    Trace& trace;
};

// The main window's thinking: start-up, the three timers, the character's events, commands, shutdown. One for
// the whole run. Everything runs on the user-interface thread.
class Main final : public agent::ControlEvents {
public:
    explicit Main(const MainServices& services) : services_(services), pronunciations_(services.store) {}

    enum class StartUp {
        Running,
        SecondInstance, // the first instance's window was restored; this one is to end without a word
        NoCharacter,    // StartUpError says why
    };
    // Start-up, in its fixed order.
    StartUp Form_Load();
    const std::wstring& StartUpError() const { return startUpError_; }

    void Timer1_Timer();      // general tick, 100 ms
    void Timer2_Timer();      // screen reading, 100 ms
    void hotkeytimer_Timer(); // speech flush, 100 ms

    // Title, tray tip, tool tips and menu captions from the string table.
    void LocaliseMain();
    // Shows or hides the toolbar.
    void mnu_toolbar_Click();
    void mnu_showOptions_Click() { services_.rooms.ShowOptions(); }
    // A mouse event on the tray icon that names its button; and a click that does not.
    void SysTray_MouseUp(int button);
    void SysTray_Click() { mnu_toolbar_Click(); }

    // The toolbar's button with this key; other keys do nothing.
    void tbrMenu_ButtonClick(std::string_view key);

    // A command string of another program. Whatever it holds, it is accepted.
    void Form_LinkExecute(std::wstring_view command);

    // Shutdown, in its fixed order; ends the program.
    void Form_Unload();

    void Bookmark(std::int32_t number) override;
    void Click(const agent::PointerEvent& event) override;
    // A double click does nothing, on purpose: the first click has raised the toolbar already.
    void DblClick(const agent::PointerEvent&) override {}
    // The character is found where it was put, at the next start too.
    void DragComplete(const agent::PointerEvent&) override;

    bool QuitRequested = false; // set by the quit command, acted on by Timer1
    std::wstring rolestring;    // of the accessibility reader, read at start-up

private:
    void RestoreFirstInstance();
    bool LoadCharacter();
    void MakeTopmost();
    void TellReach();
    void Read(std::wstring text);
    void Speak(std::wstring text);

    MainServices services_;
    speech::PronunciationList pronunciations_;
    std::wstring startUpError_;
};

} // namespace voxtrel::app
