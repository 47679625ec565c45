#pragma once

#include "agent/control.h"
#include "fakes/call_log.h"
#include "settings/text_case.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace voxtrel::tests {

// A call as it is written to the log: its name and its argument.
inline std::wstring Call(std::wstring_view name, std::wstring_view argument = {})
{
    std::wstring call(name);
    if (!argument.empty())
        call.append(L" ").append(argument);
    return call;
}

class FakeBalloon final : public agent::Balloon {
public:
    explicit FakeBalloon(CallLog& log) : log_(log) {}

    std::wstring FontName() const override { return fontName; }
    agent::Result SetFontName(std::wstring_view name) override
    {
        log_.Add(Call(L"FontName", name));
        if (!failure.Ok())
            return failure;
        fontName = name;
        return agent::Result::Success();
    }
    long FontSize() const override { return fontSize; }
    agent::Result SetFontSize(long points) override
    {
        log_.Add(Call(L"FontSize", std::to_wstring(points)));
        if (!failure.Ok())
            return failure;
        fontSize = points;
        return agent::Result::Success();
    }
    std::uint32_t Style() const override { return style; }
    agent::Result SetStyle(std::uint32_t newStyle) override
    {
        log_.Add(Call(L"Style", std::to_wstring(newStyle)));
        if (!failure.Ok())
            return failure;
        style = newStyle;
        return agent::Result::Success();
    }

    std::wstring fontName = L"designed";
    long fontSize = 8;
    std::uint32_t style = agent::balloon_style::kOn;
    agent::Result failure; // of every setting call, when it is one

private:
    CallLog& log_;
};

// A character that does at once what it is asked. Knows the eight voices of the seeded table unless told
// otherwise.
class FakeCharacter final : public agent::Character {
public:
    explicit FakeCharacter(CallLog& log) : balloon(log), log_(log)
    {
        for (wchar_t digit = L'0'; digit <= L'7'; ++digit)
            voices.insert(std::wstring(L"{CA141FD0-AC7F-11D1-97A3-00600827300") + digit + L"}");
    }

    agent::Result Show() override { return SetVisible(L"Show", true); }
    agent::Result Hide() override { return SetVisible(L"Hide", false); }
    agent::Result Play(std::wstring_view animation) override { return Log(Call(L"Play", animation)); }
    agent::Result Speak(std::wstring markup) override
    {
        utterances.push_back(markup);
        return Log(Call(L"Speak", markup));
    }
    agent::Result StopAll() override { return Log(L"StopAll"); }

    long Top() const override { return top; }
    long Left() const override { return left; }
    long Height() const override { return height; }
    long Width() const override { return width; }
    long ShownHeight() const override { return height * resolution; }
    long ShownWidth() const override { return width * resolution; }
    agent::Result SetTop(long pixels) override { return Set(L"Top", top, pixels); }
    agent::Result SetLeft(long pixels) override { return Set(L"Left", left, pixels); }
    agent::Result SetHeight(long pixels) override { return Set(L"Height", height, pixels); }
    agent::Result SetWidth(long pixels) override { return Set(L"Width", width, pixels); }

    std::wstring TTSModeID() const override { return mode; }
    agent::Result SetTTSModeID(std::wstring_view id) override
    {
        const agent::Result logged = Log(Call(L"TTSModeID", id));
        if (!logged.Ok())
            return logged;
        if (!voices.contains(std::wstring(id)))
            return agent::Result::Failure(agent::ErrorCode::VoiceNotAvailable, unknownVoiceDescription);
        mode = id;
        return logged;
    }

    bool SoundEffectsOn() const override { return soundEffects; }
    agent::Result SetSoundEffectsOn(bool on) override
    {
        soundEffects = on;
        return Log(on ? L"SoundEffectsOn True" : L"SoundEffectsOn False");
    }

    bool Visible() const override { return visible; }
    agent::Balloon& GetBalloon() override { return balloon; }

    FakeBalloon balloon;
    std::vector<std::wstring> utterances;
    std::set<std::wstring, std::less<>> voices;
    std::wstring unknownVoiceDescription = L"This voice is not available.";
    std::wstring mode;
    long top = 7;
    long left = 9;
    long height = 200;
    long width = 160;
    long resolution = 1; // pixels of the screen to one of the size
    bool soundEffects = true;
    bool visible = false;
    agent::Result failure; // of every call, when it is one

private:
    agent::Result Log(std::wstring call)
    {
        log_.Add(std::move(call));
        return failure;
    }
    agent::Result SetVisible(std::wstring_view call, bool now)
    {
        visible = now;
        return Log(Call(call));
    }
    agent::Result Set(std::wstring_view name, long& field, long pixels)
    {
        if (failure.Ok())
            field = pixels;
        return Log(Call(name, std::to_wstring(pixels)));
    }

    CallLog& log_;
};

// A control that makes a FakeCharacter of any file but those in missingFiles.
class FakeControl final : public agent::Control {
public:
    explicit FakeControl(CallLog& log) : log_(log) {}

    agent::Result Load(std::wstring_view id, std::wstring_view path) override
    {
        log_.Add(Call(L"Load", std::wstring(id) + L" " + std::wstring(path)));
        if (characters_.contains(settings::SimpleLower(id)))
            return agent::Result::Failure(agent::ErrorCode::CharacterAlreadyLoaded, L"It is loaded already.");
        if (missingFiles.contains(std::wstring(path)))
            return agent::Result::Failure(agent::ErrorCode::FileNotFound, L"There is no such file.");
        characters_[settings::SimpleLower(id)] = std::make_unique<FakeCharacter>(log_);
        return agent::Result::Success();
    }
    agent::Result Unload(std::wstring_view id) override
    {
        log_.Add(Call(L"Unload", id));
        if (characters_.erase(settings::SimpleLower(id)) == 0)
            return agent::Result::Failure(agent::ErrorCode::CharacterIdNotValid, L"It is not loaded.");
        return agent::Result::Success();
    }
    agent::Character* Find(std::wstring_view id) override { return FindFake(id); }
    void SetEvents(agent::ControlEvents* newEvents) override { events = newEvents; }

    FakeCharacter* FindFake(std::wstring_view id)
    {
        const auto found = characters_.find(settings::SimpleLower(id));
        return found == characters_.end() ? nullptr : found->second.get();
    }
    std::size_t LoadedCount() const { return characters_.size(); }

    std::set<std::wstring, std::less<>> missingFiles;
    agent::ControlEvents* events = nullptr;

private:
    CallLog& log_;
    std::map<std::wstring, std::unique_ptr<FakeCharacter>> characters_;
};

} // namespace voxtrel::tests
