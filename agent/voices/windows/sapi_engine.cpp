// SAPI speaks into a stream of ours and keeps the events of it in a queue; both are emptied on the worker
// while it speaks, so that the first sound does not wait for the last.

#include "agent/voices/sapi_engine.h"

#include "agent/voices/sapi_phrase.h"
#include "agent/voices/system_voices.h"
#include "agent/voices/windows/sapi_stream.h"
#include "agent/voices/windows/sapi_tokens.h"

#include <algorithm>
#include <chrono>
#include <cwchar>
#include <optional>
#include <utility>
#include <vector>

namespace voxtrel::agent::voices {

namespace {

using namespace speech;
using std::chrono::milliseconds;

constexpr milliseconds kLookUp{20};
constexpr ULONG kSilencedWithinMs = 200;
constexpr USHORT kFullVolume = 100;
constexpr ULONGLONG kWanted = SPFEI(SPEI_WORD_BOUNDARY) | SPFEI(SPEI_TTS_BOOKMARK) | SPFEI(SPEI_VISEME);

constexpr SapiShelf kSapiShelf = {kSapiCode, L"SAPI 5", L"Microsoft\\Speech\\Voices"};
constexpr SapiShelf kOneCoreShelf = {kOneCoreCode, L"OneCore", L"Microsoft\\Speech_OneCore\\Voices"};

// An event that was taken out of the queue, with what it owns.
class SapiEvent {
public:
    SapiEvent() = default;
    ~SapiEvent()
    {
        if (event_.elParamType == SPET_LPARAM_IS_STRING || event_.elParamType == SPET_LPARAM_IS_POINTER)
            CoTaskMemFree(reinterpret_cast<void*>(event_.lParam));
        else if (event_.elParamType == SPET_LPARAM_IS_OBJECT || event_.elParamType == SPET_LPARAM_IS_TOKEN)
            reinterpret_cast<IUnknown*>(event_.lParam)->Release();
    }
    SapiEvent(const SapiEvent&) = delete;
    SapiEvent& operator=(const SapiEvent&) = delete;

    bool TakeFrom(ISpVoice& voice)
    {
        ULONG fetched = 0;
        return SUCCEEDED(voice.GetEvents(1, &event_, &fetched)) && fetched == 1;
    }
    const SPEVENT& Get() const { return event_; }

private:
    SPEVENT event_ = {};
};

// The word that a bookmark names.
std::optional<std::size_t> WordOfBookmark(const SPEVENT& event)
{
    const auto* const name = reinterpret_cast<const wchar_t*>(event.lParam);
    if (event.elParamType != SPET_LPARAM_IS_STRING || !name || *name < L'0' || *name > L'9')
        return std::nullopt;
    return std::wcstoul(name, nullptr, 10);
}

// Where the words of a phrase begin. A bookmark is sure of its word; the place that a word event gives is
// not, since engines count the markup in different ways: it counts where there is no bookmark.
class WordPlaces {
public:
    WordPlaces(const SapiMarkup& markup, EngineSink& sink)
        : offsets_(markup.offsets), sink_(sink), marked_(markup.offsets.size(), false)
    {
    }

    bool Bookmark(std::int64_t sample, std::size_t word)
    {
        if (word >= marked_.size() || marked_[word])
            return true;
        marked_[word] = true;
        return sink_.Word(sample, word);
    }

    void WordEvent(std::int64_t sample, LPARAM offset)
    {
        events_.emplace_back(sample, WordAtOffset(offsets_, static_cast<std::size_t>(offset)));
    }

    bool ReportTheUnmarked()
    {
        return std::all_of(events_.begin(), events_.end(),
                           [this](const auto& event) { return Bookmark(event.first, event.second); });
    }

private:
    const std::vector<std::size_t>& offsets_;
    EngineSink& sink_;
    std::vector<bool> marked_;
    std::vector<std::pair<std::int64_t, std::size_t>> events_;
};

class SapiEngine final : public VoiceEngine {
public:
    bool Speak(const SystemVoice& voice, const Phrase& phrase, EngineSink& sink) override
    {
        if (!Choose(voice.key))
            return false;
        const ComPointer<SapiStream> stream(new SapiStream);
        const SapiMarkup markup = SapiMarkupOf(phrase);
        ULONG number = 0;
        if (FAILED(voice_->SetOutput(stream.Get(), FALSE)) ||
            FAILED(voice_->SetRate(SapiRate(phrase.prosody))) || FAILED(voice_->SetVolume(kFullVolume)) ||
            FAILED(voice_->SetInterest(kWanted, kWanted)))
            return false;
        if (!sink.Begin(SapiStream::kSampleRate))
            return true;
        if (FAILED(voice_->Speak(markup.text.c_str(), SPF_ASYNC | SPF_IS_XML, &number)))
            return false;
        WordPlaces words(markup, sink);
        if (!Follow(*stream.Get(), number, words, sink) || !words.ReportTheUnmarked()) {
            Silence(*stream.Get());
            return true;
        }
        SPVOICESTATUS status = {};
        return SUCCEEDED(voice_->GetStatus(&status, nullptr)) && SUCCEEDED(status.hrLastResult);
    }

private:
    // A voice that has been removed meanwhile fails here.
    bool Choose(const std::wstring& key)
    {
        if (voice_ && key == key_)
            return true;
        ComPointer<ISpObjectToken> token;
        if (!voice_ && FAILED(CoCreateInstance(__uuidof(SpVoice), nullptr, CLSCTX_INPROC_SERVER,
                                               __uuidof(ISpVoice), voice_.ReceiveVoid())))
            return false;
        if (FAILED(CoCreateInstance(__uuidof(SpObjectToken), nullptr, CLSCTX_INPROC_SERVER,
                                    __uuidof(ISpObjectToken), token.ReceiveVoid())) ||
            FAILED(token->SetId(nullptr, key.c_str(), FALSE)) || FAILED(voice_->SetVoice(token.Get())))
            return false;
        key_ = key;
        return true;
    }

    // Hands on what comes until the voice is done; false when nothing more is wanted.
    bool Follow(SapiStream& stream, ULONG number, WordPlaces& words, EngineSink& sink)
    {
        for (bool done = false; !done;) {
            const std::vector<std::int16_t> early = stream.Take(kLookUp);
            // What is there when it is done is all there is.
            done = voice_->WaitUntilDone(0) != S_FALSE;
            const std::vector<std::int16_t> late =
                done ? stream.Take(milliseconds(0)) : std::vector<std::int16_t>();
            if (!ReportEvents(number, words, sink) || (!early.empty() && !sink.Samples(early)) ||
                (!late.empty() && !sink.Samples(late)))
                return false;
        }
        return true;
    }

    bool ReportEvents(ULONG number, WordPlaces& words, EngineSink& sink)
    {
        for (;;) {
            SapiEvent taken;
            if (!taken.TakeFrom(*voice_.Get()))
                return true;
            // What was stopped may still tell.
            if (taken.Get().ulStreamNum == number && !Report(taken.Get(), words, sink))
                return false;
        }
    }

    static bool Report(const SPEVENT& event, WordPlaces& words, EngineSink& sink)
    {
        const auto sample = static_cast<std::int64_t>(event.ullAudioStreamOffset / sizeof(std::int16_t));
        if (event.eEventId == SPEI_TTS_BOOKMARK) {
            const auto word = WordOfBookmark(event);
            return !word || words.Bookmark(sample, *word);
        }
        if (event.eEventId == SPEI_WORD_BOUNDARY)
            words.WordEvent(sample, event.lParam);
        if (event.eEventId == SPEI_VISEME)
            return sink.Mouth(sample, MouthOfViseme(LOWORD(event.lParam)));
        return true;
    }

    // A voice that goes on nevertheless is not used again.
    void Silence(SapiStream& stream)
    {
        stream.Close();
        if (FAILED(voice_->Speak(nullptr, SPF_ASYNC | SPF_PURGEBEFORESPEAK, nullptr)) ||
            voice_->WaitUntilDone(kSilencedWithinMs) != S_OK)
            voice_ = {};
    }

    const ComThread com_; // outlives the objects
    ComPointer<ISpVoice> voice_;
    std::wstring key_; // of the voice that it speaks with
};

VoiceFamily FamilyOf(const SapiShelf& shelf)
{
    return {.code = shelf.code,
            .name = std::wstring(shelf.name),
            .list = [shelf] { return ListSapiVoices(shelf); },
            .makeEngine = [] { return std::make_unique<SapiEngine>(); }};
}

} // namespace

VoiceFamily SapiFamily() { return FamilyOf(kSapiShelf); }

VoiceFamily OneCoreFamily() { return FamilyOf(kOneCoreShelf); }

} // namespace voxtrel::agent::voices
