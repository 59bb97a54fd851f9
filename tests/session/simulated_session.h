#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "session/wheel_base.h"
#include "tests/simulator/faulty_device.h"
#include "tests/support/eventful_clock.h"

namespace quorvane {

using Lines = std::vector<std::string>;

// The request that every read of the menu sends.
inline constexpr const char* menuRequest = "> ff 03 02 +61";

inline constexpr const char* menuTimeout =
    "Timed out waiting for tuning menu report (is the base in PC mode and on a supported "
    "firmware?)";
inline constexpr const char* identityTimeout = "Timed out waiting for system report (FF 08)";

// A time-out of the machine's own clock that no test reaches.
inline constexpr Seconds never{3600};

// One simulated base and one session with it. At the end it expects that the base reports no
// violations and that no port is open.
struct SimulatedSession {
  using Time = FaultyDevice::Time;

  explicit SimulatedSession(std::int64_t productID = defaultSimulatedProduct,
                            Time time = Time::simulated)
      : device(FaultyDevice::create(*FanatecProduct::lookup(productID), time)),
        base(WheelBase::create(HIDEnumerator::info(device), clock)) {
    clock.follow(&device->clock());
  }

  ~SimulatedSession() { end(); }

  SimulatedSession(const SimulatedSession&) = delete;
  SimulatedSession& operator=(const SimulatedSession&) = delete;

  void end() {
    // A running handler keeps the session alive: wait for it first.
    if (base) base->disconnect();
    device->waitUntilQuiet();
    base.reset();
    EXPECT_EQ(device->violations(), Lines{});
    EXPECT_EQ(device->openPorts(), 0U);
  }

  // Makes a new session, with a changed description of the device.
  void describeAs(const std::function<void(HIDDeviceInfo&)>& change) {
    HIDDeviceInfo info = HIDEnumerator::info(device);
    change(info);
    base = WheelBase::create(info, clock);
  }

  void connect(WheelBase::Use use = WheelBase::Use::writing) {
    base->connect(use);
    device->transcript().clear();
  }

  void connectAndRead(WheelBase::Use use = WheelBase::Use::writing) {
    connect(use);
    base->fetchTuning(WheelBase::readTimeout);
    device->transcript().clear();
  }

  // The new lines of the transcript since the last call.
  Lines takeTranscript() {
    Lines lines = device->transcript().lines();
    device->transcript().clear();
    return lines;
  }

  void behave(const std::function<void(SimulatedBehaviour&)>& change) {
    device->withBase([&](SimulatedBase& simulated) { change(simulated.behaviour()); });
  }

  // The base's current menu.
  Bytes menuReport() {
    Bytes report;
    device->withBase([&](SimulatedBase& simulated) { report = simulated.menu().report(); });
    return report;
  }

  // The base's current wheel-status report.
  Bytes statusReport() {
    Bytes report;
    device->withBase([&](SimulatedBase& simulated) { report = simulated.wheelStatusReport(); });
    return report;
  }

  // Sends an unsolicited report. Blocks until the session has handled it.
  void report(Bytes bytes) {
    device->sendReport(std::move(bytes));
    device->waitUntilQuiet();
  }

  // Like report(), with the base's menu and some of its bytes changed.
  void reportMenu(const std::vector<std::pair<std::size_t, std::uint8_t>>& changes) {
    Bytes bytes = menuReport();
    for (const auto& [offset, byte] : changes) bytes[offset] = byte;
    report(bytes);
  }

  // The session's menu; empty before the first report.
  Bytes keptMenu() const {
    const auto snapshot = base->tuning();
    return snapshot ? snapshot->raw() : Bytes{};
  }

  const std::shared_ptr<FaultyDevice> device;
  EventfulClock clock;  // follows the device's clock
  std::shared_ptr<WheelBase> base;
};

// Tests of one session in simulated time.
class SimulatedSessionTest : public testing::Test, protected SimulatedSession {
 protected:
  void TearDown() override { end(); }
};

// Tests of one session in real time, in which the base answers at once.
class RealTimeSessionTest : public testing::Test, protected SimulatedSession {
 protected:
  RealTimeSessionTest() : SimulatedSession(defaultSimulatedProduct, Time::real) {}
  void TearDown() override { end(); }
};

}  // namespace quorvane
