#pragma once

#include <wx/app.h>
#include <wx/stopwatch.h>
#include <wx/utils.h>

namespace voxtrel::tests {

// Handles events until the condition holds; false when it does not within ten seconds.
template <class Condition> bool Until(Condition condition)
{
    constexpr long kPatienceMs = 10000;
    const wxStopWatch watch;
    while (!condition()) {
        if (watch.Time() > kPatienceMs)
            return false;
        wxTheApp->Yield(true);
        wxMilliSleep(5);
    }
    return true;
}

} // namespace voxtrel::tests
