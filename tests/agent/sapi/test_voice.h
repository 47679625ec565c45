#pragma once

#include "agent/voices/windows/sapi_headers.h"

#include <functional>
#include <string>
#include <vector>

// A SAPI voice for tests that stands in the place of the system's while a SapiStandIn lives.
namespace voxtrel::tests {

// What the stand-ins are to do, and what they were asked. Used by one test at a time; written by the test
// before it speaks, read after it.
struct VoiceScript {
    // What is said about the text, in the order of telling.
    struct Event {
        SPEVENTENUM kind;
        ULONGLONG byte;           // of the stream
        std::wstring bookmark;    // of SPEI_TTS_BOOKMARK
        std::size_t position = 0; // of SPEI_WORD_BOUNDARY: in the text as it was handed over
        unsigned viseme = 0;      // of SPEI_VISEME
    };
    // What it makes of a text that it was given.
    std::function<std::vector<Event>(const std::wstring& text)> eventsOf;
    std::vector<std::size_t> pieces; // bytes of each Write; the samples count up from 0
    HRESULT result = S_OK;           // of the speaking, after all pieces
    HRESULT speakResult = S_OK;      // of the call
    bool goesOnForever = false;      // writes until it is told to stop
    bool ignoresPurge = false;

    std::vector<std::wstring> calls; // "SetRate 3", "Speak <...>"
    int made = 0;                    // voices so far
    int alive = 0;
    bool writeRefused = false; // by the stream
};

class SapiStandIn {
public:
    explicit SapiStandIn(VoiceScript& script);
    ~SapiStandIn();
    SapiStandIn(const SapiStandIn&) = delete;
    SapiStandIn& operator=(const SapiStandIn&) = delete;

private:
    DWORD cookie_ = 0;
};

} // namespace voxtrel::tests
