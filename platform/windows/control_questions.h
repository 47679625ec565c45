#pragma once

#include "platform/windows/accessible_answer.h"
#include "platform/windows/windows_headers.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace voxtrel::platform {

// Messages to a window of another program, which may be frozen: all the questions of one look share a
// deadline. Once it is over, or a window has not answered, nobody is asked any more.
class ControlQuestions {
public:
    explicit ControlQuestions(const Deadline& deadline) : deadline_(deadline) {}

    // 0 also when the window does not answer.
    LRESULT Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    // For messages whose lParam is a record that the system does not carry from one program to another.
    // Nothing when the window's program does not let its memory be used, or lays records out in another way
    // (32 bit).
    template <class Record> struct Answer {
        LRESULT result = 0;
        Record record{};     // as the control has left it
        std::wstring text{}; // what the record's text pointer leads to
    };
    template <class Record>
    std::optional<Answer<Record>> AskWith(HWND window, UINT message, WPARAM wParam, const Record& record)
    {
        Answer<Record> answer{.record = record};
        return Exchange(window, message, wParam, {&answer.record, sizeof(Record)}, answer.result)
                   ? std::optional(std::move(answer))
                   : std::nullopt;
    }
    // The same for a record with a place for a text of kRoomForText: textOf and roomOf are its members.
    template <class Record>
    std::optional<Answer<Record>> AskForText(HWND window, UINT message, WPARAM wParam, const Record& record,
                                             LPWSTR Record::*textOf, int Record::*roomOf = nullptr)
    {
        Answer<Record> answer{.record = record};
        if (roomOf)
            answer.record.*roomOf = kRoomForText;
        const Text text{&(answer.record.*textOf), &answer.text};
        return Exchange(window, message, wParam, {&answer.record, sizeof(Record)}, answer.result, text)
                   ? std::optional(std::move(answer))
                   : std::nullopt;
    }
    // For messages whose lParam is the place for the text itself; length is what it will need, in characters.
    std::wstring AskForBareText(HWND window, UINT message, WPARAM wParam, std::size_t length);

    // Whether a window was asked and did not answer in time.
    bool Unanswered() const { return unanswered_; }

    static constexpr int kRoomForText = 2048; // characters

private:
    struct Bytes {
        void* data;
        std::size_t size;
    };
    struct Text {
        LPWSTR* pointer; // in the record; set for the control, which may set it to another place
        std::wstring* text;
    };

    bool Exchange(HWND window, UINT message, WPARAM wParam, Bytes record, LRESULT& result, Text text = {});

    Deadline deadline_;
    bool unanswered_ = false;
};

std::wstring ClassOf(HWND window);
bool IsClass(HWND window, std::wstring_view name);

// As the system names it in the user's language; role is one of ROLE_SYSTEM_...
std::wstring RoleText(long role);

// Without the marks of the letters that Alt reaches.
std::wstring WithoutMnemonics(std::wstring_view text);

// The text of the window, as WM_GETTEXT gives it, for a person.
std::wstring TextOf(ControlQuestions& questions, HWND window);

} // namespace voxtrel::platform
