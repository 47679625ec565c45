#pragma once

#include "platform/accessibility.h"
#include "settings/program_folder.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace voxtrel::screenreading {

// What the page works with. Everything outlives it.
struct RolesPageServices {
    settings::SettingsStore& store;
    settings::SharedSettings& shared;
    platform::OVAccessibility& access;
    const settings::ProgramFolder& folder;
};

// The screen-reading page of the options: what its list and its boxes show and do, without the list and the
// boxes. Every change is stored at once.
class RolesPage {
public:
    explicit RolesPage(const RolesPageServices& services) : services_(services) {}

    struct Role {
        std::wstring text; // the key, with a capital
        bool ticked = false;
    };
    const std::vector<Role>& roleslist() const { return roles_; }
    // The item of roleslist that is selected.
    std::optional<std::size_t> Selected() const { return selected_; }
    bool Check_name() const { return name_; }
    bool Check_value() const { return value_; }
    bool Check_usescreenreading() const { return services_.shared.usescreenreading; }

    // Reads the table. The first role is selected and its choice shown; without any the boxes stay as they
    // were.
    void FillRolesList();

    // An item is selected.
    void roleslist_ItemClick(std::size_t item);
    // An item is ticked or unticked. The boxes change with it, and their handlers run for the selected item,
    // which need not be this one.
    void roleslist_ItemCheck(std::size_t item, bool ticked);

    void Check_name_Click(bool ticked);
    void Check_value_Click(bool ticked);
    void Check_usescreenreading_Click(bool ticked);

private:
    void StoreBoxes();

    RolesPageServices services_;
    std::vector<Role> roles_;
    std::optional<std::size_t> selected_;
    bool name_ = false;
    bool value_ = false;
    bool updatingRole_ = false; // the boxes change, their handlers store nothing
};

// The three texts of the details panel: the role up to its first bracket, the name, the value. Nothing while
// the control knows none: the panel stays as it is.
std::optional<std::array<std::wstring, 3>> DetailsOf(const platform::OVAccessibility& access);

} // namespace voxtrel::screenreading
