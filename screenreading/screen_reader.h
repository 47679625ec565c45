#pragma once

#include "platform/accessibility.h"
#include "settings/settings_store.h"
#include "settings/shared_settings.h"
#include "speech/pronunciation_list.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace voxtrel::screenreading {

// What the reader works with. Everything outlives it.
struct ScreenReaderServices {
    settings::SettingsStore& store;
    settings::SharedSettings& shared;
    platform::OVAccessibility& access;
    std::function<std::int32_t()> GetTickCount; // milliseconds since the system started; may wrap
    std::function<void(std::wstring_view caption)>
        SetLabel1;                  // the main window's copy of what waits to be spoken
    std::function<void()> DoEvents; // handles the waiting events, once
    // The object whose text is about to be spoken.
    std::function<void(std::wstring_view role, std::wstring_view text)> Speaking;
};

// Screen reading: speaks what lies under the pointer, each object once.
class ScreenReader {
public:
    explicit ScreenReader(ScreenReaderServices services);

    // One look at the object under the pointer, called every 100 ms. What is to be said waits in
    // PendingSpeech afterwards, in the place of anything that waited there.
    void Timer2_Timer();

private:
    bool LongEnough() const;
    std::wstring TextOf(std::wstring_view choice) const;

    ScreenReaderServices services_;
    speech::PronunciationList pronunciations_;
    std::wstring lastScreenText_;
    std::int32_t lastScreenTick_ = 0; // stays: the interval of the timer is the only limit
    bool speaking_ = false;
};

} // namespace voxtrel::screenreading
