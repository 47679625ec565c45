#include "screenreading/screen_reader.h"

#include "agent/control.h"
#include "screenreading/role_table.h"
#include "screenreading/spoken_words.h"

#include <utility>

namespace voxtrel::screenreading {
namespace {

constexpr std::int32_t kGuardMs = 300;

bool IsBlank(std::wstring_view text) { return text.find_first_not_of(L' ') == std::wstring_view::npos; }

class ScopedFlag {
public:
    explicit ScopedFlag(bool& raised) : flag_(raised) { flag_ = true; }
    ~ScopedFlag() { flag_ = false; }
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;

private:
    bool& flag_;
};

} // namespace

ScreenReader::ScreenReader(ScreenReaderServices services)
    : services_(std::move(services)), pronunciations_(services_.store)
{
}

void ScreenReader::Timer2_Timer()
{
    settings::SharedSettings& shared = services_.shared;
    // Events that are handled below may bring the next tick: it would speak first and be overwritten.
    if (speaking_ || shared.TextReaderOpen)
        return;
    services_.SetLabel1(shared.PendingSpeech);
    if (!shared.usescreenreading || !LongEnough() || IsBlank(services_.access.ObjectName()))
        return;
    const std::wstring role = services_.access.ObjectRole();
    const std::optional<std::wstring> choice = ChoiceFor(role, services_.store);
    if (!choice)
        return;
    std::wstring text = TextOf(*choice);
    if (text == lastScreenText_)
        return;
    lastScreenText_ = std::move(text);
    if (IsBlank(lastScreenText_))
        return;

    const std::wstring words = SpokenWords(lastScreenText_, pronunciations_);
    services_.Speaking(role, lastScreenText_);
    const ScopedFlag speaking(speaking_);
    if (shared.character != nullptr)
        agent::Ignore(shared.character->StopAll());
    services_.DoEvents();
    shared.PendingSpeech = ScreenMarkup(words, shared);
}

// Early after the start of the system nothing is spoken; a count that has wrapped is late enough.
bool ScreenReader::LongEnough() const
{
    const std::int32_t now = services_.GetTickCount();
    return now >= lastScreenTick_ + kGuardMs || now < 1;
}

std::wstring ScreenReader::TextOf(std::wstring_view choice) const
{
    std::wstring text;
    const auto add = [&](std::wstring_view part, const std::wstring& property) {
        if (choice.find(part) != std::wstring_view::npos && !property.empty())
            text.append(WithoutClosingCharacter(property)).append(L" ");
    };
    add(kName, services_.access.ObjectName());
    add(kRole, services_.access.ObjectRole());
    add(kValue, services_.access.ObjectValue());
    return text;
}

} // namespace voxtrel::screenreading
