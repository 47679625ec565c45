#include "agent/speech/portaudio_output.h"

#include "agent/speech/resampler.h"
#include "agent/speech/synthesizer.h"

#include <portaudio.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace voxtrel::agent::speech {

namespace {

using std::chrono::steady_clock;

// Short enough that a stop is heard at once, long enough for a sound server.
constexpr double kLeastLatency = 0.015;
constexpr double kMostLatency = 0.03;
constexpr auto kRetryAfter = std::chrono::seconds(10);
constexpr std::size_t kBlock = SamplesOf(10);

// What a device is to play: our rate if it can, else its own.
struct Format {
    PaDeviceIndex device = paNoDevice;
    int channels = 1;
    double rate = kSampleRate;
    double latency = kMostLatency;
};

// Turns the source's samples into those of the device.
class Converter {
public:
    Converter(SampleSource& source, const Format& format) : source_(source), format_(format)
    {
        if (format.rate != kSampleRate)
            resampler_.emplace(kSampleRate / format.rate);
    }

    void Fill(std::int16_t* out, std::size_t frames, SampleSource::TimePoint heardAt)
    {
        while (ready_.size() < frames) {
            const auto ahead =
                std::chrono::duration<double>(static_cast<double>(ready_.size()) / format_.rate);
            const std::size_t count = resampler_ ? kBlock : frames - ready_.size();
            block_.resize(count);
            source_.Pull(block_, heardAt + std::chrono::duration_cast<steady_clock::duration>(ahead));
            if (resampler_)
                resampler_->Process(block_, ready_);
            else
                ready_.insert(ready_.end(), block_.begin(), block_.end());
        }
        for (std::size_t frame = 0; frame < frames; ++frame)
            out = std::fill_n(out, format_.channels, ready_[frame]);
        ready_.erase(ready_.begin(), ready_.begin() + static_cast<std::ptrdiff_t>(frames));
    }

private:
    SampleSource& source_;
    Format format_;
    std::optional<Resampler> resampler_;
    std::vector<std::int16_t> block_, ready_;
};

class PortAudioOutput : public AudioOutput {
public:
    explicit PortAudioOutput(SampleSource& source) : source_(source), thread_([this] { Run(); }) {}

    ~PortAudioOutput() override
    {
        {
            const std::lock_guard lock(mutex_);
            quit_ = true;
            audible_ = false;
        }
        changed_.notify_all();
        thread_.join();
    }

    void Open() override
    {
        const std::lock_guard lock(mutex_);
        if (wanted_ || (state_ == State::Failed && steady_clock::now() < failedAt_ + kRetryAfter))
            return;
        wanted_ = true;
        state_ = State::Opening;
        changed_.notify_all();
    }

    void Close() override
    {
        const std::lock_guard lock(mutex_);
        if (wanted_)
            LeaveAs(State::Closed);
    }

    void GiveUp() override
    {
        const std::lock_guard lock(mutex_);
        LeaveAs(State::Failed);
    }

    State CurrentState() const override { return state_; }

private:
    void LeaveAs(State state)
    {
        audible_ = false;
        wanted_ = false;
        state_ = state;
        failedAt_ = steady_clock::now();
        changed_.notify_all();
    }

    void Run()
    {
        std::unique_lock lock(mutex_);
        while (!quit_) {
            changed_.wait(lock, [this] { return quit_ || wanted_ != (stream_ != nullptr); });
            const bool open = wanted_ && !quit_;
            lock.unlock();
            if (open)
                OpenStream();
            else
                CloseStream();
            lock.lock();
            if (open && wanted_) {
                audible_ = stream_ != nullptr;
                state_ = stream_ ? State::Playing : State::Failed;
                wanted_ = stream_ != nullptr;
                failedAt_ = steady_clock::now();
            }
        }
        lock.unlock();
        CloseStream();
        Terminate();
    }

    void OpenStream()
    {
        // A list of devices that held none may be out of date.
        for (int attempt = 0; attempt < 2 && !stream_; ++attempt) {
            if (!Initialize())
                return;
            for (const Format& format : Candidates()) {
                if (TryFormat(format))
                    return;
            }
            if (!fresh_)
                Terminate();
            else
                break;
        }
    }

    bool Initialize()
    {
        if (initialized_) {
            fresh_ = false;
            return true;
        }
        initialized_ = Pa_Initialize() == paNoError;
        fresh_ = true;
        return initialized_;
    }

    void Terminate()
    {
        if (initialized_)
            Pa_Terminate();
        initialized_ = false;
    }

    static std::vector<Format> Candidates()
    {
        std::vector<PaDeviceIndex> devices;
        // Of the programming interfaces of Windows only this one is quick to fall silent.
        const PaHostApiIndex quick = Pa_HostApiTypeIdToHostApiIndex(paWASAPI);
        if (const PaHostApiInfo* api = quick >= 0 ? Pa_GetHostApiInfo(quick) : nullptr)
            devices.push_back(api->defaultOutputDevice);
        devices.push_back(Pa_GetDefaultOutputDevice());

        std::vector<Format> formats;
        for (const PaDeviceIndex device : devices) {
            const PaDeviceInfo* info = device != paNoDevice ? Pa_GetDeviceInfo(device) : nullptr;
            if (!info || info->maxOutputChannels < 1)
                continue;
            const double latency = std::clamp(info->defaultHighOutputLatency, kLeastLatency, kMostLatency);
            const int channels = std::min(info->maxOutputChannels, 2);
            formats.push_back({device, 1, kSampleRate, latency});
            formats.push_back({device, channels, kSampleRate, latency});
            formats.push_back({device, channels, info->defaultSampleRate, latency});
        }
        return formats;
    }

    bool TryFormat(const Format& format)
    {
        PaStreamParameters parameters{};
        parameters.device = format.device;
        parameters.channelCount = format.channels;
        parameters.sampleFormat = paInt16;
        parameters.suggestedLatency = format.latency;
        converter_.emplace(source_, format);
        channels_ = format.channels;
        PaStream* stream = nullptr;
        const PaError error =
            Pa_OpenStream(&stream, nullptr, &parameters, format.rate, paFramesPerBufferUnspecified, paNoFlag,
                          &PortAudioOutput::Callback, this);
        if (error != paNoError)
            return false;
        Pa_SetStreamFinishedCallback(stream, &PortAudioOutput::Finished);
        if (Pa_StartStream(stream) != paNoError) {
            Pa_CloseStream(stream);
            return false;
        }
        const PaStreamInfo* info = Pa_GetStreamInfo(stream);
        latency_ = info ? info->outputLatency : format.latency;
        stream_ = stream;
        return true;
    }

    void CloseStream()
    {
        if (!stream_)
            return;
        Pa_AbortStream(stream_);
        Pa_CloseStream(stream_);
        stream_ = nullptr;
    }

    static int Callback(const void*, void* output, unsigned long frames, const PaStreamCallbackTimeInfo* time,
                        PaStreamCallbackFlags, void* self)
    {
        static_cast<PortAudioOutput*>(self)->Fill(static_cast<std::int16_t*>(output), frames, *time);
        return paContinue;
    }

    // The driver has ended the stream: the device is gone.
    static void Finished(void* self)
    {
        auto* output = static_cast<PortAudioOutput*>(self);
        if (output->audible_)
            output->GiveUp();
    }

    void Fill(std::int16_t* out, std::size_t frames, const PaStreamCallbackTimeInfo& time)
    {
        if (!audible_) {
            std::fill_n(out, frames * static_cast<std::size_t>(channels_), std::int16_t{0});
            return;
        }
        // Some drivers do not know the time at which they play.
        double delay = time.outputBufferDacTime - time.currentTime;
        if (time.currentTime <= 0 || delay < 0 || delay > 1)
            delay = latency_;
        const auto ahead =
            std::chrono::duration_cast<steady_clock::duration>(std::chrono::duration<double>(delay));
        converter_->Fill(out, frames, steady_clock::now() + ahead);
    }

    SampleSource& source_;

    std::mutex mutex_;
    std::condition_variable changed_;
    bool wanted_ = false;
    bool quit_ = false;
    steady_clock::time_point failedAt_;
    std::atomic<State> state_ = State::Closed;
    std::atomic<bool> audible_ = false; // whether the callback may pull

    // Of the thread that opens and closes.
    bool initialized_ = false;
    bool fresh_ = false; // the list of devices has just been made
    PaStream* stream_ = nullptr;
    std::optional<Converter> converter_;
    int channels_ = 1;
    std::atomic<double> latency_ = kMostLatency;
    std::thread thread_;
};

} // namespace

std::unique_ptr<AudioOutput> MakePortAudioOutput(SampleSource& source)
{
    return std::make_unique<PortAudioOutput>(source);
}

} // namespace voxtrel::agent::speech
