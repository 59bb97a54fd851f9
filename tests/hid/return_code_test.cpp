#include "hid/return_code.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

namespace quorvane::return_code_test {
namespace {

TEST(HIDReturnCode, HasAnErrorOfItsOwnForWhatPeopleCanChange) {
  const std::vector<std::pair<int, HIDReturn>> cases{
      {ENODEV, 0xE00002C0}, {ENOENT, 0xE00002C0}, {ENXIO, 0xE00002C0},
      {EACCES, 0xE00002E2}, {EPERM, 0xE00002E2},  {EBUSY, 0xE00002C5},
  };
  for (const auto& [error, code] : cases) EXPECT_EQ(hidReturnFromErrno(error), code) << error;
}

TEST(HIDReturnCode, ShowsEveryOtherErrorByItsNumber) {
  for (const int error : {EIO, EPIPE, EINVAL, ENOMEM, ETIMEDOUT, EMFILE, EINTR, 1000}) {
    EXPECT_EQ(hidReturnFromErrno(error), 0xC000U + static_cast<unsigned>(error)) << error;
  }
}

TEST(HIDReturnCode, NoErrorIsSuccess) {
  for (int error = 1; error <= 200; ++error) {
    EXPECT_NE(hidReturnFromErrno(error), HIDReturnCode::success) << error;
  }
}

TEST(HIDReturnCode, SaysWhatPeopleRead) {
  const std::vector<std::pair<HIDReturn, std::string>> cases{
      {0xE00002C0, "device not found"},
      {0xE00002E2, "not permitted: check System Settings > Privacy & Security > Input Monitoring"},
      {0xE00002C5, "exclusive access: another app has seized the device"},
      {0xE00002BC, "IOReturn 0xE00002BC"},
      {0xE00002EB, "IOReturn 0xE00002EB"},
      {0x00000000, "IOReturn 0x00000000"},
      {0x0000C020, "IOReturn 0x0000C020"},
      {0xFFFFFFFF, "IOReturn 0xFFFFFFFF"},
      {0x000ABCDE, "IOReturn 0x000ABCDE"},
  };
  for (const auto& [code, text] : cases) EXPECT_EQ(describeHIDReturn(code), text);
}

TEST(HIDReturnCode, SaysWhatAFailedCallWas) {
  EXPECT_EQ(describeHIDReturn(hidReturnFromErrno(EPIPE)), "IOReturn 0x0000C020");
  EXPECT_EQ(describeHIDReturn(hidReturnFromErrno(EIO)), "IOReturn 0x0000C005");
  EXPECT_EQ(describeHIDReturn(hidReturnFromErrno(ENODEV)), "device not found");
}

}  // namespace
}  // namespace quorvane::return_code_test
