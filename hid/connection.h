#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "hid/device_info.h"
#include "hid/input_report.h"
#include "protocol/report_packet.h"
#include "support/thread.h"

namespace quorvane {

// One HID device that can be opened: a reader thread delivers its input reports and element values
// to registered handlers, and packets and report requests go out on demand.
//
// Reports are delivered as they arrive while somebody wants them so: a handler of every report or
// of values is registered, a LowLatencyScope is held, something is being sent or asked for; and for
// a while after that and after a report of interest (ReadingPace). At other times they may be
// gathered for up to ReadingPace::gatherPause, but for the first after silence.
//
// Any thread may call any operation, except that open, close and destruction belong to one owner.
// Handlers run on the reader thread, outside every lock, so they may register, remove and close;
// a handler removed during a delivery may still get that one report. Nothing here orders concurrent
// sends: callers that need an order bring it.
class HIDConnection {
 public:
  using ReportHandler = std::function<void(const HIDInputReport&)>;
  // Whether a report is worth handling. The bytes begin with the report ID unless that is 0.
  using Interest = std::function<bool(ByteView report)>;
  using ValueHandler = std::function<void(const HIDElementValue&)>;

  // Names a registration; unique within the connection.
  enum class HandlerID : std::uint64_t {};

  // Opens nothing.
  explicit HIDConnection(HIDDeviceInfo info);
  // Closes, and waits for the reader thread unless it is the caller.
  ~HIDConnection();
  HIDConnection(const HIDConnection&) = delete;
  HIDConnection& operator=(const HIDConnection&) = delete;

  const HIDDeviceInfo& info() const { return info_; }

  // Size of the input buffer: the largest input report, at least 64, and one more.
  std::size_t bufferSize() const;

  bool isOpen() const;

  // Blocks until the reader thread has the device open or has failed to. `exclusive` keeps other
  // programs out. Throws FanatecError ioFailed, also when the system has no thread left; does
  // nothing when open.
  void open(bool exclusive);

  // Ends delivery without waiting for the reader thread, which closes the device. At any time, also
  // twice.
  void close();

  // Waits, after close, until the reader thread has closed the device and lets go of every handler.
  // Belongs to the owner; on the reader thread itself it returns at once.
  void join();

  // Every report, as it arrives.
  HandlerID onReport(ReportHandler handler);

  // The reports of interest; the others never become one. The interest is asked on the reader
  // thread, once about each report, whatever other handlers say.
  HandlerID onReport(Interest interest, ReportHandler handler);

  // Values that changed, decoded by the device's descriptor. Costs nothing while nobody is
  // registered.
  HandlerID onValue(ValueHandler handler);

  // Called on the reader thread when delivery has ended by itself because the device is gone; no
  // call begins after close. An empty function calls nothing. May be set at any time.
  void setOnGone(std::function<void()> handler);

  // Removes a handler of either sort; an unknown ID is ignored. The reader lets go of what was
  // removed when the next report comes, or when it ends.
  void removeHandler(HandlerID id);

  // While one of these lives, reports are delivered as they arrive, not in batches. Any thread may
  // hold any number of them, also while the connection is closed or gone. Take one before sending a
  // request whose answer you wait for.
  class LowLatencyScope;
  [[nodiscard]] LowLatencyScope lowLatencyScope();

  // Sends one output report; may block. Throws notConnected or ioFailed.
  void send(const HIDReportPacket& packet);

  // Fetches a report of about `length` bytes; may block for seconds. The result begins with the
  // report ID unless that is 0. Throws notConnected or ioFailed.
  Bytes getReport(HIDReportKind kind, std::uint8_t reportID, std::size_t length);
  Bytes getFeature(std::uint8_t reportID, std::size_t length);

  // The device's write lock, as in HIDPort; one thread at a time. None blocks. All but endWriteLock
  // throw notConnected. A close releases the lock as well.
  bool tryWriteLock();
  void endWriteLock();
  std::optional<NodeHolder> writeLockHolder();
  void watchForOthers();
  bool othersMayHaveWritten();

  // How often reports may have been lost since the opening, as HIDPort has it. Throws notConnected.
  std::uint64_t possibleLosses() const;

  // What a person reads for a return code.
  static std::string describe(HIDReturn code);

 private:
  class State;

  void startReader(std::function<void()> body);

  const HIDDeviceInfo info_;
  const std::shared_ptr<State> state_;  // shared with the reader thread, which may end later
  Thread thread_;
};

class HIDConnection::LowLatencyScope {
 public:
  LowLatencyScope(LowLatencyScope&&) noexcept = default;
  LowLatencyScope& operator=(LowLatencyScope&& other) noexcept;
  LowLatencyScope(const LowLatencyScope&) = delete;
  LowLatencyScope& operator=(const LowLatencyScope&) = delete;
  ~LowLatencyScope();

 private:
  friend class HIDConnection;
  explicit LowLatencyScope(std::shared_ptr<State> state);

  std::shared_ptr<State> state_;  // none once moved from
};

}  // namespace quorvane
