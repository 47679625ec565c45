#pragma once

#include "platform/windows/windows_headers.h"

#include <string>
#include <utility>

namespace voxtrel::tests {

// A voice in the registry, gone with this object.
class RegisteredVoice {
public:
    // folder: "Speech" or "Speech_OneCore"; token: the name of the voice's key.
    RegisteredVoice(HKEY root, const std::wstring& folder, const std::wstring& token)
        : root_(root), key_(L"SOFTWARE\\Microsoft\\" + folder + L"\\Voices\\Tokens\\" + token)
    {
        Write(L"", nullptr, L"");
    }
    ~RegisteredVoice() { RegDeleteTreeW(root_, key_.c_str()); }
    RegisteredVoice(const RegisteredVoice&) = delete;
    RegisteredVoice& operator=(const RegisteredVoice&) = delete;

    RegisteredVoice& Describe(const std::wstring& name, const std::wstring& language,
                              const std::wstring& gender)
    {
        Write(L"", nullptr, name);
        Write(L"\\Attributes", L"Name", name); // Wine does not read the other
        Write(L"\\Attributes", L"Language", language);
        Write(L"\\Attributes", L"Gender", gender);
        return *this;
    }

    // What SAPI knows it by.
    std::wstring Id() const
    {
        return (root_ == HKEY_CURRENT_USER ? L"HKEY_CURRENT_USER\\" : L"HKEY_LOCAL_MACHINE\\") + key_;
    }

private:
    void Write(const std::wstring& below, const wchar_t* value, const std::wstring& text) const
    {
        RegSetKeyValueW(root_, (key_ + below).c_str(), value, REG_SZ, text.c_str(),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
    }

    HKEY root_;
    std::wstring key_;
};

} // namespace voxtrel::tests
