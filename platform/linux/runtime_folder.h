#pragma once

#include <string>

namespace voxtrel::platform {

// A folder that only this user can enter, for sockets and locks of the running program. Made when it is missing;
// empty when there is none to be had.
std::string RuntimeFolder();

} // namespace voxtrel::platform
