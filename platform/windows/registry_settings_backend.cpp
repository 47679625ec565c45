#include "platform/windows/registry_settings_backend.h"

#include "platform/windows/registry_names.h"
#include "platform/windows/windows_headers.h"
#include "settings/text_case.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <utility>

namespace voxtrel::platform {

namespace {

constexpr wchar_t kOrder[] = L"\\Order";
constexpr DWORD kLongestName = 16384; // of a value, with its NUL

} // namespace

// An open key of HKEY_CURRENT_USER, or none.
class RegistryKey {
public:
    static RegistryKey Open(const std::wstring& path)
    {
        RegistryKey key;
        ::RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key.handle_);
        return key;
    }
    static RegistryKey Create(const std::wstring& path, LSTATUS& error)
    {
        RegistryKey key;
        error = ::RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                  KEY_READ | KEY_WRITE, nullptr, &key.handle_, nullptr);
        return key;
    }

    RegistryKey(RegistryKey&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
    RegistryKey& operator=(RegistryKey&& other) noexcept
    {
        std::swap(handle_, other.handle_);
        return *this;
    }
    ~RegistryKey()
    {
        if (handle_ != nullptr)
            ::RegCloseKey(handle_);
    }

    HKEY Get() const { return handle_; }
    explicit operator bool() const { return handle_ != nullptr; }

    // Calls visit(name, type, bytes) for each value.
    template <typename Visit> void ForEachValue(Visit visit) const
    {
        std::wstring name(kLongestName, L'\0');
        std::string data(256, '\0');
        for (DWORD index = 0;;) {
            DWORD nameLength = kLongestName;
            DWORD type = REG_NONE;
            auto size = static_cast<DWORD>(data.size());
            const LSTATUS status = ::RegEnumValueW(handle_, index, name.data(), &nameLength, nullptr, &type,
                                                   reinterpret_cast<BYTE*>(data.data()), &size);
            if (status == ERROR_MORE_DATA) {
                data.resize(std::max<std::size_t>(size, data.size() * 2));
                continue;
            }
            if (status != ERROR_SUCCESS)
                return;
            visit(std::wstring_view(name.data(), nameLength), type, std::string_view(data.data(), size));
            ++index;
        }
    }

    LSTATUS Set(const std::wstring& name, DWORD type, const void* bytes, std::size_t size) const
    {
        return ::RegSetValueExW(handle_, name.c_str(), 0, type, static_cast<const BYTE*>(bytes),
                                static_cast<DWORD>(size));
    }

private:
    RegistryKey() = default;

    HKEY handle_ = nullptr;
};

// Tells whether anything below a key has changed.
class RegistryWatch {
public:
    explicit RegistryWatch(const std::wstring& root)
        : root_(RegistryKey::Create(root, error_)), event_(::CreateEventW(nullptr, FALSE, FALSE, nullptr))
    {
        Arm();
    }
    ~RegistryWatch() { ::CloseHandle(event_); }
    RegistryWatch(const RegistryWatch&) = delete;
    RegistryWatch& operator=(const RegistryWatch&) = delete;

    // Since the last call. A key that cannot be watched does not change.
    bool Changed()
    {
        if (!armed_ || ::WaitForSingleObject(event_, 0) != WAIT_OBJECT_0)
            return false;
        Arm();
        return true;
    }

private:
    void Arm()
    {
        armed_ = root_ && ::RegNotifyChangeKeyValue(root_.Get(), TRUE,
                                                    REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET,
                                                    event_, TRUE) == ERROR_SUCCESS;
    }

    LSTATUS error_ = ERROR_SUCCESS;
    RegistryKey root_;
    HANDLE event_;
    bool armed_ = false;
};

struct RegistrySettingsBackend::Section {
    struct Value {
        std::wstring valueName;
        std::wstring key;
        std::wstring value;
        DWORD place = 0;
    };

    std::vector<Value> values; // in their order
    std::unordered_map<std::wstring, std::size_t, settings::NameHash, settings::NameEqual> indexes; // by key
    DWORD nextPlace = 1;

    void Add(Value value)
    {
        if (indexes.emplace(value.key, values.size()).second)
            values.push_back(std::move(value));
    }
};

namespace {

std::wstring TextOf(std::string_view bytes)
{
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return text;
}

// The data of a value whose key is too long for its name: the key's length, the key, the value.
std::string WithKey(std::wstring_view key, std::wstring_view value)
{
    const auto length = static_cast<std::uint32_t>(key.size());
    std::string bytes(sizeof length + (key.size() + value.size()) * sizeof(wchar_t), '\0');
    std::memcpy(bytes.data(), &length, sizeof length);
    std::memcpy(bytes.data() + sizeof length, key.data(), key.size() * sizeof(wchar_t));
    std::memcpy(bytes.data() + sizeof length + key.size() * sizeof(wchar_t), value.data(),
                value.size() * sizeof(wchar_t));
    return bytes;
}

// Key and value of such data; false when they are something else.
bool SplitKey(std::string_view bytes, std::wstring& key, std::wstring& value)
{
    std::uint32_t length = 0;
    if (bytes.size() < sizeof length)
        return false;
    std::memcpy(&length, bytes.data(), sizeof length);
    const std::wstring text = TextOf(bytes.substr(sizeof length));
    if (length > text.size())
        return false;
    key = text.substr(0, length);
    value = text.substr(length);
    return true;
}

std::unordered_map<std::wstring, DWORD> ReadOrder(const std::wstring& path)
{
    std::unordered_map<std::wstring, DWORD> order;
    const RegistryKey key = RegistryKey::Open(path + kOrder);
    if (!key)
        return order;
    key.ForEachValue([&](std::wstring_view name, DWORD type, std::string_view bytes) {
        DWORD place = 0;
        if (type != REG_DWORD || bytes.size() != sizeof place)
            return;
        std::memcpy(&place, bytes.data(), sizeof place);
        order[settings::SimpleLower(name)] = place;
    });
    return order;
}

} // namespace

RegistrySettingsBackend::RegistrySettingsBackend(std::wstring_view root)
    : RegistrySettingsBackend(root, std::cerr)
{
}

RegistrySettingsBackend::RegistrySettingsBackend(std::wstring_view root, std::ostream& complaints)
    : root_(root), complaints_(complaints), watch_(std::make_unique<RegistryWatch>(root_))
{
}

RegistrySettingsBackend::~RegistrySettingsBackend() = default;

std::optional<std::wstring> RegistrySettingsBackend::Read(std::wstring_view application,
                                                          std::wstring_view section, std::wstring_view key)
{
    const Section& within = Find(application, section);
    const auto found = within.indexes.find(key);
    return found != within.indexes.end() ? std::optional(within.values[found->second].value) : std::nullopt;
}

void RegistrySettingsBackend::Write(std::wstring_view application, std::wstring_view section,
                                    std::wstring_view key, std::wstring_view value)
{
    Section& within = Find(application, section);
    const auto found = within.indexes.find(key);
    const std::size_t index = found != within.indexes.end() ? found->second : within.values.size();
    if (index == within.values.size()) {
        std::wstring name = RegistryValueName(key);
        const bool nameless = name.empty() && !key.empty();
        within.Add({nameless ? HashedRegistryValueName(key) : std::move(name), std::wstring(key), {}, 0});
    } else if (within.values[index].value == value) {
        return;
    }
    within.values[index].value = value;
    ++generation_;
    Store(PathOf(application, section), within, index);
}

std::vector<std::pair<std::wstring, std::wstring>>
RegistrySettingsBackend::Pairs(std::wstring_view application, std::wstring_view section)
{
    std::vector<std::pair<std::wstring, std::wstring>> pairs;
    for (const Section::Value& value : Find(application, section).values)
        pairs.emplace_back(value.key, value.value);
    return pairs;
}

void RegistrySettingsBackend::DeleteKey(std::wstring_view application, std::wstring_view section,
                                        std::wstring_view key)
{
    const Section& within = Find(application, section);
    const auto found = within.indexes.find(key);
    if (found == within.indexes.end())
        return;
    const std::wstring name = within.values[found->second].valueName;
    const std::wstring path = PathOf(application, section);
    LSTATUS error = ERROR_SUCCESS;
    const RegistryKey values = RegistryKey::Create(path, error);
    if (error == ERROR_SUCCESS)
        error = ::RegDeleteValueW(values.Get(), name.c_str());
    if (error != ERROR_SUCCESS)
        Complain(error);
    const RegistryKey order = RegistryKey::Create(path + kOrder, error);
    if (error == ERROR_SUCCESS)
        ::RegDeleteValueW(order.Get(), name.c_str());
    sections_.clear();
    ++generation_;
}

void RegistrySettingsBackend::DeleteSection(std::wstring_view application, std::wstring_view section)
{
    const LSTATUS error = ::RegDeleteTreeW(HKEY_CURRENT_USER, PathOf(application, section).c_str());
    if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND)
        Complain(error);
    sections_.clear();
    ++generation_;
}

std::uint64_t RegistrySettingsBackend::Generation()
{
    Refresh();
    return generation_;
}

RegistrySettingsBackend::Section& RegistrySettingsBackend::Find(std::wstring_view application,
                                                                std::wstring_view section)
{
    Refresh();
    const std::wstring path = PathOf(application, section);
    std::unique_ptr<Section>& found = sections_[settings::SimpleLower(path)];
    if (found)
        return *found;

    found = std::make_unique<Section>();
    const RegistryKey key = RegistryKey::Open(path);
    if (!key)
        return *found;
    const auto order = ReadOrder(path);
    std::vector<Section::Value> values;
    key.ForEachValue([&](std::wstring_view name, DWORD type, std::string_view bytes) {
        Section::Value value{std::wstring(name), KeyOfRegistryValue(name), TextOf(bytes), MAXDWORD};
        if (type == REG_BINARY && IsHashedRegistryValueName(name)) {
            if (!SplitKey(bytes, value.key, value.value))
                return;
        } else if (type != REG_SZ && type != REG_EXPAND_SZ) {
            return;
        } else if (value.value.ends_with(L'\0')) {
            value.value.pop_back();
        }
        if (const auto place = order.find(settings::SimpleLower(name)); place != order.end())
            value.place = place->second;
        values.push_back(std::move(value));
    });
    std::stable_sort(values.begin(), values.end(),
                     [](const auto& left, const auto& right) { return left.place < right.place; });
    for (Section::Value& value : values) {
        if (value.place != MAXDWORD)
            found->nextPlace = std::max(found->nextPlace, value.place + 1);
        found->Add(std::move(value));
    }
    return *found;
}

std::wstring RegistrySettingsBackend::PathOf(std::wstring_view application, std::wstring_view section) const
{
    return root_ + L"\\" + RegistryKeyName(application) + L"\\" + RegistryKeyName(section);
}

// The place first: a place without a value is nothing, a value without a place would come last.
void RegistrySettingsBackend::Store(const std::wstring& path, Section& section, std::size_t index)
{
    Section::Value& value = section.values[index];
    LSTATUS error = ERROR_SUCCESS;
    if (value.place == 0) {
        const RegistryKey order = RegistryKey::Create(path + kOrder, error);
        value.place = section.nextPlace++;
        if (error == ERROR_SUCCESS)
            error = order.Set(value.valueName, REG_DWORD, &value.place, sizeof value.place);
    }
    const RegistryKey key =
        error == ERROR_SUCCESS ? RegistryKey::Create(path, error) : RegistryKey::Open(path);
    if (error == ERROR_SUCCESS && IsHashedRegistryValueName(value.valueName)) {
        const std::string bytes = WithKey(value.key, value.value);
        error = key.Set(value.valueName, REG_BINARY, bytes.data(), bytes.size());
    } else if (error == ERROR_SUCCESS) {
        error =
            key.Set(value.valueName, REG_SZ, value.value.c_str(), (value.value.size() + 1) * sizeof(wchar_t));
    }
    if (error != ERROR_SUCCESS)
        Complain(error);
}

void RegistrySettingsBackend::Refresh()
{
    if (!watch_->Changed())
        return;
    sections_.clear();
    ++generation_;
}

void RegistrySettingsBackend::Complain(long error)
{
    if (std::exchange(complained_, true))
        return;
    complaints_
        << "voxtrel: the settings cannot be written to the registry; changes last until the program ends "
           "(error "
        << error << ")\n"
        << std::flush;
}

} // namespace voxtrel::platform
