#pragma once

// What every settings backend must do. A test program includes this and instantiates BackendContract with
// factories that make an empty backend of its kind.

#include "settings/settings_backend.h"
#include "settings/settings_store.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace voxtrel::tests {

using BackendFactory = std::function<std::unique_ptr<settings::SettingsBackend>()>;

class BackendContract : public testing::TestWithParam<BackendFactory> {
protected:
    using Pairs = std::vector<std::pair<std::wstring, std::wstring>>;
    std::unique_ptr<settings::SettingsBackend> backend = GetParam()();
};

// Names and values that a careless store would lose or change.
inline const std::vector<std::wstring>& AwkwardTexts()
{
    static const std::vector<std::wstring> texts = {
        L"",
        L" ",
        L"trailing blanks  ",
        L"\n",
        L"two\r\nlines\n",
        L"a=b",
        L"[section]",
        L"\"quoted\"",
        L"back\\slash\\",
        L"\\n",
        L"# no comment",
        L"end",
        L"%",
        L"%0041",
        L"@",
        L"tab\tbell\a",
        std::wstring(L"nul\0inside", 10),
        L"😀 emoji",
        L"straße café Ω я 語",
        L"\uFEFF\u2028\uFFFD",
        std::wstring(300, L'n'),
        std::wstring(20000, L'v'),
    };
    return texts;
}

TEST_P(BackendContract, ReadsNothingFromAnEmptyStore)
{
    EXPECT_FALSE(backend->Read(L"App", L"section", L"key").has_value());
    EXPECT_TRUE(backend->Pairs(L"App", L"section").empty());
}

TEST_P(BackendContract, FindsNamesUnderAnyCapitals)
{
    backend->Write(L"App", L"Agent", L"Speed", L"170");
    EXPECT_EQ(backend->Read(L"APP", L"agent", L"speed"), L"170");
    backend->Write(L"App", L"Agent", L"CAFÉ Σ 𐐀", L"one");
    EXPECT_EQ(backend->Read(L"app", L"AGENT", L"café σ 𐐨"), L"one");
    EXPECT_FALSE(backend->Read(L"App", L"Agent", L"café ς 𐐨").has_value());
}

TEST_P(BackendContract, KeepsSpellingAndPlaceOfTheFirstWriting)
{
    backend->Write(L"App", L"s", L"Zeta", L"1");
    backend->Write(L"App", L"s", L"alpha", L"2");
    backend->Write(L"App", L"s", L"Mid", L"3");
    backend->Write(L"App", L"S", L"ZETA", L"4");
    EXPECT_EQ(backend->Pairs(L"App", L"s"), (Pairs{{L"Zeta", L"4"}, {L"alpha", L"2"}, {L"Mid", L"3"}}));

    backend->DeleteKey(L"App", L"s", L"zETA");
    backend->Write(L"App", L"s", L"zeta", L"5");
    EXPECT_EQ(backend->Pairs(L"App", L"s"), (Pairs{{L"alpha", L"2"}, {L"Mid", L"3"}, {L"zeta", L"5"}}));
}

TEST_P(BackendContract, TakesAnEmptyTextForAValue)
{
    backend->Write(L"App", L"s", L"key", L"");
    EXPECT_EQ(backend->Read(L"App", L"s", L"key"), L"");
    settings::SettingsStore store(*backend);
    store.SetApplicationName(L"App");
    EXPECT_EQ(store.GetSetting(L"s", L"key", L"default"), L"");
    EXPECT_EQ(store.GetSetting(L"s", L"other", L"default"), L"default");
}

TEST_P(BackendContract, HoldsAnyTextAsValue)
{
    for (std::size_t i = 0; i < AwkwardTexts().size(); ++i)
        backend->Write(L"App", L"s", std::to_wstring(i), AwkwardTexts()[i]);
    for (std::size_t i = 0; i < AwkwardTexts().size(); ++i)
        EXPECT_EQ(backend->Read(L"App", L"s", std::to_wstring(i)), AwkwardTexts()[i]) << i;
}

TEST_P(BackendContract, HoldsAnyTextAsKey)
{
    Pairs expected;
    for (std::size_t i = 0; i < AwkwardTexts().size(); ++i) {
        backend->Write(L"App", L"s", AwkwardTexts()[i], std::to_wstring(i));
        expected.emplace_back(AwkwardTexts()[i], std::to_wstring(i));
    }
    EXPECT_EQ(backend->Pairs(L"App", L"s"), expected);
    for (std::size_t i = 0; i < AwkwardTexts().size(); ++i)
        EXPECT_EQ(backend->Read(L"App", L"s", AwkwardTexts()[i]), std::to_wstring(i)) << i;
}

TEST_P(BackendContract, HoldsAnyTextAsSectionAndApplication)
{
    for (std::size_t i = 0; i < AwkwardTexts().size(); ++i) {
        backend->Write(AwkwardTexts()[i], L"s", L"key", std::to_wstring(i));
        backend->Write(L"App", AwkwardTexts()[i], L"key", std::to_wstring(i));
    }
    for (std::size_t i = 0; i < AwkwardTexts().size(); ++i) {
        EXPECT_EQ(backend->Read(AwkwardTexts()[i], L"s", L"key"), std::to_wstring(i)) << i;
        EXPECT_EQ(backend->Read(L"App", AwkwardTexts()[i], L"key"), std::to_wstring(i)) << i;
    }
}

TEST_P(BackendContract, HoldsATornSurrogate)
{
    const std::wstring torn = {L'a', static_cast<wchar_t>(0xD800), L'b'};
    backend->Write(L"App", torn, torn, torn);
    EXPECT_EQ(backend->Read(L"App", torn, torn), torn);
    EXPECT_EQ(backend->Pairs(L"App", torn), (Pairs{{torn, torn}}));
}

TEST_P(BackendContract, KeepsLongNamesApartThatDifferAtTheEnd)
{
    const std::wstring start(20000, L'k');
    backend->Write(start + L"1", start + L"1", start + L"1", L"one");
    backend->Write(start + L"2", start + L"1", start + L"1", L"two");
    backend->Write(start + L"1", start + L"2", start + L"1", L"three");
    backend->Write(start + L"1", start + L"1", start + L"2", L"four");
    EXPECT_EQ(backend->Read(start + L"1", start + L"1", start + L"1"), L"one");
    EXPECT_EQ(backend->Read(start + L"2", start + L"1", start + L"1"), L"two");
    EXPECT_EQ(backend->Read(start + L"1", start + L"2", start + L"1"), L"three");
    EXPECT_EQ(backend->Pairs(start + L"1", start + L"1"),
              (Pairs{{start + L"1", L"one"}, {start + L"2", L"four"}}));
}

TEST_P(BackendContract, KeepsApplicationsAndSectionsApart)
{
    backend->Write(L"A", L"s", L"key", L"1");
    backend->Write(L"B", L"s", L"key", L"2");
    backend->Write(L"A", L"t", L"key", L"3");
    backend->DeleteSection(L"a", L"S");
    EXPECT_FALSE(backend->Read(L"A", L"s", L"key").has_value());
    EXPECT_EQ(backend->Read(L"B", L"s", L"key"), L"2");
    EXPECT_EQ(backend->Read(L"A", L"t", L"key"), L"3");
}

TEST_P(BackendContract, DeletesWhatIsNotThereWithoutAWord)
{
    backend->DeleteKey(L"App", L"s", L"key");
    backend->DeleteSection(L"App", L"s");
    backend->Write(L"App", L"s", L"key", L"1");
    backend->DeleteKey(L"App", L"s", L"other");
    EXPECT_EQ(backend->Read(L"App", L"s", L"key"), L"1");
}

TEST_P(BackendContract, ChangesItsGenerationWithEveryChange)
{
    std::uint64_t before = backend->Generation();
    EXPECT_EQ(backend->Generation(), before);
    const auto expectChange = [&](const char* what) {
        EXPECT_NE(backend->Generation(), before) << what;
        before = backend->Generation();
    };
    backend->Write(L"App", L"s", L"key", L"1");
    expectChange("write");
    backend->Write(L"App", L"s", L"key", L"2");
    expectChange("write over");
    backend->DeleteKey(L"App", L"s", L"key");
    expectChange("delete key");
    backend->Write(L"App", L"s", L"key", L"3");
    expectChange("write again");
    backend->DeleteSection(L"App", L"s");
    expectChange("delete section");
}

TEST_P(BackendContract, ShowsChangesBeforeTheyAreMadeAsOne)
{
    backend->BeginChanges();
    backend->Write(L"App", L"s", L"one", L"1");
    EXPECT_EQ(backend->Read(L"App", L"s", L"one"), L"1");
    backend->BeginChanges();
    backend->Write(L"App", L"s", L"two", L"2");
    backend->EndChanges();
    EXPECT_EQ(backend->Read(L"App", L"s", L"two"), L"2");
    backend->EndChanges();
    EXPECT_EQ(backend->Pairs(L"App", L"s"), (Pairs{{L"one", L"1"}, {L"two", L"2"}}));
}

// The same rules once more, as slowly and simply as can be.
class NaiveSettings {
public:
    struct Entry {
        std::wstring application, section, key, value;
    };

    static bool Same(const std::wstring& left, const std::wstring& right)
    {
        if (left.size() != right.size())
            return false;
        for (std::size_t i = 0; i < left.size(); ++i) {
            if (Lower(left[i]) != Lower(right[i]))
                return false;
        }
        return true;
    }

    Entry* Find(const std::wstring& application, const std::wstring& section, const std::wstring& key)
    {
        for (Entry& entry : entries) {
            if (Same(entry.application, application) && Same(entry.section, section) && Same(entry.key, key))
                return &entry;
        }
        return nullptr;
    }

    std::vector<Entry> entries;

private:
    // Enough for the names that the random operations make.
    static wchar_t Lower(wchar_t c)
    {
        if (c >= L'A' && c <= L'Z')
            return static_cast<wchar_t>(c - L'A' + L'a');
        return c == L'Ä' ? L'ä' : c == L'Я' ? L'я' : c;
    }
};

TEST_P(BackendContract, AgreesWithANaiveStoreOnRandomOperations)
{
    std::mt19937 random(20240611);
    const auto pick = [&](std::initializer_list<const wchar_t*> choices) {
        return std::wstring(choices.begin()[random() % choices.size()]);
    };
    NaiveSettings naive;
    for (int i = 0; i < 2000; ++i) {
        const std::wstring application = pick({L"Orvella", L"ORVELLA", L"other"});
        const std::wstring section = pick({L"Agent", L"agent", L"modify", L"я", L"Я"});
        const std::wstring key =
            pick({L"Speed", L"speed", L"SPEED", L"ä", L"Ä", L"", L"a b ", L"=", L"\n", L"x"});
        const std::wstring value = std::to_wstring(random() % 1000);
        switch (random() % 8) {
        case 0:
            backend->DeleteKey(application, section, key);
            std::erase_if(naive.entries, [&](const auto& entry) {
                return NaiveSettings::Same(entry.application, application) &&
                       NaiveSettings::Same(entry.section, section) && NaiveSettings::Same(entry.key, key);
            });
            break;
        case 1:
            if (random() % 8 != 0)
                break;
            backend->DeleteSection(application, section);
            std::erase_if(naive.entries, [&](const auto& entry) {
                return NaiveSettings::Same(entry.application, application) &&
                       NaiveSettings::Same(entry.section, section);
            });
            break;
        case 2:
        case 3: {
            Pairs expected;
            for (const auto& entry : naive.entries) {
                if (NaiveSettings::Same(entry.application, application) &&
                    NaiveSettings::Same(entry.section, section))
                    expected.emplace_back(entry.key, entry.value);
            }
            ASSERT_EQ(backend->Pairs(application, section), expected) << "operation " << i;
            break;
        }
        default:
            backend->Write(application, section, key, value);
            if (auto* const entry = naive.Find(application, section, key))
                entry->value = value;
            else
                naive.entries.push_back({application, section, key, value});
        }
        const auto* const entry = naive.Find(application, section, key);
        ASSERT_EQ(backend->Read(application, section, key),
                  entry != nullptr ? std::optional(entry->value) : std::nullopt)
            << "operation " << i;
    }
}

} // namespace voxtrel::tests
