#pragma once

#include "platform/windows/windows_headers.h"

#include <oleauto.h>

namespace voxtrel::tests {

// The numbers of the test's own control; that it is the system's is said by its name only.
inline constexpr CLSID kTestControlClass = {
    0x3F2A6C10, 0x7B1D, 0x4E58, {0x9C, 0x41, 0x5A, 0xD0, 0x2E, 0x77, 0x18, 0x01}};
inline constexpr IID kTestControlInterface = {
    0x3F2A6C11, 0x7B1D, 0x4E58, {0x9C, 0x41, 0x5A, 0xD0, 0x2E, 0x77, 0x18, 0x01}};
inline constexpr IID kTestEventsInterface = {
    0x3F2A6C12, 0x7B1D, 0x4E58, {0x9C, 0x41, 0x5A, 0xD0, 0x2E, 0x77, 0x18, 0x01}};

// The events with their numbers, which are others in each process: nobody can know them beforehand.
const wchar_t* const* EventNames(); // ends with null
DISPID EventNumber(const wchar_t* name);

// Descriptions of the control, its interface and its events, made anew for each process. The caller releases
// them.
ITypeInfo* DescribeControlClass();
ITypeInfo* DescribeControlInterface();

} // namespace voxtrel::tests
