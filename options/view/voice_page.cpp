#include "options/view/options_controls.h"
#include "options/view/value_slider.h"

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/panel.h>
#include <wx/radiobut.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

namespace voxtrel::options {
namespace {

struct SliderDesign {
    Slider slider;
    const char* name;
    const char* labelName;
    const char* label;
    const char* toolTip;
};

constexpr SliderDesign kSliderDesigns[] = {
    {Slider::pitchslider, "pitchslider", "Label1",
     "3956:&Pitch:", "3965:100 % is the voice as it is by nature"},
    {Slider::speedslider, "speedslider", "Label2",
     "3957:&Speed:", "3965:100 % is the voice as it is by nature"},
    {Slider::volumeslider, "volumeslider", "Label3",
     "3958:Vo&lume:", "3965:100 % is the voice as it is by nature"},
    {Slider::slider_interword, "slider_interword", "lab_interword",
     "3959:Pause &between words:", "3966:Used while the Text Reader reads"},
};

// Wide enough for every value, so that the sliders keep their length.
constexpr const char* kWidestValue = "65535 (218 %)";

wxSizer* MakeStyles(wxWindow* page, OptionsControls& controls)
{
    wxStaticBoxSizer* const group = MakeGroup(page, "3952:Voice style");
    AddOptionGroup(*group, controls, OptionGroup::cr, "cr",
                   {"3953:N&ormal", "3954:&Whisper", "3955:&Monotone"});
    return group;
}

wxSizer* MakeSliders(wxWindow* page, OptionsControls& controls)
{
    wxFlexGridSizer* const rows = MakeRows(*page, 3);
    for (const SliderDesign& design : kSliderDesigns) {
        const auto index = static_cast<std::size_t>(design.slider);
        // Made before the label, which is to stand directly before the slider.
        auto* value = new wxStaticText(page, wxID_ANY, kWidestValue);
        value->SetName(design.labelName);
        controls.sliderLabels[index] = value;
        controls.labelled.push_back(AddRow(*rows, page, design.label, [&] {
            return controls.sliders[index] = new ValueSlider(page, design.name, design.slider);
        }));
        controls.sliders[index]->SetToolTip(design.toolTip);
        rows->Add(value, wxSizerFlags().CenterVertical());
    }
    return rows;
}

} // namespace

wxPanel* MakeVoicePage(wxWindow* tabs, OptionsControls& controls)
{
    auto* page = new wxPanel(tabs);
    const int gap = GroupGap(*page);
    auto* column = new wxBoxSizer(wxVERTICAL);
    wxFlexGridSizer* const rows = MakeRows(*page);
    AddListRow(*rows, page, "3951:&Voice:", controls, DropDown::voicelist, "voicelist");
    column->Add(rows, wxSizerFlags().Expand().Border(wxALL, gap));
    column->Add(MakeStyles(page, controls), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, gap));
    column->Add(MakeSliders(page, controls), wxSizerFlags().Expand().Border(wxALL, gap));
    controls.cmdTestVoice = MakeButton(page, "cmdTestVoice", "3964:&Test the voice");
    column->Add(controls.cmdTestVoice, wxSizerFlags().Border(wxALL, gap));
    page->SetSizer(column);
    return page;
}

} // namespace voxtrel::options
