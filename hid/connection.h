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

// One HID device that can be opened. A reader thread delivers its input reports and element values
// to registered handlers; send() and getReport() talk to the device on demand.
//
// Reports are delivered as they arrive while a ReportHandler or a handler of values is registered,
// a LowLatencyScope exists, or send() or getReport() runs; also for a while after that, and after a
// report of interest (ReadingPace). At other times they may be batched for up to
// ReadingPace::gatherPause, except the first after an idle period.
//
// Any thread may call any operation, except that open, close and destruction belong to one owner.
// Handlers run on the reader thread without locks held, so they may register, remove and close. A
// handler removed during a delivery may still get that one report. Concurrent sends are not
// ordered: callers must synchronize them if they need an order.
class HIDConnection {
 public:
  using ReportHandler = std::function<void(const HIDInputReport&)>;
  // Returns whether the report is of interest. The bytes begin with the report ID unless that is 0;
  // they are valid during the call.
  using BytesHandler = std::function<bool(ByteView report)>;
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

  // Size of the input buffer in bytes: the largest input report, at least 64, plus one.
  std::size_t bufferSize() const;

  bool isOpen() const;

  // Blocks until the reader thread has opened the device or failed to. `exclusive` keeps other
  // programs out. Does nothing when open. Throws FanatecError ioFailed with the platform's
  // openCode(), or without one when no thread can be started.
  void open(bool exclusive);

  // Ends delivery without waiting for the reader thread, which closes the device. Idempotent; may
  // be called at any time.
  void close();

  // After close(): waits until the reader thread has closed the device and dropped its references
  // to all handlers. For the owner only. Returns at once on the reader thread.
  void join();

  // Registers a handler of every report. Disables batching.
  HandlerID onReport(ReportHandler handler);

  // Registers a handler of every report that gets it in the read buffer, without a copy. Allows
  // batching, except for a while after each report of interest (ReadingPace).
  HandlerID onReport(BytesHandler handler);

  // Registers a handler of changed values, decoded by the device's descriptor. Disables batching.
  // Without such handlers, nothing is decoded.
  HandlerID onValue(ValueHandler handler);

  // Sets the handler that the reader thread calls when delivery ended because the device is gone.
  // A call may still begin while close() returns, none later. An empty function removes it. May be
  // set at any time.
  void setOnGone(std::function<void()> handler);

  // Removes a handler of reports or values; ignores an unknown ID. The reader thread drops its
  // reference to the handler when the next report arrives, or when it ends.
  void removeHandler(HandlerID id);

  // RAII: disables batching while at least one scope exists. Any thread may create any number, also
  // while the connection is closed, and they may outlive it. Create one before you send a request
  // whose answer you wait for.
  class LowLatencyScope;
  [[nodiscard]] LowLatencyScope lowLatencyScope();

  // Sends one output report; may block. Throws notConnected or ioFailed.
  void send(const HIDReportPacket& packet);

  // Fetches a report of about `length` bytes; may block for seconds. The result begins with the
  // report ID unless that is 0. Throws notConnected or ioFailed.
  Bytes getReport(HIDReportKind kind, std::uint8_t reportID, std::size_t length);
  Bytes getFeature(std::uint8_t reportID, std::size_t length);

  // The device's write lock (see HIDPort). One thread at a time; none of these blocks. All but
  // endWriteLock() throw notConnected. close() also releases the lock.
  bool tryWriteLock();
  void endWriteLock();
  std::optional<NodeHolder> writeLockHolder();
  void watchForOthers();
  bool othersMayHaveWritten();

  // See HIDPort::possibleLosses(). Throws notConnected.
  std::uint64_t possibleLosses() const;

  // The message for a return code.
  static std::string describe(HIDReturn code);

 private:
  class State;

  void startReader(std::function<void()> body);

  const HIDDeviceInfo info_;
  const std::shared_ptr<State> state_;  // shared with the reader thread, which may outlive this
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

  std::shared_ptr<State> state_;  // null once moved from
};

}  // namespace quorvane
