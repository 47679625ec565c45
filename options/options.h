#pragma once

#include "hotkeys/hot_key_table.h"
#include "options/options_form.h"
#include "platform/desktop.h"
#include "platform/messages.h"
#include "settings/program_folder.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"
#include "settings/string_table.h"
#include "speech/character_control.h"
#include "speech/pronunciation_list.h"

#include <optional>
#include <string>

namespace voxtrel::options {

// What the dialog works with. Everything outlives it.
struct OptionsServices {
    settings::SettingsStore& store;
    settings::SharedSettings& shared;
    const settings::StringTable& strings;
    const settings::ProgramFolder& folder;
    const platform::Desktop& desktop;
    platform::Messages& messages;
    hotkeys::HotKeyTable& hotKeys;
    speech::CharacterControl& characters;
};

// The thinking of the options dialog. Each change acts at once; OK makes the settings permanent, Cancel
// closes and leaves what was changed in force until the program ends.
class Options {
public:
    Options(const OptionsServices& services, OptionsForm& form);

    // Fills every control from the settings.
    void Form_Load();
    void Form_Unload();

    // Character.
    void AgentList_Click();
    void AgentSizeList_Click();
    void visiblebox_Click();
    void positionlist_Click();
    void Command3_Click();
    void Command5_Click();

    // Balloon. box is one of Check1 to Check3.
    void Check_Click(CheckBox box);
    void showballoonbox_Click();
    void Fontlist_Click();
    void Sizelist_Click();

    // Voice.
    void voicelist_Click();
    void cr_Click();
    void Slider_Change(Slider slider);
    void cmdTestVoice_Click();

    // Hot keys; index is the controls', from 0.
    void hotkeycheck_Click(int index);
    void hotkeycombo_Click(int index);

    // Pronunciations.
    void List1_Click();
    void pron_add_Click();
    void Command2_Click(); // deletes the selected entry
    void Command4_Click(); // empties the text boxes
    void cmdSpeak_Click();
    // From and to a text file; what there is to tell comes in a message box.
    void ImportPronunciations(const std::wstring& path);
    void ExportPronunciations(const std::wstring& path);

    void Command1_Click() { form_.OpenHelp(); }
    void ok_but_Click();
    void cancel_but_Click() { form_.Close(); }

private:
    struct Place {
        long top = 0;
        long left = 0;
    };

    void LoadHotKeyControls();
    void LoadBalloonBoxes();
    void LoadVoice();
    void LoadCharacter();
    void LoadBalloonFont();
    void LoadSliders();
    void LoadPronunciations();

    void Park();
    void BringBack();
    bool IsOnScreen(const Place& place) const;
    Place PlaceOnScreen() const;

    void FillWithMissing(DropDown list, std::vector<std::wstring> entries, const std::wstring& shown);
    void ShowBalloonFont();
    void ShowPronunciations();
    int Setting(Slider slider) const;
    std::vector<std::wstring> Texts(int firstNumber, int count) const;
    std::wstring Counted(int number, std::size_t count) const;

    OptionsServices services_;
    OptionsForm& form_;
    speech::PronunciationList pronunciationList_;
    speech::PronunciationEditor pronunciations_;
    std::optional<Place> beforeParking_;
};

} // namespace voxtrel::options
