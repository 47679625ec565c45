#include "agent/speech/voice_catalogue.h"

#include "agent/speech/text_characters.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace voxtrel::agent::speech {

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr auto kListAgesIn = 10s; // a voice may have been installed since
constexpr auto kEndingTakes = 1s;

struct Entry {
    explicit Entry(SystemVoice voice, const VoiceFamily& family) : system(std::move(voice))
    {
        choice.modeId = system.modeId;
        choice.name = system.displayName;
        choice.female = system.female;
        choice.gain = family.gain;
        choice.system = &system;
        choice.family = &family;
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    SystemVoice system;
    Voice choice;
    bool installed = true;
};

bool SameId(std::wstring_view a, std::wstring_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t x, wchar_t y) {
        return LowerAscii(static_cast<char32_t>(x)) == LowerAscii(static_cast<char32_t>(y));
    });
}

} // namespace

struct VoiceCatalogue::Shelf {
    enum class State { NotAsked, Asking, Answered };

    explicit Shelf(VoiceFamily of) : family(std::move(of)) {}

    const VoiceFamily family;
    std::mutex mutex;
    std::condition_variable answered;
    State state = State::NotAsked;
    steady_clock::time_point answeredAt;
    std::vector<SystemVoice> listed;
    std::deque<Entry> entries;   // never removed: someone may be speaking
    std::deque<Entry> unchecked; // trusted while the engine has not answered
    std::thread thread;

    void Take(std::vector<SystemVoice> voices)
    {
        for (Entry& entry : entries)
            entry.installed = false;
        for (const SystemVoice& voice : voices) {
            if (Entry* known = FindIn(entries, voice.modeId))
                known->installed = true;
            else
                entries.emplace_back(voice, family);
        }
        listed = std::move(voices);
        answeredAt = steady_clock::now();
        state = State::Answered;
    }

    static Entry* FindIn(std::deque<Entry>& all, std::wstring_view modeId)
    {
        const auto found = std::find_if(all.begin(), all.end(), [modeId](const Entry& entry) {
            return SameId(entry.system.modeId, modeId);
        });
        return found == all.end() ? nullptr : &*found;
    }

    const Voice* Installed(std::wstring_view modeId)
    {
        const Entry* entry = FindIn(entries, modeId);
        return entry && entry->installed ? &entry->choice : nullptr;
    }

    const Voice* Trusted(std::wstring_view modeId)
    {
        if (const Entry* entry = FindIn(unchecked, modeId))
            return &entry->choice;
        return &unchecked
                    .emplace_back(SystemVoice{.modeId = std::wstring(modeId), .engine = family.name}, family)
                    .choice;
    }
};

VoiceCatalogue::VoiceCatalogue(std::vector<VoiceFamily> families)
{
    for (VoiceFamily& family : families)
        shelves_.push_back(std::make_shared<Shelf>(std::move(family)));
}

VoiceCatalogue::~VoiceCatalogue()
{
    for (const auto& shelf : shelves_) {
        std::unique_lock lock(shelf->mutex);
        const bool ended = shelf->answered.wait_for(lock, kEndingTakes,
                                                    [&] { return shelf->state != Shelf::State::Asking; });
        lock.unlock();
        if (!shelf->thread.joinable())
            continue;
        if (ended)
            shelf->thread.join();
        else
            shelf->thread.detach(); // it keeps the shelf
    }
}

// The caller holds the lock of the shelf.
void VoiceCatalogue::AskSoon(const std::shared_ptr<Shelf>& shelf)
{
    if (shelf->state == Shelf::State::Asking)
        return;
    if (shelf->thread.joinable())
        shelf->thread.join(); // it has answered: nothing is left for it to do
    shelf->state = Shelf::State::Asking;
    shelf->thread = std::thread([shelf] {
        std::vector<SystemVoice> voices = shelf->family.list();
        {
            const std::lock_guard lock(shelf->mutex);
            shelf->Take(std::move(voices));
        }
        shelf->answered.notify_all();
    });
}

const Voice* VoiceCatalogue::Find(std::wstring_view modeId, std::chrono::milliseconds limit)
{
    if (const Voice* builtIn = FindVoice(modeId))
        return builtIn;
    const std::uint32_t code = FamilyCodeOf(modeId);
    const auto found = std::find_if(shelves_.begin(), shelves_.end(),
                                    [code](const auto& shelf) { return shelf->family.code == code; });
    if (found == shelves_.end())
        return nullptr;
    const std::shared_ptr<Shelf> shelf = *found;
    std::unique_lock lock(shelf->mutex);
    if (const Voice* voice = shelf->Installed(modeId))
        return voice;
    const bool fresh =
        shelf->state == Shelf::State::Answered && steady_clock::now() < shelf->answeredAt + kListAgesIn;
    if (!fresh)
        AskSoon(shelf);
    const bool answered =
        shelf->answered.wait_for(lock, limit, [&shelf] { return shelf->state == Shelf::State::Answered; });
    return answered ? shelf->Installed(modeId) : shelf->Trusted(modeId);
}

std::vector<SystemVoice> VoiceCatalogue::All(std::chrono::milliseconds limit)
{
    const auto until = steady_clock::now() + limit;
    for (const auto& shelf : shelves_) {
        const std::lock_guard lock(shelf->mutex);
        AskSoon(shelf);
    }
    std::vector<SystemVoice> all;
    for (const auto& shelf : shelves_) {
        std::unique_lock lock(shelf->mutex);
        shelf->answered.wait_until(lock, until, [&] { return shelf->state == Shelf::State::Answered; });
        all.insert(all.end(), shelf->listed.begin(), shelf->listed.end());
    }
    return all;
}

} // namespace voxtrel::agent::speech
