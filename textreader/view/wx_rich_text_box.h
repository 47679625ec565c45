#pragma once

#include "textreader/line_positions.h"
#include "textreader/rich_text_box.h"
#include "textreader/text_edit.h"

#include <wx/textctrl.h>

#include <functional>
#include <string>

namespace voxtrel::textreader {

// The native rich text control behind the engine's port. The text is kept beside the control and follows the
// user's edits. What the engine selects is shown as a selection only on demand; otherwise the caret goes
// there. The control is brought up to date once after a handler, not at each of its steps.
class WxRichTextBox final : public RichTextBox {
public:
    // edited is called after every edit of the user and after SetText, when Text is already the new one.
    WxRichTextBox(wxWindow* parent, std::function<void(const TextEdit&)> edited);

    wxTextCtrl& Control() { return *control_; }

    // Lines end with CR LF.
    void SetText(std::wstring text);

    void SetSelectionShown(bool shown);

    // After the theme of the desktop has changed; the highlight is lost.
    void RefreshColors();

    // Puts caret, selection and view where the engine has left them; does nothing while they are.
    void Settle();

    const std::wstring& Text() const override { return text_; }
    std::int32_t SelStart() const override;
    std::int32_t SelLength() const override;
    void SetSelStart(std::int32_t position) override;
    void SetSelLength(std::int32_t length) override;
    void SetSelColor(std::int32_t color) override;

private:
    struct ControlRange {
        long from = 0;
        long to = 0;

        bool operator==(const ControlRange&) const = default;
    };

    TextRange Selection() const;
    ControlRange ShownRange() const;
    ControlRange RangeInControl(const TextRange& range) const;
    void SettleSoon();
    void ShowCalmly(long position);

    void FollowEdit();
    bool FollowEditAtCaret();
    void Replace(const TextEdit& edit, const std::wstring& inserted);

    wxTextCtrl* control_; // destroyed by wx
    std::function<void(const TextEdit&)> edited_;
    std::wstring text_;
    LinePositions lines_;

    TextRange selection_; // as the engine has it
    ControlRange shown_;  // as it was last given to the control
    bool settled_ = true; // the control has been given selection_
    bool selectionShown_ = false;
};

} // namespace voxtrel::textreader
