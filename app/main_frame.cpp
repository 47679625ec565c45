#include "app/main_frame.h"

#include "app/main.h"
#include "platform/window_handle.h"
#include "settings/view/wx_form.h"

#include <wx/app.h>
#include <wx/bmpbndl.h>
#include <wx/display.h>
#include <wx/filename.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace voxtrel::app {
namespace {

constexpr int kIconSizes[] = {16, 24, 32, 48, 256};
constexpr int kCornerGap = 24; // device-independent pixels between the toolbar and the screen's corner

const std::vector<ToolbarButtonDesign> kToolbarButtons{
    {kToolbarKeys[0], "speak-selected.svg", "1002:Start speech"},
    {kToolbarKeys[1], "text-reader.svg", "1004:Open TextReader"},
    {kToolbarKeys[2], "stop.svg", "1006:Stop speech"},
    {kToolbarKeys[3], "open-file.svg", "1008:Open text"},
    {kToolbarKeys[4], "options.svg", "1010:Open Speech Properties Panel"},
};

wxString ToWx(std::wstring_view text) { return {text.data(), text.size()}; }

wxIconBundle LoadIcons(const wxString& file)
{
    wxIconBundle icons;
    const wxBitmapBundle drawing = wxBitmapBundle::FromSVGFile(file, wxSize(32, 32));
    if (!drawing.IsOk())
        return icons;
    for (const int size : kIconSizes)
        icons.AddIcon(drawing.GetIcon(wxSize(size, size)));
    return icons;
}

} // namespace

MainFrame::MainFrame(const std::wstring& iconFolder)
    : wxFrame(nullptr, wxID_ANY, "Voxtrel", wxDefaultPosition, wxDefaultSize,
              wxCAPTION | wxCLOSE_BOX | wxSYSTEM_MENU | wxSTAY_ON_TOP | wxFRAME_TOOL_WINDOW),
      Label1_(new wxStaticText(this, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                               wxST_NO_AUTORESIZE, "Label1")),
      timer1_(this, wxWindow::NewControlId()), timer2_(this, wxWindow::NewControlId()),
      hotkeytimer_(this, wxWindow::NewControlId())
{
    settings::SetTag(*this, L"1000");
    Label1_->Hide();
    SetIcons(LoadIcons(ToWx(iconFolder) + wxFileName::GetPathSeparator() + "voxtrel.svg"));
    MakeToolbar(iconFolder);
    MakeTray();
    MakeTimers();
    PlaceAtCorner();
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) {
        if (main_)
            main_->Form_Unload();
    });
}

void MainFrame::MakeToolbar(const std::wstring& iconFolder)
{
    tbrMenu_ = new Toolbar(this, kToolbarButtons, iconFolder, [this](std::string_view key) {
        if (main_)
            main_->tbrMenu_ButtonClick(key);
    });
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(tbrMenu_, wxSizerFlags(1).Expand());
    SetSizerAndFit(sizer);
}

void MainFrame::MakeTray()
{
    sysTray_ = std::make_unique<TrayIcon>(
        GetIcons(),
        [this](int button) {
            if (main_)
                main_->SysTray_MouseUp(button);
        },
        [this] {
            if (main_)
                main_->SysTray_Click();
        });
    const int showOptions = mnu_root_.Append(wxID_ANY, "1101:Show &Speech Options")->GetId();
    const int toolbar = mnu_root_.Append(wxID_ANY, "1103:Hide &Toolbar")->GetId();
    mnu_root_.Bind(wxEVT_MENU, [this](wxCommandEvent&) { main_->mnu_showOptions_Click(); }, showOptions);
    mnu_root_.Bind(wxEVT_MENU, [this](wxCommandEvent&) { main_->mnu_toolbar_Click(); }, toolbar);
}

void MainFrame::MakeTimers()
{
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { main_->Timer1_Timer(); }, timer1_.GetId());
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { main_->Timer2_Timer(); }, timer2_.GetId());
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { main_->hotkeytimer_Timer(); }, hotkeytimer_.GetId());
}

void MainFrame::Attach(Main* main)
{
    main_ = main;
    for (wxTimer* timer : {&timer1_, &timer2_, &hotkeytimer_}) {
        if (main)
            timer->Start(kTickMs);
        else
            timer->Stop();
    }
}

platform::NativeWindow MainFrame::hWnd() const { return platform::WindowHandle(*this); }

void MainFrame::LocaliseForm(const settings::StringTable& table)
{
    settings::FormModel model = settings::ReadForm(*this);
    const std::size_t controls = model.controls.size();
    for (const MenuEntry entry : kMenuEntries) {
        settings::ControlModel menu;
        menu.typeName = L"Menu";
        menu.caption = MenuCaption(entry);
        model.controls.push_back(menu);
    }
    settings::LocaliseForm(model, table);
    for (std::size_t i = 0; i < std::size(kMenuEntries); ++i)
        SetMenuCaption(kMenuEntries[i], model.controls[controls + i].caption);
    model.controls.resize(controls);
    settings::ApplyForm(*this, model);
}

void MainFrame::SetTitle(std::wstring_view title) { wxFrame::SetTitle(ToWx(title)); }

void MainFrame::SetButtonToolTip(std::size_t number, std::wstring_view text)
{
    tbrMenu_->SetToolTipText(number - 1, ToWx(text));
}

std::wstring MainFrame::MenuCaption(MenuEntry entry) const
{
    if (entry == MenuEntry::mnu_root)
        return rootCaption_;
    const std::size_t position = entry == MenuEntry::mnu_showOptions ? 0 : 1;
    return mnu_root_.FindItemByPosition(position)->GetItemLabel().ToStdWstring();
}

void MainFrame::SetMenuCaption(MenuEntry entry, std::wstring_view caption)
{
    if (entry == MenuEntry::mnu_root) {
        rootCaption_ = caption;
        return;
    }
    const std::size_t position = entry == MenuEntry::mnu_showOptions ? 0 : 1;
    mnu_root_.FindItemByPosition(position)->SetItemLabel(ToWx(caption));
}

void MainFrame::SetInTray(bool shown) { sysTray_->SetShown(shown); }

void MainFrame::SetTrayTip(std::wstring_view tip) { sysTray_->SetTip(tip); }

void MainFrame::PopupTrayMenu() { sysTray_->PopupMenu(&mnu_root_); }

void MainFrame::PopupMenuOfCharacter()
{
    // The press on the character comes to its end first: the menu waits for the user.
    CallAfter([this] {
        if (main_)
            PopupTrayMenu();
    });
}

void MainFrame::SetHelpFile(std::wstring_view path) { helpFile_ = path; }

bool MainFrame::Visible() const { return IsShown(); }

void MainFrame::SetVisible(bool visible) { Show(visible); }

void MainFrame::SetLabel1(std::wstring_view caption)
{
    if (const wxString text = ToWx(caption); Label1_->GetLabelText() != text)
        Label1_->SetLabelText(text);
}

void MainFrame::DoEvents() { wxTheApp->Yield(true); }

void MainFrame::End()
{
    Attach(nullptr);
    wxTheApp->ExitMainLoop();
}

void MainFrame::PlaceAtCorner()
{
    const wxRect area = wxDisplay(0u).GetClientArea();
    const int gap = FromDIP(kCornerGap);
    Move(area.GetRight() - GetSize().x - gap, area.GetTop() + gap);
}

} // namespace voxtrel::app
