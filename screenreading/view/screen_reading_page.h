#pragma once

#include "screenreading/roles_page.h"
#include "settings/string_table.h"

#include <wx/panel.h>
#include <wx/timer.h>

#include <array>
#include <functional>

class wxButton;
class wxCheckBox;
class wxCheckListBox;
class wxSizer;
class wxStaticText;

namespace voxtrel::screenreading {

// The page of the options dialog where the user chooses what is spoken of each kind of object under the
// pointer. The dialog localises it with its own controls and calls Form_Load afterwards.
class ScreenReadingPage final : public wxPanel {
public:
    // What is handed in outlives the page. heightChanged is called after the details panel was opened or
    // closed: the dialog makes room.
    ScreenReadingPage(wxWindow* parent, const RolesPageServices& services,
                      const settings::StringTable& strings, std::function<void()> heightChanged);

    // Fills the list of roles, then the box for screen reading as a whole.
    void Form_Load();
    // The dialog is about to go: what was handed in is used no more.
    void Form_Unload() { Timer1_.Stop(); }

    // The button that opens and closes the details panel, and whether it is open.
    wxButton* cmdDetails() const { return cmdDetails_; }
    bool DetailsOpen() const;

private:
    wxSizer* MakeRoles();
    wxSizer* MakeDetails();
    void BindHandlers();

    void Check_usescreenreading_Click();
    void cmdDetails_Click();
    void Timer1_Timer();

    void ShowRoles();
    void ShowBoxes();
    wxString Text(int number) const;

    RolesPage page_;
    platform::OVAccessibility& access_;
    const settings::StringTable& strings_;
    std::function<void()> heightChanged_;

    wxCheckBox* Check_usescreenreading_ = nullptr; // owned by the page, as all windows here
    wxCheckListBox* roleslist_ = nullptr;
    wxCheckBox* Check_name_ = nullptr;
    wxCheckBox* Check_value_ = nullptr;
    wxButton* cmdDetails_ = nullptr;
    wxSizer* details_ = nullptr;
    std::array<wxStaticText*, 3> lblDetails_ = {};
    wxTimer Timer1_;
};

} // namespace voxtrel::screenreading
