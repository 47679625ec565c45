#pragma once

#include "app/main_form.h"
#include "app/toolbar.h"
#include "app/tray_icon.h"

#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/timer.h>

#include <memory>
#include <string>
#include <string_view>

class wxStaticText;

namespace voxtrel::app {

class Main;

// The main window: the small floating toolbar, the owner of the tray icon, its menu and the three timers.
// What it is told it hands to Main.
class MainFrame final : public wxFrame, public MainForm {
public:
    // iconFolder holds the program's SVG icons.
    explicit MainFrame(const std::wstring& iconFolder);

    // Hands events to main from now on, and starts the timers; null ends both.
    void Attach(Main* main);

    // The tray menu, where the pointer is, for a right click on the character.
    void PopupMenuOfCharacter();

    // As start-up has set it.
    const std::wstring& HelpFile() const { return helpFile_; }

    platform::NativeWindow hWnd() const override;
    void LocaliseForm(const settings::StringTable& table) override;
    void SetTitle(std::wstring_view title) override;
    void SetButtonToolTip(std::size_t number, std::wstring_view text) override;
    std::wstring MenuCaption(MenuEntry entry) const override;
    void SetMenuCaption(MenuEntry entry, std::wstring_view caption) override;
    void SetInTray(bool shown) override;
    void SetTrayTip(std::wstring_view tip) override;
    void PopupTrayMenu() override;
    void SetHelpFile(std::wstring_view path) override;
    bool Visible() const override;
    void SetVisible(bool visible) override;
    void DoEvents() override;
    // The hidden copy of what waits to be spoken.
    void SetLabel1(std::wstring_view caption);
    void End() override;

private:
    static constexpr int kTickMs = 100;

    void MakeToolbar(const std::wstring& iconFolder);
    void MakeTray();
    void MakeTimers();
    void PlaceAtCorner();

    Main* main_ = nullptr;
    std::wstring helpFile_;
    Toolbar* tbrMenu_ = nullptr; // owned by the frame
    wxStaticText* Label1_;       // likewise
    std::unique_ptr<TrayIcon> sysTray_;
    wxMenu mnu_root_;
    std::wstring rootCaption_ = L"ROOT";
    wxTimer timer1_;
    wxTimer timer2_;
    wxTimer hotkeytimer_;
};

} // namespace voxtrel::app
