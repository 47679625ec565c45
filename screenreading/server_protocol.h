#pragma once

#include "platform/accessible_object.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// What the program and its accessibility server say to each other: lines of UTF-8. The program writes kStart
// and kStop; the server, while it watches the pointer, a line for each object that the pointer comes to rest
// on, and kAlive when it has been silent for a second.
//
//     object TAB role TAB name TAB value TAB state
//
// In a text \n is a line feed, \r a carriage return, \t a tab and \\ a backslash.
namespace voxtrel::screenreading {

inline constexpr std::string_view kStart = "start";
inline constexpr std::string_view kStop = "stop";
inline constexpr std::string_view kAlive = "alive";

// With its line end.
std::string EncodeObject(const platform::AccessibleObject& object);

// Puts the server's bytes together to lines. Lines that say nothing known, or never end, are left out.
class ObjectReader {
public:
    // The last object that the bytes tell of.
    std::optional<platform::AccessibleObject> Take(std::string_view bytes);

    static constexpr std::size_t kMaxLine = 65536; // bytes

private:
    std::string line_;
    bool tooLong_ = false;
};

} // namespace voxtrel::screenreading
