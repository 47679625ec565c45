// Opening a text file: from the dialog, dropped on the window, or asked for by the program.

#include "settings/string_numbers.h"
#include "textreader/text_file.h"
#include "textreader/view/frm_text_reader.h"

#include <wx/filedlg.h>
#include <wx/progdlg.h>

#include <chrono>
#include <future>
#include <memory>

namespace voxtrel::textreader {
namespace {

namespace strings = settings::strings;
using namespace std::chrono_literals;

constexpr std::size_t kLongText = 4000000; // characters; the control takes up to half a second for them

// The file is read beside the user-interface thread, which shows that something happens once it takes a
// while.
LoadedText LoadWithProgress(const std::wstring& path, wxWindow* parent, const wxString& title,
                            const wxString& words)
{
    std::future<LoadedText> loading = std::async(std::launch::async, LoadTextFile, path);
    if (loading.wait_for(500ms) != std::future_status::ready) {
        wxProgressDialog progress(title, words, 100, parent, wxPD_APP_MODAL | wxPD_SMOOTH);
        while (loading.wait_for(50ms) != std::future_status::ready)
            progress.Pulse();
    }
    return loading.get();
}

} // namespace

bool frmTextReader::OpenTextFile()
{
    reader_.PrepareNavigation();
    const wxString filter =
        Text(strings::kTextFiles) + " (*.txt)|*.txt|" + Text(strings::kAllFiles) + " (*.*)|*.*";
    wxFileDialog dialog(this, wxFileSelectorPromptStr, wxString(services_.folder.Path()), wxEmptyString,
                        filter, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
    return ShowModally(dialog) && OpenFile(dialog.GetPath().ToStdWstring());
}

bool frmTextReader::OpenFile(const std::wstring& path)
{
    const Modal open(*this);
    reader_.PrepareNavigation();
    LoadedText loaded = LoadWithProgress(path, this, GetTitle(), Text(strings::kOpeningText));
    if (unloading_)
        return false;
    if (!loaded.error.empty()) {
        services_.messages.ShowExclamation(loaded.error);
        return false;
    }
    if (loaded.text.empty()) {
        services_.messages.ShowInformation(services_.strings.Text(strings::kBlankFile));
        return false;
    }
    SetNormalisedText(std::move(loaded.text));
    return true;
}

void frmTextReader::SetNormalisedText(std::wstring text)
{
    const Modal open(*this);
    reader_.PrepareNavigation();
    std::unique_ptr<wxProgressDialog> progress;
    if (text.size() > kLongText) {
        progress = std::make_unique<wxProgressDialog>(GetTitle(), Text(strings::kOpeningText), 100, this,
                                                      wxPD_APP_MODAL | wxPD_SMOOTH);
        progress->Pulse();
    }
    if (unloading_)
        return;
    rtf_textbox_.SetText(std::move(text));
}

} // namespace voxtrel::textreader
