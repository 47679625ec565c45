#pragma once

#include <wx/sizer.h>
#include <wx/string.h>

#include <functional>

class wxButton;
class wxCheckBox;
class wxChoice;
class wxStaticBoxSizer;
class wxStaticText;
class wxWindow;

// How a page of the dialog is put together. Texts are designed as "3930:&Character:", their number in front:
// the control shows what stands behind the colon until the window is localised.
namespace voxtrel::options {

// Between controls that stand together, and around groups; pixels of the window.
int Gap(const wxWindow& window);
int GroupGap(const wxWindow& window);

wxStaticText* MakeLabel(wxWindow* parent, const wxString& design);
wxButton* MakeButton(wxWindow* parent, const char* name, const wxString& design);
wxCheckBox* MakeCheckBox(wxWindow* parent, const char* name, const wxString& design);
wxChoice* MakeChoice(wxWindow* parent, const char* name);
wxStaticBoxSizer* MakeGroup(wxWindow* parent, const wxString& design);

// Labels on the left, controls on the right, which take what room there is.
wxFlexGridSizer* MakeRows(const wxWindow& window, int columns = 2);

struct Labelled {
    wxStaticText* label;
    wxWindow* control;
};
// Adds the control that make makes, with its label. A text is the label of the control that is made after it:
// its mnemonic reaches that control.
Labelled AddRow(wxFlexGridSizer& rows, wxWindow* parent, const wxString& design,
                const std::function<wxWindow*()>& make);

} // namespace voxtrel::options
