#pragma once

#include <cstdint>
#include <string>

namespace quorvane {

// The result of a platform operation: 0 or a 32-bit error code.
using HIDReturn = std::uint32_t;

namespace HIDReturnCode {

inline constexpr HIDReturn success = 0;
inline constexpr HIDReturn generalError = 0xE00002BC;
inline constexpr HIDReturn noDevice = 0xE00002C0;
inline constexpr HIDReturn exclusiveAccess = 0xE00002C5;
inline constexpr HIDReturn notPermitted = 0xE00002E2;
inline constexpr HIDReturn aborted = 0xE00002EB;  // interrupted by this program

}  // namespace HIDReturnCode

// The code for the errno of a failed system call. Errors without their own code become 0x0000C000
// plus the errno, so that messages still show it.
HIDReturn hidReturnFromErrno(int error);

// The message for a code.
std::string describeHIDReturn(HIDReturn code);

}  // namespace quorvane
