#include "platform/text_color.h"

#include "platform/windows/windows_headers.h"

#include <richedit.h>
#include <richole.h>
#include <tom.h>

#include <wx/settings.h>
#include <wx/textctrl.h>

#include <memory>

namespace voxtrel::platform {
namespace {

// {8CC497C0-A1DF-11CE-8098-00AA0047BE5D}
constexpr GUID kTextDocument = {0x8CC497C0, 0xA1DF, 0x11CE, {0x80, 0x98, 0x00, 0xAA, 0x00, 0x47, 0xBE, 0x5D}};

struct Release {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface> using Owned = std::unique_ptr<Interface, Release>;

Owned<ITextDocument> DocumentOf(const wxTextCtrl& control)
{
    IRichEditOle* ole = nullptr;
    ::SendMessageW(static_cast<HWND>(control.GetHandle()), EM_GETOLEINTERFACE, 0, reinterpret_cast<LPARAM>(&ole));
    const Owned<IRichEditOle> owner(ole);
    void* document = nullptr;
    if (owner)
        owner->QueryInterface(kTextDocument, &document);
    return Owned<ITextDocument>(static_cast<ITextDocument*>(document));
}

// While it lives the control notes nothing for its Undo: what a user takes back is what was typed, not the
// colours that the voice has left behind.
class UndoSuspension {
public:
    explicit UndoSuspension(const wxTextCtrl& control) : document_(DocumentOf(control))
    {
        if (document_)
            document_->Undo(tomSuspend, nullptr);
    }

    ~UndoSuspension()
    {
        if (document_)
            document_->Undo(tomResume, nullptr);
    }

    UndoSuspension(const UndoSuspension&) = delete;
    UndoSuspension& operator=(const UndoSuspension&) = delete;

private:
    Owned<ITextDocument> document_;
};

} // namespace

void SetTextColor(wxTextCtrl& control, long from, long to, const wxColour& color)
{
    const UndoSuspension suspended(control);
    control.SetStyle(from, to, wxTextAttr(color));
}

void ClearTextColor(wxTextCtrl& control, long from, long to)
{
    SetTextColor(control, from, to, wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
}

} // namespace voxtrel::platform
