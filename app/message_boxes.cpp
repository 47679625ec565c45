#include "app/message_boxes.h"

#include "app/main.h"

#include <wx/msgdlg.h>

namespace voxtrel::app {
namespace {

void ShowBox(wxWindow* parent, std::wstring_view text, long icon)
{
    wxMessageBox(wxString(text.data(), text.size()), wxString(kApplicationTitle.data()), icon | wxOK, parent);
}

} // namespace

void MessageBoxes::ShowExclamation(std::wstring_view text) { ShowBox(parent_, text, wxICON_EXCLAMATION); }

void MessageBoxes::ShowInformation(std::wstring_view text) { ShowBox(parent_, text, wxICON_INFORMATION); }

} // namespace voxtrel::app
