#pragma once

#include "options/options_form.h"
#include "options/view/page_layout.h"

#include <array>
#include <vector>

class wxButton;
class wxCheckBox;
class wxChoice;
class wxListBox;
class wxPanel;
class wxRadioButton;
class wxStaticText;
class wxTextCtrl;

namespace voxtrel::options {

class BalloonPreview;
class ValueSlider;

// The controls of the dialog under their names; owned by their pages.
struct OptionsControls {
    std::array<wxChoice*, kDropDowns> dropDowns{};
    std::array<wxCheckBox*, kCheckBoxes> checkBoxes{};
    std::array<std::array<wxRadioButton*, kOptionsOfAGroup>, kOptionGroups> groups{};
    std::array<wxRadioButton*, kOptionGroups> noneOfGroup{}; // never seen; chosen when none of its group is
    std::array<ValueSlider*, kSliders> sliders{};
    std::array<wxStaticText*, kSliders> sliderLabels{};
    std::array<wxCheckBox*, 5> hotkeycheck{};
    std::array<wxChoice*, 5> hotkeycombo{};
    wxListBox* List1 = nullptr;
    std::array<wxTextCtrl*, 2> txtSpeak{};
    wxButton* cmdTestVoice = nullptr;
    wxButton* Command2 = nullptr;
    wxButton* Command3 = nullptr;
    wxButton* Command4 = nullptr;
    wxButton* Command5 = nullptr;
    wxButton* cmdSpeak = nullptr;
    wxButton* pron_add = nullptr;
    wxButton* importButton = nullptr;
    wxButton* exportButton = nullptr;
    BalloonPreview* preview = nullptr;

    std::vector<Labelled> labelled; // screen readers call these controls by their labels

    wxChoice*& Of(DropDown list) { return dropDowns[static_cast<std::size_t>(list)]; }
    wxChoice* Of(DropDown list) const { return dropDowns[static_cast<std::size_t>(list)]; }
    wxCheckBox*& Of(CheckBox box) { return checkBoxes[static_cast<std::size_t>(box)]; }
    wxCheckBox* Of(CheckBox box) const { return checkBoxes[static_cast<std::size_t>(box)]; }
};

// Adds a drop-down list with its label.
void AddListRow(wxFlexGridSizer& rows, wxWindow* parent, const wxString& design, OptionsControls& controls,
                DropDown list, const char* name);

// Makes the option buttons of a group, one below the other.
void AddOptionGroup(wxStaticBoxSizer& sizer, OptionsControls& controls, OptionGroup group, const char* name,
                    const std::array<const char*, kOptionsOfAGroup>& designs);

// Each page of the dialog, with its controls added to controls.
wxPanel* MakeCharacterPage(wxWindow* tabs, OptionsControls& controls);
wxPanel* MakeBalloonPage(wxWindow* tabs, OptionsControls& controls);
wxPanel* MakeVoicePage(wxWindow* tabs, OptionsControls& controls);
wxPanel* MakePronunciationsPage(wxWindow* tabs, OptionsControls& controls);
wxPanel* MakeHotKeysPage(wxWindow* tabs, OptionsControls& controls);

} // namespace voxtrel::options
