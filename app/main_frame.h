#pragma once

#include "app/main_form.h"
#include "app/toolbar.h"

#include <wx/frame.h>
#include <wx/taskbar.h>
#include <wx/timer.h>

#include <functional>
#include <memory>
#include <string>

namespace voxtrel::app {

class Main;

// The main window: the small floating toolbar, the owner of the tray icon and of the three timers. What it is told
// it hands to Main.
class MainFrame final : public wxFrame, public MainForm {
public:
    // iconFolder holds the program's SVG icons.
    explicit MainFrame(const std::wstring& iconFolder);
    ~MainFrame() override;

    // Starts the timers and hands events to main from now on; null ends that.
    void Attach(Main* main);

    Toolbar& tbrMenu() { return *tbrMenu_; }

    platform::NativeWindow hWnd() const override;
    void LocaliseForm(const settings::StringTable& table) override;
    void SetInTray(bool shown) override;
    void SetHelpFile(std::wstring_view path) override;
    void Show() override;
    void DoEvents() override;
    void End() override;

private:
    static constexpr int kTickMs = 100;

    void OnClose(wxCloseEvent& event);
    void PlaceAtCorner();

    Main* main_ = nullptr;
    std::wstring iconFolder_;
    std::wstring helpFile_;
    Toolbar* tbrMenu_ = nullptr; // owned by the frame
    std::unique_ptr<wxTaskBarIcon> sysTray_;
    wxTimer timer1_;
    wxTimer timer2_;
    wxTimer hotkeytimer_;
};

} // namespace voxtrel::app
