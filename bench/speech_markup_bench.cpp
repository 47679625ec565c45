// How long the markup of a long text takes, beside the least that can be done with it: cutting it into words
// and looking each word up in a hash map.
//
// The text is English-like: words of a vocabulary of 10,000, the n-th as frequent as 1/n, in sentences and
// paragraphs. Every tenth word of the vocabulary has a pronunciation. The settings are those of the platform.

#include "platform/linux/file_settings_backend.h"
#include "speech/speech_markup.h"
#include "textreader/reading_markup.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace voxtrel {
namespace {

constexpr std::size_t kCharacters = 1'000'000;
constexpr int kVocabulary = 10'000;
constexpr int kPronunciationEvery = 10;

std::wstring MakeWord(std::mt19937& random)
{
    constexpr const wchar_t* kOnsets[] = {L"",  L"b", L"c", L"d", L"f",  L"gr", L"h",  L"l", L"m",
                                          L"n", L"p", L"r", L"s", L"st", L"t",  L"th", L"w"};
    constexpr const wchar_t* kRhymes[] = {L"a",  L"e",  L"i",  L"o",  L"u",   L"ea",
                                          L"an", L"er", L"in", L"on", L"ight"};
    std::wstring word;
    for (std::size_t syllables = 1 + random() % 4; syllables > 0; --syllables) {
        word += kOnsets[random() % std::size(kOnsets)];
        word += kRhymes[random() % std::size(kRhymes)];
    }
    return word;
}

std::vector<std::wstring> MakeVocabulary()
{
    std::mt19937 random(1);
    std::vector<std::wstring> words;
    std::unordered_map<std::wstring, bool> known;
    while (words.size() < kVocabulary) {
        std::wstring word = MakeWord(random);
        if (known.emplace(word, true).second)
            words.push_back(std::move(word));
    }
    // Frequent words are short.
    std::stable_sort(words.begin(), words.begin() + 500,
                     [](const auto& left, const auto& right) { return left.size() < right.size(); });
    return words;
}

const std::vector<std::wstring>& Vocabulary()
{
    static const std::vector<std::wstring> words = MakeVocabulary();
    return words;
}

std::wstring MakeText()
{
    std::vector<double> weights;
    for (int rank = 1; rank <= kVocabulary; ++rank)
        weights.push_back(1.0 / rank);
    std::discrete_distribution<std::size_t> zipf(weights.begin(), weights.end());
    std::mt19937 random(2);
    std::wstring text;
    while (text.size() < kCharacters) {
        for (std::size_t left = 5 + random() % 20; left > 0; --left) {
            std::wstring word = Vocabulary()[zipf(random)];
            if (text.empty() || text.ends_with(L". ") || text.ends_with(L'\n'))
                word[0] = static_cast<wchar_t>(word[0] - L'a' + L'A');
            text += word;
            text += left == 1 ? L"." : random() % 12 == 0 ? L", " : L" ";
        }
        text += random() % 8 == 0 ? L"\r\n" : L" ";
    }
    text.resize(kCharacters);
    return text;
}

const std::wstring& Text()
{
    static const std::wstring text = MakeText();
    return text;
}

bool HasPronunciation(std::size_t word) { return word % kPronunciationEvery == 3; }

// The yardstick's map takes views, so that it makes no text for a lookup.
struct ViewHash {
    using is_transparent = void;
    std::size_t operator()(std::wstring_view text) const { return std::hash<std::wstring_view>()(text); }
};
using Map = std::unordered_map<std::wstring, std::wstring, ViewHash, std::equal_to<>>;

void BareLoop(benchmark::State& state)
{
    Map map;
    for (std::size_t i = 0; i < Vocabulary().size(); ++i) {
        if (HasPronunciation(i))
            map.emplace(Vocabulary()[i], L"spoken");
    }
    const std::wstring& text = Text();
    for (auto _ : state) {
        std::size_t found = 0;
        std::size_t start = 0;
        for (std::size_t i = 0; i <= text.size(); ++i) {
            const bool inWord = i < text.size() && ((text[i] >= L'a' && text[i] <= L'z') ||
                                                    (text[i] >= L'A' && text[i] <= L'Z'));
            if (inWord)
                continue;
            if (i > start)
                found += map.contains(std::wstring_view(text).substr(start, i - start)) ? 1 : 0;
            start = i + 1;
        }
        benchmark::DoNotOptimize(found);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kCharacters));
}

void BuildSpeechText(benchmark::State& state)
{
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "voxtrel-speech-markup-bench";
    std::filesystem::remove_all(folder);
    platform::FileSettingsBackend backend(folder / "settings");
    settings::SettingsStore store(backend);
    store.SetApplicationName(L"Orvella");
    {
        const settings::SettingsChanges together(store);
        for (std::size_t i = 0; i < Vocabulary().size(); ++i) {
            if (HasPronunciation(i))
                store.SaveSetting(L"modify", Vocabulary()[i], Vocabulary()[i] + L"eh");
        }
    }
    const speech::PronunciationList pronunciations(store);
    settings::SharedSettings shared;
    shared.Agent_Balloon_Always = static_cast<std::int16_t>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        std::wstring text = Text();
        shared.PendingSpeech = std::wstring();
        state.ResumeTiming();
        speech::BuildSpeechText(text, shared, pronunciations);
        benchmark::DoNotOptimize(shared.PendingSpeech.data());
    }
    state.counters["pronunciations"] = static_cast<double>(pronunciations.Written().size());
    state.counters["markup"] = static_cast<double>(shared.PendingSpeech.size());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kCharacters));
    std::filesystem::remove_all(folder);
}

// The Text Reader's markup of the same text, with a bookmark in front of every word.
void BuildReadingMarkup(benchmark::State& state)
{
    std::vector<std::pair<std::wstring, std::wstring>> pairs;
    for (std::size_t i = 0; i < Vocabulary().size(); ++i) {
        if (HasPronunciation(i))
            pairs.emplace_back(Vocabulary()[i], Vocabulary()[i] + L"eh");
    }
    const speech::PronunciationTable table(pairs);
    settings::SharedSettings shared;
    shared.interwordpause = static_cast<std::int16_t>(state.range(0));
    const auto length = static_cast<std::int32_t>(Text().size());
    for (auto _ : state) {
        const auto reading = textreader::BuildReadingMarkup(Text(), 0, length, shared, table);
        benchmark::DoNotOptimize(reading.markup.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kCharacters));
}

BENCHMARK(BareLoop)->Unit(benchmark::kMillisecond);
BENCHMARK(BuildSpeechText)->ArgName("mode")->Arg(0)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BuildReadingMarkup)->ArgName("pause")->Arg(0)->Arg(100)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace voxtrel
