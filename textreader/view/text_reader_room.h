#pragma once

#include "textreader/view/frm_text_reader.h"

#include <cstdint>
#include <string>

namespace voxtrel::textreader {

// The one Text Reader window of the program: made when it is needed, gone when it is closed.
class TextReaderRoom {
public:
    // services.unloaded is called after the room has forgotten the window.
    explicit TextReaderRoom(ReaderServices services);
    ~TextReaderRoom();
    TextReaderRoom(const TextReaderRoom&) = delete;
    TextReaderRoom& operator=(const TextReaderRoom&) = delete;

    // Shows the window with the text and reads all of it.
    void ReadInTextReader(const std::wstring& text);

    // Shows the window without a text and asks for a file.
    void OpenInTextReader();

    void UnloadTextReader();
    bool closeTheWindow() const { return window_ != nullptr && window_->closeTheWindow(); }
    void TextReaderBookmark(std::int32_t number);

private:
    frmTextReader& Window();

    ReaderServices services_;
    frmTextReader* window_ = nullptr; // destroys itself
};

} // namespace voxtrel::textreader
