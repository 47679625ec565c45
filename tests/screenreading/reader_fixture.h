#pragma once

#include "fakes/call_log.h"
#include "fakes/fake_character.h"
#include "fakes/fake_platform.h"
#include "screenreading/screen_reader.h"
#include "settings/memory_backend.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace voxtrel::tests {

// A screen reader that is switched on, over stand-ins for everything around it.
class ReaderFixture : public testing::Test {
protected:
    using Pairs = std::vector<std::pair<std::wstring, std::wstring>>;

    ReaderFixture()
    {
        store.SetApplicationName(L"Orvella");
        shared.usescreenreading = true;
        shared.Speed = 150;
        shared.Pitch = 150;
        shared.Volume = 30000;
        shared.character = &character;
    }

    // The object under the pointer, without closing characters.
    void PointAt(const std::wstring& name, const std::wstring& role, const std::wstring& value = {})
    {
        access.name = name + L" ";
        access.role = role + L" ";
        access.value = value + L" ";
    }
    // What one tick leaves to be spoken, as hotkeytimer takes it.
    std::wstring Tick()
    {
        reader.Timer2_Timer();
        return std::exchange(shared.PendingSpeech, {});
    }
    std::wstring Markup(std::wstring_view words) const
    {
        return std::wstring(L"\\Spd=150\\\\Pit=150\\\\Vol=30000\\\\map=\"")
            .append(words)
            .append(L"\"=\"\"\\");
    }
    void Choose(std::wstring_view role, std::wstring_view choice)
    {
        store.SaveSetting(L"ScreenReadingRoles", role, choice);
    }
    Pairs Table() const { return store.GetAllSettings(L"ScreenReadingRoles"); }

    CallLog log;
    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    FakeAccessibility access{log};
    FakeCharacter character{log};
    std::int32_t tickCount = 1000000;
    std::wstring label;
    std::function<void()> doEvents = [] {};
    screenreading::ScreenReader reader{{.store = store,
                                        .shared = shared,
                                        .access = access,
                                        .GetTickCount = [this] { return tickCount; },
                                        .SetLabel1 = [this](std::wstring_view caption) { label = caption; },
                                        .DoEvents =
                                            [this] {
                                                log.Add(L"DoEvents");
                                                doEvents();
                                            },
                                        .Speaking = [](std::wstring_view, std::wstring_view) {}}};
};

} // namespace voxtrel::tests
