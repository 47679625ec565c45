#pragma once

#include "platform/desktop_reach.h"

#include <cstdint>
#include <string>

namespace voxtrel::app {

// What the main window calls in the rooms beside it. A room that is not part of a build leaves its calls
// empty.
class Rooms {
public:
    virtual ~Rooms() = default;

    // Hot keys and selection.
    virtual platform::DesktopReach Reach() const { return platform::DesktopReach::Everything; }
    virtual void LoadHotKeys() {}
    virtual void UpdateTargetWindow() {}
    virtual void PollHotKeys() {}
    virtual void SpeakSelected() {}
    virtual void ReadSelected() {}

    // Screen reading.
    virtual void ReadScreen() {}

    // Options dialog.
    virtual void ShowOptions() {}
    virtual void UnloadOptions() {}

    // Text Reader. ReadInTextReader answers whether there is a window that took the text.
    virtual bool ReadInTextReader(const std::wstring& text)
    {
        (void)text;
        return false;
    }
    // Shows the window with no text and asks for a file.
    virtual void OpenInTextReader() {}
    virtual void UnloadTextReader() {}
    virtual bool closeTheWindow() const { return false; }
    virtual void TextReaderBookmark(std::int32_t number) { (void)number; }
};

} // namespace voxtrel::app
