#pragma once

#include "agent/com/apartment.h"
#include "agent/com/control_session.h"
#include "agent/control.h"

#include <chrono>
#include <memory>
#include <string>

namespace voxtrel::agent::com {

inline constexpr std::chrono::milliseconds kAnswerTime{1000};
// Reading a file, starting the server, loading a speech engine.
inline constexpr std::chrono::milliseconds kLoadingTime{5000};

// Where a session lives.
struct SessionHome {
    std::shared_ptr<Apartment> apartment;
    std::shared_ptr<ControlSession> session; // only to be touched in the apartment

    // A change, done by a function of the session; a late one is done all the same.
    Result Tell(std::function<Result(ControlSession&)> change, std::chrono::milliseconds deadline) const;
};

// The properties of one part of a loaded character. What cannot be read is as it was read or written last.
class Properties {
public:
    Properties(SessionHome home, std::wstring id, ControlSession::Part part)
        : home_(std::move(home)), id_(std::move(id)), part_(part)
    {
    }

    long Number(const wchar_t* property, long& last) const;
    bool Flag(const wchar_t* property, bool& last) const;
    std::wstring Text(const wchar_t* property, std::wstring& last) const;
    template <class T>
    Result Write(const wchar_t* property, const T& value, T& last,
                 std::chrono::milliseconds deadline = kAnswerTime) const
    {
        Result written = Write(property, value, deadline);
        if (written.Ok())
            last = value;
        return written;
    }

private:
    Result Write(const wchar_t* property, Argument value, std::chrono::milliseconds deadline) const;
    template <class T>
    T ReadAs(const wchar_t* property, std::optional<T> (Value::*convert)() const, T& last) const;

    SessionHome home_;
    std::wstring id_;
    ControlSession::Part part_;
};

class SystemBalloon final : public Balloon {
public:
    SystemBalloon(const SessionHome& home, const std::wstring& id)
        : properties_(home, id, ControlSession::Part::Balloon)
    {
    }

    std::wstring FontName() const override;
    Result SetFontName(std::wstring_view name) override;
    long FontSize() const override;
    Result SetFontSize(long points) override;
    std::uint32_t Style() const override;
    Result SetStyle(std::uint32_t style) override;

private:
    Properties properties_;
    mutable std::wstring fontName_;
    mutable long fontSize_ = 0;
    mutable long style_ = 0;
};

// A character that is loaded in the system's control.
class SystemCharacter final : public Character {
public:
    SystemCharacter(SessionHome home, std::wstring id);

    const std::wstring& Id() const { return id_; }

    Result Show() override;
    Result Hide() override;
    Result Play(std::wstring_view animation) override;
    Result Speak(std::wstring markup) override;
    Result StopAll() override;

    long Top() const override;
    long Left() const override;
    long Height() const override;
    long Width() const override;
    Result SetTop(long pixels) override;
    Result SetLeft(long pixels) override;
    Result SetHeight(long pixels) override;
    Result SetWidth(long pixels) override;

    std::wstring TTSModeID() const override;
    Result SetTTSModeID(std::wstring_view id) override;
    bool SoundEffectsOn() const override;
    Result SetSoundEffectsOn(bool on) override;
    bool Visible() const override;
    Balloon& GetBalloon() override { return balloon_; }

private:
    Result Request(const wchar_t* method, std::vector<Argument> arguments, std::wstring name);

    SessionHome home_;
    std::wstring id_;
    Properties properties_;
    SystemBalloon balloon_;
    mutable long top_ = 0;
    mutable long left_ = 0;
    mutable long height_ = 0;
    mutable long width_ = 0;
    mutable std::wstring mode_;
    mutable bool soundEffects_ = true;
    mutable bool visible_ = false;
};

} // namespace voxtrel::agent::com
