#include "agent/voices/sapi_phrase.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

namespace voxtrel::agent::voices {

namespace {

using acs::Mouth;
using namespace speech;

constexpr double kHighest = 10; // of both scales
constexpr double kRateAtHighest = 3;
constexpr double kPitchStepsAnOctave = 24;

std::wstring Escaped(std::wstring_view text)
{
    std::wstring escaped;
    for (const wchar_t c : text) {
        switch (c) {
        case L'&':
            escaped += L"&amp;";
            break;
        case L'<':
            escaped += L"&lt;";
            break;
        case L'>':
            escaped += L"&gt;";
            break;
        case L'"':
            escaped += L"&quot;";
            break;
        case L'\'':
            escaped += L"&apos;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

long OnScale(double value) { return std::lround(std::clamp(value, -kHighest, kHighest)); }

} // namespace

SapiMarkup SapiMarkupOf(const Phrase& phrase)
{
    SapiMarkup markup;
    markup.text = L"<pitch absmiddle=\"" + std::to_wstring(SapiPitch(phrase.prosody)) + L"\">";
    for (std::size_t i = 0; i < phrase.words.size(); ++i) {
        const PhraseWord& word = phrase.words[i];
        markup.text += (i > 0 ? L" " : L"");
        markup.text += L"<bookmark mark=\"" + std::to_wstring(i) + L"\"/>";
        markup.text += word.emphasized ? L"<emph>" : L"";
        markup.offsets.push_back(markup.text.size());
        markup.text += Escaped(word.text);
        markup.text += word.emphasized ? L"</emph>" : L"";
    }
    markup.text += L"</pitch>";
    return markup;
}

long SapiRate(const Prosody& prosody)
{
    return OnScale(kHighest * std::log(prosody.SpeedFactor()) / std::log(kRateAtHighest));
}

long SapiPitch(const Prosody& prosody)
{
    return OnScale(kPitchStepsAnOctave * std::log2(prosody.PitchFactor()));
}

Mouth MouthOfViseme(unsigned viseme)
{
    static constexpr std::array kMouths = {
        Mouth::Closed, // silence
        Mouth::Open,   // ae ax ah
        Mouth::Medium, // aa
        Mouth::Medium, // ao
        Mouth::Open,   // ey eh uh
        Mouth::Open,   // er
        Mouth::Slight, // y iy ih ix
        Mouth::Narrow, // w uw
        Mouth::Narrow, // ow
        Mouth::Fully,  // aw
        Mouth::Medium, // oy
        Mouth::Fully,  // ay
        Mouth::Slight, // h
        Mouth::Partly, // r
        Mouth::Slight, // l
        Mouth::Partly, // s z
        Mouth::Partly, // sh ch jh zh
        Mouth::Partly, // th dh
        Mouth::Closed, // f v
        Mouth::Partly, // d t n
        Mouth::Slight, // k g ng
        Mouth::Closed, // p b m
    };
    return viseme < kMouths.size() ? kMouths[viseme] : Mouth::Closed;
}

} // namespace voxtrel::agent::voices
