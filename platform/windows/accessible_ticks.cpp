// The toolkit draws the boxes before the entries of a plain list, so that the system knows nothing of them.

#include "platform/accessible_ticks.h"

#include <wx/access.h>
#include <wx/checklst.h>

namespace voxtrel::platform {
namespace {

class TickedEntries final : public wxAccessible {
public:
    TickedEntries(wxCheckListBox& list, const wxString& name) : wxAccessible(&list), list_(list), name_(name)
    {
    }

    // Entries are numbered from 1.
    wxAccStatus HitTest(const wxPoint& onScreen, int* entry, wxAccessible** object) override
    {
        const int found = list_.HitTest(list_.ScreenToClient(onScreen));
        *object = nullptr;
        *entry = found == wxNOT_FOUND ? wxACC_SELF : found + 1;
        return found == wxNOT_FOUND ? wxACC_NOT_IMPLEMENTED : wxACC_OK;
    }

    wxAccStatus GetName(int entry, wxString* name) override
    {
        if (entry != wxACC_SELF && !IsEntry(entry))
            return wxACC_NOT_IMPLEMENTED;
        *name = entry == wxACC_SELF ? name_ : list_.GetString(Index(entry));
        return wxACC_OK;
    }

    wxAccStatus GetRole(int entry, wxAccRole* role) override
    {
        if (!IsEntry(entry))
            return wxACC_NOT_IMPLEMENTED;
        *role = wxROLE_SYSTEM_CHECKBUTTON;
        return wxACC_OK;
    }

    wxAccStatus GetState(int entry, long* state) override
    {
        if (!IsEntry(entry))
            return wxACC_NOT_IMPLEMENTED;
        *state = wxACC_STATE_SYSTEM_FOCUSABLE | wxACC_STATE_SYSTEM_SELECTABLE;
        if (list_.IsChecked(Index(entry)))
            *state |= wxACC_STATE_SYSTEM_CHECKED;
        if (list_.IsSelected(static_cast<int>(Index(entry))))
            *state |= wxACC_STATE_SYSTEM_SELECTED | (list_.HasFocus() ? wxACC_STATE_SYSTEM_FOCUSED : 0);
        return wxACC_OK;
    }

private:
    bool IsEntry(int entry) const { return entry > 0 && static_cast<unsigned>(entry) <= list_.GetCount(); }
    static unsigned Index(int entry) { return static_cast<unsigned>(entry) - 1; }

    wxCheckListBox& list_;
    wxString name_;
};

} // namespace

void SetAccessibleNameAndTicks(wxCheckListBox& list, std::wstring_view name)
{
    list.SetAccessible(new TickedEntries(list, wxString(name.data(), name.size())));
}

} // namespace voxtrel::platform
