#include "options/view/manual.h"

#include <wx/dialog.h>
#include <wx/filename.h>
#include <wx/filesys.h>
#include <wx/html/htmlwin.h>
#include <wx/image.h>
#include <wx/log.h>
#include <wx/sizer.h>
#include <wx/utils.h>

namespace voxtrel::options {
namespace {

constexpr int kWidth = 720; // device-independent pixels
constexpr int kHeight = 620;

bool OpenInBrowser(const wxString& url)
{
    const wxLogNull quiet; // a failure is answered by a window of our own
    return wxLaunchDefaultBrowser(url);
}

void OpenInWindow(const wxString& path, wxWindow* parent)
{
    auto* window = new wxDialog(parent, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER);
    if (wxImage::FindHandler(wxBITMAP_TYPE_PNG) == nullptr)
        wxImage::AddHandler(new wxPNGHandler);
    auto* page = new wxHtmlWindow(window);
    page->SetStandardFonts();
    page->LoadFile(path);
    window->SetTitle(page->GetOpenedPageTitle());
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(page, wxSizerFlags(1).Expand());
    window->SetSizer(sizer);
    window->SetSize(window->FromDIP(wxSize(kWidth, kHeight)));
    const auto close = [window] { window->Destroy(); };
    window->Bind(wxEVT_CLOSE_WINDOW, [close](wxCloseEvent&) { close(); });
    window->Bind(wxEVT_CHAR_HOOK,
                 [close](wxKeyEvent& event) { event.GetKeyCode() == WXK_ESCAPE ? close() : event.Skip(); });
    window->Show();
    page->SetFocus();
}

} // namespace

std::wstring ManualBeside(const std::wstring& helpFile)
{
    wxFileName manual(helpFile);
    manual.SetFullName("manual.html");
    return manual.GetFullPath().ToStdWstring();
}

bool OpenManual(const std::wstring& manual, wxWindow* parent)
{
    const wxString path(manual);
    if (!wxFileName::FileExists(path))
        return false;
    if (!OpenInBrowser(wxFileSystem::FileNameToURL(path)))
        OpenInWindow(path, parent);
    return true;
}

} // namespace voxtrel::options
