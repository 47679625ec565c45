#pragma once

#include <chrono>
#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace voxtrel::app {

// Writes what the program does, one JSON object a line, for tests and bug reports. Each line holds "t", the
// milliseconds since the trace was opened, "event", and the event's own fields. Of a long text only the beginning and
// its length are written. Costs nothing when not opened.
class Trace {
public:
    using Value = std::variant<std::int64_t, bool, std::wstring_view>;
    struct Field {
        std::string_view name;
        Value value;
    };

    // Returns false when the file cannot be written.
    bool Open(std::wstring_view path);
    bool IsOpen() const { return file_.is_open(); }

    void Write(std::string_view event, std::initializer_list<Field> fields = {});

private:
    std::ofstream file_;
    std::chrono::steady_clock::time_point start_;
};

} // namespace voxtrel::app
