#pragma once

#include <cstdint>
#include <string>

namespace voxtrel::textreader {

// The text box of the reader. Positions are 0-based and counted in elements of Text, whose lines end with CR
// LF.
class RichTextBox {
public:
    virtual ~RichTextBox() = default;

    // The whole text, kept beside the control: asking costs nothing. Valid until the next edit.
    virtual const std::wstring& Text() const = 0;

    virtual std::int32_t SelStart() const = 0;
    virtual std::int32_t SelLength() const = 0;

    // Puts the caret there and ends the selection. What lies outside the text is moved to its edge.
    virtual void SetSelStart(std::int32_t position) = 0;
    virtual void SetSelLength(std::int32_t length) = 0;

    // Colours the selected characters: red in the low byte, blue in the third. kBlack stands for the colour
    // of ordinary text, whatever that is on this desktop.
    virtual void SetSelColor(std::int32_t color) = 0;
};

inline constexpr std::int32_t kBlack = 0;

} // namespace voxtrel::textreader
