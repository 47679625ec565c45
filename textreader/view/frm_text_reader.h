#pragma once

#include "platform/desktop.h"
#include "platform/messages.h"
#include "settings/program_folder.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"
#include "settings/string_table.h"
#include "speech/pronunciation_list.h"
#include "textreader/reader_settings.h"
#include "textreader/reader_window.h"
#include "textreader/text_reader.h"
#include "textreader/view/wx_rich_text_box.h"

#include <wx/busyinfo.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/panel.h>
#include <wx/timer.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace voxtrel::textreader {

class ReaderStatusBar;
class ReaderToolbar;

// What the window needs around it; all of it outlives the window.
struct ReaderServices {
    settings::SettingsStore& store;
    settings::SharedSettings& shared;
    const settings::StringTable& strings;
    const settings::ProgramFolder& folder;
    platform::Desktop& desktop;
    platform::Messages& messages;
    std::wstring iconFolder;
    std::function<void()> showOptions;
    std::function<void()> unloaded; // the window is about to be destroyed: forget it
};

// The Text Reader: shows a text and reads it with TextReader. Made loaded and hidden; destroys itself when it
// is closed.
class frmTextReader final : public wxFrame, private ReaderWindow {
public:
    explicit frmTextReader(const ReaderServices& services);
    ~frmTextReader() override;

    // Brings the window to the front, above all others.
    void ShowReader();

    // Replaces the text. Line ends may be of any kind.
    void SetText(std::wstring_view text);

    // The same for a text whose lines end with CR LF.
    void SetNormalisedText(std::wstring text);

    void speakWindowText();

    // Asks for a text file and shows it; whether one was loaded. What stops it is told in a message box.
    bool OpenTextFile();

    // The same without asking.
    bool OpenFile(const std::wstring& path);

    // Silences, writes the settings and destroys the window.
    void Unload();

    void agent1_Bookmark(std::int32_t number);
    bool closeTheWindow() const { return reader_.closeTheWindow; }

private:
    bool BlockHighlight() const override { return settings_.blockHighlight; }
    bool AutoClose() const override { return settings_.autoClose; }
    void SetBusyPointer(bool busy) override;
    void RefreshTextBox() override;
    void ActivateTextBox() override;
    void FocusHiddenBox() override;
    void ReleasePause() override;
    void CloseTextReader() override;

    void MakeControls();
    void BindHandlers();
    void Form_Load();
    void ApplyFont();
    void ShowPanels();

    void Form_KeyDown(wxKeyEvent& event);
    void toolbar_ButtonClick(std::string_view key);
    void toolbar_ButtonMenuClick(std::string_view key, std::size_t item);
    std::size_t ChosenItem(std::string_view key) const;
    void BlockHighlightClick();
    void AutoCloseClick();
    void Timer1_Timer();
    void Timer_Timer();

    enum class Where { Previous, Current, Next };
    void Navigate(Where where);
    void ChooseFont();
    void ChooseColor(std::int32_t& color, std::size_t item);
    void ShowColors();

    // While a dialog of the window is open the window is not destroyed: its handlers are still to return.
    class Modal {
    public:
        explicit Modal(frmTextReader& window) : window_(window) { ++window_.modal_; }
        ~Modal()
        {
            if (--window_.modal_ == 0 && window_.unloading_)
                window_.Destroy();
        }
        Modal(const Modal&) = delete;
        Modal& operator=(const Modal&) = delete;

    private:
        frmTextReader& window_;
    };

    // Whether the dialog was closed with OK while the window is still wanted.
    bool ShowModally(wxDialog& dialog);

    void RememberPlace();
    wxString Text(int number) const;

    ReaderServices services_;
    speech::PronunciationList pronunciations_;
    ReaderSettings settings_;
    ReaderSettings saved_; // as the store has it

    wxPanel* page_; // the text box and its margin
    WxRichTextBox rtf_textbox_;
    ReaderToolbar* toolbar_ = nullptr; // owned by the frame, as all windows here
    wxTextCtrl* hiddenBox_ = nullptr;
    ReaderStatusBar* StatusBar_ = nullptr;
    wxTimer Timer1_;
    wxTimer Timer_;
    std::unique_ptr<wxBusyInfo> preparing_;
    bool unloading_ = false;
    int modal_ = 0;                  // dialogs that are open
    wxDialog* openDialog_ = nullptr; // the one of them that is ended with the window

    TextReader reader_;
};

} // namespace voxtrel::textreader
