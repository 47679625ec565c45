#include "hotkeys/user_clipboard.h"

#include <chrono>
#include <utility>

namespace voxtrel::hotkeys {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 1000ms; // for a program that holds the clipboard
constexpr auto kNoPatience = 0ms;

} // namespace

std::wstring UserClipboard::Text()
{
    Retry();
    if (state_ != State::Free)
        return text_;
    return clipboard_.GetText(kPatience).value_or(std::wstring());
}

bool UserClipboard::Borrow()
{
    Retry();
    if (state_ == State::Borrowed)
        return false;
    if (state_ == State::Free) {
        std::optional<std::wstring> text = clipboard_.GetText(kPatience);
        if (!text)
            return false;
        text_ = std::move(*text);
    }
    if (!clipboard_.SetText({}, kPatience))
        return false;
    state_ = State::Borrowed;
    return true;
}

void UserClipboard::PutBack()
{
    if (state_ != State::Borrowed)
        return;
    if (clipboard_.SetText(text_, kPatience)) {
        state_ = State::Free;
        text_.clear();
        return;
    }
    state_ = State::Owed;
    sequenceWhenOwed_ = clipboard_.GetClipboardSequenceNumber();
}

void UserClipboard::Retry()
{
    if (state_ != State::Owed)
        return;
    if (NewerContentHasCome() || clipboard_.SetText(text_, kNoPatience)) {
        state_ = State::Free;
        text_.clear();
    }
}

bool UserClipboard::NewerContentHasCome() const
{
    return clipboard_.GetClipboardSequenceNumber() != sequenceWhenOwed_;
}

} // namespace voxtrel::hotkeys
