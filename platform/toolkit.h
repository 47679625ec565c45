#pragma once

namespace voxtrel::platform {

// To be called before the windows' toolkit starts. Where it can draw through several systems it takes the one
// in which a program may place its windows and see the keys and windows of others; the user's GDK_BACKEND
// goes before.
void ChooseToolkitBackend();

} // namespace voxtrel::platform
