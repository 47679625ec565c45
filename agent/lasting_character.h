#pragma once

#include "agent/control.h"

#include <functional>
#include <string>
#include <string_view>

namespace voxtrel::agent {

// A character that outlives the control it was loaded in: when a call finds that control lost, another one
// takes the character over as it stood, and the call is made there.
class LastingCharacter final : public Character {
public:
    // Gives the same character, loaded elsewhere and looking like the lost one, which may be gone afterwards;
    // null when it cannot be loaded.
    using Replace = std::function<Character*(Character& lost)>;

    LastingCharacter(Character& first, Replace replace)
        : now_(&first), replace_(std::move(replace)), balloon_(*this)
    {
    }

    Result Show() override;
    Result Hide() override;
    Result Play(std::wstring_view animation) override;
    Result Speak(std::wstring markup) override;
    Result StopAll() override;

    long Top() const override { return now_->Top(); }
    long Left() const override { return now_->Left(); }
    long Height() const override { return now_->Height(); }
    long Width() const override { return now_->Width(); }
    long ShownHeight() const override { return now_->ShownHeight(); }
    long ShownWidth() const override { return now_->ShownWidth(); }
    Result SetTop(long pixels) override;
    Result SetLeft(long pixels) override;
    Result SetHeight(long pixels) override;
    Result SetWidth(long pixels) override;

    std::wstring TTSModeID() const override { return now_->TTSModeID(); }
    Result SetTTSModeID(std::wstring_view id) override;
    bool SoundEffectsOn() const override { return now_->SoundEffectsOn(); }
    Result SetSoundEffectsOn(bool on) override;
    bool Visible() const override { return now_->Visible(); }
    Balloon& GetBalloon() override { return balloon_; }

private:
    class LastingBalloon final : public Balloon {
    public:
        explicit LastingBalloon(LastingCharacter& owner) : owner_(owner) {}

        std::wstring FontName() const override { return owner_.now_->GetBalloon().FontName(); }
        Result SetFontName(std::wstring_view name) override;
        long FontSize() const override { return owner_.now_->GetBalloon().FontSize(); }
        Result SetFontSize(long points) override;
        std::uint32_t Style() const override { return owner_.now_->GetBalloon().Style(); }
        Result SetStyle(std::uint32_t style) override;

    private:
        LastingCharacter& owner_;
    };

    Result Do(const std::function<Result(Character&)>& call);

    Character* now_;
    Replace replace_;
    bool shown_ = false;
    LastingBalloon balloon_;
};

// Makes a character look and speak like another; what cannot be asked of that any more is as it was known
// last.
void TakeOver(Character& to, Character& from);

} // namespace voxtrel::agent
