#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace voxtrel::agent::stage {

// Something that happened, for a log. What text and number hold depends on the event:
//   "utterance"         text: the markup as it begins to be spoken
//   "word"              text: the word that the balloon shows
//   "bookmark"          number
//   "request-start"     text: the request
//   "request-complete"  text: the request; number: its error code, 0 for success
//   "animation"         text: its name
//   "frame"             text: the animation's name; number: the frame, from 0
//   "sound"             number: the sound that begins, from 0
//   "mouth"             number: the mouth shown
//   "balloon-show", "balloon-hide"
struct TraceEvent {
    std::string_view event;
    std::wstring_view text;
    std::int64_t number = 0;
};

// May be empty: then nothing is told.
using Trace = std::function<void(const TraceEvent&)>;

} // namespace voxtrel::agent::stage
