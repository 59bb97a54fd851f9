#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "hid/elements.h"
#include "hid/return_code.h"
#include "platform/node_holder.h"
#include "support/bytes.h"

namespace quorvane {

// The interface to the platform, at the level of system calls. Real nodes, simulated bases and test
// doubles implement these four classes.

enum class HIDReportKind { input, feature };

// One open device. Only one thread may read; any thread may call the other operations, also
// concurrently, unless stated otherwise. The destructor closes the device.
class HIDPort {
 public:
  struct ReadResult {
    HIDReturn code = HIDReturnCode::success;
    std::uint8_t reportID = 0;  // 0 for a device without report IDs
    std::size_t length = 0;     // bytes in the buffer
  };

  virtual ~HIDPort() = default;

  // Blocks until an input report arrives (truncated to the buffer), the device is gone (an error;
  // later reads fail too), or interrupt() was called (`aborted`; later reads too).
  virtual ReadResult read(std::span<std::uint8_t> buffer) = 0;
  virtual void interrupt() = 0;

  // Like read(), but may delay a report by up to ReadingPace::gatherPause, so that several are
  // handled per wake-up. The first report after an idle period is not delayed. The loss of the
  // device may be noticed as late; interrupt() takes effect at once. hurry(), from any thread,
  // cancels the current delay, or the next one. The default does not delay.
  virtual ReadResult readBatched(std::span<std::uint8_t> buffer) { return read(buffer); }
  virtual void hurry() {}

  // How many times since opening the reader found as many reports as the platform's queue holds, so
  // that more may have been lost.
  virtual std::uint64_t possibleLosses() const { return 0; }

  // Sends one output report. `data` begins with the report ID unless that is 0. May block.
  virtual HIDReturn write(std::uint8_t reportID, ByteView data) = 0;

  // Requests a report. The first byte of `buffer` is for the report ID. `length` is the buffer's
  // size on entry and the number of bytes returned on success. May block for seconds.
  virtual HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID,
                              std::span<std::uint8_t> buffer, std::size_t& length) = 0;

  // The write lock: of all ports that have the device open, in any program, one may write at a
  // time, in first-in-first-out order. Only one thread at a time may call these; none blocks. The
  // defaults are for devices that no other program can open.

  // Takes the write lock, to hold it until endWriteLock(). False puts the port into the queue: poll
  // again later. Always true on platforms without such locks.
  virtual bool tryWriteLock() { return true; }

  // Releases the write lock, or leaves the queue. Closing the port does the same.
  virtual void endWriteLock() {}

  // The other program that holds the write lock; none if there is none or it is unknown. May take a
  // fraction of a second.
  virtual std::optional<NodeHolder> writeLockHolder() { return std::nullopt; }

  // Starts to watch for other programs that open the device.
  virtual void watchForOthers() {}

  // Whether another program may have written since watchForOthers(): true if one had the device
  // open at any time, if that is unknown, and without a watch. Once true, it stays true. Call it
  // with the write lock held.
  virtual bool othersMayHaveWritten() { return false; }
};

struct HIDOpenResult {
  HIDReturn code = HIDReturnCode::success;
  std::unique_ptr<HIDPort> port;  // null unless successful
};

// A property of a device: a number, a text or bytes.
using HIDProperty = std::variant<std::int64_t, std::string, Bytes>;
using HIDProperties = std::map<std::string, HIDProperty, std::less<>>;

namespace HIDPropertyKey {
inline constexpr std::string_view vendorID = "VendorID";
inline constexpr std::string_view productID = "ProductID";
inline constexpr std::string_view product = "Product";
inline constexpr std::string_view manufacturer = "Manufacturer";
inline constexpr std::string_view serialNumber = "SerialNumber";
inline constexpr std::string_view transport = "Transport";
inline constexpr std::string_view locationID = "LocationID";
inline constexpr std::string_view primaryUsagePage = "PrimaryUsagePage";
inline constexpr std::string_view primaryUsage = "PrimaryUsage";
inline constexpr std::string_view versionNumber = "VersionNumber";
inline constexpr std::string_view maxInputReportSize = "MaxInputReportSize";
inline constexpr std::string_view maxOutputReportSize = "MaxOutputReportSize";
inline constexpr std::string_view maxFeatureReportSize = "MaxFeatureReportSize";
inline constexpr std::string_view reportDescriptor = "ReportDescriptor";
}  // namespace HIDPropertyKey

// A copy of a property, if there is one. Use this instead of the copy constructor of HIDProperty:
// when memory runs out, that of libstdc++ 12 destroys a value that was never constructed.
std::optional<HIDProperty> propertyIn(const HIDProperties& properties, std::string_view key);

// Adds the properties that come from the descriptor: the descriptor itself, the primary usage (of
// the first top-level collection) and the largest report sizes, including the report ID byte and
// computed by HIDElements. An empty descriptor adds nothing.
void addDescriptorProperties(HIDProperties& properties, const Bytes& descriptor);

// A device with properties that can be opened. Immutable; shared by all copies of its
// HIDDeviceInfo.
class HIDDeviceHandle {
 public:
  virtual ~HIDDeviceHandle() = default;

  virtual std::optional<HIDProperty> property(std::string_view key) const = 0;
  virtual std::vector<HIDElement> elements() const = 0;

  // The device node's path; empty where there is none.
  virtual std::string node() const = 0;

  // Whether this user may open the device, without opening it.
  virtual bool accessible() const = 0;

  // `exclusive` keeps every other well-behaved program out.
  virtual HIDOpenResult open(bool exclusive) = 0;
};

// Reports that devices arrived, left, or changed their permissions.
class HIDMonitor {
 public:
  virtual ~HIDMonitor() = default;

  // Blocks until a device arrived, left or changed (true) or interrupt() was called (false; later
  // calls too). Only one thread may wait. Events are queued from the monitor's creation on.
  virtual bool waitForEvent() = 0;
  virtual void interrupt() = 0;
};

// Enumerates and monitors devices. Thread-safe.
class HIDBackend {
 public:
  virtual ~HIDBackend() = default;

  // The attached devices of a vendor, or of all vendors, in no order.
  virtual std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) = 0;

  // Null when the platform cannot monitor devices.
  virtual std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) = 0;

  // This machine's devices.
  static HIDBackend& system();
};

}  // namespace quorvane
