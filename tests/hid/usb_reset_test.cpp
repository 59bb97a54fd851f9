#include "hid/usb_reset.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "protocol/error.h"

namespace quorvane::usb_reset_test {
namespace {

constexpr std::int64_t fanatec = 0x0EB7;

struct Facts {
  std::string name;
  std::optional<std::int64_t> vendorID;
  std::optional<std::int64_t> productID;
  std::optional<std::int64_t> locationID;
  int error = 0;  // of the reset
};

// A bus with the given devices. Records the calls on them.
class FakeBus final : public USBBus {
 public:
  explicit FakeBus(std::vector<Facts> devices) : devices_(std::move(devices)) {}

  std::vector<std::unique_ptr<USBDevice>> devices() override {
    if (failure) throw FanatecError(*failure);
    std::vector<std::unique_ptr<USBDevice>> list;
    for (const Facts& facts : devices_) list.push_back(std::make_unique<Device>(facts, log));
    return list;
  }

  std::vector<std::string> log;
  std::optional<FanatecError> failure;

 private:
  class Device final : public USBDevice {
   public:
    Device(const Facts& facts, std::vector<std::string>& log) : facts_(facts), log_(log) {}

    std::optional<std::int64_t> vendorID() const override { return facts_.vendorID; }
    std::optional<std::int64_t> productID() const override { return facts_.productID; }
    std::optional<std::int64_t> locationID() const override { return facts_.locationID; }
    void reset() override {
      log_.push_back("reset " + facts_.name);
      if (facts_.error != 0) {
        throw std::system_error(facts_.error, std::generic_category(), facts_.name);
      }
    }

   private:
    const Facts& facts_;
    std::vector<std::string>& log_;
  };

  std::vector<Facts> devices_;
};

using Log = std::vector<std::string>;

std::string failureOf(std::int64_t vendorID, std::optional<std::int64_t> productID, FakeBus& bus) {
  try {
    USBReset::reset(vendorID, productID, bus);
  } catch (const FanatecError& error) {
    EXPECT_EQ(error.kind(), "ioFailed");
    return error.errorDescription();
  }
  return "no failure";
}

TEST(USBReset, ResetsTheFirstDeviceOfTheVendor) {
  FakeBus bus({{"hub", 0x1D6B, 0x0002, 0x01000000},
               {"base", fanatec, 0x0020, 0x03140000},
               {"pedals", fanatec, 0x6204, 0x03150000}});
  EXPECT_EQ(USBReset::reset(fanatec, std::nullopt, bus), 0x03140000);
  EXPECT_EQ(bus.log, Log{"reset base"});
}

TEST(USBReset, KeepsToTheOrderOfTheBus) {
  FakeBus bus(
      {{"second port", fanatec, 0x6204, 0x03200000}, {"first port", fanatec, 0x0020, 0x03100000}});
  EXPECT_EQ(USBReset::reset(fanatec, std::nullopt, bus), 0x03200000);
  EXPECT_EQ(bus.log, Log{"reset second port"});
}

TEST(USBReset, SkipsOtherProductsWhenOneIsGiven) {
  FakeBus bus({{"pedals", fanatec, 0x6204, 0x03150000},
               {"base", fanatec, 0x0020, 0x03140000},
               {"another", fanatec, 0x0020, 0x03160000}});
  EXPECT_EQ(USBReset::reset(fanatec, 0x0020, bus), 0x03140000);
  EXPECT_EQ(bus.log, Log{"reset base"});
}

TEST(USBReset, SkipsOtherVendorsWithTheSameProduct) {
  FakeBus bus({{"stranger", 0x046D, 0x0020, 0x01100000}, {"base", fanatec, 0x0020, 0x03140000}});
  EXPECT_EQ(USBReset::reset(fanatec, 0x0020, bus), 0x03140000);
  EXPECT_EQ(bus.log, Log{"reset base"});
}

TEST(USBReset, SkipsDevicesWithoutAVendor) {
  FakeBus bus(
      {{"nameless", std::nullopt, 0x0020, 0x01100000}, {"base", fanatec, 0x0020, 0x03140000}});
  EXPECT_EQ(USBReset::reset(fanatec, std::nullopt, bus), 0x03140000);
  EXPECT_EQ(bus.log, Log{"reset base"});
}

TEST(USBReset, ADeviceWithoutAProductMatchesOnlyWhenNoneIsGiven) {
  FakeBus bus({{"base", fanatec, std::nullopt, 0x03140000}});
  EXPECT_EQ(failureOf(fanatec, 0x0020, bus),
            "HID I/O failed: no USB device with vendor 0xeb7 found");
  EXPECT_EQ(failureOf(fanatec, 0, bus), "HID I/O failed: no USB device with vendor 0xeb7 found");
  EXPECT_TRUE(bus.log.empty());
  EXPECT_EQ(USBReset::reset(fanatec, std::nullopt, bus), 0x03140000);
}

TEST(USBReset, ADeviceWithoutALocationGivesZero) {
  FakeBus bus({{"base", fanatec, 0x0020, std::nullopt}});
  EXPECT_EQ(USBReset::reset(fanatec, 0x0020, bus), 0);
  EXPECT_EQ(bus.log, Log{"reset base"});
}

TEST(USBReset, SaysThatThereIsNoSuchDevice) {
  FakeBus bus({{"hub", 0x1D6B, 0x0002, 0x01000000}});
  const std::vector<std::pair<std::int64_t, std::string>> cases{
      {0x0EB7, "HID I/O failed: no USB device with vendor 0xeb7 found"},
      {0x0001, "HID I/O failed: no USB device with vendor 0x1 found"},
      {0x0000, "HID I/O failed: no USB device with vendor 0x0 found"},
      {0xABCD, "HID I/O failed: no USB device with vendor 0xabcd found"},
  };
  for (const auto& [vendor, message] : cases) {
    EXPECT_EQ(failureOf(vendor, std::nullopt, bus), message);
    EXPECT_EQ(failureOf(vendor, 0x0020, bus), message);
  }
  EXPECT_EQ(failureOf(0x1D6B, 0x0003, bus),
            "HID I/O failed: no USB device with vendor 0x1d6b found");
  FakeBus empty({});
  EXPECT_EQ(failureOf(fanatec, std::nullopt, empty),
            "HID I/O failed: no USB device with vendor 0xeb7 found");
  EXPECT_TRUE(bus.log.empty());
}

TEST(USBReset, PassesTheDevicesOwnErrorOnAndTriesNoOther) {
  for (const int error : {EACCES, ENODEV, EBUSY, EIO}) {
    FakeBus bus(
        {{"base", fanatec, 0x0020, 0x03140000, error}, {"another", fanatec, 0x0020, 0x03160000}});
    try {
      USBReset::reset(fanatec, std::nullopt, bus);
      ADD_FAILURE() << "the error was lost";
    } catch (const std::system_error& thrown) {
      const std::system_error wanted(error, std::generic_category(), "base");
      EXPECT_EQ(thrown.code(), wanted.code());
      EXPECT_STREQ(thrown.what(), wanted.what());
    }
    EXPECT_EQ(bus.log, Log{"reset base"});
  }
}

TEST(USBReset, PassesOnThatTheBusCannotBeWalked) {
  for (const char* const detail :
       {"IOServiceMatching failed", "IOServiceGetMatchingServices failed"}) {
    FakeBus bus({{"base", fanatec, 0x0020, 0x03140000}});
    bus.failure = FanatecError::ioFailed(detail);
    EXPECT_EQ(failureOf(fanatec, std::nullopt, bus), std::string("HID I/O failed: ") + detail);
    EXPECT_TRUE(bus.log.empty());
  }
}

}  // namespace
}  // namespace quorvane::usb_reset_test
