#pragma once

#include "platform/keyboard.h"

#include <initializer_list>
#include <set>

namespace voxtrel::tests {

// A keyboard on which exactly the held keys are down; counts how often it is asked.
class FakeKeyboard final : public platform::Keyboard {
public:
    void Hold(std::initializer_list<int> keys) { held = keys; }
    void ReleaseAll() { held.clear(); }

    short GetAsyncKeyState(int virtualKey) override
    {
        ++reads;
        return held.contains(virtualKey) ? -32768 : 0;
    }

    std::set<int> held;
    int reads = 0;
};

} // namespace voxtrel::tests
