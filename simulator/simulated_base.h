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

// A product of the catalogue by hexadecimal product ID or unique part of its name, ignoring case.
// Only products with a tuning menu; none when nothing or more than one matches.
std::optional<FanatecProduct> simulatableProduct(std::string_view text);

// The menu that a simulated base starts with unless told otherwise.
inline constexpr std::int64_t defaultSimulatedProduct = 0x0020;

// How a simulated base behaves and misbehaves. May be changed while it runs.
struct SimulatedBehaviour {
  TuningLayout layout = TuningLayout::deviceID;  // the write layout that its firmware expects
  std::set<TuningParameter> ignored;             // writes of these change nothing
  std::map<TuningParameter, std::int64_t> most;  // what is written above these becomes these
  Seconds answerDelay{0};
  Seconds switchDelay{0};          // goes on in the old set for that long when told to switch
  bool silent = false;             // answers no request at all
  bool tuningSilent = false;       // answers identity requests only
  bool foreignReports = false;     // sends reports of other kinds before each answer
  bool staleAnswers = false;       // sends the menu as it was before, just before each answer
  bool streamWheelStatus = false;  // a wheel-status report every millisecond
  HIDReturn failSendsWith = HIDReturnCode::success;
  int failSendsFrom = 0;  // with a code above: the first packet to fail, counted from 0
  int failSendsCount = std::numeric_limits<int>::max();  // and how many fail
  std::optional<int> unplugAfter;  // leaves when it has received this many packets
};

// A wheel base made of software: it understands every command packet and answers like the hardware.
// A pure state machine without threads or a clock of its own: hosts carry its packets and tell it
// the time. Not thread-safe.
class SimulatedBase {
 public:
  explicit SimulatedBase(const FanatecProduct& product);

  const FanatecProduct& product() const { return product_; }
  SimulatedMenu& menu() { return menu_; }
  SimulatedBehaviour& behaviour() { return behaviour_; }

  // What the kernel or a port asks of it.
  static const Bytes& reportDescriptor();
  HIDProperties properties() const;

  // An empty serial number is the default.
  std::string serialNumber;

  // The product ID that it is described with, in place of its product's.
  std::optional<std::int64_t> shownProductID;
  std::int64_t productID() const { return shownProductID.value_or(product_.productID); }

  // One output report as it went over the wire, report ID first. Answers become due by and by.
  HIDReturn receive(ByteView wire, Monotonic::time_point now);

  // An input or feature report on demand; none for reports that the base refuses.
  std::optional<Bytes> getReport(HIDReportKind kind, std::uint8_t reportID) const;

  // When the next input report is due; none when nothing is.
  std::optional<Monotonic::time_point> nextDue(Monotonic::time_point now);

  // The next input report that is due by now, oldest first.
  std::optional<Bytes> takeDue(Monotonic::time_point now);

  // A value changed with the wheel's own button: the base reports its menu unasked.
  void turn(TuningParameter parameter, std::int64_t value, Monotonic::time_point now);

  // Queues any report, well-formed or not.
  void sendReport(Bytes report, Monotonic::time_point now);

  // The wheel-status report carries these (wheel code 0xFF: none attached).
  void attachWheel(std::uint16_t wheelID, std::uint16_t firmwareVersion);
  Bytes wheelStatusReport() const;

  // The identity report's interpreted bytes, open to be changed.
  Bytes& identityReport() { return identity_; }

  bool isPlugged() const { return plugged_; }

  // How often it was plugged in. What was opened before the last time stays dead.
  int plugCount() const { return plugCount_; }

  // Both forget what was not delivered; the menu survives, as on the hardware.
  void unplug();
  void plug();

  // Another base is plugged in at the same place, with a menu of its own.
  void plug(const FanatecProduct& product);

  // Rules that the caller broke: packets of a wrong length or on an unknown report.
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
  Bytes menuBefore_;  // its report before the last command that changed it
  Bytes identity_;
  bool identityEnabled_ = false;
  WheelStatus wheelStatus_;
  bool plugged_ = true;
  int plugCount_ = 1;
  int received_ = 0;
  std::vector<Pending> pending_;  // ascending due time
  std::optional<Switch> switch_;  // that was asked for, and is not done
  std::optional<Monotonic::time_point> nextStatus_;
  std::vector<std::string> violations_;
};

}  // namespace quorvane
