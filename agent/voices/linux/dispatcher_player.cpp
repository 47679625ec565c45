// Speech Dispatcher as a VoicePlayer.
//
// Each phrase is one message of SSML with a mark before each word, named "phrase:word"; the service reports
// marks as they are heard, if the output module at work can. Messages of priority "message" wait for each
// other; those of priority "text" would silence the one before. A voice is an output module and a name in it.

#include "agent/voices/linux/dispatcher_player.h"

#include "agent/acs/unicode.h"
#include "agent/voices/linux/ssip_connection.h"
#include "agent/voices/phrase_markup.h"
#include "agent/voices/system_voices.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <deque>
#include <map>
#include <string>
#include <utility>

namespace voxtrel::agent::voices {

namespace {

using namespace speech;
using namespace std::chrono_literals;

constexpr std::string_view kFamily = "Speech Dispatcher";
constexpr auto kAnswersWithin = 500ms;
constexpr auto kListsWithin = 3s; // one module
constexpr auto kStartsWithin = 4s;
constexpr std::string_view kVariantSign = "+"; // eSpeak NG offers each of its voices in a hundred tones

// Events of the service.
constexpr int kIndexMark = 700, kBegin = 701, kEnd = 702, kCanceled = 703;

std::vector<std::string_view> Split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::unique_ptr<SsipConnection> OpenService()
{
    if (auto connection = SsipConnection::Open(kAnswersWithin))
        return connection;
    StartSpeechService(kStartsWithin);
    return SsipConnection::Open(kStartsWithin);
}

SystemVoice VoiceOf(std::string_view module, std::string_view name, std::string_view language)
{
    const std::string engine = std::string(kFamily) + ' ' + std::string(module);
    const std::wstring key = acs::WideFromUtf8(std::string(module) + ':' + std::string(name));
    const bool female = name.find("female") != std::string_view::npos;
    return {.modeId = VoiceModeId(kDispatcherCode, key),
            .displayName = acs::WideFromUtf8(std::string(name) + ", " + engine),
            .engine = acs::WideFromUtf8(engine),
            .language = acs::WideFromUtf8(language),
            .female = female,
            .key = key};
}

std::vector<SystemVoice> ListDispatcherVoices()
{
    std::vector<SystemVoice> voices;
    const std::unique_ptr<SsipConnection> service = OpenService();
    const auto modules = service ? service->Ask("LIST OUTPUT_MODULES", kListsWithin) : std::nullopt;
    if (!modules || !modules->Done())
        return voices;
    for (std::size_t i = 0; i + 1 < modules->lines.size(); ++i) {
        const std::string& module = modules->lines[i];
        const auto chosen = service->Ask("SET self OUTPUT_MODULE " + module, kAnswersWithin);
        const auto listed =
            chosen && chosen->Done() ? service->Ask("LIST SYNTHESIS_VOICES", kListsWithin) : std::nullopt;
        if (!listed || !listed->Done())
            continue;
        for (std::size_t line = 0; line + 1 < listed->lines.size(); ++line) {
            const auto fields = Split(listed->lines[line], '\t'); // name, language, variant
            if (fields.size() >= 2 && fields[0].find(kVariantSign) == std::string_view::npos)
                voices.push_back(VoiceOf(module, fields[0], fields[1]));
        }
    }
    return voices;
}

class DispatcherPlayer : public VoicePlayer {
public:
    explicit DispatcherPlayer(std::unique_ptr<SsipConnection> service) : service_(std::move(service)) {}

    // False when the service does not take what is needed.
    bool Prepare()
    {
        base_ = {.rate = Get("RATE"), .pitch = Get("PITCH"), .volume = Get("VOLUME")};
        return Set("NOTIFICATION", "ALL ON") && Set("SSML_MODE", "on") && Set("PRIORITY", "message");
    }

    bool Queue(std::uint32_t number, const SystemVoice& voice, const Phrase& phrase) override
    {
        if (!Choose(voice, phrase.prosody))
            return false;
        const auto ready = service_->Ask("SPEAK", kAnswersWithin);
        if (!ready || !ready->Done())
            return false;
        const PhraseMarkup markup = MarkedMarkup(phrase, std::to_string(number) + ':');
        const auto queued = service_->Ask(markup.text + "\r\n.", kAnswersWithin);
        if (!queued || !queued->Done() || queued->lines.empty())
            return false;
        numbers_[queued->lines.front()] = number;
        return true;
    }

    PlayerEvent Wait(std::chrono::milliseconds limit) override
    {
        const auto until = std::chrono::steady_clock::now() + limit;
        do {
            const auto left =
                std::chrono::ceil<std::chrono::milliseconds>(until - std::chrono::steady_clock::now());
            const auto message = service_->NextEvent(std::max(left, 0ms));
            if (message) {
                const PlayerEvent event = Understand(*message);
                if (event.kind != PlayerEvent::Kind::Nothing)
                    return event;
            }
        } while (!service_->Gone() && std::chrono::steady_clock::now() < until);
        return {.kind = service_->Gone() ? PlayerEvent::Kind::Failed : PlayerEvent::Kind::Nothing};
    }

    void Cancel() override
    {
        service_->Ask("CANCEL self", kAnswersWithin);
        numbers_.clear();
    }

private:
    struct Scales {
        int rate = 0, pitch = 0, volume = 0; // -100..100
    };

    bool Set(std::string_view what, std::string_view value)
    {
        const auto done =
            service_->Ask("SET self " + std::string(what) + ' ' + std::string(value), kAnswersWithin);
        return done && done->Done();
    }

    int Get(std::string_view what)
    {
        const auto answer = service_->Ask("GET " + std::string(what), kAnswersWithin);
        return answer && answer->Done() ? std::atoi(answer->lines.front().c_str()) : 0;
    }

    // Sets what differs from what was set last.
    bool SetOnce(const std::string& what, const std::string& value)
    {
        std::string& last = settings_[what];
        if (last == value)
            return true;
        last = value;
        return Set(what, value);
    }

    // What the user has set for all programs is the natural voice; what the text asks for is relative to it.
    bool Choose(const SystemVoice& voice, const Prosody& prosody)
    {
        const std::string key = acs::Utf8FromWide(voice.key);
        const std::size_t colon = key.find(':');
        const std::string module = key.substr(0, colon);
        std::string name = colon == std::string::npos ? std::string() : key.substr(colon + 1);
        if (prosody.style == VoiceStyle::Whisper && module.starts_with("espeak"))
            name += "+whisper";
        return SetOnce("OUTPUT_MODULE", module) && SetOnce("LANGUAGE", acs::Utf8FromWide(voice.language)) &&
               SetOnce("SYNTHESIS_VOICE", '"' + name + '"') && SetScales(prosody);
    }

    bool SetScales(const Prosody& prosody)
    {
        const auto onScale = [](double value) {
            return std::to_string(std::clamp(static_cast<int>(std::lround(value)), -100, 100));
        };
        // The ends of the scale are about 2.6 times as fast and 0.45 times; an octave up and one down.
        const double speed = prosody.SpeedFactor();
        const double rate = base_.rate + (speed > 1 ? (speed - 1) * 63 : (speed - 1) * 184);
        const double pitch = base_.pitch + 100 * std::log2(prosody.PitchFactor());
        const double volume = (base_.volume + 100) * prosody.Gain() - 100;
        const bool flat = prosody.style == VoiceStyle::Monotone;
        const bool ranged = !flat && settings_.find("PITCH_RANGE") == settings_.end();
        return SetOnce("RATE", onScale(rate)) && SetOnce("PITCH", onScale(pitch)) &&
               SetOnce("VOLUME", onScale(volume)) && (ranged || SetOnce("PITCH_RANGE", flat ? "-100" : "0"));
    }

    // Lines of an event: message, client, and for a mark its name.
    PlayerEvent Understand(const SsipMessage& message)
    {
        if (message.lines.size() < 2)
            return {};
        if (message.code == kIndexMark && message.lines.size() >= 4)
            return UnderstandMark(message.lines[2]);
        const auto known = numbers_.find(message.lines[0]);
        if (known == numbers_.end())
            return {};
        const std::uint32_t number = known->second;
        switch (message.code) {
        case kBegin:
            return {.kind = PlayerEvent::Kind::Begin, .phrase = number};
        case kEnd:
        case kCanceled: // by another program that had something more urgent to say
            numbers_.erase(known);
            return {.kind = PlayerEvent::Kind::End, .phrase = number};
        default:
            return {};
        }
    }

    static PlayerEvent UnderstandMark(std::string_view name)
    {
        PlayerEvent event{.kind = PlayerEvent::Kind::Word};
        const char* const end = name.data() + name.size();
        const auto [colon, error] = std::from_chars(name.data(), end, event.phrase);
        if (error != std::errc() || colon == end || *colon != ':' ||
            std::from_chars(colon + 1, end, event.word).ec != std::errc())
            return {};
        return event;
    }

    std::unique_ptr<SsipConnection> service_;
    Scales base_;
    std::map<std::string, std::string> settings_;
    std::map<std::string, std::uint32_t> numbers_; // of phrases, by the service's own
};

std::unique_ptr<VoicePlayer> MakeDispatcherPlayer()
{
    auto service = SsipConnection::Open(kAnswersWithin);
    if (!service) {
        StartSpeechService(0ms); // for the next utterance
        return nullptr;
    }
    auto player = std::make_unique<DispatcherPlayer>(std::move(service));
    return player->Prepare() ? std::move(player) : nullptr;
}

} // namespace

VoiceFamily DispatcherFamily()
{
    return {.code = kDispatcherCode,
            .name = acs::WideFromUtf8(kFamily),
            .list = ListDispatcherVoices,
            .makePlayer = MakeDispatcherPlayer};
}

} // namespace voxtrel::agent::voices
