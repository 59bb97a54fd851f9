#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

// The outcome of one platform operation: 0 or a 32-bit code.
using HIDReturn = std::uint32_t;

namespace HIDReturnCode {

inline constexpr HIDReturn success = 0;
inline constexpr HIDReturn generalError = 0xE00002BC;
inline constexpr HIDReturn noDevice = 0xE00002C0;
inline constexpr HIDReturn exclusiveAccess = 0xE00002C5;
inline constexpr HIDReturn notPermitted = 0xE00002E2;
inline constexpr HIDReturn aborted = 0xE00002EB;  // the operation was interrupted by our side

}  // namespace HIDReturnCode

// The code for a failed system call. Errors without a code of their own become 0x0000C000 plus the
// errno, so that a message still tells which it was.
HIDReturn hidReturnFromErrno(int error);

// What a person reads for a code.
std::string describeHIDReturn(HIDReturn code);

}  // namespace quorvane
