#include <fmt/format.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/error_text.h"
#include "tests/hid_codes.h"
#include "tests/session/simulated_session.h"

namespace quorvane {
namespace {

// An operation that sends packets to the base.
struct Operation {
  std::string name;
  std::vector<std::string> reports;  // the report ID of each packet
  std::string timeout;               // the error of the final read; empty if it ends with a send
  std::function<void(WheelBase&)> run;
};

const std::vector<Operation>& operations() {
  const std::string menu = "0xFF";
  const std::string command = "0x1";
  static const std::vector<Operation> all{
      {"fetchTuning",
       {menu},
       menuTimeout,
       [](WheelBase& base) { base.fetchTuning(WheelBase::readTimeout); }},
      {"fetchIdentity",
       {menu, menu},
       identityTimeout,
       [](WheelBase& base) { base.fetchIdentity(WheelBase::readTimeout); }},
      {"verified set",
       {menu, menu},
       menuTimeout,
       [](WheelBase& base) { base.set(TuningParameter::forceFeedback, 70, true); }},
      {"unverified set",
       {menu},
       {},
       [](WheelBase& base) { base.set(TuningParameter::forceFeedback, 70, false); }},
      {"verified set with a burst",
       {menu, command, command, command, command, command, command, command, command, menu},
       menuTimeout,
       [](WheelBase& base) {
         base.sendAckBurstAfterWrite = true;
         base.set(TuningParameter::forceFeedback, 70, true);
       }},
      {"verified switch of the set",
       {menu, menu},
       menuTimeout,
       [](WheelBase& base) { base.set(TuningParameter::slot, 3, true); }},
      {"unverified switch of the set",
       {menu},
       {},
       [](WheelBase& base) { base.set(TuningParameter::slot, 3, false); }},
      {"selectSlot",
       {menu, menu},
       menuTimeout,
       [](WheelBase& base) { base.selectSlot(3, TuningLayout::inPlace); }},
      {"toggleAdvancedMode", {menu}, {}, [](WheelBase& base) { base.toggleAdvancedMode(); }},
      {"switchMenuMode", {menu, menu}, menuTimeout, [](WheelBase& base) { base.switchMenuMode(); }},
      {"factoryReset", {menu, menu}, menuTimeout, [](WheelBase& base) { base.factoryReset(); }},
      {"setRotation",
       {command, command, command},
       {},
       [](WheelBase& base) { base.setRotation(900); }},
      {"sendRaw",
       {menu},
       {},
       [](WheelBase& base) { base.sendRaw(FanatecCommands::resetTuningToFactoryDefaults()); }},
  };
  return all;
}

// How many of the lines are packets, or refused packets.
std::size_t packetsIn(const Lines& lines, bool refusedOnly = false) {
  std::size_t count = 0;
  for (const std::string& line : lines) {
    const bool refused = line.find(" failed ") != std::string::npos;
    if (line.starts_with("> ") && (refused || !refusedOnly)) ++count;
  }
  return count;
}

// How many packets the base has received from a session that has read the menu.
constexpr int receivedBefore = 1;

TEST(WheelBaseFailures, EveryOperationSendsThePacketsOfTheTable) {
  for (const Operation& operation : operations()) {
    SCOPED_TRACE(operation.name);
    SimulatedSession session;
    session.connectAndRead();
    EXPECT_EQ(errorText([&] { operation.run(*session.base); }), "no error");
    const Lines lines = session.takeTranscript();
    EXPECT_EQ(packetsIn(lines), operation.reports.size());
    std::size_t packet = 0;
    for (const std::string& line : lines) {
      if (!line.starts_with("> ")) continue;
      EXPECT_TRUE(line.starts_with(operation.reports[packet] == "0xFF" ? "> ff" : "> 01")) << line;
      ++packet;
    }
  }
}

TEST(WheelBaseFailures, ASendThatFailsEndsTheOperationWithItsError) {
  for (const Operation& operation : operations()) {
    for (std::size_t n = 0; n < operation.reports.size(); ++n) {
      SCOPED_TRACE(fmt::format("{}, packet {}", operation.name, n));
      SimulatedSession session;
      session.connectAndRead();
      const Bytes before = session.keptMenu();
      session.behave([&](SimulatedBehaviour& b) {
        b.failSendsFrom = receivedBefore + static_cast<int>(n);
        b.failSendsWith = otherCode;
      });
      EXPECT_EQ(errorText([&] { operation.run(*session.base); }),
                fmt::format("HID I/O failed: SetReport id {} -> IOReturn 0x0000C005",
                            operation.reports[n]));
      const Lines lines = session.takeTranscript();
      EXPECT_EQ(packetsIn(lines), n + 1);
      EXPECT_EQ(packetsIn(lines, true), 1U);
      EXPECT_TRUE(lines.back().starts_with("> ")) << lines.back();
      EXPECT_EQ(session.keptMenu(), before);
      EXPECT_TRUE(session.base->connection().isOpen());

      // The next report removes the waiters that the failed operation left behind.
      session.report(session.menuReport());
      session.behave([](SimulatedBehaviour& b) { b.failSendsWith = HIDReturnCode::success; });
      EXPECT_EQ(errorText([&] { operation.run(*session.base); }), "no error");
    }
  }
}

TEST(WheelBaseFailures, ABaseThatLeavesEndsEveryOperationWithAnError) {
  for (const Operation& operation : operations()) {
    for (std::size_t n = 0; n <= operation.reports.size(); ++n) {
      SCOPED_TRACE(fmt::format("{}, after {} packets", operation.name, n));
      SimulatedSession session;
      session.connectAndRead();
      if (n == 0) {
        session.device->unplug();
      } else {
        session.behave(
            [&](SimulatedBehaviour& b) { b.unplugAfter = receivedBefore + static_cast<int>(n); });
      }
      std::string expected = operation.timeout.empty() ? "no error" : operation.timeout;
      if (n < operation.reports.size()) {
        expected = fmt::format("HID I/O failed: SetReport id {} -> device not found",
                               operation.reports[n]);
      }
      EXPECT_EQ(errorText([&] { operation.run(*session.base); }), expected);
      EXPECT_FALSE(session.device->isPlugged());
    }
  }
}

TEST(WheelBaseFailures, ABaseThatCameBackIsFoundWithANewSession) {
  for (const Operation& operation : operations()) {
    SCOPED_TRACE(operation.name);
    SimulatedSession session;
    session.connectAndRead();
    session.device->unplug();
    EXPECT_NE(errorText([&] { operation.run(*session.base); }), "no error");
    session.base->disconnect();
    session.device->plug();
    session.describeAs([](HIDDeviceInfo&) {});
    session.connectAndRead();
    EXPECT_EQ(errorText([&] { operation.run(*session.base); }), "no error");
  }
}

TEST(WheelBaseFailures, ABaseThatNeverAnswersEndsEveryReadWithItsTimeout) {
  for (const Operation& operation : operations()) {
    SCOPED_TRACE(operation.name);
    SimulatedSession session;
    session.connectAndRead();
    session.behave([](SimulatedBehaviour& b) { b.silent = true; });
    EXPECT_EQ(errorText([&] { operation.run(*session.base); }),
              operation.timeout.empty() ? "no error" : operation.timeout);
    EXPECT_EQ(packetsIn(session.takeTranscript()), operation.reports.size());
  }
}

TEST(WheelBaseFailures, NoOperationIsDisturbedByOtherReports) {
  for (const Operation& operation : operations()) {
    SCOPED_TRACE(operation.name);
    SimulatedSession session;
    session.connectAndRead();
    session.behave([](SimulatedBehaviour& b) {
      b.foreignReports = true;
      b.streamWheelStatus = true;
      b.answerDelay = Seconds(0.02);
    });
    EXPECT_EQ(errorText([&] { operation.run(*session.base); }), "no error");
  }
}

}  // namespace
}  // namespace quorvane
