#pragma once

#include "hotkeys/selection.h"

#include "fakes/fake_clipboard.h"
#include "fakes/fake_targets.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace voxtrel::hotkeys {

// A desktop with an editor in front, a note on the clipboard and a Selection that writes down what it does.
class SelectionFixture : public ::testing::Test {
protected:
    static constexpr platform::NativeWindow kEditor = 1;
    static constexpr platform::NativeWindow kOther = 2;
    static constexpr platform::NativeWindow kOwn = tests::FakeTargetWindows::kOwnWindow;

    SelectionFixture()
    {
        clipboard.Copy(L"mine");
        tests::FakeTarget editor;
        editor.selection = L"Hello.";
        editor.copiesOn = {L"^{INSERT}", L"^c"};
        editor.title = L"note.txt";
        windows.targets[kEditor] = editor;
        windows.targets[kOther].thread = 3;
        windows.foreground = kEditor;
        selection.UpdateTargetWindow();
    }

    SelectionServices Services()
    {
        return {windows,
                clipboard,
                windows,
                [this] {
                    steps.push_back(L"yield");
                    ++yields;
                    tests::RunHook(onYield);
                },
                [this](std::wstring text) {
                    steps.push_back(L"speak");
                    clipboardWhenSpoken = clipboard.text;
                    spoken.push_back(std::move(text));
                    if (onSpeak)
                        onSpeak();
                },
                [this](std::wstring text) {
                    steps.push_back(L"read");
                    clipboardWhenRead = clipboard.text;
                    read.push_back(std::move(text));
                    if (onReadInTextReader)
                        onReadInTextReader();
                },
                [this] { steps.push_back(L"stop"); },
                [this](platform::NativeWindow window, std::wstring_view title) {
                    targets.emplace_back(window, title);
                }};
    }

    tests::FakeTarget& Editor() { return windows.targets[kEditor]; }

    // The four requests for selected text, to say what holds for each of them.
    void ForEachRequest(const std::function<void()>& check)
    {
        const std::pair<const char*, std::function<void()>> requests[] = {
            {"hot key 1", [this] { selection.RunHotKey(1); }},
            {"hot key 2", [this] { selection.RunHotKey(2); }},
            {"SpeakSelected", [this] { selection.SpeakSelected(); }},
            {"ReadSelected", [this] { selection.ReadSelected(); }},
        };
        for (const auto& [name, run] : requests) {
            SCOPED_TRACE(name);
            steps.clear();
            spoken.clear();
            read.clear();
            windows.typed.clear();
            windows.messages.clear();
            windows.brought.clear();
            request = run;
            check();
        }
    }

    // What was spoken or read that is not empty.
    std::vector<std::wstring> Heard() const
    {
        std::vector<std::wstring> heard;
        for (const auto* list : {&spoken, &read}) {
            for (const std::wstring& text : *list) {
                if (!text.empty())
                    heard.push_back(text);
            }
        }
        return heard;
    }

    using Texts = std::vector<std::wstring>;
    using Typed = tests::FakeTargetWindows::Typed;

    tests::FakeClipboard clipboard;
    tests::FakeTargetWindows windows{clipboard};
    std::function<void()> onYield;
    std::function<void()> onSpeak;
    std::function<void()> onReadInTextReader;
    std::function<void()> request;
    int yields = 0;
    Texts steps;
    Texts spoken;
    Texts read;
    std::wstring clipboardWhenSpoken;
    std::wstring clipboardWhenRead;
    std::vector<std::pair<platform::NativeWindow, std::wstring>> targets;
    Selection selection{Services()};
};

} // namespace voxtrel::hotkeys
