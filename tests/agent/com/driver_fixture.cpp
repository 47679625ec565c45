#include "agent/com/driver_fixture.h"

#include "platform/windows/com_pointer.h"

#include <array>
#include <sstream>
#include <stdexcept>

namespace voxtrel::tests {
namespace {

constexpr std::chrono::seconds kPatience{5};

HMODULE server = nullptr;

template <class Function> Function Exported(const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(server, name)));
}

std::wstring ProgramFile()
{
    std::array<wchar_t, MAX_PATH> path{};
    GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    return path.data();
}

TestServer& LoadServer()
{
    if (!server) {
        const std::wstring program = ProgramFile();
        server =
            LoadLibraryW((program.substr(0, program.rfind(L'\\')) + L"\\voxtrel_test_control.dll").c_str());
    }
    return *Exported<GetTestServer>("VoxtrelTestServer")();
}

} // namespace

void RecordedEvents::AddPointer(const wchar_t* name, const agent::PointerEvent& event)
{
    std::wostringstream line;
    line << name << L' ' << event.characterId << L' ' << event.button << L' ' << event.shift << L' '
         << event.x << L' ' << event.y;
    Add(line.str());
}

void DriverTest::SetUpTestSuite()
{
    LoadServer();
    // As the main thread of a program with windows.
    OleInitialize(nullptr);
    ASSERT_EQ(Exported<HRESULT(STDAPICALLTYPE*)()>("DllRegisterServer")(), S_OK);
}

void DriverTest::TearDownTestSuite()
{
    Exported<HRESULT(STDAPICALLTYPE*)()>("DllUnregisterServer")();
    OleUninitialize();
}

DriverTest::DriverTest()
    : server(LoadServer()), file(ProgramFile()), arrived_(CreateEventW(nullptr, FALSE, FALSE, nullptr))
{
    server.Reset();
}

DriverTest::~DriverTest()
{
    server.Release();
    control.reset();
    server.Reset();
    CloseHandle(arrived_);
}

agent::MadeControl DriverTest::MakeControl()
{
    return agent::MakeSystemControl(
        {.post = [this](std::function<void()> work) { Post(std::move(work)); }, .trace = {}});
}

agent::Character& DriverTest::Genie()
{
    agent::MadeControl made = MakeControl();
    if (!made.control)
        throw std::runtime_error("there is no control");
    control = std::move(made.control);
    control->SetEvents(&events);
    EXPECT_TRUE(control->Load(L"genie", file).Ok());
    ForgetCalls();
    return *control->Find(L"genie");
}

Lines DriverTest::Calls()
{
    const BSTR text = server.Calls();
    std::wistringstream stream(std::wstring(text, SysStringLen(text)));
    SysFreeString(text);
    Lines calls;
    for (std::wstring line; std::getline(stream, line);)
        calls.push_back(line);
    Lines since(calls.begin() + static_cast<std::ptrdiff_t>(callsSeen_), calls.end());
    callsSeen_ = calls.size();
    return since;
}

void DriverTest::Post(std::function<void()> work)
{
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(work));
    SetEvent(arrived_);
}

bool DriverTest::RunOne(std::chrono::milliseconds patience)
{
    for (int attempt = 0; attempt < 2; ++attempt) {
        std::function<void()> work;
        {
            const std::lock_guard lock(mutex_);
            if (!posted_.empty()) {
                work = std::move(posted_.front());
                posted_.pop_front();
            }
        }
        if (work) {
            work();
            return true;
        }
        WaitForSingleObject(arrived_, static_cast<DWORD>(patience.count()));
    }
    return false;
}

bool DriverTest::RunUntil(const std::function<bool()>& condition)
{
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        RunOne(std::chrono::milliseconds(50));
    }
    return true;
}

// An event that is fired last comes last.
void DriverTest::RunAll()
{
    FirePointer(L"Click", 0, 0, 0, 0);
    ASSERT_TRUE(
        RunUntil([this] { return !events.lines.empty() && events.lines.back() == L"Click genie 0 0 0 0"; }));
    events.lines.pop_back();
}

void DriverTest::Fire(const wchar_t* event, const std::vector<VARIANT>& arguments)
{
    server.Fire(event, arguments.data(), static_cast<UINT>(arguments.size()));
    for (VARIANT argument : arguments)
        VariantClear(&argument);
}

void DriverTest::FirePointer(const wchar_t* event, short button, short shift, short x, short y)
{
    Fire(event, {Text(L"genie"), Short(button), Short(shift), Short(x), Short(y)});
}

VARIANT Text(const wchar_t* text)
{
    VARIANT value = {};
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(text);
    return value;
}

VARIANT Number(long number)
{
    VARIANT value = {};
    value.vt = VT_I4;
    value.lVal = number;
    return value;
}

VARIANT Short(short number)
{
    VARIANT value = {};
    value.vt = VT_I2;
    value.iVal = number;
    return value;
}

} // namespace voxtrel::tests
