#pragma once

#include "platform/clipboard.h"

#include <cstdint>
#include <optional>
#include <string>

namespace voxtrel::hotkeys {

// The text that the user has on the clipboard, which a selection request borrows the clipboard from. Between
// Borrow and PutBack the text is kept here. When another program holds the clipboard longer than PutBack
// waits, the text stays owed: every tick tries again, until it is back or some program has put something
// newer there.
class UserClipboard {
public:
    explicit UserClipboard(platform::Clipboard& clipboard) : clipboard_(clipboard) {}

    // The user's text, also while the clipboard is borrowed; empty when it cannot be read.
    std::wstring Text();

    // Keeps the user's text and empties the clipboard. False when one of the two cannot be done: the
    // clipboard is as it was then, and not borrowed.
    [[nodiscard]] bool Borrow();

    // Does nothing when the clipboard is not borrowed.
    void PutBack();

    // Pays what is owed, without waiting; to be called on every tick.
    void Retry();

private:
    enum class State { Free, Borrowed, Owed };

    bool NewerContentHasCome() const;

    platform::Clipboard& clipboard_;
    State state_ = State::Free;
    std::wstring text_; // valid unless Free
    std::uint32_t sequenceWhenOwed_ = 0;
};

} // namespace voxtrel::hotkeys
