#include "textreader/view/wx_rich_text_box.h"

#include "platform/text_color.h"
#include "textreader/readable_color.h"

#include <wx/settings.h>

#include <algorithm>
#include <utility>

namespace voxtrel::textreader {
namespace {

constexpr std::size_t kLongText = 200000; // from here on an edit is sought at the caret first
constexpr long kProof = 64;               // characters on both sides that must be the old ones

std::int32_t Size(const std::wstring& text) { return static_cast<std::int32_t>(text.size()); }

std::int32_t AsNumber(const wxColour& color) { return color.Red() | color.Green() << 8 | color.Blue() << 16; }

wxColour FromNumber(std::int32_t color)
{
    return wxColour(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF);
}

// Put together in place: a long text is not copied once more.
wxString ForControl(const std::wstring& text)
{
    wxString shown;
    shown.reserve(text.size());
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t carriageReturn = std::min(text.find(L'\r', from), text.size());
        shown.append(text.data() + from, carriageReturn - from);
        from = carriageReturn + 1;
    }
    return shown;
}

} // namespace

WxRichTextBox::WxRichTextBox(wxWindow* parent, std::function<void(const TextEdit&)> edited)
    : control_(new wxTextCtrl(parent, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                              wxTE_MULTILINE | wxTE_RICH2 | wxTE_NOHIDESEL | wxBORDER_NONE)),
      edited_(std::move(edited))
{
    control_->Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
        FollowEdit();
        event.Skip();
    });
}

void WxRichTextBox::SetText(std::wstring text)
{
    const TextEdit edit{0, Size(text_), 0};
    text_ = std::move(text);
    lines_.SetText(text_);
    control_->ChangeValue(ForControl(text_));
    selection_ = {};
    shown_ = {};
    settled_ = true;
    edited_({edit.position, edit.removed, Size(text_)});
    control_->SetInsertionPoint(0);
}

void WxRichTextBox::SetSelectionShown(bool shown)
{
    const TextRange now = Selection();
    selectionShown_ = shown;
    selection_ = now;
    SettleSoon();
}

void WxRichTextBox::RefreshColors() { platform::ClearTextColor(*control_, 0, control_->GetLastPosition()); }

std::int32_t WxRichTextBox::SelStart() const { return Selection().begin; }

std::int32_t WxRichTextBox::SelLength() const { return Selection().Length(); }

void WxRichTextBox::SetSelStart(std::int32_t position)
{
    selection_.begin = selection_.end = std::clamp(position, 0, Size(text_));
    SettleSoon();
}

void WxRichTextBox::SetSelLength(std::int32_t length)
{
    const std::int32_t rest = Size(text_) - selection_.begin;
    selection_.end = selection_.begin + std::clamp(length, 0, rest);
    SettleSoon();
}

void WxRichTextBox::SetSelColor(std::int32_t color)
{
    const TextRange selection = Selection();
    if (selection.Empty())
        return;
    const ControlRange range = RangeInControl(selection);
    if (color == kBlack) {
        platform::ClearTextColor(*control_, range.from, range.to);
        return;
    }
    const wxColour background = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
    platform::SetTextColor(*control_, range.from, range.to,
                           FromNumber(ReadableOn(AsNumber(background), color)));
}

// The engine's selection, unless the user has made another one in the control since.
TextRange WxRichTextBox::Selection() const
{
    if (!settled_)
        return selection_;
    const ControlRange now = ShownRange();
    if (now == shown_)
        return selection_;
    return {lines_.FromControl(static_cast<std::int32_t>(now.from)),
            lines_.FromControl(static_cast<std::int32_t>(now.to))};
}

WxRichTextBox::ControlRange WxRichTextBox::ShownRange() const
{
    ControlRange range;
    control_->GetSelection(&range.from, &range.to);
    if (range.from == range.to)
        range.from = range.to = control_->GetInsertionPoint();
    return range;
}

WxRichTextBox::ControlRange WxRichTextBox::RangeInControl(const TextRange& range) const
{
    const long from = lines_.ToControl(range.begin);
    return {from, std::max<long>(from, range.Empty() ? from : lines_.EndToControl(range.end))};
}

void WxRichTextBox::SettleSoon()
{
    if (!settled_)
        return;
    settled_ = false;
    control_->CallAfter([this] { Settle(); });
}

void WxRichTextBox::Settle()
{
    if (settled_)
        return;
    settled_ = true;
    ControlRange wanted = RangeInControl(selection_);
    ShowCalmly(wanted.from);
    if (!selectionShown_)
        wanted.to = wanted.from;
    if (wanted != ShownRange()) {
        if (wanted.from == wanted.to)
            control_->SetInsertionPoint(wanted.from);
        else
            control_->SetSelection(wanted.from, wanted.to);
    }
    shown_ = ShownRange();
}

// Nothing moves while the position is well inside the view; when it leaves, its line comes to the upper
// third, so that the next lines follow without moving anything.
void WxRichTextBox::ShowCalmly(long position)
{
    const int height = control_->GetClientSize().y;
    const int line = std::max(control_->GetCharHeight(), 1);
    const auto lineTop = [&] { return control_->PositionToCoords(position).y; };
    const int top = lineTop();
    if (top != wxDefaultCoord && top >= 0 && top + 2 * line <= height)
        return;
    control_->ShowPosition(position);
    const int shownTop = lineTop();
    if (shownTop != wxDefaultCoord && shownTop > height / 3)
        control_->ScrollLines((shownTop - height / 3) / line);
}

void WxRichTextBox::FollowEdit()
{
    if (text_.size() >= kLongText && FollowEditAtCaret())
        return;
    const std::wstring value = control_->GetValue().ToStdWstring();
    const std::wstring now = WithCrLf(value);
    // Some controls keep the CR of a pasted line break as a character of its own.
    if (value.find(L'\r') != std::wstring::npos)
        control_->CallAfter([this] { control_->ChangeValue(ForControl(text_)); });
    const auto [oldEnd, newEnd] = std::mismatch(text_.begin(), text_.end(), now.begin(), now.end());
    std::int32_t begin = static_cast<std::int32_t>(oldEnd - text_.begin());
    std::int32_t tail = 0;
    const std::int32_t rest = std::min(Size(text_), Size(now)) - begin;
    while (tail < rest && text_[text_.size() - 1 - tail] == now[now.size() - 1 - tail])
        ++tail;
    // A line break stays whole.
    if (begin > 0 && text_[begin - 1] == L'\r')
        --begin;
    if (tail > 0 && now[now.size() - tail] == L'\n')
        --tail;
    const TextEdit edit{begin, std::max(Size(text_) - begin - tail, 0),
                        std::max(Size(now) - begin - tail, 0)};
    if (edit.removed == 0 && edit.added == 0)
        return;
    Replace(edit, now.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(edit.added)));
}

// In a long text nearly every edit is known from the caret and the new length alone. False when it is not.
bool WxRichTextBox::FollowEditAtCaret()
{
    const long caret = control_->GetInsertionPoint();
    const long oldLength = lines_.ToControl(Size(text_));
    const long growth = control_->GetLastPosition() - oldLength;
    const long at = growth > 0 ? caret - growth : caret;
    if (growth == 0 || at < 0)
        return false;
    const long removed = std::max(-growth, 0L);
    const long added = std::max(growth, 0L);
    const auto old = [&](long from, long to) {
        const auto begin = static_cast<std::size_t>(lines_.FromControl(static_cast<std::int32_t>(from)));
        return WithLf(text_.substr(
            begin, static_cast<std::size_t>(lines_.FromControl(static_cast<std::int32_t>(to))) - begin));
    };
    const long before = std::max(at - kProof, 0L);
    const long after = std::min(at + removed + kProof, oldLength);
    if (control_->GetRange(before, at).ToStdWstring() != old(before, at) ||
        control_->GetRange(at + added, after + growth).ToStdWstring() != old(at + removed, after))
        return false;
    const std::wstring typed = control_->GetRange(at, at + added).ToStdWstring();
    if (typed.find(L'\r') != std::wstring::npos)
        return false;
    const std::wstring inserted = WithCrLf(typed);
    const auto begin = lines_.FromControl(static_cast<std::int32_t>(at));
    const auto end = lines_.FromControl(static_cast<std::int32_t>(at + removed));
    Replace({begin, end - begin, Size(inserted)}, inserted);
    return true;
}

void WxRichTextBox::Replace(const TextEdit& edit, const std::wstring& inserted)
{
    text_.replace(static_cast<std::size_t>(edit.position), static_cast<std::size_t>(edit.removed), inserted);
    lines_.TextEdited(text_, edit);
    selection_ = Moved(selection_, edit);
    edited_(edit);
}

} // namespace voxtrel::textreader
