#include "platform/accessible_name.h"

#include <wx/access.h>
#include <wx/window.h>

namespace voxtrel::platform {
namespace {

class NamedAccessible final : public wxAccessible {
public:
    NamedAccessible(wxWindow* control, const wxString& name) : wxAccessible(control), name_(name) {}

    wxAccStatus GetName(int childId, wxString* name) override
    {
        if (childId != wxACC_SELF)
            return wxACC_NOT_IMPLEMENTED;
        *name = name_;
        return wxACC_OK;
    }

private:
    wxString name_;
};

} // namespace

void SetAccessibleName(wxWindow& control, std::wstring_view name)
{
    control.SetAccessible(new NamedAccessible(&control, wxString(name.data(), name.size())));
}

void ForgetTabs(wxNotebook&) {}

} // namespace voxtrel::platform
