#pragma once

#include "agent/speech/voice_engine.h"
#include "agent/speech/voices.h"

#include <chrono>
#include <memory>

namespace voxtrel::agent::speech {

// Knows the voices of the system. Nothing is asked of any engine until one of its voices is; it is asked on a
// thread of its own then, since it may take its time or never answer. Any thread may call.
class VoiceCatalogue {
public:
    explicit VoiceCatalogue(std::vector<VoiceFamily> families);
    ~VoiceCatalogue();
    VoiceCatalogue(const VoiceCatalogue&) = delete;
    VoiceCatalogue& operator=(const VoiceCatalogue&) = delete;

    // The voice of an engine mode identifier, built-in ones first; null if there is none. Where the engine
    // has to be asked first it gets until limit to answer; one that is still thinking is trusted to have the
    // voice. The voice lives as long as the catalogue.
    const Voice* Find(std::wstring_view modeId, std::chrono::milliseconds limit);

    // The voices of all families, in their order; an engine that has not answered within the limit has none.
    std::vector<SystemVoice> All(std::chrono::milliseconds limit);

private:
    struct Shelf;

    void AskSoon(const std::shared_ptr<Shelf>& shelf);

    std::vector<std::shared_ptr<Shelf>> shelves_; // one for each family; shared with the thread that asks
};

// A voice of which the engine has not yet said whether it has it; nobody can speak with it.
inline bool IsUnchecked(const Voice& voice) { return voice.system && voice.system->key.empty(); }

} // namespace voxtrel::agent::speech
