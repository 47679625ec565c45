#include "screenreading/roles_page.h"

#include "screenreading/role_table.h"
#include "settings/number_conversions.h"
#include "settings/setting_keys.h"
#include "settings/text_case.h"

#include <algorithm>
#include <utility>

namespace voxtrel::screenreading {
namespace {

bool Contains(std::wstring_view text, std::wstring_view part)
{
    return text.find(part) != std::wstring_view::npos;
}

// A number is no role: it was left there by something else.
bool IsListed(std::wstring_view key) { return !key.empty() && settings::Val(key) == 0; }

} // namespace

void RolesPage::FillRolesList()
{
    roles_.clear();
    selected_.reset();
    for (const auto& [key, choice] : services_.store.GetAllSettings(kRolesSection)) {
        if (IsListed(key))
            roles_.push_back({settings::WithCapital(key), choice != kSilenced});
    }
    if (!roles_.empty())
        roleslist_ItemClick(0);
}

void RolesPage::roleslist_ItemClick(std::size_t item)
{
    selected_ = item;
    updatingRole_ = true;
    Check_name_Click(false);
    Check_value_Click(false);
    const std::wstring choice = services_.store.GetSetting(kRolesSection, roles_.at(item).text, kUnsaid);
    if (choice == kUnsaid) {
        Check_name_Click(true);
    } else {
        Check_name_Click(Contains(choice, kName));
        Check_value_Click(Contains(choice, kValue));
    }
    updatingRole_ = false;
}

void RolesPage::roleslist_ItemCheck(std::size_t item, bool ticked)
{
    Role& role = roles_.at(item);
    role.ticked = ticked;
    Check_name_Click(ticked);
    Check_value_Click(false);
    services_.store.SaveSetting(kRolesSection, role.text, ticked ? kName : kSilenced);
}

void RolesPage::Check_name_Click(bool ticked)
{
    name_ = ticked;
    StoreBoxes();
}

void RolesPage::Check_value_Click(bool ticked)
{
    value_ = ticked;
    StoreBoxes();
}

void RolesPage::StoreBoxes()
{
    if (updatingRole_ || !selected_)
        return;
    std::wstring choice;
    if (name_)
        choice.append(kName).append(L",");
    if (value_)
        choice.append(kValue).append(L",");
    services_.store.SaveSetting(kRolesSection, roles_.at(*selected_).text,
                                choice.empty() ? kNothing : choice);
}

void RolesPage::Check_usescreenreading_Click(bool ticked)
{
    services_.shared.usescreenreading = ticked;
    const settings::SettingKey& key = settings::keys::kUseScreenReading;
    services_.store.SaveSetting(key.section, key.name, settings::FormatBoolean(ticked));
    if (ticked) {
        services_.access.StartServer(services_.folder.AccServer());
        services_.access.StartMonitoring();
    } else {
        services_.access.StopMonitoring();
    }
}

std::optional<std::array<std::wstring, 3>> DetailsOf(const platform::OVAccessibility& access)
{
    std::array<std::wstring, 3> texts = {access.ObjectRole(), access.ObjectName(), access.ObjectValue()};
    if (texts[0].empty() && texts[1].empty() && texts[2].empty())
        return std::nullopt;
    std::wstring& role = texts[0];
    role.resize(std::min(role.find(L'('), role.size()));
    return texts;
}

} // namespace voxtrel::screenreading
