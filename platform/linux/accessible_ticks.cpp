#include "platform/accessible_ticks.h"

#include "platform/accessible_name.h"

#include <wx/checklst.h>

namespace voxtrel::platform {

// The list is one of GTK's own, which tells its ticks itself.
void SetAccessibleNameAndTicks(wxCheckListBox& list, std::wstring_view name)
{
    SetAccessibleName(list, name);
}

} // namespace voxtrel::platform
