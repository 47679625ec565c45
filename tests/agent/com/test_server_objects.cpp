#include "agent/com/test_server_objects.h"

#include "agent/com/test_server_types.h"

#include <olectl.h>

#include <algorithm>
#include <cwchar>
#include <memory>
#include <utility>

namespace voxtrel::tests {
namespace {

constexpr HRESULT kNotConnected = static_cast<HRESULT>(0x80042502);
constexpr HRESULT kIdNotValid = static_cast<HRESULT>(0x80042002);
constexpr HRESULT kAlreadyLoaded = static_cast<HRESULT>(0x8004200B);
constexpr HRESULT kNoSuchVoice = static_cast<HRESULT>(0x80042013);
constexpr HRESULT kNoFile = static_cast<HRESULT>(0x80070002);
constexpr long kInterrupted = static_cast<long>(0x8004210C);

constexpr UINT kWorkMessage = kFireMessage + 1; // lParam: the character's identifier, owned

// The voices that this server has begin so.
const wchar_t* const kVoices = L"{CA141FD0-AC7F-11D1-97A3-00600827300";

VARIANT Short(short number)
{
    VARIANT value = {};
    value.vt = VT_I2;
    value.iVal = number;
    return value;
}

VARIANT Number(long number)
{
    VARIANT value = {};
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

VARIANT Flag(bool flag)
{
    VARIANT value = {};
    value.vt = VT_BOOL;
    value.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return value;
}

VARIANT Text(const std::wstring& text)
{
    VARIANT value = {};
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return value;
}

VARIANT Object(IDispatch* object)
{
    VARIANT value = {};
    value.vt = VT_DISPATCH;
    value.pdispVal = object;
    object->AddRef();
    return value;
}

std::wstring TextOf(const VARIANT& value)
{
    return value.vt == VT_BSTR ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal)) : std::wstring();
}

std::vector<long> BookmarksIn(const std::wstring& markup)
{
    std::vector<long> numbers;
    for (std::size_t at = 0; (at = markup.find(L"rk=", at)) != std::wstring::npos; ++at)
        numbers.push_back(std::wcstol(markup.c_str() + at + 3, nullptr, 10));
    return numbers;
}

} // namespace

TestRequest::TestRequest()
    : WithProperties(L"Request",
                     {{L"Status", Number(2)}, {L"Number", Number(0)}, {L"Description", Text(L"")}}, {})
{
}

void TestRequest::SetState(long status, long number, const wchar_t* description)
{
    properties_[L"Status"] = Number(status);
    properties_[L"Number"] = Number(number);
    VariantClear(&properties_[L"Description"]);
    properties_[L"Description"] = Text(description);
}

// Two lines of 28 characters; on, hides itself, paces.
TestBalloon::TestBalloon(const std::wstring& owner)
    : WithProperties(
          owner + L".Balloon",
          {{L"FontName", Text(L"Designed")}, {L"FontSize", Number(8)}, {L"Style", Number(0x021C000D)}}, {})
{
}

// Some numbers come in the small form, as from a component of old.
TestCharacter::TestCharacter(std::wstring id, TestControl& control)
    : WithProperties(std::move(id),
                     {{L"Top", Short(0)},
                      {L"Left", Short(0)},
                      {L"Height", Short(160)},
                      {L"Width", Short(160)},
                      {L"TTSModeID", Text(L"")},
                      {L"SoundEffectsOn", Flag(true)},
                      {L"Visible", Flag(false)}},
                     {L"Show", L"Hide", L"Play", L"Speak", L"StopAll", L"Balloon"}),
      control_(control), balloon_(new TestBalloon(name_))
{
}

HRESULT TestCharacter::Do(const Asked& asked)
{
    if (asked.member == L"TTSModeID" && asked.kind == DISPATCH_PROPERTYPUT &&
        TextOf(*asked.arguments.at(0)).rfind(kVoices, 0) != 0) {
        const HRESULT carried = Carry(asked);
        return FAILED(carried) ? carried
                               : Raise(asked.exception, kNoSuchVoice, L"This voice is not installed here.");
    }
    if (properties_.contains(asked.member))
        return DoProperty(asked);
    if (asked.member == L"Balloon") {
        *asked.result = Object(balloon_.Get());
        return S_OK;
    }
    const HRESULT carried = Carry(asked);
    if (FAILED(carried))
        return carried;
    return asked.member == L"StopAll" ? StopAll(asked) : Ask(asked);
}

HRESULT TestCharacter::Ask(const Asked& asked)
{
    Waiting waiting{ComPointer<TestRequest>(new TestRequest), {}, asked.member == L"Speak"};
    if (waiting.speaks)
        waiting.bookmarks = BookmarksIn(TextOf(*asked.arguments.at(0)));
    if (asked.member == L"Show" || asked.member == L"Hide")
        properties_[L"Visible"] = Flag(asked.member == L"Show");
    if (asked.result)
        *asked.result = Object(waiting.request.Get());
    waiting_.push_back(std::move(waiting));
    control_.WorkSoon(name_);
    return S_OK;
}

HRESULT TestCharacter::StopAll(const Asked&)
{
    std::deque<Waiting> stopped;
    stopped.swap(waiting_);
    for (Waiting& waiting : stopped) {
        waiting.request->SetState(3, kInterrupted, L"Interrupted.");
        if (waiting.request->HeldByOthers())
            control_.Fire(L"RequestComplete", {Object(waiting.request.Get())});
    }
    return S_OK;
}

void TestCharacter::Work()
{
    if (waiting_.empty())
        return;
    const Waiting now = std::move(waiting_.front());
    waiting_.pop_front();
    // A client that does not hold the request is told nothing about it.
    const bool told = now.request->HeldByOthers() || ServerScript::Get().Hasty();
    now.request->SetState(4, 0, L"");
    if (told)
        control_.Fire(L"RequestStart", {Object(now.request.Get())});
    if (now.speaks)
        control_.Fire(L"BalloonShow", {Text(name_)});
    for (const long bookmark : now.bookmarks)
        control_.Fire(L"Bookmark", {Number(bookmark)});
    now.request->SetState(0, 0, L"");
    if (told)
        control_.Fire(L"RequestComplete", {Object(now.request.Get())});
    if (now.speaks)
        control_.Fire(L"BalloonHide", {Text(name_)});
}

TestCharacters::TestCharacters(TestControl& control)
    : NamedMembers({L"Load", L"Unload", L"Character"}), control_(control)
{
}

HRESULT TestCharacters::Do(const Asked& asked)
{
    if (!control_.Connected())
        return Raise(asked.exception, kNotConnected, L"Not connected.");
    if (asked.member == L"Load")
        return Load(asked);
    if (asked.member == L"Character")
        return Give(asked);
    const std::wstring id = TextOf(*asked.arguments.at(0));
    const HRESULT carried =
        ServerScript::Get().Carry(L"Characters.Unload", L"\"" + id + L"\"", asked.exception);
    if (FAILED(carried))
        return carried;
    return loaded_.erase(id) == 1 ? S_OK : Raise(asked.exception, kIdNotValid, L"No such character.");
}

HRESULT TestCharacters::Load(const Asked& asked)
{
    const std::wstring id = TextOf(*asked.arguments.at(0));
    const std::wstring path = TextOf(*asked.arguments.at(1));
    const HRESULT carried =
        ServerScript::Get().Carry(L"Characters.Load", L"\"" + id + L"\" \"" + path + L"\"", asked.exception);
    if (loaded_.contains(id))
        return Raise(asked.exception, kAlreadyLoaded, L"This identifier is taken.");
    if (FAILED(carried) || GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        loaded_[id] = {};
        return FAILED(carried) ? carried : Raise(asked.exception, kNoFile, L"There is no such file.");
    }
    loaded_[id] = ComPointer<TestCharacter>(new TestCharacter(id, control_));
    return S_OK;
}

HRESULT TestCharacters::Give(const Asked& asked)
{
    const auto found = loaded_.find(TextOf(*asked.arguments.at(0)));
    if (found == loaded_.end() || !found->second)
        return Raise(asked.exception, kIdNotValid, L"No such character.");
    *asked.result = Object(found->second.Get());
    return S_OK;
}

void TestCharacters::WorkOn(const std::wstring& id)
{
    const auto found = loaded_.find(id);
    if (found != loaded_.end() && found->second)
        found->second->Work();
}

TestControl::TestControl()
    : NamedMembers({L"Connected", L"Characters"}), characters_(new TestCharacters(*this))
{
    WNDCLASSW description = {};
    description.lpfnWndProc = Receive;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = L"Voxtrel.TestControl";
    RegisterClassW(&description);
    window_ = CreateWindowExW(0, description.lpszClassName, nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              description.hInstance, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ServerScript::Get().SetWindow(window_);
}

TestControl::~TestControl()
{
    ServerScript::Get().SetWindow(nullptr);
    DestroyWindow(window_);
}

HRESULT TestControl::QueryInterface(REFIID id, void** object)
{
    *object = nullptr;
    const bool describes = ServerScript::Get().HowDescribed() == Described::ByClass;
    if (id == IID_IConnectionPointContainer)
        *object = static_cast<IConnectionPointContainer*>(this);
    else if (describes && (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2))
        *object = static_cast<IProvideClassInfo2*>(this);
    else
        return NamedMembers::QueryInterface(id, object);
    AddRef();
    return S_OK;
}

HRESULT TestControl::GetTypeInfo(UINT index, LCID, ITypeInfo** info)
{
    if (index != 0 || ServerScript::Get().HowDescribed() == Described::NotAtAll)
        return DISP_E_BADINDEX;
    *info = DescribeControlInterface();
    return *info ? S_OK : E_FAIL;
}

HRESULT TestControl::GetClassInfo(ITypeInfo** info)
{
    *info = DescribeControlClass();
    return *info ? S_OK : E_FAIL;
}

HRESULT TestControl::GetGUID(DWORD kind, GUID* id)
{
    *id = kTestEventsInterface;
    return kind == GUIDKIND_DEFAULT_SOURCE_DISP_IID ? S_OK : E_INVALIDARG;
}

HRESULT TestControl::FindConnectionPoint(REFIID id, IConnectionPoint** point)
{
    *point = nullptr;
    if (id != kTestEventsInterface)
        return CONNECT_E_NOCONNECTION;
    *point = this;
    AddRef();
    return S_OK;
}

HRESULT TestControl::GetConnectionInterface(IID* id)
{
    *id = kTestEventsInterface;
    return S_OK;
}

HRESULT TestControl::GetConnectionPointContainer(IConnectionPointContainer** container)
{
    *container = this;
    AddRef();
    return S_OK;
}

HRESULT TestControl::Advise(IUnknown* sink, DWORD* cookie)
{
    if (sink_)
        return CONNECT_E_ADVISELIMIT;
    *cookie = 1;
    return FAILED(sink->QueryInterface(kTestEventsInterface, sink_.ReceiveVoid())) ? CONNECT_E_CANNOTCONNECT
                                                                                   : S_OK;
}

HRESULT TestControl::Unadvise(DWORD cookie)
{
    if (cookie != 1 || !sink_)
        return CONNECT_E_NOCONNECTION;
    sink_ = {};
    return S_OK;
}

HRESULT TestControl::Do(const Asked& asked)
{
    if (asked.member == L"Characters") {
        *asked.result = Object(characters_.Get());
        return S_OK;
    }
    if (asked.kind != DISPATCH_PROPERTYPUT)
        return DISP_E_MEMBERNOTFOUND;
    const bool connect = asked.arguments.at(0)->vt == VT_BOOL && asked.arguments.at(0)->boolVal;
    const HRESULT carried =
        ServerScript::Get().Carry(L"Connected =", connect ? L"True" : L"False", asked.exception);
    connected_ = SUCCEEDED(carried) && connect;
    return carried;
}

void TestControl::WorkSoon(const std::wstring& character)
{
    if (ServerScript::Get().Idle())
        return;
    if (ServerScript::Get().Hasty())
        characters_->WorkOn(character);
    else
        PostMessageW(window_, kWorkMessage, 0, reinterpret_cast<LPARAM>(new std::wstring(character)));
}

// arguments are in the order of their declaration, and taken over.
void TestControl::Fire(const wchar_t* event, const std::vector<VARIANT>& arguments)
{
    std::vector<VARIANT> lastFirst(arguments.rbegin(), arguments.rend());
    DISPPARAMS parameters = {lastFirst.data(), nullptr, static_cast<UINT>(lastFirst.size()), 0};
    if (sink_)
        sink_->Invoke(EventNumber(event), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                      nullptr, nullptr, nullptr);
    for (VARIANT& argument : lastFirst)
        VariantClear(&argument);
}

LRESULT TestControl::Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const self = reinterpret_cast<TestControl*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == kFireMessage) {
        const std::unique_ptr<FiredEvent> fired(reinterpret_cast<FiredEvent*>(lParam));
        self->Fire(fired->name.c_str(), fired->arguments);
        return 0;
    }
    if (message == kWorkMessage) {
        const std::unique_ptr<std::wstring> character(reinterpret_cast<std::wstring*>(lParam));
        self->characters_->WorkOn(*character);
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace voxtrel::tests
