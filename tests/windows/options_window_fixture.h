#pragma once

#include "fakes/fake_character.h"
#include "fakes/fake_platform.h"
#include "options/view/frm_options.h"
#include "settings/memory_backend.h"
#include "settings/voice_table.h"
#include "tests/windows/until.h"

#include <gtest/gtest.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/notebook.h>
#include <wx/panel.h>

#include <functional>
#include <string>

namespace voxtrel::options {

using tests::Until;

// The options dialog over fakes, and the hands of its user.
class OptionsWindow : public testing::Test {
protected:
    OptionsWindow()
    {
        settings::SeedVoiceTable(store);
        strings = settings::LoadStringTable(VOXTREL_STRINGS, L"en").table;
        agent::Ignore(server.Load(L"genie", L"genie.acs"));
        shared.character = server.Find(L"genie");
        shared.FavouriteAgent = L"genie";
        speech::LoadSettings(surroundings);
        hotkeys::LoadHotKeys(hotKeys, store);
    }

    ~OptionsWindow() override
    {
        if (window)
            window->Unload();
        wxTheApp->ProcessPendingEvents();
    }

    void Open()
    {
        window = new frmOptions(
            {.options = {store, shared, strings, folder, desktop, messages, hotKeys, characters},
             .access = access,
             .iconFolder = VOXTREL_ICONS,
             .helpFile = L"Help/helpfile.hlp",
             .unloaded = [this] { window = nullptr; }});
        window->ShowOptions();
        EXPECT_TRUE(Until([&] { return window->IsActive(); }));
        log.Clear();
    }

    void ForEachWindow(const std::function<void(wxWindow&)>& visit) const
    {
        const std::function<void(wxWindow*)> below = [&](wxWindow* parent) {
            for (wxWindow* child : parent->GetChildren()) {
                visit(*child);
                below(child);
            }
        };
        below(window);
    }

    // The control of this name; of several the one with this number.
    template <typename Control> Control& Find(const char* name, int number = 0) const
    {
        Control* found = nullptr;
        ForEachWindow([&](wxWindow& child) {
            auto* control = dynamic_cast<Control*>(&child);
            if (control && control->GetName() == name && number-- == 0)
                found = control;
        });
        EXPECT_TRUE(found) << name;
        return *found;
    }

    void ShowPage(std::size_t page)
    {
        Find<wxNotebook>("tabs").SetSelection(page);
        wxTheApp->Yield(true);
    }

    // Which of the controls that are seen have less room than they need; empty for none.
    std::string Clipped() const
    {
        std::string names;
        ForEachWindow([&](wxWindow& child) {
            if (!child.IsShownOnScreen() || dynamic_cast<wxNotebook*>(&child) ||
                dynamic_cast<wxPanel*>(&child))
                return;
            child.InvalidateBestSize();
            const wxSize needed = child.GetBestSize();
            const bool small =
                !child.GetLabel().empty() && (child.GetSize().x < needed.x || child.GetSize().y < needed.y);
            if (small || !wxRect(child.GetParent()->GetSize()).Contains(child.GetRect()))
                names += (child.GetName() + " \"" + child.GetLabel() + "\"; ").ToStdString(wxConvUTF8);
        });
        return names;
    }

    template <typename EventTag> void Tell(wxWindow& control, const EventTag& type)
    {
        wxCommandEvent event(type, control.GetId());
        event.SetEventObject(&control);
        control.GetEventHandler()->ProcessEvent(event);
    }
    void Click(const char* name) { Tell(Find<wxButton>(name), wxEVT_BUTTON); }
    void Choose(const char* name, const wxString& text, int number = 0)
    {
        auto& list = Find<wxChoice>(name, number);
        ASSERT_TRUE(list.SetStringSelection(text)) << text;
        Tell(list, wxEVT_CHOICE);
    }
    void Tick(const char* name, bool ticked, int number = 0)
    {
        auto& box = Find<wxCheckBox>(name, number);
        box.SetValue(ticked);
        Tell(box, wxEVT_CHECKBOX);
    }
    void Press(wxWindow& control, int key, wxEventType type = wxEVT_KEY_DOWN)
    {
        wxKeyEvent event(type);
        event.m_keyCode = key;
        event.SetEventObject(&control);
        control.GetEventHandler()->ProcessEvent(event);
    }

    tests::CallLog log;
    tests::FakeControl server{log};
    tests::FakeDesktop desktop{log};
    tests::FakeMessages messages{log};
    tests::FakeAccessibility access{log};
    settings::MemoryBackend backend;
    settings::SettingsStore store{backend};
    settings::SharedSettings shared;
    settings::StringTable strings;
    settings::ProgramFolder folder{L"."};
    hotkeys::HotKeyTable hotKeys;
    speech::CharacterSurroundings surroundings{store, shared, desktop, access, messages, folder};
    speech::CharacterControl characters{server, surroundings, strings};
    frmOptions* window = nullptr; // destroyed by wx
};

enum Page { kCharacter, kBalloon, kVoice, kPronunciations, kHotKeys, kScreenReading };

} // namespace voxtrel::options
