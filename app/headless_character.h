#pragma once

#include "agent/control.h"

#include <string>
#include <string_view>

namespace voxtrel::app {

// A character that nobody sees: keeps what it is given, so that the settings can be loaded as ever when sound is
// written to a file.
class HeadlessCharacter final : public agent::Character, private agent::Balloon {
public:
    agent::Result Show() override { return Done(); }
    agent::Result Hide() override { return Done(); }
    agent::Result Play(std::wstring_view) override { return Done(); }
    agent::Result Speak(std::wstring) override { return Done(); }
    agent::Result StopAll() override { return Done(); }
    long Top() const override { return 0; }
    long Left() const override { return 0; }
    long Height() const override { return 0; }
    long Width() const override { return 0; }
    agent::Result SetTop(long) override { return Done(); }
    agent::Result SetLeft(long) override { return Done(); }
    agent::Result SetHeight(long) override { return Done(); }
    agent::Result SetWidth(long) override { return Done(); }
    std::wstring TTSModeID() const override { return mode_; }
    agent::Result SetTTSModeID(std::wstring_view id) override
    {
        mode_ = id;
        return Done();
    }
    bool SoundEffectsOn() const override { return false; }
    agent::Result SetSoundEffectsOn(bool) override { return Done(); }
    bool Visible() const override { return false; }
    agent::Balloon& GetBalloon() override { return *this; }

private:
    std::wstring FontName() const override { return {}; }
    agent::Result SetFontName(std::wstring_view) override { return Done(); }
    long FontSize() const override { return 0; }
    agent::Result SetFontSize(long) override { return Done(); }
    std::uint32_t Style() const override { return 0; }
    agent::Result SetStyle(std::uint32_t) override { return Done(); }

    static agent::Result Done() { return agent::Result::Success(); }

    std::wstring mode_;
};

} // namespace voxtrel::app
