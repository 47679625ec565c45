#include "platform/windows/msaa_query.h"

#include "platform/readable_text.h"
#include "platform/windows/com_pointer.h"

#include <oleacc.h>

#include <optional>
#include <utility>

namespace voxtrel::platform {
namespace {

constexpr int kMaxDepth = 30;

// An accessible object: an IAccessible, or one of the simple children that it answers for.
struct MsaaObject {
    ComPointer<IAccessible> accessible;
    long child = CHILDID_SELF;

    VARIANT Self() const
    {
        VARIANT self;
        self.vt = VT_I4;
        self.lVal = child;
        return self;
    }
};

ComPointer<IAccessible> AccessibleFrom(IDispatch* dispatch)
{
    ComPointer<IAccessible> accessible;
    if (dispatch)
        dispatch->QueryInterface(__uuidof(IAccessible), accessible.ReceiveVoid());
    return accessible;
}

ComPointer<IAccessible> SameAccessible(const ComPointer<IAccessible>& accessible)
{
    accessible->AddRef();
    return ComPointer<IAccessible>(accessible.Get());
}

// Some programs answer with the window; the way down to what lies deeper is asked for step by step.
MsaaObject DeepestAt(MsaaObject object, POINT point, const Deadline& deadline)
{
    for (int depth = 0; depth < kMaxDepth && object.child == CHILDID_SELF && !deadline.IsOver(); ++depth) {
        ComVariant hit;
        if (object.accessible->accHitTest(point.x, point.y, hit.Receive()) != S_OK)
            break;
        if (hit.Get().vt == VT_DISPATCH) {
            ComPointer<IAccessible> next = AccessibleFrom(hit.Get().pdispVal);
            if (!next || next.Get() == object.accessible.Get())
                break;
            object = {std::move(next), CHILDID_SELF};
        } else {
            object.child = hit.Number(CHILDID_SELF);
            if (object.child == CHILDID_SELF)
                break;
        }
    }
    // A child with a number may be a whole object nevertheless.
    ComPointer<IDispatch> dispatch;
    if (object.child != CHILDID_SELF &&
        object.accessible->get_accChild(object.Self(), dispatch.Receive()) == S_OK) {
        if (ComPointer<IAccessible> whole = AccessibleFrom(dispatch.Get()))
            return {std::move(whole), CHILDID_SELF};
    }
    return object;
}

std::optional<MsaaObject> ParentOf(const MsaaObject& object)
{
    if (object.child != CHILDID_SELF)
        return MsaaObject{SameAccessible(object.accessible), CHILDID_SELF};
    ComPointer<IDispatch> dispatch;
    if (object.accessible->get_accParent(dispatch.Receive()) != S_OK)
        return std::nullopt;
    ComPointer<IAccessible> parent = AccessibleFrom(dispatch.Get());
    if (!parent)
        return std::nullopt;
    return MsaaObject{std::move(parent), CHILDID_SELF};
}

using TextGetter = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);

std::wstring TextOf(const MsaaObject& object, TextGetter get)
{
    ComText text;
    if ((object.accessible.Get()->*get)(object.Self(), text.Receive()) != S_OK)
        return {};
    return ReadableText(text.Text(), kLongestText);
}

std::wstring NameOf(const MsaaObject& object)
{
    std::wstring name = TextOf(object, &IAccessible::get_accName);
    if (name.empty())
        name = TextOf(object, &IAccessible::get_accDescription);
    return name;
}

struct MsaaRole {
    long number = 0; // 0 for one that the program has made up
    std::wstring text;
};

MsaaRole RoleOf(const MsaaObject& object)
{
    ComVariant role;
    if (object.accessible->get_accRole(object.Self(), role.Receive()) != S_OK)
        return {};
    if (role.Get().vt == VT_BSTR)
        return {0, ReadableText(role.Text(), kLongestLine)};
    const long number = role.Number(0);
    wchar_t text[kLongestLine] = {};
    const UINT length = GetRoleTextW(static_cast<DWORD>(number), text, kLongestLine);
    return {number, std::wstring(text, length)};
}

SwitchState StateFrom(long role, long states)
{
    const bool box = role == ROLE_SYSTEM_CHECKBUTTON || role == ROLE_SYSTEM_RADIOBUTTON;
    if ((states & STATE_SYSTEM_MIXED) != 0)
        return SwitchState::PartlyChecked;
    if ((states & STATE_SYSTEM_CHECKED) != 0)
        return SwitchState::Checked;
    if (box)
        return SwitchState::Unchecked;
    return (states & STATE_SYSTEM_PRESSED) != 0 ? SwitchState::Pressed : SwitchState::None;
}

MsaaObject ObjectUnder(POINT point)
{
    MsaaObject object;
    ComVariant child;
    if (AccessibleObjectFromPoint(point, object.accessible.Receive(), child.Receive()) != S_OK)
        return {};
    object.child = child.Number(CHILDID_SELF);
    return object;
}

MsaaObject ObjectOf(HWND window)
{
    MsaaObject object;
    if (AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                   object.accessible.ReceiveVoid()) != S_OK)
        return {};
    return object;
}

} // namespace

AccessibleAnswer MsaaObjectAt(ScreenPoint point, HWND window, const Deadline& deadline)
{
    const POINT there{point.x, point.y};
    MsaaObject first = window ? ObjectOf(window) : ObjectUnder(there);
    if (!first.accessible)
        return {};

    std::optional<MsaaObject> object = DeepestAt(std::move(first), there, deadline);
    for (int up = 0; object && up < kMaxDepth && !deadline.IsOver(); ++up) {
        ComVariant states;
        object->accessible->get_accState(object->Self(), states.Receive());
        const bool password = (states.Number(0) & STATE_SYSTEM_PROTECTED) != 0;
        MsaaRole role = RoleOf(*object);
        std::wstring name = NameOf(*object);
        // A password field without any name is still worth a word.
        if (name.empty() && password)
            name = role.text;
        if (!name.empty()) {
            const bool anyWindow = role.number == ROLE_SYSTEM_CLIENT || role.number == ROLE_SYSTEM_WINDOW;
            return {
                .object = {.name = std::move(name),
                           .role = std::move(role.text),
                           .value = password ? std::wstring() : TextOf(*object, &IAccessible::get_accValue),
                           .state = StateFrom(role.number, states.Number(0))},
                .deepest = up == 0,
                .kindKnown = !anyWindow};
        }
        object = ParentOf(*object);
    }
    return {};
}

} // namespace voxtrel::platform
