#include "options/view/frm_options.h"

#include "options/sliders.h"
#include "options/view/balloon_preview.h"
#include "options/view/manual.h"
#include "options/view/value_slider.h"
#include "platform/accessible_name.h"
#include "platform/focus.h"
#include "screenreading/view/screen_reading_page.h"
#include "settings/string_numbers.h"
#include "settings/view/wx_form.h"

#include <wx/bmpbndl.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/display.h>
#include <wx/filedlg.h>
#include <wx/fontenum.h>
#include <wx/iconbndl.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <algorithm>
#include <utility>

namespace voxtrel::options {
namespace {

namespace numbers = settings::strings;

struct PageDesign {
    const char* tab;
    wxPanel* (*make)(wxWindow*, OptionsControls&);
};

constexpr PageDesign kPages[] = {
    {"3921:Character", MakeCharacterPage}, {"3922:Balloon", MakeBalloonPage},
    {"3923:Voice", MakeVoicePage},         {"3924:Pronunciations", MakePronunciationsPage},
    {"3925:Hot Keys", MakeHotKeysPage},
};

constexpr int kScreenReadingTab = 3403;

constexpr int kIconSizes[] = {16, 24, 32, 48};

// Device-independent pixels.
constexpr int kRoomBesideTabText = 40;
constexpr int kRoomBelowPages = 24; // themes have tabs that are higher than wx knows

// wx counts places with numbers of its own.
int PlaceOrNone(std::optional<std::size_t> place) { return place ? static_cast<int>(*place) : wxNOT_FOUND; }

std::optional<std::size_t> PlaceOf(int selection)
{
    return selection == wxNOT_FOUND ? std::nullopt : std::optional(static_cast<std::size_t>(selection));
}

wxArrayString ToWx(const std::vector<std::wstring>& texts)
{
    wxArrayString array;
    array.reserve(texts.size());
    for (const std::wstring& text : texts)
        array.push_back(wxString(text));
    return array;
}

// Where the user is at work: of several monitors the one on which the dialog was called.
wxRect ScreenOfPointer()
{
    const int display = wxDisplay::GetFromPoint(wxGetMousePosition());
    return wxDisplay(display == wxNOT_FOUND ? 0u : static_cast<unsigned>(display)).GetClientArea();
}

// What a label says, without its mnemonic and its colon.
std::wstring NameIn(const wxStaticText& label)
{
    wxString name = label.GetLabelText();
    name.Trim();
    if (name.EndsWith(":"))
        name.RemoveLast();
    return name.ToStdWstring();
}

} // namespace

frmOptions::frmOptions(const FormServices& services)
    : wxDialog(nullptr, wxID_ANY, "Speech Options", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxSTAY_ON_TOP),
      services_(services), options_(services_.options, *this)
{
    settings::SetTag(*this, L"3920");
    const wxBitmapBundle icon = wxBitmapBundle::FromSVGFile(
        wxString(services_.iconFolder) + wxFILE_SEP_PATH + "options.svg", wxSize(24, 24));
    wxIconBundle icons;
    for (const int size : kIconSizes)
        icons.AddIcon(icon.GetIcon(wxSize(size, size)));
    SetIcons(icons);
    MakePages();
    auto* column = new wxBoxSizer(wxVERTICAL);
    column->Add(tabs_, wxSizerFlags(1).Expand().Border(wxALL, Gap(*this)));
    column->Add(MakeButtons(), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, Gap(*this)));
    SetSizer(column);
    options_.Form_Load();
    EnablePronunciationButtons();
    BindHandlers();
    BindPronunciations();
}

void frmOptions::MakePages()
{
    tabs_ = new wxNotebook(this, wxID_ANY);
    tabs_->SetName("tabs");
    for (const PageDesign& design : kPages) {
        const wxString tab = design.tab;
        tabs_->AddPage(design.make(tabs_, controls_), tab.AfterFirst(':'));
        tabNumbers_.push_back(wxAtoi(tab));
    }
    const OptionsServices& s = services_.options;
    screenReading_ = new screenreading::ScreenReadingPage(
        tabs_, {s.store, s.shared, services_.access, s.folder}, s.strings, [this] { MakeRoomForDetails(); });
    tabs_->AddPage(screenReading_, "Screen Reading");
    tabNumbers_.push_back(kScreenReadingTab);
}

wxSizer* frmOptions::MakeButtons()
{
    Command1_ = MakeButton(this, "Command1", "3928:&Help");
    ok_but_ = new wxButton(this, wxID_OK);
    ok_but_->SetName("ok_but");
    settings::SetTag(*ok_but_, L"3926");
    cancel_but_ = new wxButton(this, wxID_CANCEL);
    cancel_but_->SetName("cancel_but");
    settings::SetTag(*cancel_but_, L"3927");
    ok_but_->SetDefault();
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(Command1_);
    row->AddStretchSpacer();
    row->Add(ok_but_, wxSizerFlags().Border(wxRIGHT, Gap(*this)));
    row->Add(cancel_but_);
    return row;
}

void frmOptions::BindHandlers()
{
    const auto onDropDown = [this](DropDown list, void (Options::*click)()) {
        On(controls_.Of(list), wxEVT_CHOICE, [this, click] { (options_.*click)(); });
    };
    onDropDown(DropDown::AgentList, &Options::AgentList_Click);
    onDropDown(DropDown::AgentSizeList, &Options::AgentSizeList_Click);
    onDropDown(DropDown::voicelist, &Options::voicelist_Click);
    onDropDown(DropDown::positionlist, &Options::positionlist_Click);
    onDropDown(DropDown::Fontlist, &Options::Fontlist_Click);
    onDropDown(DropDown::Sizelist, &Options::Sizelist_Click);
    for (const CheckBox box : {CheckBox::Check1, CheckBox::Check2, CheckBox::Check3})
        On(controls_.Of(box), wxEVT_CHECKBOX, [this, box] { options_.Check_Click(box); });
    On(controls_.Of(CheckBox::visiblebox), wxEVT_CHECKBOX, [this] { options_.visiblebox_Click(); });
    for (wxRadioButton* style : controls_.groups[static_cast<std::size_t>(OptionGroup::cr)])
        On(style, wxEVT_RADIOBUTTON, [this] { options_.cr_Click(); });
    for (wxRadioButton* mode : controls_.groups[static_cast<std::size_t>(OptionGroup::showballoonbox)])
        On(mode, wxEVT_RADIOBUTTON, [this] { options_.showballoonbox_Click(); });
    for (const Slider slider : kAllSliders)
        On(controls_.sliders[static_cast<std::size_t>(slider)], wxEVT_SLIDER,
           [this, slider] { options_.Slider_Change(slider); });
    for (int index = 0; index < hotkeys::kHotKeyRows; ++index) {
        On(controls_.hotkeycheck[index], wxEVT_CHECKBOX,
           [this, index] { options_.hotkeycheck_Click(index); });
        On(controls_.hotkeycombo[index], wxEVT_CHOICE, [this, index] { options_.hotkeycombo_Click(index); });
    }
    On(controls_.cmdTestVoice, wxEVT_BUTTON, [this] { options_.cmdTestVoice_Click(); });
    On(controls_.Command3, wxEVT_BUTTON, [this] { options_.Command3_Click(); });
    On(controls_.Command5, wxEVT_BUTTON, [this] { options_.Command5_Click(); });
    On(Command1_, wxEVT_BUTTON, [this] { options_.Command1_Click(); });
    On(ok_but_, wxEVT_BUTTON, [this] { options_.ok_but_Click(); });
    On(cancel_but_, wxEVT_BUTTON, [this] { options_.cancel_but_Click(); });
    On(this, wxEVT_CLOSE_WINDOW, [this] { Unload(); });
}

void frmOptions::BindPronunciations()
{
    const auto then = [this](void (Options::*click)()) {
        return [this, click] {
            (options_.*click)();
            EnablePronunciationButtons();
        };
    };
    On(controls_.List1, wxEVT_LISTBOX, then(&Options::List1_Click));
    On(controls_.pron_add, wxEVT_BUTTON, then(&Options::pron_add_Click));
    On(controls_.Command2, wxEVT_BUTTON, then(&Options::Command2_Click));
    On(controls_.Command4, wxEVT_BUTTON, then(&Options::Command4_Click));
    On(controls_.cmdSpeak, wxEVT_BUTTON, then(&Options::cmdSpeak_Click));
    On(controls_.importButton, wxEVT_BUTTON, [this] { ImportFromFile(); });
    On(controls_.exportButton, wxEVT_BUTTON, [this] { ExportToFile(); });
    for (wxTextCtrl* box : controls_.txtSpeak) {
        On(box, wxEVT_TEXT, [this] { EnablePronunciationButtons(); });
        On(box, wxEVT_TEXT_ENTER, then(&Options::pron_add_Click));
    }
}

// A button that would do nothing cannot be pressed.
void frmOptions::EnablePronunciationButtons()
{
    platform::EnableInTabOrder(*controls_.pron_add, !controls_.txtSpeak[0]->IsEmpty());
    platform::EnableInTabOrder(*controls_.cmdSpeak, !controls_.txtSpeak[1]->IsEmpty());
    platform::EnableInTabOrder(*controls_.Command2, SelectedPronunciation().has_value());
    platform::EnableInTabOrder(*controls_.exportButton, !controls_.List1->IsEmpty());
}

void frmOptions::ShowOptions()
{
    Iconize(false);
    Show();
    Raise();
}

void frmOptions::Unload()
{
    if (unloading_)
        return;
    unloading_ = true;
    screenReading_->Form_Unload();
    options_.Form_Unload();
    if (services_.unloaded)
        services_.unloaded();
    Hide();
    platform::ForgetTabs(*tabs_);
    if (handling_ == 0)
        Destroy();
}

void frmOptions::LocaliseForm(const settings::StringTable& table)
{
    settings::LocaliseForm(*this, table);
    for (std::size_t page = 0; page < tabNumbers_.size(); ++page) {
        if (const auto text = table.Find(tabNumbers_[page]))
            tabs_->SetPageText(page, wxString(*text));
        // A page that is not seen yet has its controls in the sizes of their designed texts.
        tabs_->GetPage(page)->SetSize(tabs_->GetPage(page)->GetBestSize());
        tabs_->GetPage(page)->Layout();
    }
    // wx measures a drop-down list before it has the font of the screen.
    for (wxChoice* list : controls_.hotkeycombo)
        list->InvalidateBestSize();
    controls_.preview->SetSample(Text(numbers::kBalloonSample));
    NameControls();
}

void frmOptions::NameControls()
{
    for (const Labelled& pair : controls_.labelled)
        platform::SetAccessibleName(*pair.control, NameIn(*pair.label));
    for (std::size_t i = 0; i < controls_.hotkeycombo.size(); ++i)
        platform::SetAccessibleName(
            *controls_.hotkeycombo[i],
            settings::FormatResString(services_.options.strings.Text(numbers::kHotKeyName),
                                      controls_.hotkeycheck[i]->GetLabelText().ToStdWstring()));
}

void frmOptions::LoadScreenReadingPage()
{
    screenReading_->Form_Load();
    heightOfScreenReading_ = screenReading_->GetSizer()->CalcMin().y;
}

// The details panel opens below the rest of its page: the dialog grows by its height, and shrinks when it is
// closed.
void frmOptions::MakeRoomForDetails()
{
    const int height = screenReading_->GetSizer()->CalcMin().y;
    const int grown = height - heightOfScreenReading_;
    heightOfScreenReading_ = height;
    SetMinSize(wxSize(GetMinSize().x, GetMinSize().y + grown));
    SetSize(GetSize().x, GetSize().y + grown);
}

void frmOptions::FillDropDown(DropDown list, const std::vector<std::wstring>& entries,
                              std::optional<std::size_t> selected)
{
    controls_.Of(list)->Set(ToWx(entries));
    SelectEntry(list, selected);
}

void frmOptions::SelectEntry(DropDown list, std::optional<std::size_t> selected)
{
    controls_.Of(list)->SetSelection(PlaceOrNone(selected));
}

int frmOptions::ListIndex(DropDown list) const { return controls_.Of(list)->GetSelection(); }

std::wstring frmOptions::ListText(DropDown list) const
{
    return controls_.Of(list)->GetStringSelection().ToStdWstring();
}

void frmOptions::SetTicked(CheckBox box, bool ticked) { controls_.Of(box)->SetValue(ticked); }

bool frmOptions::Ticked(CheckBox box) const { return controls_.Of(box)->GetValue(); }

void frmOptions::SelectOption(OptionGroup group, int index)
{
    const auto place = static_cast<std::size_t>(group);
    const bool known = index >= 0 && index < kOptionsOfAGroup;
    (known ? controls_.groups[place][static_cast<std::size_t>(index)] : controls_.noneOfGroup[place])
        ->SetValue(true);
}

int frmOptions::SelectedOption(OptionGroup group) const
{
    const auto& buttons = controls_.groups[static_cast<std::size_t>(group)];
    const auto selected = std::find_if(buttons.begin(), buttons.end(),
                                       [](const wxRadioButton* button) { return button->GetValue(); });
    return selected == buttons.end() ? -1 : static_cast<int>(selected - buttons.begin());
}

void frmOptions::SetSlider(Slider slider, int value)
{
    const SliderRange range = RangeOf(slider);
    controls_.sliders[static_cast<std::size_t>(slider)]->SetValue(
        std::clamp(value, range.lowest, range.highest));
}

int frmOptions::SliderValue(Slider slider) const
{
    return controls_.sliders[static_cast<std::size_t>(slider)]->GetValue();
}

void frmOptions::SetSliderLabel(Slider slider, std::wstring_view text)
{
    controls_.sliderLabels[static_cast<std::size_t>(slider)]->SetLabel(wxString(text.data(), text.size()));
}

void frmOptions::SelectHotKey(int index, int position)
{
    const bool listed = position >= 0 && position < hotkeys::kListedKeys;
    controls_.hotkeycombo[static_cast<std::size_t>(index)]->SetSelection(listed ? position : wxNOT_FOUND);
}

int frmOptions::HotKeyPosition(int index) const
{
    return controls_.hotkeycombo[static_cast<std::size_t>(index)]->GetSelection();
}

void frmOptions::TickHotKey(int index, bool ticked)
{
    controls_.hotkeycheck[static_cast<std::size_t>(index)]->SetValue(ticked);
}

bool frmOptions::HotKeyTicked(int index) const
{
    return controls_.hotkeycheck[static_cast<std::size_t>(index)]->GetValue();
}

void frmOptions::SetPronunciation(const PronunciationTexts& texts)
{
    controls_.txtSpeak[0]->ChangeValue(wxString(texts.written));
    controls_.txtSpeak[1]->ChangeValue(wxString(texts.spoken));
}

PronunciationTexts frmOptions::Pronunciation() const
{
    return {controls_.txtSpeak[0]->GetValue().ToStdWstring(),
            controls_.txtSpeak[1]->GetValue().ToStdWstring()};
}

// One word more or less does not make a long list anew.
void frmOptions::FillPronunciations(const std::vector<std::wstring>& written)
{
    wxListBox& list = *controls_.List1;
    const auto [shownEnd, writtenEnd] =
        std::mismatch(listed_.begin(), listed_.end(), written.begin(), written.end());
    const auto same = static_cast<std::size_t>(shownEnd - listed_.begin());
    if (shownEnd == listed_.end() && written.end() - writtenEnd == 1)
        list.Append(wxString(written.back()));
    else if (shownEnd != listed_.end() && std::equal(shownEnd + 1, listed_.end(), writtenEnd, written.end()))
        list.Delete(static_cast<unsigned>(same));
    else if (listed_ != written)
        list.Set(ToWx(written));
    list.SetSelection(wxNOT_FOUND);
    platform::FocusWithoutChoice(list); // what is typed but not saved would be lost
    listed_ = written;
}

std::optional<std::size_t> frmOptions::SelectedPronunciation() const
{
    return PlaceOf(controls_.List1->GetSelection());
}

void frmOptions::ShowBalloonFont(std::wstring_view name, long points)
{
    controls_.preview->SetLettering(wxString(name.data(), name.size()), static_cast<int>(points));
}

std::vector<std::wstring> frmOptions::ScreenFonts() const
{
    std::vector<std::wstring> fonts;
    for (const wxString& name : wxFontEnumerator::GetFacenames())
        fonts.push_back(name.ToStdWstring());
    std::sort(fonts.begin(), fonts.end());
    return fonts;
}

void frmOptions::OpenHelp()
{
    const std::wstring manual = ManualBeside(services_.helpFile);
    if (!OpenManual(manual, this))
        services_.options.messages.ShowExclamation(
            settings::FormatResString(services_.options.strings.Text(numbers::kNoManual), manual));
}

// Tabs that have no room would be scrolled.
int frmOptions::WidthOfTabs() const
{
    int width = 0;
    for (std::size_t page = 0; page < tabs_->GetPageCount(); ++page)
        width += tabs_->GetTextExtent(tabs_->GetPageText(page)).x + FromDIP(kRoomBesideTabText);
    return width;
}

void frmOptions::CentreOnScreen()
{
    tabs_->SetMinSize(wxSize(std::max(WidthOfTabs(), tabs_->GetBestSize().x),
                             tabs_->GetBestSize().y + FromDIP(kRoomBelowPages)));
    GetSizer()->SetSizeHints(this);
    const wxRect screen = ScreenOfPointer();
    const wxRect centred = wxRect(GetSize()).CentreIn(screen);
    Move(std::max(centred.x, screen.x),
         std::max(centred.y, screen.y)); // a high dialog keeps its title in sight
}

void frmOptions::ImportFromFile()
{
    const wxString filter =
        Text(numbers::kPronunciationFiles) + " (*.txt)|*.txt|" + Text(numbers::kAllFiles) + "|*";
    wxFileDialog dialog(this, Text(numbers::kImportTitle), wxEmptyString, wxEmptyString, filter,
                        wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    if (dialog.ShowModal() == wxID_OK && !unloading_) {
        options_.ImportPronunciations(dialog.GetPath().ToStdWstring());
        EnablePronunciationButtons();
    }
}

void frmOptions::ExportToFile()
{
    const wxString filter =
        Text(numbers::kPronunciationFiles) + " (*.txt)|*.txt|" + Text(numbers::kAllFiles) + "|*";
    wxFileDialog dialog(this, Text(numbers::kExportTitle), wxEmptyString, Text(numbers::kExportFileName),
                        filter, wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (dialog.ShowModal() == wxID_OK && !unloading_)
        options_.ExportPronunciations(dialog.GetPath().ToStdWstring());
}

wxString frmOptions::Text(int number) const { return wxString(services_.options.strings.Text(number)); }

} // namespace voxtrel::options
