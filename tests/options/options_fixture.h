#pragma once

#include "fakes/fake_character.h"
#include "fakes/fake_platform.h"
#include "fakes/recording_backend.h"
#include "options/options.h"
#include "settings/file_path.h"
#include "settings/string_numbers.h"
#include "settings/voice_table.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace voxtrel::options {

using Texts = std::vector<std::wstring>;

// A form that keeps what it is told and writes every setting of a control to the log.
class FakeForm final : public OptionsForm {
public:
    explicit FakeForm(tests::CallLog& log) : log_(log) {}

    struct List {
        Texts entries;
        std::optional<std::size_t> selected;
    };

    void LocaliseForm(const settings::StringTable&) override { log_.Add(L"LocaliseForm"); }
    void LoadScreenReadingPage() override { log_.Add(L"LoadScreenReadingPage"); }
    void FillDropDown(DropDown list, const Texts& entries, std::optional<std::size_t> selected) override
    {
        log_.Add(L"Fill " + Name(list));
        lists[list] = {entries, selected};
    }
    void SelectEntry(DropDown list, std::optional<std::size_t> selected) override
    {
        lists[list].selected = selected;
    }
    int ListIndex(DropDown list) const override
    {
        const auto& selected = lists.at(list).selected;
        return selected ? static_cast<int>(*selected) : -1;
    }
    std::wstring ListText(DropDown list) const override
    {
        const List& shown = lists.at(list);
        return shown.selected ? shown.entries.at(*shown.selected) : std::wstring();
    }
    void SetTicked(CheckBox box, bool now) override
    {
        log_.Add(box == CheckBox::visiblebox ? L"Set visiblebox"
                                             : L"Set Check" + std::to_wstring(static_cast<int>(box) + 1));
        ticked[box] = now;
    }
    bool Ticked(CheckBox box) const override { return ticked.at(box); }
    void SelectOption(OptionGroup group, int index) override
    {
        log_.Add(group == OptionGroup::cr ? L"Select cr" : L"Select showballoonbox");
        options[group] = index;
    }
    int SelectedOption(OptionGroup group) const override { return options.at(group); }
    void SetSlider(Slider slider, int value) override
    {
        log_.Add(L"Set slider " + std::to_wstring(static_cast<int>(slider)));
        sliders[slider] = value;
    }
    int SliderValue(Slider slider) const override { return sliders.at(slider); }
    void SetSliderLabel(Slider slider, std::wstring_view text) override { labels[slider] = text; }
    void SelectHotKey(int index, int position) override
    {
        log_.Add(L"Select hotkeycombo " + std::to_wstring(index));
        hotKeyPositions.at(static_cast<std::size_t>(index)) = position;
    }
    int HotKeyPosition(int index) const override
    {
        return hotKeyPositions.at(static_cast<std::size_t>(index));
    }
    void TickHotKey(int index, bool now) override { hotKeysTicked.at(static_cast<std::size_t>(index)) = now; }
    bool HotKeyTicked(int index) const override { return hotKeysTicked.at(static_cast<std::size_t>(index)); }
    void SetPronunciation(const PronunciationTexts& texts) override { pronunciation = texts; }
    PronunciationTexts Pronunciation() const override { return pronunciation; }
    void FillPronunciations(const Texts& written) override
    {
        log_.Add(L"Fill List1");
        pronunciations = {written, std::nullopt};
    }
    std::optional<std::size_t> SelectedPronunciation() const override { return pronunciations.selected; }
    void ShowBalloonFont(std::wstring_view name, long points) override
    {
        sample = std::wstring(name) + L" " + std::to_wstring(points);
    }
    Texts ScreenFonts() const override { return fonts; }
    void OpenHelp() override { log_.Add(L"OpenHelp"); }
    void CentreOnScreen() override { log_.Add(L"CentreOnScreen"); }
    void Close() override { log_.Add(L"Close"); }

    void Choose(DropDown list, std::size_t entry) { lists.at(list).selected = entry; }
    void Choose(DropDown list, const std::wstring& text)
    {
        const Texts& entries = lists.at(list).entries;
        const auto found = std::find(entries.begin(), entries.end(), text);
        ASSERT_NE(found, entries.end());
        lists.at(list).selected = static_cast<std::size_t>(found - entries.begin());
    }

    std::map<DropDown, List> lists;
    std::map<CheckBox, bool> ticked;
    std::map<OptionGroup, int> options;
    std::map<Slider, int> sliders;
    std::map<Slider, std::wstring> labels;
    std::array<int, 5> hotKeyPositions{};
    std::array<bool, 5> hotKeysTicked{};
    PronunciationTexts pronunciation;
    List pronunciations;
    std::wstring sample;
    Texts fonts{L"Arial", L"Courier New", L"Verdana"};

private:
    static std::wstring Name(DropDown list)
    {
        static const wchar_t* const kNames[] = {L"AgentList",    L"AgentSizeList", L"voicelist",
                                                L"positionlist", L"Fontlist",      L"Sizelist"};
        return kNames[static_cast<std::size_t>(list)];
    }

    tests::CallLog& log_;
};

// The dialog over fakes, in a program folder of its own that holds the characters genie and robin. Loaded
// when a test calls Load.
class OptionsTest : public testing::Test {
protected:
    OptionsTest()
    {
        std::filesystem::create_directories(path / "characters");
        for (const char* name : {"genie.acs", "robin.acs"})
            std::ofstream(path / "characters" / name) << "file";
        store.SetApplicationName(L"Orvella");
        settings::SeedVoiceTable(store);
        namespace numbers = settings::strings;
        const std::pair<int, const wchar_t*> texts[] = {
            {numbers::kTestVoice, L"voice?"},
            {numbers::kTestAppearance, L"look?"},
            {numbers::kTestLargeBalloon, L"more?"},
            {numbers::kFirstSize, L"Large"},
            {numbers::kFirstSize + 1, L"Normal"},
            {numbers::kFirstSize + 2, L"Small"},
            {numbers::kHotKeyInUse, L"in use"},
            {numbers::kFirstPosition, L"Top Left"},
            {numbers::kFirstPosition + 1, L"Top Right"},
            {numbers::kFirstPosition + 2, L"Bottom Left"},
            {numbers::kFirstPosition + 3, L"Bottom Right"},
            {numbers::kPercent, L"%s %"},
            {numbers::kMilliseconds, L"%s ms"},
            {numbers::kImported, L"imported %s"},
            {numbers::kLinesSkipped, L"lines skipped %s"},
            {numbers::kExported, L"exported %s"},
            {numbers::kEntriesSkipped, L"entries skipped %s"},
            {numbers::kFileNotWritten, L"not written %s"},
        };
        for (const auto& [number, text] : texts)
            strings.Set(number, text);
    }

    ~OptionsTest() override { std::filesystem::remove_all(path); }

    // As start-up does it, then the dialog.
    void Load()
    {
        if (shared.character == nullptr) {
            ASSERT_TRUE(characters.LoadCharacter(L"genie").Ok());
            speech::LoadSettings(surroundings);
            agent::Ignore(shared.character->Show());
        }
        hotkeys::LoadHotKeys(hotKeys, store);
        options.Form_Load();
        log.Clear();
        backend.writes.clear();
    }

    void Save(std::wstring_view section, std::wstring_view key, std::wstring_view value)
    {
        store.SaveSetting(section, key, value);
    }
    std::wstring Stored(std::wstring_view section, std::wstring_view key)
    {
        return store.GetSetting(section, key, L"nothing");
    }
    tests::FakeCharacter& Character() { return *static_cast<tests::FakeCharacter*>(shared.character); }

    static std::filesystem::path MakeFolder()
    {
        const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
        return std::filesystem::temp_directory_path() /
               (std::string("voxtrel-options-test-") + test->test_suite_name() + "-" + test->name());
    }

    const std::filesystem::path path = MakeFolder();
    tests::CallLog log;
    tests::RecordingBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    settings::StringTable strings;
    settings::ProgramFolder folder{settings::FromPath(path)};
    tests::FakeDesktop desktop{log};
    tests::FakeMessages messages{log};
    tests::FakeAccessibility access{log};
    tests::FakeControl control{log};
    hotkeys::HotKeyTable hotKeys;
    speech::CharacterSurroundings surroundings{store, shared, desktop, access, messages, folder};
    speech::CharacterControl characters{control, surroundings, strings};
    FakeForm form{log};
    Options options{{store, shared, strings, folder, desktop, messages, hotKeys, characters}, form};
};

} // namespace voxtrel::options
