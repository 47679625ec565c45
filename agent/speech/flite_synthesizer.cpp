// The flite library behind Synthesizer.
//
// Our words go in as the library's tokens, so that its words and segments lead back to them. The samples come
// out through its streaming call, which also lets a stopped utterance go at once. Three of the base voices
// are statistical: for whispering they get a copy of their model in which nothing is voiced. The fourth is
// made of recorded diphones: whispering replaces its excitation by noise and filters it again.
//
// A voice of another build is spoken slower (or faster) and lower (or higher) than wanted and resampled back,
// so that only its resonances have moved.

#include "agent/speech/flite_synthesizer.h"

#include "agent/speech/mouths.h"
#include "agent/speech/resampler.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <numeric>
#include <optional>
#include <random>
#include <string>
#include <utility>

extern "C" {
#include <cst_cg.h>
#include <cst_sigpr.h>
#include <cst_sts.h>
#include <flite.h>

cst_voice* register_cmu_us_kal16(const char* directory);
cst_voice* register_cmu_us_awb(const char* directory);
cst_voice* register_cmu_us_rms(const char* directory);
cst_voice* register_cmu_us_slt(const char* directory);
}

namespace voxtrel::agent::speech {

namespace {

constexpr int kFirstSamples = 256; // handed on at least, to begin early
constexpr int kExcitationBands = 5;
constexpr double kLowestPitchHz = 55; // the library cuts off at 50
constexpr double kEmphasisStretch = 1.3;
constexpr double kEmphasisPitch = 1.15;
constexpr double kWhisperTilt = 0.8;
constexpr double kWhisperGain = 1.2;
constexpr double kDiphoneWhisperGain = 0.6;
constexpr float kHeadroom = 0.6F; // the library lets loud samples overflow

struct UtteranceDeleter {
    void operator()(cst_utterance* utterance) const { delete_utterance(utterance); }
};
using Utterance = std::unique_ptr<cst_utterance, UtteranceDeleter>;

// A copy of a statistical model that does what we ask: its melody follows the pitch that is set for an
// utterance, and for whispering its excitation is noise throughout.
class Model {
public:
    enum class Excitation { Voice, Noise };

    Model(const cst_cg_db& original, Excitation excitation) : model_(original)
    {
        model_.freeable = 0;
        model_.gain *= kHeadroom;
        model_.spamf0 = 0; // the other way to a melody knows no pitch but its own
        if (excitation == Excitation::Voice)
            return;
        const auto channels = static_cast<std::size_t>(original.num_channels[0]);
        least_.assign(original.model_min, original.model_min + channels);
        range_.assign(original.model_range, original.model_range + channels);
        // The last values of a vector are means and deviations of the voicing of each band and of the frame.
        for (std::size_t band = 0; band < kExcitationBands; ++band) {
            const std::size_t at = channels - 2 * (kExcitationBands + 1) + 2 * band;
            least_[at] = 0;
            range_[at] = 0;
        }
        model_.model_min = least_.data();
        model_.model_range = range_.data();
    }
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    const cst_cg_db& Get() const { return model_; }

private:
    cst_cg_db model_;
    std::vector<float> least_, range_;
};

struct BaseVoice {
    cst_voice* voice = nullptr;
    std::optional<Model> spoken, whispered; // of statistical voices
};

// The library and its voices live as long as the program: it cannot be closed and opened again.
class Library {
public:
    static Library& Instance()
    {
        static Library library;
        return library;
    }

    std::mutex& Turn() { return turn_; }

    // To be called by whoever has the turn.
    BaseVoice& Base(VoiceBase base)
    {
        BaseVoice& found = bases_[static_cast<std::size_t>(base)];
        if (!found.voice) {
            found.voice = Register(base);
            if (feat_present(found.voice->features, "cg_db") != 0) {
                const cst_cg_db& original = *val_cg_db(feat_val(found.voice->features, "cg_db"));
                found.spoken.emplace(original, Model::Excitation::Voice);
                found.whispered.emplace(original, Model::Excitation::Noise);
            }
        }
        return found;
    }

private:
    Library() { flite_init(); }

    static cst_voice* Register(VoiceBase base)
    {
        switch (base) {
        case VoiceBase::Kal:
            return register_cmu_us_kal16(nullptr);
        case VoiceBase::Awb:
            return register_cmu_us_awb(nullptr);
        case VoiceBase::Rms:
            return register_cmu_us_rms(nullptr);
        case VoiceBase::Slt:
            break;
        }
        return register_cmu_us_slt(nullptr);
    }

    std::mutex turn_;
    BaseVoice bases_[4];
};

// One call of Speak: takes the samples from the library and hands them on.
class Job {
public:
    Job(const BaseVoice& base, const Voice& voice, const Prosody& prosody, SpeechSink& sink)
        : base_(base), voice_(voice), prosody_(prosody), sink_(sink)
    {
        if (voice.tract != 1)
            resampler_.emplace(voice.tract);
    }

    void Run(std::span<const SpokenToken> tokens)
    {
        std::srand(1); // the library's noise: the same words are to sound the same
        Utterance utterance(new_utterance());
        AddTokens(*utterance, tokens);
        SetFeatures(*utterance);
        cst_utterance* made = flite_do_synth(utterance.get(), base_.voice, utt_synth_tokens);
        if (!made) {
            utterance.release(); // the library has deleted it
            return;
        }
        if (Diphones() && Whispering())
            WhisperDiphones(*utterance);
        if (resampler_ && timingGiven_ && !stopped_) {
            resampled_.clear();
            resampler_->Finish(resampled_);
            static_cast<void>(sink_.Samples(resampled_));
        }
    }

private:
    bool Whispering() const { return prosody_.style == VoiceStyle::Whisper; }
    bool Diphones() const { return !base_.spoken.has_value(); }

    static void AddTokens(cst_utterance& utterance, std::span<const SpokenToken> tokens);
    void SetFeatures(cst_utterance& utterance);
    void WhisperDiphones(cst_utterance& utterance);
    int Receive(const cst_wave& wave, int start, int size, const cst_utterance& utterance);
    std::span<const std::int16_t> Breathe(std::span<const std::int16_t> samples);
    SpeechTiming ReadTiming(const cst_utterance& utterance) const;
    std::int64_t SampleAt(double seconds) const;

    static int Stream(const cst_wave* wave, int start, int size, int last, cst_audio_streaming_info* info)
    {
        static_cast<void>(last);
        return static_cast<Job*>(info->userdata)->Receive(*wave, start, size, *info->utt);
    }

    const BaseVoice& base_;
    const Voice& voice_;
    const Prosody& prosody_;
    SpeechSink& sink_;
    std::optional<Resampler> resampler_;
    std::vector<std::int16_t> resampled_;
    std::vector<std::int16_t> breathed_;
    double lastSample_ = 0;
    bool noiseToCome_ = false; // the sound made now is not the one to be heard
    bool timingGiven_ = false;
    bool stopped_ = false;
};

void Job::AddTokens(cst_utterance& utterance, std::span<const SpokenToken> tokens)
{
    cst_relation* relation = utt_relation_create(&utterance, "Token");
    for (const SpokenToken& token : tokens) {
        const std::string punctuation(token.punctuation != 0 ? 1 : 0, token.punctuation);
        cst_item* item = relation_append(relation, nullptr);
        item_set_string(item, "name", token.name.c_str());
        item_set_string(item, "whitespace", " ");
        item_set_string(item, "prepunctuation", "");
        item_set_string(item, "punc", punctuation.c_str());
        if (token.emphasized) {
            item_set_float(item, "local_duration_stretch", kEmphasisStretch);
            item_set_float(item, "local_f0_shift", kEmphasisPitch);
        }
    }
}

void Job::SetFeatures(cst_utterance& utterance)
{
    const double pitch = std::max(kLowestPitchHz, voice_.pitchHz * prosody_.PitchFactor() / voice_.tract);
    // A voice that is moved down to the lowest pitch keeps some melody, as much as there is room for.
    const double spread =
        std::min(voice_.pitchSpreadHz * prosody_.PitchFactor() / voice_.tract, (pitch - 45) / 1.5);
    const bool flat = prosody_.style == VoiceStyle::Monotone;
    utt_set_feat_float(&utterance, "duration_stretch",
                       static_cast<float>(voice_.stretch * voice_.tract / prosody_.SpeedFactor()));
    utt_set_feat_float(&utterance, "int_f0_target_mean", static_cast<float>(pitch));
    utt_set_feat_float(&utterance, "int_f0_target_stddev", flat ? 0 : static_cast<float>(spread));
    if (!Diphones())
        utt_set_feat(&utterance, "cg_db", cg_db_val(&(Whispering() ? base_.whispered : base_.spoken)->Get()));
    auto* info = new_audio_streaming_info(); // the utterance deletes it
    info->min_buffsize = kFirstSamples;
    info->asc = &Job::Stream;
    info->userdata = this;
    utt_set_feat(&utterance, "streaming_info", audio_streaming_info_val(info));
}

int Job::Receive(const cst_wave& wave, int start, int size, const cst_utterance& utterance)
{
    if (stopped_ || (Diphones() && Whispering() && !noiseToCome_))
        return CST_AUDIO_STREAM_STOP;
    if (!timingGiven_) {
        timingGiven_ = true;
        stopped_ = !sink_.Timing(ReadTiming(utterance));
    }
    std::span<const std::int16_t> samples(wave.samples + start, static_cast<std::size_t>(size));
    if (Whispering())
        samples = Breathe(samples);
    if (resampler_) {
        resampled_.clear();
        resampler_->Process(samples, resampled_);
        samples = resampled_;
    }
    stopped_ = stopped_ || !sink_.Samples(samples);
    return stopped_ ? CST_AUDIO_STREAM_STOP : CST_AUDIO_STREAM_CONT;
}

// A whisper has no depth: low tones are taken off, and all is softer.
std::span<const std::int16_t> Job::Breathe(std::span<const std::int16_t> samples)
{
    const double gain = Diphones() ? kDiphoneWhisperGain : kWhisperGain;
    breathed_.clear();
    for (const std::int16_t sample : samples) {
        const double high = sample - kWhisperTilt * std::exchange(lastSample_, static_cast<double>(sample));
        breathed_.push_back(static_cast<std::int16_t>(std::clamp(gain * high, -32768.0, 32767.0)));
    }
    return breathed_;
}

// The first synthesis was stopped at its first sound; the filters it has chosen are driven by noise of the
// same strength instead.
void Job::WhisperDiphones(cst_utterance& utterance)
{
    if (feat_present(utterance.features, "target_lpcres") == 0)
        return;
    cst_lpcres* lpc = val_lpcres(utt_feat_val(&utterance, "target_lpcres"));
    std::minstd_rand random(1);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    for (int frame = 0, at = 0; frame < lpc->num_frames; at += lpc->sizes[frame], ++frame) {
        unsigned char* residual = lpc->residual + at;
        const int size = lpc->sizes[frame];
        const double power =
            std::accumulate(residual, residual + size, 0.0, [](double sum, unsigned char coded) {
                const double sample = cst_ulaw_to_short(coded);
                return sum + sample * sample;
            });
        const double strength = size > 0 ? std::sqrt(3 * power / size) : 0;
        std::generate(residual, residual + size, [&] {
            return cst_short_to_ulaw(
                static_cast<short>(std::clamp(strength * uniform(random), -32000.0, 32000.0)));
        });
    }
    noiseToCome_ = true;
    if (cst_wave* wave = lpc_resynth_fixedpoint(lpc))
        delete_wave(wave);
}

std::int64_t Job::SampleAt(double seconds) const
{
    // A statistical voice makes no sound in its first frame.
    const double lead = Diphones() ? 0 : base_.spoken->Get().frame_advance;
    return std::max<std::int64_t>(0, std::llround((seconds - lead) * kSampleRate / voice_.tract));
}

double StartOf(const cst_item* segment)
{
    const cst_item* before = item_prev(segment);
    return before ? item_feat_float(before, "end") : 0;
}

SpeechTiming Job::ReadTiming(const cst_utterance& utterance) const
{
    SpeechTiming timing;
    std::int64_t silenceFrom = 0;
    for (const cst_item* segment = relation_head(utt_relation(&utterance, "Segment")); segment;
         segment = item_next(segment)) {
        const std::string_view name = item_feat_string(segment, "name");
        const bool silent = name == "pau";
        const std::int64_t start = SampleAt(StartOf(segment));
        const bool first = std::all_of(timing.phonemes.begin(), timing.phonemes.end(),
                                       [](const Phoneme& phoneme) { return phoneme.silent; });
        if (!silent && first)
            timing.speechStart = start;
        if (!silent)
            silenceFrom = SampleAt(item_feat_float(segment, "end"));
        timing.phonemes.push_back({start, MouthOf(name), silent});
    }
    timing.speechEnd = silenceFrom;

    // A token without a sound of its own begins with the one after it.
    std::int64_t following = timing.speechEnd;
    for (const cst_item* token = relation_tail(utt_relation(&utterance, "Token")); token;
         token = item_prev(token)) {
        for (const cst_item* word = item_daughter(token); word; word = item_next(word)) {
            if (const cst_item* segment =
                    path_to_item(word, "R:SylStructure.daughter1.daughter1.R:Segment")) {
                following = SampleAt(StartOf(segment));
                break;
            }
        }
        timing.tokenStarts.push_back(following);
    }
    std::reverse(timing.tokenStarts.begin(), timing.tokenStarts.end());
    return timing;
}

} // namespace

void FliteSynthesizer::Speak(std::span<const SpokenToken> tokens, const Voice& voice, const Prosody& prosody,
                             SpeechSink& sink)
{
    if (tokens.empty())
        return;
    Library& library = Library::Instance();
    const std::lock_guard turn(library.Turn());
    Job(library.Base(voice.base), voice, prosody, sink).Run(tokens);
}

void FliteSynthesizer::Prepare(const Voice& voice)
{
    Library& library = Library::Instance();
    const std::lock_guard turn(library.Turn());
    library.Base(voice.base);
}

} // namespace voxtrel::agent::speech
