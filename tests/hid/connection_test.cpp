#include "hid/connection.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <array>
#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "protocol/error.h"
#include "support/semaphore.h"
#include "support/thread.h"
#include "tests/error_text.h"
#include "tests/hid/fake_port.h"
#include "tests/hid_codes.h"
#include "tests/support/no_threads.h"

namespace quorvane::connection_test {
namespace {

using Lines = std::vector<std::string>;

// Input report 1: a signed byte X (-100...100), a byte Y (0...255).
const Bytes twoAxes{
    0x05, 0x01,        // Usage Page (Generic Desktop)
    0x09, 0x04,        // Usage (Joystick)
    0xA1, 0x01,        // Collection (Application)
    0x85, 0x01,        //   Report ID (1)
    0x75, 0x08,        //   Report Size (8)
    0x95, 0x01,        //   Report Count (1)
    0x15, 0x9C,        //   Logical Minimum (-100)
    0x25, 0x64,        //   Logical Maximum (100)
    0x09, 0x30,        //   Usage (X)
    0x81, 0x02,        //   Input (Data, Variable, Absolute)
    0x15, 0x00,        //   Logical Minimum (0)
    0x26, 0xFF, 0x00,  //   Logical Maximum (255)
    0x09, 0x31,        //   Usage (Y)
    0x81, 0x02,        //   Input (Data, Variable, Absolute)
    0xC0,              // End Collection
};

class HIDConnectionTest : public testing::Test {
 protected:
  void SetUp() override {
    device_->describe(twoAxes);
    connect();
  }

  void TearDown() override {
    connection_.reset();
    EXPECT_EQ(device_->openPorts(), 0);
  }

  // Makes a new connection, with the device's current description.
  void connect() { connection_ = std::make_unique<HIDConnection>(HIDEnumerator::info(device_)); }

  // Records the reports from now on.
  HIDConnection::HandlerID keepReports() {
    return connection_->onReport([this](const HIDInputReport& report) {
      reports_.push_back(std::to_string(report.reportID) + ": " + report.hexDump());
    });
  }

  HIDConnection::HandlerID keepValues() {
    return connection_->onValue([this](const HIDElementValue& value) { values_.push_back(value); });
  }

  // The recorded values as "usage=value".
  Lines takeValues() {
    Lines lines;
    for (const HIDElementValue& value : std::exchange(values_, {})) {
      lines.push_back(fmt::format("{:02x}={}", value.usage, value.value));
    }
    return lines;
  }

  const std::shared_ptr<FakeDevice> device_ = std::make_shared<FakeDevice>();
  std::unique_ptr<HIDConnection> connection_;
  Lines reports_;  // "report ID: bytes"; written by the reader thread, read while it is idle
  std::vector<HIDElementValue> values_;
};

TEST_F(HIDConnectionTest, TheBufferHoldsTheLargestInputReportAtLeast64BytesAndOneMore) {
  const std::vector<std::pair<std::int64_t, std::size_t>> cases{
      {0, 65}, {8, 65}, {63, 65}, {64, 65}, {65, 66}, {100, 101}, {4096, 4097}, {-1, 65},
  };
  for (const auto& [largest, size] : cases) {
    const auto other = std::make_shared<FakeDevice>();
    other->setProperty(HIDPropertyKey::maxInputReportSize, largest);
    HIDConnection measured(HIDEnumerator::info(other));
    EXPECT_EQ(measured.bufferSize(), size) << largest;
    measured.open(false);
    EXPECT_EQ(other->readBufferSize(), size) << largest;
  }
}

TEST_F(HIDConnectionTest, KeepsTheDescriptionThatItWasMadeFrom) {
  EXPECT_EQ(connection_->info().id, HIDEnumerator::info(device_).id);
  EXPECT_EQ(connection_->info().device, device_);
}

TEST_F(HIDConnectionTest, IsClosedAtFirst) {
  EXPECT_FALSE(connection_->isOpen());
  EXPECT_EQ(errorText([&] { connection_->send({1, {2}}); }), "Device is not open");
  EXPECT_EQ(errorText([&] { connection_->getReport(HIDReportKind::input, 1, 2); }),
            "Device is not open");
  EXPECT_EQ(errorText([&] { connection_->getFeature(1, 2); }), "Device is not open");
  EXPECT_EQ(errorText([&] { connection_->tryWriteLock(); }), "Device is not open");
  EXPECT_EQ(errorText([&] { connection_->watchForOthers(); }), "Device is not open");
  EXPECT_EQ(errorText([&] { connection_->othersMayHaveWritten(); }), "Device is not open");
  connection_->endWriteLock();
  EXPECT_EQ(device_->calls(), Lines{});
}

TEST_F(HIDConnectionTest, OpensSharedOrExclusive) {
  connection_->open(false);
  EXPECT_TRUE(connection_->isOpen());
  connection_->close();
  connection_->open(true);
  EXPECT_TRUE(connection_->isOpen());
  EXPECT_EQ(device_->calls(), (Lines{"open shared", "close", "open exclusive"}));
}

TEST_F(HIDConnectionTest, OpeningTwiceDoesNothingMore) {
  connection_->open(false);
  connection_->open(false);
  connection_->open(true);
  EXPECT_EQ(device_->calls(), (Lines{"open shared"}));
}

TEST_F(HIDConnectionTest, ClosingIsHarmlessAtAnyTime) {
  connection_->close();
  EXPECT_FALSE(connection_->isOpen());
  connection_->open(false);
  connection_->close();
  connection_->close();
  EXPECT_FALSE(connection_->isOpen());
  device_->waitUntilClosed();
  connection_->close();
  EXPECT_EQ(device_->calls(), (Lines{"open shared", "close"}));
}

TEST_F(HIDConnectionTest, JoiningWaitsUntilTheReaderHasClosedTheDevice) {
  connection_->join();
  connection_->open(false);
  connection_->close();
  connection_->join();
  EXPECT_EQ(device_->calls(), (Lines{"open shared", "close"}));
  connection_->join();
  connection_->open(false);
  EXPECT_TRUE(connection_->isOpen());
}

TEST_F(HIDConnectionTest, AHandlerThatJoinsGoesOnAtOnce) {
  keepReports();
  connection_->onReport([this](const HIDInputReport&) {
    connection_->close();
    connection_->join();
  });
  connection_->open(false);
  device_->deliver(1, {1, 2});
  EXPECT_EQ(reports_, (Lines{"1: 01 02"}));
  device_->waitUntilClosed();
}

TEST_F(HIDConnectionTest, DestructionCloses) {
  connection_->open(false);
  connection_.reset();
  EXPECT_EQ(device_->calls(), (Lines{"open shared", "close"}));
}

TEST_F(HIDConnectionTest, IsClosedForSendersAsSoonAsItCloses) {
  connection_->open(false);
  connection_->close();
  EXPECT_EQ(errorText([&] { connection_->send({1, {2}}); }), "Device is not open");
  EXPECT_EQ(errorText([&] { connection_->getReport(HIDReportKind::input, 1, 2); }),
            "Device is not open");
}

TEST_F(HIDConnectionTest, AFailedOpeningSaysWhyAndLeavesItClosed) {
  const std::vector<std::pair<HIDReturn, std::string>> cases{
      {HIDReturnCode::noDevice, "device not found"},
      {HIDReturnCode::notPermitted,
       "not permitted: check System Settings > Privacy & Security > Input Monitoring"},
      {HIDReturnCode::exclusiveAccess, "exclusive access: another app has seized the device"},
      {HIDReturnCode::generalError, "IOReturn 0xE00002BC"},
      {otherCode, "IOReturn 0x0000C005"},
      {0x0000C07A, "IOReturn 0x0000C07A"},
  };
  for (const auto& [code, text] : cases) {
    EXPECT_EQ(HIDConnection::describe(code), text);
    device_->failOpenWith(code);
    EXPECT_EQ(errorText([&] { connection_->open(false); }), "HID I/O failed: " + text);
    EXPECT_FALSE(connection_->isOpen());
    EXPECT_EQ(errorText([&] { connection_->send({1, {2}}); }), "Device is not open");
  }
  EXPECT_EQ(device_->calls(), Lines(cases.size(), "open shared"));
}

TEST_F(HIDConnectionTest, OnlyAFailedOpeningHasAnOpenCode) {
  const auto openCodeOf = [](const auto& call) -> std::optional<HIDReturn> {
    try {
      call();
    } catch (const FanatecError& error) {
      return error.openCode();
    }
    return std::nullopt;
  };
  const auto open = [&] { connection_->open(false); };
  const auto send = [&] { connection_->send({1, {2}}); };
  for (const HIDReturn code : {HIDReturnCode::notPermitted, HIDReturnCode::noDevice, otherCode}) {
    device_->failOpenWith(code);
    EXPECT_EQ(openCodeOf(open), code);
  }
  device_->failOpenWith(HIDReturnCode::success);
  EXPECT_EQ(openCodeOf(open), std::nullopt);
  device_->failWritesWith(HIDReturnCode::noDevice);
  EXPECT_EQ(openCodeOf(send), HIDReturnCode::success);
}

TEST_F(HIDConnectionTest, WithoutAThreadItStaysClosedAndMayBeOpenedLater) {
  {
    const NoThreads none;
    EXPECT_EQ(errorText([&] { connection_->open(false); }),
              std::string("HID I/O failed: ") + noThreadText);
  }
  EXPECT_FALSE(connection_->isOpen());
  EXPECT_EQ(device_->calls(), Lines{});
  connection_->open(false);
  EXPECT_TRUE(connection_->isOpen());
}

TEST_F(HIDConnectionTest, MayBeOpenedAgainAfterAFailure) {
  device_->failOpenWith(HIDReturnCode::exclusiveAccess);
  EXPECT_NE(errorText([&] { connection_->open(true); }), "no error");
  device_->failOpenWith(HIDReturnCode::success);
  connection_->open(true);
  EXPECT_TRUE(connection_->isOpen());
  keepReports();
  device_->deliver(1, {1, 2});
  EXPECT_EQ(reports_, (Lines{"1: 01 02"}));
}

TEST_F(HIDConnectionTest, MayBeOpenedAgainWithTheHandlersOfTheFirstTime) {
  keepReports();
  connection_->open(false);
  device_->deliver(1, {1, 2});
  connection_->close();
  device_->waitUntilClosed();
  device_->deliver(1, {1, 3});
  connection_->open(false);
  device_->deliver(1, {1, 4});
  EXPECT_EQ(reports_, (Lines{"1: 01 02", "1: 01 04"}));
}

TEST_F(HIDConnectionTest, ReportsWithAnIDBeginWithIt) {
  struct Case {
    std::uint8_t reportID;
    Bytes bytes;
    std::string delivered;
  };
  const std::vector<Case> cases{
      {1, {1, 2, 3}, "1: 01 02 03"}, {1, {2, 3}, "1: 01 02 03"},      {1, {1}, "1: 01"},
      {0, {5, 6}, "0: 05 06"},       {0, {0, 6}, "0: 00 06"},         {0, {0}, "0: 00"},
      {0xFF, {3}, "255: ff 03"},     {0xFF, {0xFF, 3}, "255: ff 03"}, {2, {0, 0}, "2: 02 00 00"},
  };
  keepReports();
  connection_->open(false);
  for (const Case& report : cases) {
    device_->deliver(report.reportID, report.bytes);
    ASSERT_EQ(reports_, (Lines{report.delivered}));
    reports_.clear();
  }
}

TEST_F(HIDConnectionTest, EmptyReportsAreDropped) {
  keepReports();
  connection_->open(false);
  device_->deliver(1, {});
  device_->deliver(0, {});
  EXPECT_EQ(reports_, Lines{});
  device_->deliver(1, {1});
  EXPECT_EQ(reports_, (Lines{"1: 01"}));
}

TEST_F(HIDConnectionTest, AReadErrorEndsDeliveryAndLeavesItOpen) {
  keepReports();
  connection_->open(false);
  device_->leave();
  device_->deliver(1, {1, 2});
  EXPECT_EQ(reports_, Lines{});
  EXPECT_TRUE(connection_->isOpen());
  EXPECT_EQ(errorText([&] { connection_->send({1, {2}}); }), "no error");
  EXPECT_EQ(device_->openPorts(), 1);
  connection_->close();
  device_->waitUntilClosed();
}

TEST_F(HIDConnectionTest, EveryHandlerGetsEveryReport) {
  keepReports();
  keepReports();
  connection_->open(false);
  device_->deliver(1, {1, 2});
  EXPECT_EQ(reports_, (Lines{"1: 01 02", "1: 01 02"}));
}

TEST_F(HIDConnectionTest, ReportsWithoutAHandlerAreDropped) {
  connection_->open(false);
  device_->deliver(1, {1, 2});
  keepReports();
  device_->deliver(1, {1, 3});
  EXPECT_EQ(reports_, (Lines{"1: 01 03"}));
}

TEST_F(HIDConnectionTest, RemovingSearchesHandlersOfBothSorts) {
  const auto report = keepReports();
  const auto value = keepValues();
  EXPECT_NE(report, value);
  connection_->open(false);
  device_->deliver(1, {1, 2, 3});
  EXPECT_EQ(reports_.size(), 1U);
  EXPECT_EQ(takeValues(), (Lines{"30=2", "31=3"}));

  connection_->removeHandler(value);
  device_->deliver(1, {1, 4, 5});
  EXPECT_EQ(reports_.size(), 2U);
  EXPECT_EQ(takeValues(), Lines{});

  connection_->removeHandler(report);
  device_->deliver(1, {1, 6, 7});
  EXPECT_EQ(reports_.size(), 2U);
}

TEST_F(HIDConnectionTest, RemovingAnUnknownHandlerChangesNothing) {
  const auto first = keepReports();
  const auto second = keepReports();
  EXPECT_NE(first, second);
  connection_->removeHandler(first);
  connection_->removeHandler(first);
  connection_->removeHandler(HIDConnection::HandlerID{12345});
  EXPECT_NE(keepReports(), second);
  connection_->open(false);
  device_->deliver(1, {1, 2});
  EXPECT_EQ(reports_.size(), 2U);
}

TEST_F(HIDConnectionTest, AHandlerRegisteredDuringADeliveryGetsTheNextReport) {
  bool registered = false;
  connection_->onReport([&](const HIDInputReport&) {
    if (!std::exchange(registered, true)) keepReports();
  });
  connection_->open(false);
  device_->deliver(1, {1, 2});
  device_->deliver(1, {1, 3});
  EXPECT_EQ(reports_, (Lines{"1: 01 03"}));
}

TEST_F(HIDConnectionTest, AHandlerMayRemoveItselfDuringADelivery) {
  int calls = 0;
  HIDConnection::HandlerID self{};
  self = connection_->onReport([&](const HIDInputReport&) {
    connection_->removeHandler(self);
    ++calls;
  });
  connection_->open(false);
  device_->deliver(1, {1, 2});
  device_->deliver(1, {1, 3});
  EXPECT_EQ(calls, 1);
}

TEST_F(HIDConnectionTest, AHandlerRemovedDuringADeliveryGetsNoLaterReport) {
  HIDConnection::HandlerID other{};
  connection_->onReport([&](const HIDInputReport&) { connection_->removeHandler(other); });
  other = keepReports();
  connection_->open(false);
  device_->deliver(1, {1, 2});
  const std::size_t delivered = reports_.size();
  EXPECT_LE(delivered, 1U);
  device_->deliver(1, {1, 3});
  EXPECT_EQ(reports_.size(), delivered);
}

TEST_F(HIDConnectionTest, AHandlerMaySendDuringADelivery) {
  connection_->onReport([&](const HIDInputReport& report) {
    connection_->send({1, report.bytes});
  });
  connection_->open(false);
  device_->deliver(2, {7});
  EXPECT_EQ(device_->calls(), (Lines{"open shared", "SetReport 01: 01 02 07"}));
}

TEST_F(HIDConnectionTest, AHandlerMayCloseDuringADelivery) {
  keepReports();
  connection_->onReport([&](const HIDInputReport&) { connection_->close(); });
  connection_->open(false);
  device_->deliver(1, {1, 2});
  EXPECT_FALSE(connection_->isOpen());
  device_->deliver(1, {1, 3});
  EXPECT_EQ(reports_, (Lines{"1: 01 02"}));
}

TEST_F(HIDConnectionTest, AHandlerMayDestroyItDuringADelivery) {
  connection_->onReport([this](const HIDInputReport&) { connection_.reset(); });
  connection_->open(false);
  device_->deliver(1, {1, 2});
  EXPECT_EQ(connection_, nullptr);
  device_->waitUntilClosed();
}

TEST_F(HIDConnectionTest, HandlersThatAreStillRegisteredAreDroppedWithIt) {
  const auto held = std::make_shared<int>(0);
  connection_->onReport([held](const HIDInputReport&) {});
  connection_->onValue([held](const HIDElementValue&) {});
  EXPECT_EQ(held.use_count(), 3);
  connection_->open(false);
  device_->deliver(1, {1, 2, 3});
  connection_.reset();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(HIDConnectionTest, HandlersRunOnOneThreadOfTheirOwn) {
  std::vector<std::string> names;
  std::vector<pthread_t> threads;
  connection_->onReport([&](const HIDInputReport&) {
    std::array<char, 64> name{};
    pthread_getname_np(pthread_self(), name.data(), name.size());
    names.emplace_back(name.data());
    threads.push_back(pthread_self());
  });
  connection_->open(false);
  device_->deliver(1, {1, 2});
  device_->deliver(1, {1, 3});
  EXPECT_EQ(names, (Lines{"FanatecKit.HID.", "FanatecKit.HID."}));
  ASSERT_EQ(threads.size(), 2U);
  EXPECT_TRUE(pthread_equal(threads[0], threads[1]));
  EXPECT_FALSE(pthread_equal(threads[0], pthread_self()));
}

TEST_F(HIDConnectionTest, ThePacketGoesOutBehindItsReportID) {
  const std::vector<std::pair<HIDReportPacket, std::string>> cases{
      {{0x1F, {1, 2, 3, 4, 5, 6, 7}}, "SetReport 1f: 1f 01 02 03 04 05 06 07"},
      {{0x00, {1, 2, 3, 4, 5, 6, 7}}, "SetReport 00: 01 02 03 04 05 06 07"},
      {{0x01, {1, 2}}, "SetReport 01: 01 01 02"},
      {{0x02, {}}, "SetReport 02: 02"},
  };
  connection_->open(false);
  Lines expected{"open shared"};
  for (const auto& [packet, call] : cases) {
    connection_->send(packet);
    expected.push_back(call);
  }
  EXPECT_EQ(device_->calls(), expected);
}

TEST_F(HIDConnectionTest, AFailedSendNamesTheReportInHexadecimalAndTheReason) {
  struct Case {
    std::uint8_t reportID;
    HIDReturn code;
    std::string text;
  };
  const std::vector<Case> cases{
      {0x1F, otherCode, "SetReport id 0x1F -> IOReturn 0x0000C005"},
      {0x0A, HIDReturnCode::noDevice, "SetReport id 0xA -> device not found"},
      {0xFF, HIDReturnCode::exclusiveAccess,
       "SetReport id 0xFF -> exclusive access: another app has seized the device"},
      {0x00, HIDReturnCode::notPermitted,
       "SetReport id 0x0 -> not permitted: check System Settings > Privacy & Security > Input "
       "Monitoring"},
  };
  connection_->open(false);
  for (const Case& failure : cases) {
    device_->failWritesWith(failure.code);
    EXPECT_EQ(errorText([&] {
                connection_->send({failure.reportID, {1}});
              }),
              "HID I/O failed: " + failure.text);
    EXPECT_TRUE(connection_->isOpen());
  }
  device_->failWritesWith(HIDReturnCode::success);
  EXPECT_EQ(errorText([&] { connection_->send({1, {1}}); }), "no error");
}

TEST_F(HIDConnectionTest, SendsDoNotWaitForEachOther) {
  connection_->open(false);
  device_->gatherWrites(2);
  Thread other("other sender", [&] { connection_->send({1, {2}}); });
  connection_->send({1, {2}});
  other.join();
  EXPECT_EQ(device_->calls(), (Lines{"open shared", "SetReport 01: 01 02", "SetReport 01: 01 02"}));
}

TEST_F(HIDConnectionTest, GetReportHandsOverABufferOneByteLongerThatBeginsWithTheReportID) {
  struct Case {
    HIDReportKind kind;
    std::uint8_t reportID;
    std::size_t length;
    std::string call;
  };
  const std::vector<Case> cases{
      {HIDReportKind::input, 31, 0, "GetReport input 31: 1f 00"},
      {HIDReportKind::input, 31, 1, "GetReport input 31: 1f 00"},
      {HIDReportKind::feature, 1, 2, "GetReport feature 1: 01 00 00"},
      {HIDReportKind::feature, 0, 3, "GetReport feature 0: 00 00 00 00"},
  };
  connection_->open(false);
  Lines expected{"open shared"};
  for (const Case& request : cases) {
    connection_->getReport(request.kind, request.reportID, request.length);
    expected.push_back(request.call);
  }
  connection_->getFeature(5, 1);
  expected.emplace_back("GetReport feature 5: 05 00");
  EXPECT_EQ(device_->calls(), expected);
}

TEST_F(HIDConnectionTest, GetReportReturnsWhatCameBehindTheReportID) {
  struct Case {
    std::uint8_t reportID;
    std::size_t length;    // requested
    Bytes bytes;           // put into the buffer by the platform
    std::size_t returned;  // the length that the platform returns
    Bytes result;
  };
  const std::vector<Case> cases{
      {1, 3, {1, 2, 3, 4}, 4, {1, 2, 3, 4}},
      {1, 3, {1, 2, 3, 4}, 3, {1, 2, 3}},
      {1, 3, {2, 3, 4}, 3, {1, 2, 3, 4}},
      {1, 3, {2, 3, 4, 5}, 4, {1, 2, 3, 4, 5}},
      {1, 3, {}, 0, {1}},
      {1, 3, {}, 1, {1}},
      {0, 3, {5, 6, 7}, 3, {5, 6, 7}},
      {0, 3, {0, 6, 7}, 3, {0, 6, 7}},
      {0, 3, {}, 0, {}},
      {1, 1, {1, 2}, 99, {1, 2}},
      {0, 0, {8, 9}, 2, {8, 9}},
  };
  connection_->open(false);
  for (const Case& exchange : cases) {
    device_->answerGetReport(HIDReturnCode::success, exchange.bytes, exchange.returned);
    for (const auto kind : {HIDReportKind::input, HIDReportKind::feature}) {
      EXPECT_EQ(connection_->getReport(kind, exchange.reportID, exchange.length), exchange.result)
          << "report " << int{exchange.reportID} << " of " << hexDump(exchange.bytes);
    }
  }
}

TEST_F(HIDConnectionTest, AFailedGetReportNamesTheReportInDecimalAndTheReason) {
  const std::vector<std::pair<std::uint8_t, std::string>> cases{
      {0x1F, "GetReport id 31 -> IOReturn 0x0000C005"},
      {0x0A, "GetReport id 10 -> IOReturn 0x0000C005"},
      {0xFF, "GetReport id 255 -> IOReturn 0x0000C005"},
      {0x00, "GetReport id 0 -> IOReturn 0x0000C005"},
  };
  connection_->open(false);
  device_->answerGetReport(otherCode, {}, 0);
  for (const auto& [reportID, text] : cases) {
    for (const auto kind : {HIDReportKind::input, HIDReportKind::feature}) {
      EXPECT_EQ(errorText([&, id = reportID] { connection_->getReport(kind, id, 8); }),
                "HID I/O failed: " + text);
    }
  }
  EXPECT_TRUE(connection_->isOpen());
}

TEST_F(HIDConnectionTest, ValuesCarryWhatTheDescriptorSaysOfThem) {
  WallClock::time_point receivedAt;
  connection_->onReport([&](const HIDInputReport& report) { receivedAt = report.receivedAt; });
  keepValues();
  connection_->open(false);
  device_->deliver(1, {1, 0xFE, 0xC8});
  EXPECT_EQ(values_, (std::vector<HIDElementValue>{{1, 0x30, 1, -2, -100, 100, receivedAt},
                                                   {1, 0x31, 1, 200, 0, 255, receivedAt}}));
}

TEST_F(HIDConnectionTest, ValuesAreDeliveredWhenTheyChange) {
  keepValues();
  connection_->open(false);
  device_->deliver(1, {1, 2, 3});
  EXPECT_EQ(takeValues(), (Lines{"30=2", "31=3"}));
  device_->deliver(1, {1, 2, 3});
  EXPECT_EQ(takeValues(), Lines{});
  device_->deliver(1, {1, 2, 4});
  EXPECT_EQ(takeValues(), (Lines{"31=4"}));
}

TEST_F(HIDConnectionTest, ReportsAreDecodedOnlyWhileAValueHandlerIsRegistered) {
  connection_->open(false);
  device_->deliver(1, {1, 2, 3});
  const auto first = keepValues();
  // Reports before the registration were not decoded: otherwise this one would change nothing.
  device_->deliver(1, {1, 2, 3});
  EXPECT_EQ(takeValues(), (Lines{"30=2", "31=3"}));

  connection_->removeHandler(first);
  device_->deliver(1, {1, 9, 9});
  keepValues();
  device_->deliver(1, {1, 2, 3});
  EXPECT_EQ(takeValues(), (Lines{"30=2", "31=3"}));
}

TEST_F(HIDConnectionTest, EveryValueHandlerGetsEveryValue) {
  keepValues();
  keepValues();
  connection_->open(false);
  device_->deliver(1, {1, 2, 3});
  EXPECT_EQ(takeValues(), (Lines{"30=2", "30=2", "31=3", "31=3"}));
}

TEST_F(HIDConnectionTest, AValueHandlerMayCloseDuringADelivery) {
  connection_->onValue([&](const HIDElementValue&) { connection_->close(); });
  connection_->open(false);
  device_->deliver(1, {1, 2, 3});
  EXPECT_FALSE(connection_->isOpen());
}

TEST_F(HIDConnectionTest, ADeviceWithoutADescriptorHasNoValues) {
  device_->setProperty(HIDPropertyKey::reportDescriptor, Bytes{});
  connect();
  keepReports();
  keepValues();
  connection_->open(false);
  device_->deliver(1, {1, 2, 3});
  EXPECT_EQ(reports_, (Lines{"1: 01 02 03"}));
  EXPECT_EQ(takeValues(), Lines{});
}

TEST_F(HIDConnectionTest, TellsThatTheDeviceIsGone) {
  Semaphore gone;
  connection_->setOnGone([&] { gone.signal(); });
  connection_->open(false);
  device_->leave();
  gone.wait();
  connection_->close();
  connection_->join();
  EXPECT_FALSE(gone.tryWait());
}

TEST_F(HIDConnectionTest, DoesNotTellOfItsOwnClosing) {
  int calls = 0;
  connection_->setOnGone([&] { ++calls; });
  connection_->open(false);
  connection_->close();
  connection_->join();
  EXPECT_EQ(calls, 0);
}

TEST_F(HIDConnectionTest, DoesNotTellOfADeviceThatLeftOnceItIsClosed) {
  int calls = 0;
  connection_->setOnGone([&] { ++calls; });
  device_->atLeave([&] { connection_->close(); });
  connection_->open(false);
  device_->leave();
  connection_->join();
  EXPECT_EQ(calls, 0);
}

TEST_F(HIDConnectionTest, AHandlerOfTheDevicesLeavingMayClose) {
  Semaphore gone;
  connection_->setOnGone([&] {
    connection_->close();
    connection_->setOnGone({});
    gone.signal();
  });
  connection_->open(false);
  device_->leave();
  gone.wait();
  EXPECT_FALSE(connection_->isOpen());
  connection_->join();
}

TEST_F(HIDConnectionTest, StandsManyThreadsWhileReportsStreamAndItOpensAndCloses) {
  constexpr int openings = 60;
  constexpr int reportsEach = 25;
  device_->stream(1, {1, 2, 3});
  Semaphore delivered;
  connection_->onReport([&](const HIDInputReport&) { delivered.signal(); });

  std::atomic<bool> done = false;
  std::vector<Thread> threads;
  threads.emplace_back("report handlers", [&] {
    while (!done) {
      const auto id = connection_->onReport([](const HIDInputReport&) {});
      connection_->removeHandler(id);
    }
  });
  threads.emplace_back("value handlers", [&] {
    while (!done) {
      const auto id = connection_->onValue([](const HIDElementValue&) {});
      connection_->removeHandler(id);
    }
  });
  threads.emplace_back("sender", [&] {
    while (!done) {
      const std::string text = errorText([&] { connection_->send({1, {2}}); });
      EXPECT_TRUE(text == "no error" || text == "Device is not open") << text;
    }
  });
  threads.emplace_back("asker", [&] {
    while (!done) {
      const std::string text = errorText([&] { connection_->getFeature(1, 2); });
      EXPECT_TRUE(text == "no error" || text == "Device is not open") << text;
    }
  });
  for (int i = 0; i < openings; ++i) {
    connection_->open(false);
    for (int n = 0; n < reportsEach; ++n) delivered.wait();
    connection_->close();
  }
  done = true;
  threads.clear();
  connection_.reset();
}

}  // namespace
}  // namespace quorvane::connection_test
