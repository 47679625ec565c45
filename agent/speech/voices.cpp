#include "agent/speech/voices.h"

#include "agent/speech/text_characters.h"

#include <algorithm>
#include <array>

namespace voxtrel::agent::speech {

namespace {

constexpr int kSystemVoiceHum = 40;

// The base voices with their own pitch first; the others differ in pitch, pace and build. The gains bring all
// to the same loudness.
constexpr std::array kVoices{
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273000}",
          .name = L"Adult Male 1, US English",
          .female = false,
          .base = VoiceBase::Rms,
          .pitchHz = 98,
          .pitchSpreadHz = 32,
          .stretch = 1.0,
          .tract = 1.0,
          .gain = 1.6},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273001}",
          .name = L"Adult Male 2, US English",
          .female = false,
          .base = VoiceBase::Awb,
          .pitchHz = 132,
          .pitchSpreadHz = 25,
          .stretch = 1.0,
          .tract = 1.0,
          .gain = 1.35},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273002}",
          .name = L"Adult Male 3, US English",
          .female = false,
          .base = VoiceBase::Kal,
          .pitchHz = 95,
          .pitchSpreadHz = 11,
          .stretch = 1.1,
          .tract = 1.0,
          .gain = 1.9},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273003}",
          .name = L"Adult Male 4, US English",
          .female = false,
          .base = VoiceBase::Rms,
          .pitchHz = 78,
          .pitchSpreadHz = 22,
          .stretch = 1.06,
          .tract = 0.95,
          .gain = 1.62},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273004}",
          .name = L"Adult Male 5, US English",
          .female = false,
          .base = VoiceBase::Rms,
          .pitchHz = 142,
          .pitchSpreadHz = 44,
          .stretch = 0.95,
          .tract = 1.13,
          .gain = 1.6},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273005}",
          .name = L"Adult Male 6, US English",
          .female = false,
          .base = VoiceBase::Awb,
          .pitchHz = 104,
          .pitchSpreadHz = 18,
          .stretch = 1.05,
          .tract = 0.93,
          .gain = 1.35},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273006}",
          .name = L"Adult Female 1, US English",
          .female = true,
          .base = VoiceBase::Slt,
          .pitchHz = 172,
          .pitchSpreadHz = 27,
          .stretch = 1.0,
          .tract = 1.0,
          .gain = 0.85},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273007}",
          .name = L"Adult Female 2, US English",
          .female = true,
          .base = VoiceBase::Slt,
          .pitchHz = 214,
          .pitchSpreadHz = 38,
          .stretch = 0.97,
          .tract = 1.02,
          .gain = 0.72},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273008}",
          .name = L"Adult Female 3, US English",
          .female = true,
          .base = VoiceBase::Slt,
          .pitchHz = 148,
          .pitchSpreadHz = 20,
          .stretch = 1.08,
          .tract = 0.93,
          .gain = 0.93},
    Voice{.modeId = L"{CA141FD0-AC7F-11D1-97A3-006008273009}",
          .name = L"Adult Female 4, US English",
          .female = true,
          .base = VoiceBase::Awb,
          .pitchHz = 202,
          .pitchSpreadHz = 34,
          .stretch = 1.0,
          .tract = 1.16,
          .gain = 1.12},
};

} // namespace

std::span<const Voice> AllVoices() { return kVoices; }

const Voice& StandInFor(const Voice& voice)
{
    const auto found = std::find_if(kVoices.begin(), kVoices.end(),
                                    [&voice](const Voice& other) { return other.female == voice.female; });
    return *found;
}

int AudibleLevel(const Voice& voice)
{
    if (voice.system)
        return kSystemVoiceHum;
    switch (voice.base) {
    case VoiceBase::Kal:
        return 60;
    case VoiceBase::Awb:
        return 102; // the recordings hiss
    case VoiceBase::Rms:
        return 54;
    case VoiceBase::Slt:
        break;
    }
    return 72;
}

const Voice* FindVoice(std::wstring_view modeId)
{
    const auto same = [](wchar_t a, wchar_t b) { return LowerAscii(a) == LowerAscii(b); };
    const auto found = std::find_if(kVoices.begin(), kVoices.end(), [&](const Voice& voice) {
        return std::equal(voice.modeId.begin(), voice.modeId.end(), modeId.begin(), modeId.end(), same);
    });
    return found == kVoices.end() ? nullptr : &*found;
}

} // namespace voxtrel::agent::speech
