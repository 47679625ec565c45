// The Text Reader on long texts. Yardstick: cutting the same text at blanks and looking every word up in a
// hash map.

#include "settings/memory_backend.h"
#include "settings/settings_store.h"
#include "speech/pronunciation_list.h"
#include "textreader/reading_markup.h"
#include "textreader/segmentation.h"
#include "textreader/text_reader.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

using namespace voxtrel;

constexpr std::size_t kMegabyte = 1000000;

// Prose: words of several lengths, commas, sentences, lines, now and then a number or an accent.
std::wstring Prose(std::size_t size)
{
    static const std::wstring kWords[] = {L"the",     L"voice", L"reads",  L"along",    L"with",      L"a",
                                          L"person,", L"and",   L"every",  L"word",     L"caf\u00E9", L"is",
                                          L"shown",   L"3.14",  L"before", L"somebody", L"hears",     L"it",
                                          L"so",      L"don't", L"move"};
    std::wstring text;
    unsigned random = 12345;
    for (int word = 1; text.size() < size; ++word) {
        random = random * 1664525U + 1013904223U;
        text += kWords[(random >> 16) % std::size(kWords)];
        if (word % 90 == 0)
            text += L".\r\n";
        else
            text += word % 13 == 0 ? L". " : L" ";
    }
    return text;
}

std::vector<std::pair<std::wstring, std::wstring>> Pronunciations()
{
    std::vector<std::pair<std::wstring, std::wstring>> pairs;
    for (int i = 0; i < 1000; ++i)
        pairs.emplace_back(L"term" + std::to_wstring(i), L"spoken");
    pairs.emplace_back(L"person,", L"purson");
    return pairs;
}

void Yardstick(benchmark::State& state)
{
    const std::wstring text = Prose(kMegabyte);
    std::unordered_map<std::wstring, std::wstring> list;
    for (auto& pair : Pronunciations())
        list.insert(pair);
    for (auto _ : state) {
        std::size_t found = 0;
        for (std::size_t from = 0; from < text.size();) {
            const std::size_t to = std::min(text.find(L' ', from), text.size());
            found += list.count(text.substr(from, to - from));
            from = to + 1;
        }
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(Yardstick)->Unit(benchmark::kMillisecond);

void ReadSectionMarkup(benchmark::State& state)
{
    const std::wstring text = Prose(static_cast<std::size_t>(state.range(0)) * kMegabyte);
    const settings::SharedSettings shared;
    const speech::PronunciationTable table(Pronunciations());
    for (auto _ : state) {
        const auto reading =
            textreader::BuildReadingMarkup(text, 0, static_cast<std::int32_t>(text.size()), shared, table);
        benchmark::DoNotOptimize(reading.markup.data());
    }
}
BENCHMARK(ReadSectionMarkup)->Arg(1)->Arg(5)->Unit(benchmark::kMillisecond);

class PlainBox final : public textreader::RichTextBox {
public:
    explicit PlainBox(std::wstring text) : text_(std::move(text)) {}

    const std::wstring& Text() const override { return text_; }
    std::int32_t SelStart() const override { return start_; }
    std::int32_t SelLength() const override { return length_; }
    void SetSelStart(std::int32_t position) override { start_ = position; }
    void SetSelLength(std::int32_t length) override { length_ = length; }
    void SetSelColor(std::int32_t) override {}

private:
    std::wstring text_;
    std::int32_t start_ = 0;
    std::int32_t length_ = 0;
};

class PlainWindow final : public textreader::ReaderWindow {
public:
    bool BlockHighlight() const override { return false; }
    bool AutoClose() const override { return false; }
    void SetBusyPointer(bool) override {}
    void RefreshTextBox() override {}
    void ActivateTextBox() override {}
    void FocusHiddenBox() override {}
    void ReleasePause() override {}
    void CloseTextReader() override {}
};

// From places all over five megabytes.
void NextSentenceAnywhere(benchmark::State& state)
{
    PlainBox box(Prose(5 * kMegabyte));
    PlainWindow window;
    settings::MemoryBackend backend;
    settings::SettingsStore store(backend);
    settings::SharedSettings shared;
    const speech::PronunciationList pronunciations(store);
    textreader::TextReader reader(box, window, shared, pronunciations);
    std::int32_t place = 0;
    for (auto _ : state) {
        place = static_cast<std::int32_t>((place + 1234567) % box.Text().size());
        box.SetSelStart(place);
        reader.SelectCurrentSentence();
        const auto begin = std::chrono::steady_clock::now();
        reader.SelectNextSentence();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(took.count());
    }
}
BENCHMARK(NextSentenceAnywhere)->UseManualTime()->Unit(benchmark::kMicrosecond);

// One sentence as long as the text: the scan alone, without its markup.
void NextSentenceOfFiveMegabytes(benchmark::State& state)
{
    const std::wstring text(5 * kMegabyte, L'a');
    for (auto _ : state)
        benchmark::DoNotOptimize(textreader::NextSentence(text, 2));
}
BENCHMARK(NextSentenceOfFiveMegabytes)->Unit(benchmark::kMillisecond);

} // namespace
