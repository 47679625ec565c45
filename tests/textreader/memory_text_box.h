#pragma once

#include "textreader/reader_window.h"
#include "textreader/rich_text_box.h"
#include "textreader/text_edit.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace voxtrel::tests {

// A text box without a window: a text, a selection, and a colour for every character.
class MemoryTextBox final : public textreader::RichTextBox {
public:
    explicit MemoryTextBox(std::wstring text) { SetText(std::move(text)); }

    void SetText(std::wstring text)
    {
        text_ = std::move(text);
        colors_.assign(text_.size(), textreader::kBlack);
        start_ = length_ = 0;
    }

    // As a user does it: the inserted text takes the colour of the character before it, the caret goes behind
    // it.
    void Edit(const textreader::TextEdit& edit, const std::wstring& inserted)
    {
        const auto at = static_cast<std::size_t>(edit.position);
        const std::int32_t color = at > 0 ? colors_[at - 1] : textreader::kBlack;
        text_.replace(at, static_cast<std::size_t>(edit.removed), inserted);
        colors_.erase(colors_.begin() + edit.position, colors_.begin() + edit.position + edit.removed);
        colors_.insert(colors_.begin() + edit.position, inserted.size(), color);
        start_ = edit.position + edit.added;
        length_ = 0;
    }

    const std::wstring& Text() const override { return text_; }
    std::int32_t SelStart() const override { return start_; }
    std::int32_t SelLength() const override { return length_; }
    void SetSelStart(std::int32_t position) override
    {
        sawNegativeStart = sawNegativeStart || position < 0;
        start_ = std::clamp(position, 0, Size());
        length_ = 0;
    }
    void SetSelLength(std::int32_t length) override { length_ = std::clamp(length, 0, Size() - start_); }
    void SetSelColor(std::int32_t color) override
    {
        painted += length_;
        std::fill_n(colors_.begin() + start_, length_, color);
    }

    // The characters of a colour, the others as dots.
    std::wstring Shown(std::int32_t color) const
    {
        std::wstring shown = text_;
        for (std::size_t i = 0; i < shown.size(); ++i) {
            if (colors_[i] != color)
                shown[i] = L'.';
        }
        return shown;
    }
    std::int64_t Coloured() const
    {
        return std::count_if(colors_.begin(), colors_.end(),
                             [](std::int32_t c) { return c != textreader::kBlack; });
    }
    std::wstring Selected() const
    {
        return text_.substr(static_cast<std::size_t>(start_), static_cast<std::size_t>(length_));
    }

    bool sawNegativeStart = false;
    std::int64_t painted = 0; // characters, over all calls

private:
    std::int32_t Size() const { return static_cast<std::int32_t>(text_.size()); }

    std::wstring text_;
    std::vector<std::int32_t> colors_;
    std::int32_t start_ = 0;
    std::int32_t length_ = 0;
};

class FakeReaderWindow final : public textreader::ReaderWindow {
public:
    bool BlockHighlight() const override { return blockHighlight; }
    bool AutoClose() const override { return autoClose; }
    void SetBusyPointer(bool isBusy) override
    {
        busy = isBusy;
        busyCount += isBusy ? 1 : 0;
    }
    void RefreshTextBox() override {}
    void ActivateTextBox() override { ++activated; }
    void FocusHiddenBox() override { ++hiddenFocused; }
    void ReleasePause() override { paused = false; }
    void CloseTextReader() override { ++closed; }

    bool blockHighlight = false;
    bool autoClose = false;
    bool paused = false;
    bool busy = false;
    int busyCount = 0;
    int activated = 0;
    int hiddenFocused = 0;
    int closed = 0;
};

} // namespace voxtrel::tests
