#pragma once

#include "options/options.h"
#include "options/view/options_controls.h"
#include "platform/accessibility.h"

#include <wx/dialog.h>
#include <wx/notebook.h>

#include <functional>
#include <string>
#include <vector>

namespace voxtrel::screenreading {
class ScreenReadingPage;
}

namespace voxtrel::options {

// What the window needs beside its thinking.
struct FormServices {
    OptionsServices options;
    platform::OVAccessibility& access;
    std::wstring iconFolder;
    std::wstring helpFile;
    std::function<void()> unloaded; // the window is about to be destroyed: forget it
};

// The options dialog. Made loaded and hidden; destroys itself when it is closed.
class frmOptions final : public wxDialog, private OptionsForm {
public:
    explicit frmOptions(const FormServices& services);

    // Brings the dialog to the front.
    void ShowOptions();

    // Closes it without saving anything.
    void Unload();

private:
    void LocaliseForm(const settings::StringTable& table) override;
    void LoadScreenReadingPage() override;
    void FillDropDown(DropDown list, const std::vector<std::wstring>& entries,
                      std::optional<std::size_t> selected) override;
    void SelectEntry(DropDown list, std::optional<std::size_t> selected) override;
    int ListIndex(DropDown list) const override;
    std::wstring ListText(DropDown list) const override;
    void SetTicked(CheckBox box, bool ticked) override;
    bool Ticked(CheckBox box) const override;
    void SelectOption(OptionGroup group, int index) override;
    int SelectedOption(OptionGroup group) const override;
    void SetSlider(Slider slider, int value) override;
    int SliderValue(Slider slider) const override;
    void SetSliderLabel(Slider slider, std::wstring_view text) override;
    void SelectHotKey(int index, int position) override;
    int HotKeyPosition(int index) const override;
    void TickHotKey(int index, bool ticked) override;
    bool HotKeyTicked(int index) const override;
    void SetPronunciation(const PronunciationTexts& texts) override;
    PronunciationTexts Pronunciation() const override;
    void FillPronunciations(const std::vector<std::wstring>& written) override;
    std::optional<std::size_t> SelectedPronunciation() const override;
    void ShowBalloonFont(std::wstring_view name, long points) override;
    std::vector<std::wstring> ScreenFonts() const override;
    void OpenHelp() override;
    void CentreOnScreen() override;
    void Close() override { Unload(); }

    void MakePages();
    wxSizer* MakeButtons();
    void BindHandlers();
    void BindPronunciations();
    void NameControls();
    int WidthOfTabs() const;
    void MakeRoomForDetails();
    void EnablePronunciationButtons();
    void ImportFromFile();
    void ExportToFile();
    wxString Text(int number) const;

    // While a handler is at work the dialog is not destroyed: a message box may let the program end
    // meanwhile.
    class Handling {
    public:
        explicit Handling(frmOptions& window) : window_(window) { ++window_.handling_; }
        ~Handling()
        {
            if (--window_.handling_ == 0 && window_.unloading_)
                window_.Destroy();
        }
        Handling(const Handling&) = delete;
        Handling& operator=(const Handling&) = delete;

    private:
        frmOptions& window_;
    };

    // Runs the handler on events of that kind from the control.
    template <typename EventTag>
    void On(wxWindow* control, const EventTag& event, std::function<void()> handler)
    {
        control->Bind(event, [this, handler = std::move(handler)](auto&) {
            const Handling handling(*this);
            if (!unloading_)
                handler();
        });
    }

    FormServices services_;
    OptionsControls controls_;
    wxNotebook* tabs_ = nullptr; // owned by the dialog, as all windows here
    screenreading::ScreenReadingPage* screenReading_ = nullptr;
    wxButton* ok_but_ = nullptr;
    wxButton* cancel_but_ = nullptr;
    wxButton* Command1_ = nullptr;
    std::vector<int> tabNumbers_;      // of the pages' texts
    std::vector<std::wstring> listed_; // what List1 holds
    int heightOfScreenReading_ = 0;    // least height of that page, pixels
    bool unloading_ = false;
    int handling_ = 0;

    Options options_;
};

} // namespace voxtrel::options
