#include "agent/com/system_character.h"

#include <utility>

namespace voxtrel::agent::com {

using std::chrono::milliseconds;

Result SessionHome::Tell(std::function<Result(ControlSession&)> change, milliseconds deadline) const
{
    std::optional<Result> told =
        apartment->Ask<Result>([session = session, change = std::move(change)] { return change(*session); },
                               deadline, Apartment::IfLate::StillDo);
    if (told)
        return std::move(*told);
    return Result::Failure(ErrorCode::NoAnswer, L"The system's character control does not answer.");
}

template <class T>
T Properties::ReadAs(const wchar_t* property, std::optional<T> (Value::*convert)() const, T& last) const
{
    const auto read = [session = home_.session, id = id_, part = part_, property, convert] {
        return (session->Read(id, part, property).value.*convert)();
    };
    const auto answer =
        home_.apartment->Ask<std::optional<T>>(read, kAnswerTime, Apartment::IfLate::LeaveOut);
    if (answer && *answer)
        last = **answer;
    return last;
}

long Properties::Number(const wchar_t* property, long& last) const
{
    return ReadAs(property, &Value::Number, last);
}

bool Properties::Flag(const wchar_t* property, bool& last) const
{
    return ReadAs(property, &Value::Flag, last);
}

std::wstring Properties::Text(const wchar_t* property, std::wstring& last) const
{
    return ReadAs(property, &Value::Text, last);
}

Result Properties::Write(const wchar_t* property, Argument value, milliseconds deadline) const
{
    return home_.Tell([id = id_, part = part_, property, value = std::move(value)](
                          ControlSession& session) { return session.Write(id, part, property, value); },
                      deadline);
}

std::wstring SystemBalloon::FontName() const { return properties_.Text(L"FontName", fontName_); }

Result SystemBalloon::SetFontName(std::wstring_view name)
{
    return properties_.Write(L"FontName", std::wstring(name), fontName_);
}

long SystemBalloon::FontSize() const { return properties_.Number(L"FontSize", fontSize_); }

Result SystemBalloon::SetFontSize(long points) { return properties_.Write(L"FontSize", points, fontSize_); }

std::uint32_t SystemBalloon::Style() const
{
    return static_cast<std::uint32_t>(properties_.Number(L"Style", style_));
}

// A signed number in the control: its uppermost bit belongs to the number of lines.
Result SystemBalloon::SetStyle(std::uint32_t style)
{
    return properties_.Write(L"Style", static_cast<long>(static_cast<std::int32_t>(style)), style_);
}

SystemCharacter::SystemCharacter(SessionHome home, std::wstring id)
    : home_(std::move(home)), id_(std::move(id)), properties_(home_, id_, ControlSession::Part::Character),
      balloon_(home_, id_)
{
}

Result SystemCharacter::Request(const wchar_t* method, std::vector<Argument> arguments, std::wstring name)
{
    return home_.Tell([id = id_, method, arguments = std::move(arguments), name = std::move(name)](
                          ControlSession& session) { return session.Request(id, method, arguments, name); },
                      kAnswerTime);
}

Result SystemCharacter::Show() { return Request(L"Show", {}, L"Show"); }

Result SystemCharacter::Hide() { return Request(L"Hide", {}, L"Hide"); }

Result SystemCharacter::Play(std::wstring_view animation)
{
    const std::wstring name(animation);
    return Request(L"Play", {name}, L"Play " + name);
}

Result SystemCharacter::Speak(std::wstring markup)
{
    return Request(L"Speak", {std::move(markup)}, L"Speak");
}

Result SystemCharacter::StopAll()
{
    return home_.Tell([id = id_](ControlSession& session) { return session.StopAll(id); }, kAnswerTime);
}

long SystemCharacter::Top() const { return properties_.Number(L"Top", top_); }
long SystemCharacter::Left() const { return properties_.Number(L"Left", left_); }
long SystemCharacter::Height() const { return properties_.Number(L"Height", height_); }
long SystemCharacter::Width() const { return properties_.Number(L"Width", width_); }
Result SystemCharacter::SetTop(long pixels) { return properties_.Write(L"Top", pixels, top_); }
Result SystemCharacter::SetLeft(long pixels) { return properties_.Write(L"Left", pixels, left_); }
Result SystemCharacter::SetHeight(long pixels) { return properties_.Write(L"Height", pixels, height_); }
Result SystemCharacter::SetWidth(long pixels) { return properties_.Write(L"Width", pixels, width_); }

// Both load the speech engine.
std::wstring SystemCharacter::TTSModeID() const { return properties_.Text(L"TTSModeID", mode_); }

Result SystemCharacter::SetTTSModeID(std::wstring_view id)
{
    return properties_.Write(L"TTSModeID", std::wstring(id), mode_, kLoadingTime);
}

bool SystemCharacter::SoundEffectsOn() const { return properties_.Flag(L"SoundEffectsOn", soundEffects_); }
Result SystemCharacter::SetSoundEffectsOn(bool on)
{
    return properties_.Write(L"SoundEffectsOn", on, soundEffects_);
}
bool SystemCharacter::Visible() const { return properties_.Flag(L"Visible", visible_); }

} // namespace voxtrel::agent::com
