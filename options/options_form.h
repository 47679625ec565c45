#pragma once

#include "settings/string_table.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The controls of the options dialog, as its thinking sees them.
namespace voxtrel::options {

enum class DropDown { AgentList, AgentSizeList, voicelist, positionlist, Fontlist, Sizelist };
inline constexpr std::size_t kDropDowns = 6;

enum class CheckBox { Check1, Check2, Check3, visiblebox };
inline constexpr std::size_t kCheckBoxes = 4;

enum class OptionGroup { cr, showballoonbox };
inline constexpr std::size_t kOptionGroups = 2;
inline constexpr int kOptionsOfAGroup = 3;

enum class Slider { pitchslider, speedslider, volumeslider, slider_interword };
inline constexpr std::size_t kSliders = 4;
inline constexpr std::array kAllSliders{Slider::pitchslider, Slider::speedslider, Slider::volumeslider,
                                        Slider::slider_interword};

// The two text boxes of the pronunciations.
struct PronunciationTexts {
    std::wstring written;
    std::wstring spoken;
};

// The dialog's window. Setting a control runs none of its handlers.
class OptionsForm {
public:
    virtual ~OptionsForm() = default;

    virtual void LocaliseForm(const settings::StringTable& table) = 0;
    // The screen-reading page: its list of roles, then its check box.
    virtual void LoadScreenReadingPage() = 0;

    // Nothing is selected without a place.
    virtual void FillDropDown(DropDown list, const std::vector<std::wstring>& entries,
                              std::optional<std::size_t> selected) = 0;
    virtual void SelectEntry(DropDown list, std::optional<std::size_t> selected) = 0;
    // -1 when nothing is selected; and the text that is shown, empty for none.
    virtual int ListIndex(DropDown list) const = 0;
    virtual std::wstring ListText(DropDown list) const = 0;

    virtual void SetTicked(CheckBox box, bool ticked) = 0;
    virtual bool Ticked(CheckBox box) const = 0;

    // An index that the group does not have selects none.
    virtual void SelectOption(OptionGroup group, int index) = 0;
    virtual int SelectedOption(OptionGroup group) const = 0;

    // A value outside the slider's range is shown at its end.
    virtual void SetSlider(Slider slider, int value) = 0;
    virtual int SliderValue(Slider slider) const = 0;
    virtual void SetSliderLabel(Slider slider, std::wstring_view text) = 0;

    // index from 0, as the controls' own. A position outside the list of keys shows none.
    virtual void SelectHotKey(int index, int position) = 0;
    virtual int HotKeyPosition(int index) const = 0;
    virtual void TickHotKey(int index, bool ticked) = 0;
    virtual bool HotKeyTicked(int index) const = 0;

    virtual void SetPronunciation(const PronunciationTexts& texts) = 0;
    virtual PronunciationTexts Pronunciation() const = 0;
    virtual void FillPronunciations(const std::vector<std::wstring>& written) = 0;
    // Of List1; nothing when no entry is selected.
    virtual std::optional<std::size_t> SelectedPronunciation() const = 0;

    // The sample of the balloon's lettering.
    virtual void ShowBalloonFont(std::wstring_view name, long points) = 0;

    // All fonts of the screen, in alphabetical order.
    virtual std::vector<std::wstring> ScreenFonts() const = 0;

    virtual void OpenHelp() = 0;
    virtual void CentreOnScreen() = 0;
    // Ends the dialog; Form_Unload follows.
    virtual void Close() = 0;
};

} // namespace voxtrel::options
