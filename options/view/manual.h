#pragma once

#include <string>

class wxWindow;

namespace voxtrel::options {

// The manual that stands beside the program's help file.
std::wstring ManualBeside(const std::wstring& helpFile);

// Opens it in the user's browser, or in a window of its own over parent where there is none. False when there
// is no such file.
bool OpenManual(const std::wstring& manual, wxWindow* parent);

} // namespace voxtrel::options
