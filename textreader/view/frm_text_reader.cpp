#include "textreader/view/frm_text_reader.h"

#include "platform/accessible_name.h"
#include "platform/window_handle.h"
#include "settings/string_numbers.h"
#include "settings/view/wx_form.h"
#include "textreader/view/drop_target.h"
#include "textreader/view/reader_status_bar.h"
#include "textreader/view/reader_toolbar.h"

#include <wx/colordlg.h>
#include <wx/display.h>
#include <wx/filename.h>
#include <wx/fontdlg.h>
#include <wx/iconbndl.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <array>
#include <utility>

namespace voxtrel::textreader {
namespace {

namespace strings = settings::strings;

constexpr int kTimer1Ms = 300;
constexpr int kTimerMs = 500;
constexpr int kDotsPerInch = 96; // of device-independent pixels

// A section of this size takes about half a second to prepare on a slow machine.
constexpr std::int32_t kLongSection = 3000000;

constexpr std::array<std::wstring_view, 3> kModes{kModeWord, kModeSentence, kModeParagraph};

// The entries of the colour menus, but for the last one, which asks for a colour.
constexpr std::array<std::int32_t, 8> kColors{0x0000FF, 0x0060D0, 0x008000, 0x808000,
                                              0xFF0000, 0x900090, 0xC000C0, 0x606060};

// Takes the focus while the voice reads, so that no caret blinks in the highlight; the keyboard passes it by.
class HiddenBox final : public wxTextCtrl {
public:
    explicit HiddenBox(wxWindow* parent)
        : wxTextCtrl(parent, wxID_ANY, wxEmptyString, wxPoint(-100, -100), wxSize(1, 1),
                     wxTE_READONLY | wxBORDER_NONE)
    {
    }

    bool AcceptsFocusFromKeyboard() const override { return false; }
};

} // namespace

frmTextReader::frmTextReader(const ReaderServices& services)
    : wxFrame(nullptr, wxID_ANY, "2911:Text Reader", wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE | wxSTAY_ON_TOP),
      services_(services), pronunciations_(services_.store), page_(new wxPanel(this)),
      rtf_textbox_(page_, [this](const TextEdit& edit) { reader_.TextEdited(edit); }),
      Timer1_(this, wxWindow::NewControlId()), Timer_(this, wxWindow::NewControlId()),
      reader_(rtf_textbox_, *this, services_.shared, pronunciations_)
{
    MakeControls();
    Form_Load();
    BindHandlers();
}

frmTextReader::~frmTextReader() = default;

void frmTextReader::MakeControls()
{
    settings::SetTag(*this, L"2911");
    const wxBitmapBundle icon = wxBitmapBundle::FromSVGFile(
        wxString(services_.iconFolder) + wxFILE_SEP_PATH + "text-reader.svg", wxSize(24, 24));
    wxIconBundle icons;
    for (const int size : {16, 24, 32, 48})
        icons.AddIcon(icon.GetIcon(wxSize(size, size)));
    SetIcons(icons);
    toolbar_ = new ReaderToolbar(
        this, wxString(services_.iconFolder),
        {[this](std::string_view key) { toolbar_ButtonClick(key); },
         [this](std::string_view key, std::size_t item) { toolbar_ButtonMenuClick(key, item); },
         [this](std::string_view key) { return ChosenItem(key); }});
    toolbar_->MoveBeforeInTabOrder(page_);
    auto* margins = new wxBoxSizer(wxVERTICAL);
    margins->Add(&rtf_textbox_.Control(), wxSizerFlags(1).Expand().Border(wxLEFT | wxTOP, FromDIP(6)));
    page_->SetSizer(margins);
    page_->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW));
    hiddenBox_ = new HiddenBox(page_);
    StatusBar_ = new ReaderStatusBar(this, {[this] { AutoCloseClick(); }, [this] { BlockHighlightClick(); }});
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(toolbar_, wxSizerFlags().Expand().Border(wxALL, FromDIP(2)));
    sizer->Add(page_, wxSizerFlags(1).Expand());
    sizer->Add(StatusBar_, wxSizerFlags().Expand());
    SetSizer(sizer);
}

void frmTextReader::BindHandlers()
{
    Bind(wxEVT_CHAR_HOOK, &frmTextReader::Form_KeyDown, this);
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { Unload(); });
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { Timer1_Timer(); }, Timer1_.GetId());
    Bind(
        wxEVT_TIMER, [this](wxTimerEvent&) { Timer_Timer(); }, Timer_.GetId());
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        page_->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW));
        rtf_textbox_.RefreshColors();
        event.Skip();
    });
    const auto dropped = [this](const std::wstring& path) { OpenFile(path); };
    SetDropTarget(new FileDropTarget(dropped));
    rtf_textbox_.Control().SetDropTarget(new FileDropTarget(dropped));
    Timer1_.Start(kTimer1Ms);
    Timer_.Start(kTimerMs);
}

void frmTextReader::Form_Load()
{
    settings::LocaliseForm(*this, services_.strings);
    toolbar_->SetAccessibleName("wdcolor", Text(2923));
    toolbar_->SetAccessibleName("sentcol", Text(2924));
    platform::SetAccessibleName(rtf_textbox_.Control(), Text(strings::kReaderText).ToStdWstring());
    platform::SetAccessibleName(*hiddenBox_, Text(strings::kReaderHiddenBox).ToStdWstring());

    settings_ = saved_ = LoadReaderSettings(services_.store);
    std::vector<PixelRect> screens;
    for (unsigned i = 0; i < wxDisplay::GetCount(); ++i) {
        const wxRect area = wxDisplay(i).GetClientArea();
        screens.push_back({area.x, area.y, area.width, area.height});
    }
    const PixelRect place = KeptOnScreen(ToPixels(settings_.window, FromDIP(kDotsPerInch)), screens);
    SetSize(place.x, place.y, place.width, place.height);
    ApplyFont();
    reader_.wordColor = settings_.wordColor;
    reader_.sentenceColor = settings_.sentenceColor;
    ShowColors();
    rtf_textbox_.SetSelectionShown(settings_.blockHighlight);
    ShowPanels();
    services_.shared.TextReaderOpen = true;
}

void frmTextReader::ShowReader()
{
    Iconize(false);
    Show();
    Raise();
    services_.desktop.SetWindowPos(platform::WindowHandle(*this), platform::kTopmost, 0, 0, 0, 0,
                                   platform::kNoSizeNoMoveNoActivateShow);
    rtf_textbox_.Control().SetFocus();
}

void frmTextReader::Unload()
{
    if (unloading_)
        return;
    unloading_ = true;
    Timer1_.Stop();
    Timer_.Stop();
    reader_.ResetToBlack();
    RememberPlace();
    SaveReaderSettings(services_.store, settings_);
    services_.shared.TextReaderOpen = false;
    services_.shared.PendingSpeech.clear();
    if (services_.unloaded)
        services_.unloaded();
    Hide();
    if (openDialog_ != nullptr && openDialog_->IsModal())
        openDialog_->EndModal(wxID_CANCEL);
    if (modal_ == 0)
        Destroy();
}

void frmTextReader::SetText(std::wstring_view text) { SetNormalisedText(WithCrLf(text)); }

void frmTextReader::speakWindowText() { reader_.speakWindowText(); }

void frmTextReader::agent1_Bookmark(std::int32_t number)
{
    if (!unloading_)
        reader_.agent1_Bookmark(number);
}

void frmTextReader::Form_KeyDown(wxKeyEvent& event)
{
    if (event.HasAnyModifiers()) {
        event.Skip();
        return;
    }
    switch (event.GetKeyCode()) {
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT:
        Navigate(Where::Previous);
        break;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT:
        Navigate(Where::Next);
        break;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        Navigate(Where::Current);
        break;
    case WXK_ESCAPE:
        Unload();
        break;
    default:
        event.Skip();
    }
}

void frmTextReader::Navigate(Where where)
{
    using Select = void (TextReader::*)();
    // By mode, then previous, current and next.
    static constexpr Select kSelects[3][3] = {
        {&TextReader::SelectPreviousWord, &TextReader::SelectCurrentWord, &TextReader::SelectNextWord},
        {&TextReader::SelectPreviousSentence, &TextReader::SelectCurrentSentence,
         &TextReader::SelectNextSentence},
        {&TextReader::SelectPreviousParagraph, &TextReader::SelectCurrentParagraph,
         &TextReader::SelectNextParagraph}};
    reader_.PrepareNavigation();
    const Select select = kSelects[ChosenItem("mode")][static_cast<std::size_t>(where)];
    (reader_.*select)();
}

void frmTextReader::toolbar_ButtonClick(std::string_view key)
{
    if (key == "spk") {
        reader_.SpeakSelection();
    } else if (key == "spkall") {
        reader_.speakWindowText();
    } else if (key == "stp") {
        reader_.PrepareNavigation();
    } else if (key == "fnt") {
        ChooseFont();
    } else if (key == "opn") {
        OpenTextFile();
    } else if (key == "bck") {
        Navigate(Where::Previous);
    } else if (key == "ply") {
        Navigate(Where::Current);
    } else if (key == "forwd") {
        Navigate(Where::Next);
    } else if (key == "pause") {
        toolbar_->Pressed(key) ? reader_.PauseSpeech() : reader_.ResumeSpeech();
    } else if (key == "adv") {
        reader_.PrepareNavigation();
        if (services_.showOptions)
            services_.showOptions();
    }
}

void frmTextReader::toolbar_ButtonMenuClick(std::string_view key, std::size_t item)
{
    if (key == "mode") {
        settings_.readMode = kModes[item];
        ShowPanels();
    } else {
        ChooseColor(key == "wdcolor" ? settings_.wordColor : settings_.sentenceColor, item);
    }
}

std::size_t frmTextReader::ChosenItem(std::string_view key) const
{
    const auto place = [](const auto& choices, const auto& chosen) {
        return static_cast<std::size_t>(std::find(choices.begin(), choices.end(), chosen) - choices.begin());
    };
    if (key == "mode")
        return place(kModes, std::wstring_view(settings_.readMode));
    return place(kColors, key == "wdcolor" ? settings_.wordColor : settings_.sentenceColor);
}

void frmTextReader::ChooseColor(std::int32_t& color, std::size_t item)
{
    if (item < kColors.size()) {
        color = kColors[item];
    } else {
        wxColourData data;
        data.SetColour(wxColour(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF));
        wxColourDialog dialog(this, &data);
        if (!ShowModally(dialog))
            return;
        const wxColour chosen = dialog.GetColourData().GetColour();
        color = chosen.Red() | chosen.Green() << 8 | chosen.Blue() << 16;
    }
    reader_.wordColor = settings_.wordColor;
    reader_.sentenceColor = settings_.sentenceColor;
    ShowColors();
}

void frmTextReader::ShowColors()
{
    toolbar_->SetSwatch("wdcolor", settings_.wordColor);
    toolbar_->SetSwatch("sentcol", settings_.sentenceColor);
}

void frmTextReader::ChooseFont()
{
    wxFontData data;
    data.EnableEffects(false);
    data.SetInitialFont(rtf_textbox_.Control().GetFont());
    wxFontDialog dialog(this, data);
    if (!ShowModally(dialog))
        return;
    const wxFont font = dialog.GetFontData().GetChosenFont();
    settings_.font = font.GetFaceName().ToStdWstring();
    settings_.fontSize = font.GetFractionalPointSize();
    settings_.fontBold = font.GetWeight() >= wxFONTWEIGHT_BOLD;
    settings_.fontItalic = font.GetStyle() != wxFONTSTYLE_NORMAL;
    ApplyFont();
}

bool frmTextReader::ShowModally(wxDialog& dialog)
{
    const Modal open(*this);
    openDialog_ = &dialog;
    const int answer = dialog.ShowModal();
    openDialog_ = nullptr;
    return answer == wxID_OK && !unloading_;
}

void frmTextReader::ApplyFont()
{
    wxFontInfo info(settings_.fontSize);
    info.FaceName(wxString(settings_.font)).Bold(settings_.fontBold).Italic(settings_.fontItalic);
    rtf_textbox_.Control().SetFont(wxFont(info));
}

void frmTextReader::ShowPanels()
{
    StatusBar_->ShowMode(
        settings::FormatResString(services_.strings.Text(strings::kReadingMode), settings_.readMode));
    StatusBar_->ShowAutoClose(
        services_.strings.Text(settings_.autoClose ? strings::kAutoCloseOn : strings::kAutoCloseOff));
    StatusBar_->ShowBlockHighlight(services_.strings.Text(
        settings_.blockHighlight ? strings::kBlockHighlightOn : strings::kBlockHighlightOff));
}

void frmTextReader::BlockHighlightClick()
{
    settings_.blockHighlight = saved_.blockHighlight = !settings_.blockHighlight;
    SaveBlockHighlight(services_.store, settings_.blockHighlight);
    rtf_textbox_.SetSelectionShown(settings_.blockHighlight);
    ShowPanels();
}

void frmTextReader::AutoCloseClick()
{
    settings_.autoClose = !settings_.autoClose;
    ShowPanels();
}

// Keeps pointer and focus in step with the voice. A user who has gone to a control on purpose is left there.
void frmTextReader::Timer1_Timer()
{
    const bool reading = reader_.Reading();
    rtf_textbox_.Control().SetCursor(reading ? wxCURSOR_ARROW : wxCURSOR_IBEAM);
    if (reading && !settings_.blockHighlight && IsActive() && wxWindow::FindFocus() == nullptr)
        hiddenBox_->SetFocus();
}

// What is not written now would be lost with a program that is ended by force.
void frmTextReader::Timer_Timer()
{
    RememberPlace();
    if (settings_ == saved_)
        return;
    SaveReaderSettings(services_.store, settings_);
    saved_ = settings_;
}

void frmTextReader::RememberPlace()
{
    if (!IsShown() || IsIconized() || IsMaximized() || IsFullScreen())
        return;
    const wxRect rect = GetRect();
    settings_.window = ToTwips({rect.x, rect.y, rect.width, rect.height}, FromDIP(kDotsPerInch));
}

void frmTextReader::SetBusyPointer(bool busy)
{
    if (!busy) {
        preparing_.reset();
        wxEndBusyCursor();
        return;
    }
    wxBeginBusyCursor();
    if (reader_.strlength > kLongSection)
        preparing_ = std::make_unique<wxBusyInfo>(Text(strings::kPreparingText), this);
}

void frmTextReader::RefreshTextBox() { rtf_textbox_.Control().Refresh(); }

void frmTextReader::ActivateTextBox()
{
    if (IsActive() && !rtf_textbox_.Control().HasFocus() && hiddenBox_->HasFocus())
        rtf_textbox_.Control().SetFocus();
}

void frmTextReader::FocusHiddenBox()
{
    if (IsActive())
        hiddenBox_->SetFocus();
}

void frmTextReader::ReleasePause() { toolbar_->SetPressed("pause", false); }

void frmTextReader::CloseTextReader()
{
    CallAfter([this] { Unload(); });
}

wxString frmTextReader::Text(int number) const { return wxString(services_.strings.Text(number)); }

} // namespace voxtrel::textreader
