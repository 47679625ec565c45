#include "platform/windows/registry_settings_backend.h"

#include "platform/windows/registry_names.h"
#include "platform/windows/windows_headers.h"
#include "settings/backend_contract.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cwchar>
#include <sstream>

namespace voxtrel::platform {
namespace {

constexpr wchar_t kRoot[] = L"Software\\Voxtrel Settings Tests";

void RemoveRoot() { ::RegDeleteTreeW(HKEY_CURRENT_USER, kRoot); }

void SetByHand(const wchar_t* path, const wchar_t* name, const wchar_t* value)
{
    const std::wstring key = std::wstring(kRoot) + L"\\" + path;
    ::RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, REG_SZ, value,
                      static_cast<DWORD>((std::wcslen(value) + 1) * sizeof(wchar_t)));
}

// Starts with nothing and leaves nothing. Pairs come through a backend that remembers nothing.
class FreshRegistryBackend final : public settings::SettingsBackend {
public:
    FreshRegistryBackend()
    {
        RemoveRoot();
        backend_ = std::make_unique<RegistrySettingsBackend>(kRoot);
    }
    ~FreshRegistryBackend() override { RemoveRoot(); }

    std::optional<std::wstring> Read(std::wstring_view application, std::wstring_view section,
                                     std::wstring_view key) override
    {
        return backend_->Read(application, section, key);
    }
    void Write(std::wstring_view application, std::wstring_view section, std::wstring_view key,
               std::wstring_view value) override
    {
        backend_->Write(application, section, key, value);
    }
    std::vector<std::pair<std::wstring, std::wstring>> Pairs(std::wstring_view application,
                                                             std::wstring_view section) override
    {
        return RegistrySettingsBackend(kRoot).Pairs(application, section);
    }
    void DeleteKey(std::wstring_view application, std::wstring_view section, std::wstring_view key) override
    {
        backend_->DeleteKey(application, section, key);
    }
    void DeleteSection(std::wstring_view application, std::wstring_view section) override
    {
        backend_->DeleteSection(application, section);
    }
    std::uint64_t Generation() override { return backend_->Generation(); }

private:
    std::unique_ptr<RegistrySettingsBackend> backend_;
};

class RegistrySettingsBackendTest : public testing::Test {
protected:
    RegistrySettingsBackendTest()
    {
        RemoveRoot();
        backend = std::make_unique<RegistrySettingsBackend>(kRoot, complaints);
    }
    ~RegistrySettingsBackendTest() override { RemoveRoot(); }

    std::ostringstream complaints;
    std::unique_ptr<RegistrySettingsBackend> backend;
};

TEST(RegistryNames, KeepWhatAPersonCanReadAndFoldTheRest)
{
    EXPECT_EQ(RegistryKeyName(L"Agent"), L"Agent");
    EXPECT_EQ(RegistryKeyName(L"a\\b%Ω"), L"a%005Cb%0025%03C9");
    EXPECT_EQ(RegistryKeyName(std::wstring(300, L'K')), RegistryKeyName(std::wstring(300, L'k')));
    EXPECT_LE(RegistryKeyName(std::wstring(300, L'K')).size(), 255u);
    EXPECT_EQ(RegistryValueName(L"Café Ω"), L"Café %03A9");
    EXPECT_EQ(KeyOfRegistryValue(L"Café %03A9"), L"Café Ω");
    EXPECT_EQ(KeyOfRegistryValue(L"100% by hand %00G0 %"), L"100% by hand %00G0 %");
}

TEST_F(RegistrySettingsBackendTest, SeesWhatAPersonWroteByHand)
{
    backend->Write(L"Orvella", L"voices", L"first", L"{1}");
    const std::uint64_t before = backend->Generation();
    SetByHand(L"Orvella\\voices", L"My own Ω voice", L"{2}");
    EXPECT_NE(backend->Generation(), before);
    EXPECT_EQ(backend->Read(L"orvella", L"VOICES", L"my own ω voice"), L"{2}");
    backend->Write(L"Orvella", L"voices", L"MY OWN Ω VOICE", L"{3}");
    const std::vector<std::pair<std::wstring, std::wstring>> expected = {{L"first", L"{1}"},
                                                                         {L"My own Ω voice", L"{3}"}};
    EXPECT_EQ(RegistrySettingsBackend(kRoot).Pairs(L"Orvella", L"voices"), expected);
    EXPECT_EQ(complaints.str(), "");
}

TEST_F(RegistrySettingsBackendTest, SeesWhatAnotherBackendWrote)
{
    RegistrySettingsBackend other(kRoot, complaints);
    for (int i = 0; i < 20; ++i) {
        other.Write(L"App", L"s", L"theirs" + std::to_wstring(i), L"1");
        backend->Write(L"App", L"s", L"mine" + std::to_wstring(i), L"2");
        EXPECT_EQ(backend->Read(L"App", L"s", L"theirs" + std::to_wstring(i)), L"1");
    }
    EXPECT_EQ(other.Pairs(L"App", L"s").size(), 40u);
}

TEST_F(RegistrySettingsBackendTest, TellsOnceThatItCannotWriteAndGoesOn)
{
    RegistrySettingsBackend broken(std::wstring(300, L'x'),
                                   complaints); // longer than the name of a key can be
    broken.Write(L"App", L"s", L"one", L"1");
    broken.Write(L"App", L"s", L"two", L"2");
    EXPECT_EQ(broken.Read(L"App", L"s", L"one"), L"1");
    EXPECT_EQ(broken.Pairs(L"App", L"s").size(), 2u);
    const std::string all = complaints.str();
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 1);
}

} // namespace
} // namespace voxtrel::platform

namespace voxtrel::tests {

INSTANTIATE_TEST_SUITE_P(RegistrySettingsBackend, BackendContract,
                         testing::Values([] { return std::make_unique<platform::FreshRegistryBackend>(); }));

} // namespace voxtrel::tests
