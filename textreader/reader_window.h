#pragma once

namespace voxtrel::textreader {

// What the reading engine asks of the window that it reads in.
class ReaderWindow {
public:
    virtual ~ReaderWindow() = default;

    // What the panels of the status bar show.
    virtual bool BlockHighlight() const = 0;
    virtual bool AutoClose() const = 0;

    // The hourglass, while the markup of a long section is built.
    virtual void SetBusyPointer(bool busy) = 0;

    virtual void RefreshTextBox() = 0;
    virtual void ActivateTextBox() = 0;
    virtual void FocusHiddenBox() = 0;
    virtual void ReleasePause() = 0;

    // Unloads the window as soon as the caller has returned.
    virtual void CloseTextReader() = 0;
};

} // namespace voxtrel::textreader
