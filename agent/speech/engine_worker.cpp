#include "agent/speech/engine_worker.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>

namespace voxtrel::agent::speech {

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr auto kLookUp = 10ms; // how often it is asked whether the phrase is still wanted
constexpr int kMostHung = 2;
constexpr std::size_t kMostSamples = 48000 * 120; // no phrase lasts for minutes: the engine has gone astray

} // namespace

// A phrase in work. The engine writes, the caller waits.
struct EngineWorker::Task : EngineSink {
    Task(const SystemVoice& of, const Phrase& what) : voice(of), phrase(what) {}

    const SystemVoice voice;
    const Phrase phrase;

    std::mutex mutex;
    std::condition_variable changed;
    SpokenPhrase spoken;
    bool done = false;
    bool closed = false; // nobody waits any more
    bool begun = false;
    steady_clock::time_point lastSign = steady_clock::now();

    bool Begin(int sampleRate) override
    {
        return Write([&] { spoken.sampleRate = sampleRate; });
    }
    bool Samples(std::span<const std::int16_t> samples) override
    {
        return Write([&] { spoken.samples.insert(spoken.samples.end(), samples.begin(), samples.end()); });
    }
    bool Word(std::int64_t sample, std::size_t word) override
    {
        return Write([&] { spoken.words.push_back({sample, word}); });
    }
    bool Mouth(std::int64_t sample, acs::Mouth mouth) override
    {
        return Write([&] { spoken.mouths.push_back({sample, mouth, false}); });
    }

    template <typename Action> bool Write(const Action& action)
    {
        const std::lock_guard lock(mutex);
        lastSign = steady_clock::now();
        begun = true;
        if (closed)
            return false;
        action();
        return spoken.samples.size() < kMostSamples;
    }

    void Finish(bool complete)
    {
        {
            const std::lock_guard lock(mutex);
            const bool sane = spoken.samples.size() < kMostSamples;
            spoken.outcome =
                complete && sane ? SpokenPhrase::Outcome::Complete : SpokenPhrase::Outcome::Failed;
            done = true;
        }
        changed.notify_all();
    }
};

// Where a thread finds its work.
struct EngineWorker::Desk {
    std::mutex mutex;
    std::condition_variable changed;
    std::shared_ptr<Task> next;
    bool quit = false;
    bool ended = false;
    std::shared_ptr<Task> last; // of the caller
    bool spokenBefore = false;  // of the caller: the engine has been loaded
    std::thread thread;

    void Work(const std::function<std::unique_ptr<VoiceEngine>()>& make)
    {
        std::unique_ptr<VoiceEngine> engine;
        while (const std::shared_ptr<Task> task = NextTask()) {
            if (!engine)
                engine = make();
            const bool complete = engine && engine->Speak(task->voice, task->phrase, *task);
            if (!complete)
                engine.reset(); // the next phrase gets a new one
            task->Finish(complete);
        }
        engine.reset();
        const std::lock_guard lock(mutex);
        ended = true;
        changed.notify_all();
    }

    std::shared_ptr<Task> NextTask()
    {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return quit || next; });
        return quit ? nullptr : std::exchange(next, nullptr);
    }

    void Leave()
    {
        const std::lock_guard lock(mutex);
        quit = true;
        changed.notify_all();
    }
};

EngineWorker::EngineWorker(std::function<std::unique_ptr<VoiceEngine>()> make)
    : EngineWorker(std::move(make), Patience())
{
}

EngineWorker::EngineWorker(std::function<std::unique_ptr<VoiceEngine>()> make, Patience patience)
    : make_(std::move(make)), patience_(patience)
{
}

EngineWorker::~EngineWorker()
{
    if (!desk_)
        return;
    desk_->Leave();
    std::unique_lock lock(desk_->mutex);
    const bool ended = desk_->changed.wait_for(lock, patience_.later, [this] { return desk_->ended; });
    lock.unlock();
    if (ended)
        desk_->thread.join();
    else
        desk_->thread.detach(); // it keeps the desk
}

void EngineWorker::Abandon()
{
    ++hung_;
    desk_->Leave();
    desk_->thread.detach();
    desk_.reset();
}

// Waits for the thread to be done with a phrase that was not wanted any more, or gets another thread. False
// when there is none.
bool EngineWorker::FreeDesk(const std::function<bool()>& wanted)
{
    while (desk_ && desk_->last && wanted()) {
        Task& task = *desk_->last;
        std::unique_lock lock(task.mutex);
        if (task.changed.wait_for(lock, kLookUp, [&task] { return task.done; })) {
            lock.unlock();
            desk_->last.reset();
            break;
        }
        const auto patience = desk_->spokenBefore || task.begun ? patience_.later : patience_.first;
        const bool hung = steady_clock::now() > task.lastSign + patience;
        lock.unlock();
        if (hung)
            Abandon();
    }
    if (!wanted() || hung_ >= kMostHung)
        return false;
    if (!desk_) {
        desk_ = std::make_shared<Desk>();
        desk_->thread = std::thread([desk = desk_, make = make_] { desk->Work(make); });
    }
    return true;
}

SpokenPhrase EngineWorker::Speak(const SystemVoice& voice, const Phrase& phrase,
                                 const std::function<bool()>& wanted)
{
    if (!FreeDesk(wanted))
        return {.outcome = wanted() ? SpokenPhrase::Outcome::Failed : SpokenPhrase::Outcome::Unwanted};
    const auto task = std::make_shared<Task>(voice, phrase);
    {
        const std::lock_guard lock(desk_->mutex);
        desk_->next = task;
        desk_->last = task;
    }
    desk_->changed.notify_all();

    std::unique_lock lock(task->mutex);
    while (!task->changed.wait_for(lock, kLookUp, [&task] { return task->done; })) {
        lock.unlock();
        const bool goOn = wanted();
        lock.lock();
        const auto patience = desk_->spokenBefore || task->begun ? patience_.later : patience_.first;
        const bool hung = !task->done && steady_clock::now() > task->lastSign + patience;
        if (goOn && !hung)
            continue;
        task->closed = true;
        task->spoken.outcome = goOn ? SpokenPhrase::Outcome::Failed : SpokenPhrase::Outcome::Unwanted;
        if (goOn)
            Abandon();
        return std::move(task->spoken);
    }
    desk_->last.reset();
    desk_->spokenBefore = true;
    return std::move(task->spoken);
}

} // namespace voxtrel::agent::speech
