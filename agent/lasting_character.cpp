#include "agent/lasting_character.h"

#include <utility>

namespace voxtrel::agent {

void TakeOver(Character& to, Character& from)
{
    Ignore(to.SetSoundEffectsOn(from.SoundEffectsOn()));
    Balloon& balloon = from.GetBalloon();
    Ignore(to.GetBalloon().SetFontName(balloon.FontName()));
    Ignore(to.GetBalloon().SetFontSize(balloon.FontSize()));
    Ignore(to.SetTop(from.Top()));
    Ignore(to.SetLeft(from.Left()));
    Ignore(to.SetHeight(from.Height()));
    Ignore(to.SetWidth(from.Width()));
    Ignore(to.SetTTSModeID(from.TTSModeID()));
    // Lines and characters a line are those of the file.
    constexpr std::uint32_t kBits = 0xFFFF;
    const std::uint32_t style = to.GetBalloon().Style() & ~kBits;
    Ignore(to.GetBalloon().SetStyle(style | (balloon.Style() & kBits)));
}

Result LastingCharacter::Do(const std::function<Result(Character&)>& call)
{
    Result done = call(*now_);
    if (done.code != ErrorCode::ControlLost || !replace_)
        return done;
    Character* const next = std::exchange(replace_, nullptr)(*now_);
    if (!next)
        return done;
    now_ = next;
    if (shown_)
        Ignore(now_->Show());
    return call(*now_);
}

Result LastingCharacter::Show()
{
    Result shown = Do([](Character& character) { return character.Show(); });
    shown_ = shown_ || shown.Ok();
    return shown;
}

Result LastingCharacter::Hide()
{
    shown_ = false;
    return Do([](Character& character) { return character.Hide(); });
}

Result LastingCharacter::Play(std::wstring_view animation)
{
    return Do([animation](Character& character) { return character.Play(animation); });
}

Result LastingCharacter::Speak(std::wstring markup)
{
    return Do([&markup](Character& character) { return character.Speak(markup); });
}

Result LastingCharacter::StopAll()
{
    return Do([](Character& character) { return character.StopAll(); });
}

Result LastingCharacter::SetTop(long pixels)
{
    return Do([pixels](Character& character) { return character.SetTop(pixels); });
}

Result LastingCharacter::SetLeft(long pixels)
{
    return Do([pixels](Character& character) { return character.SetLeft(pixels); });
}

Result LastingCharacter::SetHeight(long pixels)
{
    return Do([pixels](Character& character) { return character.SetHeight(pixels); });
}

Result LastingCharacter::SetWidth(long pixels)
{
    return Do([pixels](Character& character) { return character.SetWidth(pixels); });
}

Result LastingCharacter::SetTTSModeID(std::wstring_view id)
{
    return Do([id](Character& character) { return character.SetTTSModeID(id); });
}

Result LastingCharacter::SetSoundEffectsOn(bool on)
{
    return Do([on](Character& character) { return character.SetSoundEffectsOn(on); });
}

Result LastingCharacter::LastingBalloon::SetFontName(std::wstring_view name)
{
    return owner_.Do([name](Character& character) { return character.GetBalloon().SetFontName(name); });
}

Result LastingCharacter::LastingBalloon::SetFontSize(long points)
{
    return owner_.Do([points](Character& character) { return character.GetBalloon().SetFontSize(points); });
}

Result LastingCharacter::LastingBalloon::SetStyle(std::uint32_t style)
{
    return owner_.Do([style](Character& character) { return character.GetBalloon().SetStyle(style); });
}

} // namespace voxtrel::agent
