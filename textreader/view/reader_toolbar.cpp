#include "textreader/view/reader_toolbar.h"

#include "platform/accessible_name.h"

#include <wx/bmpbuttn.h>
#include <wx/ffile.h>
#include <wx/filename.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statline.h>
#include <wx/tglbtn.h>
#include <wx/wrapsizer.h>

#include <algorithm>

namespace voxtrel::textreader {
namespace {

constexpr int kIconSize = 24;                       // device-independent pixels
constexpr const char* kSwatchInDrawing = "#010203"; // the colour that a drawing leaves open

enum class Kind { Push, TwoState, DropDown };

struct ButtonDesign {
    int group;
    Kind kind;
    std::string_view key;
    const char* icon;
    const char* toolTip;
    std::vector<const char*> menu;
};

const std::vector<const char*>& Colors()
{
    static const std::vector<const char*> colors = {"2930:Red",     "2931:Orange", "2932:Green",
                                                    "2933:Teal",    "2934:Blue",   "2935:Purple",
                                                    "2936:Magenta", "2937:Gray",   "2938:Other color..."};
    return colors;
}

const std::vector<ButtonDesign>& Designs()
{
    static const std::vector<ButtonDesign> designs = {
        {0, Kind::Push, "opn", "open-file.svg", "2916:Open text", {}},
        {1, Kind::Push, "bck", "text-reader/back.svg", "2917:Back", {}},
        {1, Kind::Push, "ply", "text-reader/play.svg", "2918:Play", {}},
        {1, Kind::Push, "forwd", "text-reader/forward.svg", "2919:Forward", {}},
        {2, Kind::Push, "spk", "text-reader/read-from-here.svg", "2912:Read from the cursor", {}},
        {2, Kind::Push, "spkall", "text-reader/read-all.svg", "2913:Read all", {}},
        {2, Kind::TwoState, "pause", "text-reader/pause.svg", "2920:Pause", {}},
        {2, Kind::Push, "stp", "stop.svg", "2914:Stop", {}},
        {3,
         Kind::DropDown,
         "mode",
         "text-reader/mode.svg",
         "2922:Reading mode",
         {"2925:Word", "2926:Sentence", "2927:Paragraph"}},
        {3, Kind::DropDown, "wdcolor", "text-reader/word-color.svg", "2904:Choose a different color",
         Colors()},
        {3, Kind::DropDown, "sentcol", "text-reader/section-color.svg", "2904:Choose a different color",
         Colors()},
        {3, Kind::Push, "fnt", "text-reader/font.svg", "2915:Font", {}},
        {4, Kind::Push, "adv", "options.svg", "2921:Speech options", {}},
    };
    return designs;
}

wxBitmapBundle Icon(const wxString& file)
{
    return wxBitmapBundle::FromSVGFile(file, wxSize(kIconSize, kIconSize));
}

std::unique_ptr<wxMenu> MakeMenu(const std::vector<const char*>& items)
{
    if (items.empty())
        return nullptr;
    auto menu = std::make_unique<wxMenu>();
    for (const char* item : items)
        menu->AppendCheckItem(wxID_ANY, item);
    return menu;
}

} // namespace

ReaderToolbar::ReaderToolbar(wxWindow* parent, const wxString& iconFolder, Actions actions)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL, "toolbar"),
      iconFolder_(iconFolder + wxFILE_SEP_PATH), actions_(std::move(actions))
{
    // In a narrow window whole groups go to the next row.
    auto* groups = new wxWrapSizer(wxHORIZONTAL, wxREMOVE_LEADING_SPACES);
    for (int group = 0; group <= Designs().back().group; ++group) {
        auto* row = new wxBoxSizer(wxHORIZONTAL);
        MakeButtons(*row, group);
        groups->Add(row, wxSizerFlags().Border(wxRIGHT, FromDIP(10)));
    }
    SetSizer(groups);
    for (const Button& button : buttons_)
        Name(button, button.control->GetToolTipText());
}

void ReaderToolbar::MakeButtons(wxSizer& row, int group)
{
    for (const ButtonDesign& design : Designs()) {
        if (design.group != group)
            continue;
        Button button{design.key, nullptr, iconFolder_ + design.icon, MakeMenu(design.menu)};
        const wxBitmapBundle icon = Icon(button.icon);
        constexpr long kStyle = wxBU_AUTODRAW | wxBORDER_NONE;
        if (design.kind == Kind::TwoState)
            button.control =
                new wxBitmapToggleButton(this, wxID_ANY, icon, wxDefaultPosition, wxDefaultSize, kStyle);
        else
            button.control =
                new wxBitmapButton(this, wxID_ANY, icon, wxDefaultPosition, wxDefaultSize, kStyle);
        button.control->SetToolTip(design.toolTip);
        button.control->Bind(design.kind == Kind::TwoState ? wxEVT_TOGGLEBUTTON : wxEVT_BUTTON,
                             [this, key = design.key](wxCommandEvent&) {
                                 Button& clicked = Find(key);
                                 if (clicked.menu)
                                     OpenMenu(clicked);
                                 else
                                     actions_.ButtonClick(key);
                             });
        row.Add(button.control, wxSizerFlags().Border(wxALL, FromDIP(1)));
        buttons_.push_back(std::move(button));
    }
}

void ReaderToolbar::OpenMenu(Button& button)
{
    const wxMenuItemList& items = button.menu->GetMenuItems();
    const std::size_t chosen = actions_.Chosen(button.key);
    for (std::size_t i = 0; i < items.size(); ++i)
        items[i]->Check(i == chosen);
    const wxPoint below(0, button.control->GetSize().y);
    const int id = button.control->GetPopupMenuSelectionFromUser(*button.menu, below);
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i]->GetId() == id)
            actions_.ButtonMenuClick(button.key, i);
    }
}

bool ReaderToolbar::Pressed(std::string_view key) const
{
    const auto* button = dynamic_cast<const wxBitmapToggleButton*>(Find(key).control);
    return button && button->GetValue();
}

void ReaderToolbar::SetPressed(std::string_view key, bool pressed)
{
    if (auto* button = dynamic_cast<wxBitmapToggleButton*>(Find(key).control))
        button->SetValue(pressed);
}

void ReaderToolbar::SetSwatch(std::string_view key, std::int32_t color)
{
    Button& button = Find(key);
    wxFFile file(button.icon);
    wxString drawing;
    if (!file.IsOpened() || !file.ReadAll(&drawing))
        return;
    drawing.Replace(kSwatchInDrawing, wxString::Format("#%02x%02x%02x", color & 0xFF, (color >> 8) & 0xFF,
                                                       (color >> 16) & 0xFF));
    button.control->SetBitmap(wxBitmapBundle::FromSVG(drawing.utf8_str(), wxSize(kIconSize, kIconSize)));
}

void ReaderToolbar::SetAccessibleName(std::string_view key, const wxString& name) { Name(Find(key), name); }

std::vector<settings::ButtonModel> ReaderToolbar::Buttons() const
{
    std::vector<settings::ButtonModel> models;
    for (const Button& button : buttons_) {
        settings::ButtonModel model{button.control->GetToolTipText().ToStdWstring(), {}};
        if (button.menu) {
            for (const wxMenuItem* item : button.menu->GetMenuItems())
                model.buttonMenus.push_back(item->GetItemLabel().ToStdWstring());
        }
        models.push_back(std::move(model));
    }
    return models;
}

void ReaderToolbar::SetButtons(const std::vector<settings::ButtonModel>& buttons)
{
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        const wxString toolTip(buttons.at(i).toolTipText);
        buttons_[i].control->SetToolTip(toolTip);
        Name(buttons_[i], toolTip);
        for (std::size_t entry = 0; entry < buttons.at(i).buttonMenus.size(); ++entry)
            buttons_[i].menu->FindItemByPosition(entry)->SetItemLabel(
                wxString(buttons[i].buttonMenus[entry]));
    }
}

void ReaderToolbar::Name(const Button& button, const wxString& name)
{
    platform::SetAccessibleName(*button.control, name.ToStdWstring());
}

ReaderToolbar::Button& ReaderToolbar::Find(std::string_view key)
{
    return const_cast<Button&>(std::as_const(*this).Find(key));
}

const ReaderToolbar::Button& ReaderToolbar::Find(std::string_view key) const
{
    return *std::find_if(buttons_.begin(), buttons_.end(),
                         [&](const Button& button) { return button.key == key; });
}

} // namespace voxtrel::textreader
