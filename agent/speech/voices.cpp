#include "agent/speech/voices.h"

#include "agent/speech/text_characters.h"

#include <algorithm>
#include <array>

namespace voxtrel::agent::speech {

namespace {

constexpr std::array kVoices{
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273000}", L"Adult Male 1, US English", false, VoiceBase::Rms, 98, 24, 1.0, 1.0, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273001}", L"Adult Male 2, US English", false, VoiceBase::Awb, 132, 25, 1.0, 1.0, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273002}", L"Adult Male 3, US English", false, VoiceBase::Kal, 95, 11, 1.1, 1.0, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273003}", L"Adult Male 4, US English", false, VoiceBase::Rms, 78, 16, 1.12, 0.87, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273004}", L"Adult Male 5, US English", false, VoiceBase::Rms, 148, 34, 0.92, 1.13, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273005}", L"Adult Male 6, US English", false, VoiceBase::Awb, 106, 18, 1.08, 0.88, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273006}", L"Adult Female 1, US English", true, VoiceBase::Slt, 172, 27, 1.0, 1.0, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273007}", L"Adult Female 2, US English", true, VoiceBase::Slt, 222, 40, 0.92, 1.11, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273008}", L"Adult Female 3, US English", true, VoiceBase::Slt, 150, 20, 1.1, 0.92, 1.0},
    Voice{L"{CA141FD0-AC7F-11D1-97A3-006008273009}", L"Adult Female 4, US English", true, VoiceBase::Awb, 205, 34, 1.0, 1.16, 1.0},
};

} // namespace

std::span<const Voice> AllVoices() { return kVoices; }

const Voice* FindVoice(std::wstring_view modeId)
{
    const auto same = [](wchar_t a, wchar_t b) { return LowerAscii(a) == LowerAscii(b); };
    const auto found = std::find_if(kVoices.begin(), kVoices.end(), [&](const Voice& voice) {
        return std::equal(voice.modeId.begin(), voice.modeId.end(), modeId.begin(), modeId.end(), same);
    });
    return found == kVoices.end() ? nullptr : &*found;
}

} // namespace voxtrel::agent::speech
