#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "hid/port.h"
#include "hid/return_code.h"
#include "protocol/commands.h"
#include "protocol/wheel_status.h"
#include "simulator/simulated_menu.h"
#include "support/bytes.h"
#include "support/clock.h"

namespace quorvane {

// Finds a product with a tuning menu by hexadecimal product ID or a unique part of its name,
// ignoring case. None when no product or more than one matches.
std::optional<FanatecProduct> simulatableProduct(std::string_view text);

// The product ID that --simulate without a product stands for.
inline constexpr std::int64_t defaultSimulatedProduct = 0x0020;

// How a simulated base behaves, faults included. May be changed while it runs.
struct SimulatedBehaviour {
  TuningLayout layout = TuningLayout::deviceID;  // the write layout that its firmware expects
  std::set<TuningParameter> ignored;             // writes of these change nothing
  std::map<TuningParameter, std::int64_t> most;  // higher written values are lowered to these
  Seconds answerDelay{0};
  Seconds switchDelay{0};          // between the command to select a set and the switch
  bool silent = false;             // answers no request at all
  bool tuningSilent = false;       // answers identity requests only
  bool foreignReports = false;     // sends reports of other kinds before each answer
  bool staleAnswers = false;       // sends the previous menu before each answer
  bool streamWheelStatus = false;  // a wheel-status report every millisecond
  HIDReturn failSendsWith = HIDReturnCode::success;
  int failSendsFrom = 0;  // with a code above: index of the first packet that fails
  int failSendsCount = std::numeric_limits<int>::max();  // how many fail
  std::optional<int> unplugAfter;                        // unplugs itself after this many packets
};

// A wheel base made of software: it handles every command packet and answers like the hardware.
// A state machine without threads or a clock: its host passes packets and the time to it.
// Not thread-safe.
class SimulatedBase {
 public:
  explicit SimulatedBase(const FanatecProduct& product);

  const FanatecProduct& product() const { return product_; }
  SimulatedMenu& menu() { return menu_; }
  SimulatedBehaviour& behaviour() { return behaviour_; }

  // The descriptor and properties for the kernel or a port.
  static const Bytes& reportDescriptor();
  HIDProperties properties() const;

  // Empty: the base has no serial number.
  std::string serialNumber;

  // The product ID in its description, in place of its product's.
  std::optional<std::int64_t> shownProductID;
  std::int64_t productID() const { return shownProductID.value_or(product_.productID); }

  // Handles one output report as on the wire, report ID first, and queues the answers.
  HIDReturn receive(ByteView wire, Monotonic::time_point now);

  // The answer to a GET_REPORT request; none for reports that the base refuses.
  std::optional<Bytes> getReport(HIDReportKind kind, std::uint8_t reportID) const;

  // When the next input report is due; none when none is queued.
  std::optional<Monotonic::time_point> nextDue(Monotonic::time_point now);

  // Takes the oldest input report that is due by now; none when none is.
  std::optional<Bytes> takeDue(Monotonic::time_point now);

  // A value changed with the wheel's own button: the base reports its menu unasked.
  void turn(TuningParameter parameter, std::int64_t value, Monotonic::time_point now);

  // Queues any report, well-formed or not.
  void sendReport(Bytes report, Monotonic::time_point now);

  // Sets the wheel in the status and identity reports (wheel code 0xFF: none attached).
  void attachWheel(std::uint16_t wheelID, std::uint16_t firmwareVersion);
  Bytes wheelStatusReport() const;

  // The identity report, for tests to change.
  Bytes& identityReport() { return identity_; }

  bool isPlugged() const { return plugged_; }

  // How often it was plugged in. A port that was opened at an earlier count is dead.
  int plugCount() const { return plugCount_; }

  // unplug() drops undelivered reports and a delayed switch of sets. The menu survives, as on the
  // hardware.
  void unplug();
  void plug();

  // Replaces the base by a new one of this product at the same place, with its own menu.
  void plug(const FanatecProduct& product);

  // The caller's errors so far: packets of a wrong length or with an unknown report ID.
  const std::vector<std::string>& violations() const { return violations_; }

 private:
  struct Pending {
    Monotonic::time_point due;
    Bytes report;
  };

  struct Switch {
    Monotonic::time_point due;
    int set = 0;
  };

  HIDReturn refusal();
  void police(ByteView wire);
  void obey(ByteView wire, Monotonic::time_point now);
  void obeyTuning(ByteView payload, Monotonic::time_point now);
  void carryOut(ByteView payload, Monotonic::time_point now);
  void obeyIdentity(ByteView payload, Monotonic::time_point now);
  void select(int set, Monotonic::time_point now);
  void finishSwitch(Monotonic::time_point now);
  void write(ByteView payload);
  void disobey(Bytes& menu) const;
  void answerMenu(Monotonic::time_point now);
  void answer(Bytes report, Monotonic::time_point now);
  void queue(Bytes report, Monotonic::time_point due);
  void streamUntil(Monotonic::time_point now);

  FanatecProduct product_;
  SimulatedMenu menu_;
  SimulatedBehaviour behaviour_;
  Bytes menuBefore_;  // the report before the last change; see staleAnswers
  Bytes identity_;
  bool identityEnabled_ = false;
  WheelStatus wheelStatus_;
  bool plugged_ = true;
  int plugCount_ = 1;
  int received_ = 0;
  std::vector<Pending> pending_;  // ascending due time
  std::optional<Switch> switch_;  // requested but not done yet
  std::optional<Monotonic::time_point> nextStatus_;
  std::vector<std::string> violations_;
};

}  // namespace quorvane
