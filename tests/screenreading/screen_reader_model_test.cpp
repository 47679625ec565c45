// The reader against a second one, written down step by step on plain containers, on random days of use.

#include "reader_fixture.h"

#include <algorithm>
#include <map>
#include <optional>
#include <random>

namespace voxtrel::screenreading {
namespace {

std::wstring LowerKey(std::wstring key)
{
    std::transform(key.begin(), key.end(), key.begin(),
                   [](wchar_t c) { return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c; });
    return key;
}

std::wstring TrimBlanks(std::wstring text)
{
    while (!text.empty() && text.front() == L' ')
        text.erase(0, 1);
    while (!text.empty() && text.back() == L' ')
        text.pop_back();
    return text;
}

// Good for the words that the random texts can form.
bool ModelNumeric(const std::wstring& text)
{
    bool digit = false;
    bool point = false;
    for (const wchar_t c : TrimBlanks(text)) {
        if (c >= L'0' && c <= L'9')
            digit = true;
        else if (c == L'.' && !point)
            point = true;
        else if (c != L',' || !digit || point)
            return false;
    }
    return digit;
}

struct Model {
    bool on = true;
    bool textReader = false;
    std::map<std::wstring, std::wstring> roles;
    std::map<std::wstring, std::wstring> pronunciations;
    std::wstring last;

    std::wstring Pronounced(const std::wstring& token) const
    {
        const auto found = pronunciations.find(LowerKey(token));
        return found == pronunciations.end() || found->second.empty() ? token : found->second;
    }

    std::wstring Spoken(const std::wstring& text) const
    {
        std::wstring word;
        std::wstring output;
        for (const wchar_t c : text + L" ") {
            const bool letter = (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
            if (c == L'\'' || (c >= L'0' && c <= L'9') || letter) {
                word += c;
            } else if ((c == L',' || c == L'.') && ModelNumeric(word)) {
                word += c;
            } else if (c == L'\r') {
                word += L"\r\\pau=600\\";
            } else {
                if (!word.empty())
                    output += Pronounced(word);
                word.clear();
                output += L" " + Pronounced(std::wstring(1, c)) + L" ";
            }
        }
        return output;
    }

    // What is to be spoken, nothing for a tick that changes nothing. Each text has its closing character.
    std::optional<std::wstring> Tick(const std::wstring& name, const std::wstring& role,
                                     const std::wstring& value)
    {
        if (textReader || !on || TrimBlanks(name).empty())
            return std::nullopt;
        std::wstring choice = L"name";
        if (!TrimBlanks(role).empty()) {
            const auto found = roles.find(LowerKey(role));
            if (found != roles.end())
                choice = found->second;
            else if (const std::wstring said = role.substr(0, role.size() - 1);
                     said != L"....." && said != L"&Keyboard:" && !ModelNumeric(said))
                roles[LowerKey(role)] = L"name";
        }
        if (choice == L"False")
            return std::nullopt;
        std::wstring text;
        const auto part = [&](const wchar_t* word, const std::wstring& property) {
            if (choice.find(word) != std::wstring::npos && !property.empty())
                text += property.substr(0, property.size() - 1) + L" ";
        };
        part(L"name", name);
        part(L"role", role);
        part(L"value", value);
        if (text == last)
            return std::nullopt;
        last = text;
        if (TrimBlanks(text).empty())
            return std::nullopt;
        return L"\\Spd=150\\\\Pit=150\\\\Vol=30000\\\\map=\"" + Spoken(text) + L"\"=\"\"\\";
    }
};

class ScreenReaderModel : public tests::ReaderFixture {
protected:
    std::size_t Random(std::size_t count) { return random() % count; }

    template <std::size_t N> std::wstring OneOf(const wchar_t* const (&texts)[N]) { return texts[Random(N)]; }

    std::wstring RandomText()
    {
        static constexpr wchar_t kLetters[] = L"aB'1250,,..  \r-\"\\";
        std::wstring text;
        for (std::size_t length = Random(12); length > 0; --length)
            text += kLetters[Random(std::size(kLetters) - 1)];
        return text;
    }

    void RandomEvent()
    {
        static constexpr const wchar_t* kRoles[] = {L"push button", L"Push Button", L"link",  L"slider",
                                                    L".....",       L"&Keyboard:",  L"1,250", L""};
        static constexpr const wchar_t* kNames[] = {L"Save", L"Open", L"", L"  ", L"1,250.5 kg", L"a,b"};
        static constexpr const wchar_t* kChoices[] = {L"name",  L"name,", L"value,", L"name,value,",  L"role",
                                                      L"false", L"False", L"True",   L"valuerolename"};
        switch (Random(10)) {
        case 0:
            shared.TextReaderOpen = model.textReader = Random(4) == 0;
            break;
        case 1:
            shared.usescreenreading = model.on = Random(4) != 0;
            break;
        case 2: {
            const std::wstring role = OneOf(kRoles) + L" ";
            const std::wstring choice = OneOf(kChoices);
            if (role == L" ")
                break;
            Choose(role, choice);
            model.roles[LowerKey(role)] = choice;
            break;
        }
        case 3: {
            static constexpr const wchar_t* kTokens[] = {L"a", L"save", L"-", L"1,250", L"\"", L" "};
            const std::wstring token = OneOf(kTokens);
            const std::wstring spoken = OneOf(kNames);
            store.SaveSetting(L"modify", token, spoken);
            model.pronunciations[LowerKey(token)] = spoken;
            break;
        }
        default:
            PointAt(Random(2) == 0 ? OneOf(kNames) : RandomText(), OneOf(kRoles), RandomText());
        }
    }

    void ExpectSameTable()
    {
        std::map<std::wstring, std::wstring> table;
        for (const auto& [role, choice] : Table())
            table[LowerKey(role)] = choice;
        EXPECT_EQ(table, model.roles);
    }

    Model model;
    std::mt19937 random;
};

TEST_F(ScreenReaderModel, AgreesOverRandomDays)
{
    int spoken = 0;
    for (unsigned step = 0; step < 100000; ++step) {
        RandomEvent();
        const std::optional<std::wstring> expected = model.Tick(access.name, access.role, access.value);
        ASSERT_EQ(Tick(), expected.value_or(L"")) << "step " << step;
        spoken += expected.has_value();
        if (step % 1000 == 0)
            ExpectSameTable();
    }
    EXPECT_GT(spoken, 10000);
}

} // namespace
} // namespace voxtrel::screenreading
