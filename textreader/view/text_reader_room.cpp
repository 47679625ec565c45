#include "textreader/view/text_reader_room.h"

#include <utility>

namespace voxtrel::textreader {

TextReaderRoom::TextReaderRoom(ReaderServices services) : services_(std::move(services))
{
    services_.unloaded = [this, told = std::move(services_.unloaded)] {
        window_ = nullptr;
        if (told)
            told();
    };
}

TextReaderRoom::~TextReaderRoom() { UnloadTextReader(); }

void TextReaderRoom::ReadInTextReader(const std::wstring& text)
{
    frmTextReader& window = Window();
    window.ShowReader();
    window.SetText(text);
    // While a long text is put into the window the program can be told to end.
    if (window_ != nullptr)
        window_->speakWindowText();
}

void TextReaderRoom::OpenInTextReader()
{
    frmTextReader& window = Window();
    window.SetText({});
    window.ShowReader();
    window.OpenTextFile();
}

void TextReaderRoom::UnloadTextReader()
{
    if (window_ != nullptr)
        window_->Unload();
}

void TextReaderRoom::TextReaderBookmark(std::int32_t number)
{
    if (window_ != nullptr)
        window_->agent1_Bookmark(number);
}

frmTextReader& TextReaderRoom::Window()
{
    if (window_ == nullptr)
        window_ = new frmTextReader(services_);
    return *window_;
}

} // namespace voxtrel::textreader
