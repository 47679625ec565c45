#include "agent/speech/phrase_timeline.h"

#include "agent/speech/text_characters.h"

#include <algorithm>
#include <string>

namespace voxtrel::agent::speech {

namespace {

using acs::Mouth;

constexpr std::int64_t kUnknown = -1;
constexpr std::size_t kLettersOfDigit = 4; // "seven" is as long as five letters

// Where the words begin that were reported in their order.
std::vector<std::int64_t> Anchors(std::size_t words, std::span<const ReportedWord> reported,
                                  std::int64_t speechStart, std::int64_t speechEnd)
{
    std::vector<std::int64_t> anchors(words, kUnknown);
    std::size_t next = 0;
    std::int64_t reached = speechStart;
    for (const ReportedWord& report : reported) {
        if (report.word < next || report.word >= words)
            continue;
        const std::int64_t at = std::min(std::max(report.sample, speechStart), speechEnd);
        if (at < reached)
            continue;
        anchors[report.word] = at;
        reached = at;
        next = report.word + 1;
    }
    return anchors;
}

struct SoundRow {
    std::u32string_view sounds;
    Mouth mouth;
};

constexpr SoundRow kSoundRows[] = {
    {U"pbmfv\u0253\u0278\u03B2\u0271", Mouth::Closed},
    {U"kgqxhcjyliI\u0268\u026A\u014B\u0261\u0263\u0294\u0265", Mouth::Slight},
    {U"\u00E6aA\u0251", Mouth::Fully},
    {U"eE\u0259\u025B\u025C\u025A\u028C\u0250\u00E4", Mouth::Open},
    {U"oO\u0254\u0252\u00F6\u00F8\u0153", Mouth::Medium},
    {U"uUwW\u028A\u00FC\u026F\u0289", Mouth::Narrow},
};

} // namespace

std::size_t SpokenLength(std::wstring_view word)
{
    const auto isDigit = [](wchar_t c) { return IsAsciiDigit(static_cast<char32_t>(c)); };
    const auto digits = static_cast<std::size_t>(std::count_if(word.begin(), word.end(), isDigit));
    return word.size() + 1 + digits * kLettersOfDigit;
}

std::vector<std::int64_t> PlaceWords(const Phrase& phrase, std::span<const ReportedWord> reported,
                                     std::int64_t speechStart, std::int64_t speechEnd)
{
    const std::size_t count = phrase.words.size();
    std::vector<std::int64_t> starts = Anchors(count, reported, speechStart, speechEnd);
    for (std::size_t from = 0; from < count;) {
        if (starts[from] == kUnknown)
            starts[from] = speechStart; // only the first can still be without
        std::size_t to = from + 1;
        while (to < count && starts[to] == kUnknown)
            ++to;
        const std::int64_t until = to < count ? starts[to] : speechEnd;
        double weight = 0;
        for (std::size_t i = from; i < to; ++i)
            weight += static_cast<double>(SpokenLength(phrase.words[i].text));
        double before = 0;
        const std::int64_t since = starts[from];
        for (std::size_t i = from; i < to; ++i) {
            starts[i] =
                since + static_cast<std::int64_t>(static_cast<double>(until - since) * before / weight);
            before += static_cast<double>(SpokenLength(phrase.words[i].text));
        }
        from = to;
    }
    return starts;
}

std::vector<Phoneme> MouthsOfWord(std::wstring_view word, std::int64_t start, std::int64_t end)
{
    std::u32string letters;
    for (std::size_t i = 0; i < word.size();) {
        const CodePoint point = CodePointAt(word, i);
        i += point.length;
        const char32_t c = LowerAscii(point.value);
        if (c >= 0x80 || IsAsciiLetter(c) || IsAsciiDigit(c))
            letters += c;
    }
    std::vector<Phoneme> mouths;
    for (std::size_t i = 0; i < letters.size(); ++i) {
        const auto at = start + (end - start) * static_cast<std::int64_t>(i) / std::ssize(letters);
        mouths.push_back({at, MouthOfSound(letters[i]), false});
    }
    return mouths;
}

Mouth MouthOfSound(char32_t sound)
{
    for (const auto& [sounds, mouth] : kSoundRows) {
        if (sounds.find(sound) != std::u32string_view::npos)
            return mouth;
    }
    return Mouth::Partly;
}

} // namespace voxtrel::agent::speech
