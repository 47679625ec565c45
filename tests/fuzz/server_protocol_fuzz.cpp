#include "screenreading/server_protocol.h"

#include <cstdint>
#include <cstdlib>

// What the server's bytes say does not depend on how they are cut, and survives being written again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace voxtrel;

    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    screenreading::ObjectReader whole;
    const auto object = whole.Take(bytes);

    screenreading::ObjectReader pieces;
    std::optional<platform::AccessibleObject> last;
    for (const char byte : bytes) {
        if (auto next = pieces.Take({&byte, 1}))
            last = std::move(next);
    }
    if (last != object)
        std::abort();
    if (object && screenreading::ObjectReader().Take(screenreading::EncodeObject(*object)) != object)
        std::abort();
    return 0;
}
