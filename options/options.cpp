#include "options/options.h"

#include "options/sliders.h"
#include "settings/number_conversions.h"
#include "settings/setting_keys.h"
#include "settings/string_numbers.h"
#include "settings/text_case.h"
#include "speech/character_settings.h"
#include "speech/speech_markup.h"

#include <algorithm>

// Loading the dialog and what its controls do; options_pronunciations.cpp has those of the pronunciations.

namespace voxtrel::options {

using agent::Ignore;

namespace numbers = settings::strings;

namespace {

constexpr int kSizes = 3;
constexpr int kPositions = 4;
constexpr std::int16_t kSwitchedOn = 1;
constexpr std::wstring_view kHidden = L"1";
constexpr std::wstring_view kNotHidden = L"0";

// Points.
constexpr int kFontSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24, 28, 32, 36, 48, 72};

// The place of a name among others: as it is spelled, or else under other capitals.
std::optional<std::size_t> PlaceOf(const std::vector<std::wstring>& entries, const std::wstring& name)
{
    auto found = std::find(entries.begin(), entries.end(), name);
    if (found == entries.end())
        found = std::find_if(entries.begin(), entries.end(),
                             [&](const std::wstring& entry) { return settings::SameName(entry, name); });
    if (found == entries.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - entries.begin());
}

std::optional<std::size_t> PlaceOf(double index, int count)
{
    for (int place = 0; place < count; ++place) {
        if (index == place)
            return static_cast<std::size_t>(place);
    }
    return std::nullopt;
}

std::uint32_t StyleBit(CheckBox box)
{
    switch (box) {
    case CheckBox::Check1:
        return agent::balloon_style::kAutoHide;
    case CheckBox::Check2:
        return agent::balloon_style::kAutoPace;
    case CheckBox::Check3:
        return agent::balloon_style::kSizeToText;
    case CheckBox::visiblebox:
        break;
    }
    return 0;
}

bool& StyleSetting(settings::SharedSettings& shared, CheckBox box)
{
    if (box == CheckBox::Check1)
        return shared.autohide;
    return box == CheckBox::Check2 ? shared.autopace : shared.autosize;
}

constexpr CheckBox kBalloonBoxes[] = {CheckBox::Check1, CheckBox::Check2, CheckBox::Check3};

} // namespace

Options::Options(const OptionsServices& services, OptionsForm& form)
    : services_(services), form_(form), pronunciationList_(services.store), pronunciations_(services.store)
{
}

void Options::Form_Load()
{
    form_.LocaliseForm(services_.strings);
    form_.LoadScreenReadingPage();
    LoadHotKeyControls();
    LoadBalloonBoxes();
    LoadVoice();
    LoadCharacter();
    LoadBalloonFont();
    LoadSliders();
    LoadPronunciations();
    form_.CentreOnScreen();
    services_.shared.OptionsOpen = true;
}

void Options::Form_Unload() { services_.shared.OptionsOpen = false; }

void Options::LoadHotKeyControls()
{
    for (int index = 0; index < hotkeys::kHotKeyRows; ++index) {
        form_.SelectHotKey(index, hotkeys::ListPositionOf(services_.hotKeys, index + 1));
        form_.TickHotKey(index, services_.hotKeys.HotKeyEnabled[index + 1] == kSwitchedOn);
    }
}

void Options::LoadBalloonBoxes()
{
    for (const CheckBox box : kBalloonBoxes) {
        form_.SetTicked(box, StyleSetting(services_.shared, box));
        // The only handlers that loading runs: the balloon's style then matches the boxes.
        Check_Click(box);
    }
}

void Options::LoadVoice()
{
    const settings::SharedSettings& shared = services_.shared;
    int style = 0;
    for (int index = 1; index < kOptionsOfAGroup; ++index) {
        if (shared.VoiceType == speech::VoiceStyleTag(index))
            style = index;
    }
    form_.SelectOption(OptionGroup::cr, style);

    std::vector<std::wstring> voices;
    for (auto& voice : services_.store.GetAllSettings(settings::kVoicesSection))
        voices.push_back(std::move(voice.first));
    FillWithMissing(DropDown::voicelist, std::move(voices), shared.AgentVoice);
}

void Options::LoadCharacter()
{
    const settings::SharedSettings& shared = services_.shared;
    const std::vector<std::wstring> names = services_.folder.CharacterNames();
    form_.FillDropDown(DropDown::AgentList, names, PlaceOf(names, shared.FavouriteAgent));
    form_.FillDropDown(DropDown::AgentSizeList, Texts(numbers::kFirstSize, kSizes),
                       PlaceOf(shared.Agent_Size_IDX, kSizes));
    form_.SelectOption(OptionGroup::showballoonbox, shared.Agent_Balloon_Always);
    form_.SetTicked(CheckBox::visiblebox, shared.Agent_Hidden == kHidden);
    form_.FillDropDown(DropDown::positionlist, Texts(numbers::kFirstPosition, kPositions),
                       PlaceOf(shared.Agent_Position_List_Index, kPositions));
}

void Options::LoadBalloonFont()
{
    std::wstring name;
    long size = 0;
    if (agent::Character* const character = services_.shared.character) {
        name = character->GetBalloon().FontName();
        size = character->GetBalloon().FontSize();
    }
    FillWithMissing(DropDown::Fontlist, form_.ScreenFonts(), name);
    std::vector<std::wstring> sizes;
    for (const int points : kFontSizes) {
        if (size > 0 && size < points && (sizes.empty() || settings::ToInt32(sizes.back()) < size))
            sizes.push_back(settings::FormatNumber(size));
        sizes.push_back(settings::FormatNumber(points));
    }
    FillWithMissing(DropDown::Sizelist, std::move(sizes),
                    size > 0 ? settings::FormatNumber(size) : std::wstring());
    ShowBalloonFont();
}

void Options::LoadSliders()
{
    for (const Slider slider : kAllSliders) {
        form_.SetSlider(slider, Setting(slider));
        form_.SetSliderLabel(slider, LabelOf(slider, Setting(slider), services_.strings));
    }
}

// What is shown but not to be had on this machine becomes an entry too, so that it can be come back to.
void Options::FillWithMissing(DropDown list, std::vector<std::wstring> entries, const std::wstring& shown)
{
    if (!shown.empty() && !PlaceOf(entries, shown))
        entries.push_back(shown);
    form_.FillDropDown(list, entries, PlaceOf(entries, shown));
}

void Options::AgentList_Click()
{
    const std::wstring name = form_.ListText(DropDown::AgentList);
    const std::wstring font = form_.ListText(DropDown::Fontlist);
    const std::wstring size = form_.ListText(DropDown::Sizelist);
    const agent::Result changed =
        services_.characters.ChangeCharacter(name, {form_.ListIndex(DropDown::AgentSizeList), font, size});
    if (changed.Ok())
        return;
    const std::vector<std::wstring> names = services_.folder.CharacterNames();
    form_.SelectEntry(DropDown::AgentList, PlaceOf(names, services_.shared.FavouriteAgent));
    services_.messages.ShowExclamation(changed.description);
}

void Options::AgentSizeList_Click()
{
    services_.characters.ChangeSize(form_.ListIndex(DropDown::AgentSizeList));
}

void Options::visiblebox_Click()
{
    const bool hidden = form_.Ticked(CheckBox::visiblebox);
    services_.shared.Agent_Hidden = hidden ? kHidden : kNotHidden;
    hidden ? Park() : BringBack();
}

void Options::positionlist_Click()
{
    services_.shared.Agent_Position_List_Index = form_.ListIndex(DropDown::positionlist);
    if (services_.shared.Agent_Hidden == kHidden)
        Park();
}

void Options::Park()
{
    agent::Character* const character = services_.shared.character;
    if (character == nullptr)
        return;
    const Place now{character->Top(), character->Left()};
    if (IsOnScreen(now))
        beforeParking_ = now;
    const auto parking =
        speech::ParkingPositionOf(services_.shared.Agent_Position_List_Index, *character, services_.desktop);
    if (!parking)
        return;
    Ignore(character->SetTop(parking->top));
    Ignore(character->SetLeft(parking->left));
}

void Options::BringBack()
{
    agent::Character* const character = services_.shared.character;
    if (character == nullptr)
        return;
    const Place place = PlaceOnScreen();
    Ignore(character->SetTop(place.top));
    Ignore(character->SetLeft(place.left));
}

bool Options::IsOnScreen(const Place& place) const
{
    const agent::Character& character = *services_.shared.character;
    return place.left < services_.desktop.ScreenWidth() && place.left + character.ShownWidth() > 0 &&
           place.top < services_.desktop.ScreenHeight() && place.top + character.ShownHeight() > 0;
}

// Where the character stood before; a stored place may itself be one of a parked character.
Options::Place Options::PlaceOnScreen() const
{
    namespace keys = settings::keys;
    if (beforeParking_)
        return *beforeParking_;
    const auto read = [this](const settings::SettingKey& key) -> long {
        return settings::ToInt32(services_.store.GetSetting(key.section, key.name, key.fallback));
    };
    const Place stored{read(keys::kTop), read(keys::kLeft)};
    if (IsOnScreen(stored))
        return stored;
    return {settings::ToInt32(keys::kTop.fallback), settings::ToInt32(keys::kLeft.fallback)};
}

void Options::Command3_Click() { services_.characters.TestAppearance(); }

void Options::Command5_Click() { services_.characters.TestLargeBalloon(); }

void Options::Check_Click(CheckBox box)
{
    const bool ticked = form_.Ticked(box);
    StyleSetting(services_.shared, box) = ticked;
    if (services_.shared.character == nullptr)
        return;
    agent::Balloon& balloon = services_.shared.character->GetBalloon();
    const std::uint32_t others = balloon.Style() & ~StyleBit(box);
    Ignore(balloon.SetStyle(ticked ? others | StyleBit(box) : others));
}

void Options::showballoonbox_Click()
{
    services_.shared.Agent_Balloon_Always =
        static_cast<std::int16_t>(form_.SelectedOption(OptionGroup::showballoonbox));
}

void Options::Fontlist_Click()
{
    if (agent::Character* const character = services_.shared.character)
        Ignore(character->GetBalloon().SetFontName(form_.ListText(DropDown::Fontlist)));
    ShowBalloonFont();
}

void Options::Sizelist_Click()
{
    if (agent::Character* const character = services_.shared.character)
        Ignore(character->GetBalloon().SetFontSize(settings::ToInt32(form_.ListText(DropDown::Sizelist))));
    ShowBalloonFont();
}

void Options::ShowBalloonFont()
{
    form_.ShowBalloonFont(form_.ListText(DropDown::Fontlist),
                          settings::ToInt32(form_.ListText(DropDown::Sizelist)));
}

void Options::voicelist_Click()
{
    const agent::Result changed = services_.characters.ChangeVoice(form_.ListText(DropDown::voicelist));
    if (!changed.Ok() && !changed.description.empty())
        services_.messages.ShowExclamation(changed.description);
}

void Options::cr_Click() { services_.characters.ChangeVoiceStyle(form_.SelectedOption(OptionGroup::cr)); }

void Options::Slider_Change(Slider slider)
{
    settings::SharedSettings& shared = services_.shared;
    const int value = form_.SliderValue(slider);
    switch (slider) {
    case Slider::pitchslider:
        shared.Pitch = static_cast<std::int16_t>(value);
        break;
    case Slider::speedslider:
        shared.Speed = static_cast<std::int16_t>(value);
        break;
    case Slider::volumeslider:
        shared.Volume = value;
        break;
    case Slider::slider_interword:
        shared.interwordpause = static_cast<std::int16_t>(value);
        break;
    }
    form_.SetSliderLabel(slider, LabelOf(slider, value, services_.strings));
}

int Options::Setting(Slider slider) const
{
    const settings::SharedSettings& shared = services_.shared;
    switch (slider) {
    case Slider::pitchslider:
        return shared.Pitch;
    case Slider::speedslider:
        return shared.Speed;
    case Slider::volumeslider:
        return shared.Volume;
    case Slider::slider_interword:
        break;
    }
    return shared.interwordpause;
}

void Options::cmdTestVoice_Click() { services_.characters.TestVoice(); }

void Options::hotkeycheck_Click(int index)
{
    services_.hotKeys.HotKeyEnabled[index + 1] = form_.HotKeyTicked(index) ? kSwitchedOn : 0;
}

void Options::hotkeycombo_Click(int index)
{
    const int row = index + 1;
    const int code = form_.HotKeyPosition(index) + hotkeys::kFirstListedKey;
    if (hotkeys::ChangeHotKey(services_.hotKeys, row, static_cast<std::int16_t>(code), services_.store))
        return;
    std::wstring refusal = services_.strings.Text(numbers::kHotKeyInUse);
    speech::BuildSpeechText(refusal, services_.shared, pronunciationList_);
    form_.SelectHotKey(index, hotkeys::ListPositionOf(services_.hotKeys, row));
}

void Options::ok_but_Click()
{
    {
        const settings::SettingsChanges together(services_.store);
        speech::SaveSettings(services_.store, services_.shared);
        hotkeys::SaveHotKeys(services_.hotKeys, services_.store);
    }
    form_.Close();
}

std::vector<std::wstring> Options::Texts(int firstNumber, int count) const
{
    std::vector<std::wstring> texts;
    for (int number = firstNumber; number < firstNumber + count; ++number)
        texts.push_back(services_.strings.Text(number));
    return texts;
}

} // namespace voxtrel::options
