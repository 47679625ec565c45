#include "agent/system_control.h"

namespace voxtrel::agent {

bool SystemControlIsRegistered() { return false; }

MadeControl MakeSystemControl(SystemControlOptions)
{
    return {nullptr, Result::Failure(ErrorCode::SystemControlMissing,
                                     L"Only Windows can have a character control of its own.")};
}

} // namespace voxtrel::agent
