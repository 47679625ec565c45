#pragma once

#include <memory>

namespace voxtrel::platform {

// Tells whether this user runs the program already.
class SingleInstance {
public:
    virtual ~SingleInstance() = default;

    // Asks once; the first caller of all running programs owns the answer "no" until it ends, however it ends.
    virtual bool AnotherIsRunning() = 0;
};

std::unique_ptr<SingleInstance> MakeSingleInstance();

} // namespace voxtrel::platform
