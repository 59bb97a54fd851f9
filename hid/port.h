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
#include "hid/node_holder.h"
#include "hid/return_code.h"
#include "support/bytes.h"

namespace quorvane {

// The seam to the platform, at the level of a system call. Real nodes, simulated bases and test
// doubles implement these four classes; everything above runs unchanged on any of them.

enum class HIDReportKind { input, feature };

// One open device. `read` belongs to one thread; the others may be called from any thread, several
// at a time. Destroying the port closes it.
class HIDPort {
 public:
  struct ReadResult {
    HIDReturn code = HIDReturnCode::success;
    std::uint8_t reportID = 0;  // as the platform names it; 0 without report IDs
    std::size_t length = 0;     // bytes placed into the buffer
  };

  virtual ~HIDPort() = default;

  // Blocks until an input report arrives (longer ones are cut to the buffer), the device is gone
  // (an error; every later read fails too), or `interrupt` was called (aborted, now and ever
  // after).
  virtual ReadResult read(std::span<std::uint8_t> buffer) = 0;
  virtual void interrupt() = 0;

  // As `read`, for a reader in no hurry: a report that does not come after silence may be kept for
  // up to ReadingPace::gatherPause, to be returned together with those behind it. That the device
  // is gone may be seen as late, an interruption is not. `hurry`, from any thread, ends the keeping
  // of this read, or of the next one that keeps. A port that has no wake-ups to save reads as ever.
  virtual ReadResult readBatched(std::span<std::uint8_t> buffer) { return read(buffer); }
  virtual void hurry() {}

  // How often reports may have been lost since the opening, because the reader came too late: it
  // found as many as the platform keeps. Any thread may ask.
  virtual std::uint64_t possibleLosses() const { return 0; }

  // Sends one output report: `data` begins with the report ID unless that is 0. May block.
  virtual HIDReturn write(std::uint8_t reportID, ByteView data) = 0;

  // Fetches a report on demand. `buffer` holds the report ID in its first byte; `length` is its
  // size on entry and the bytes returned on success. May block for seconds.
  virtual HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID,
                              std::span<std::uint8_t> buffer, std::size_t& length) = 0;

  // The write lock: of all ports that have the device open, in any program, one may write at a
  // time, first come, first served. One thread at a time calls these; none of them blocks. The
  // defaults are for devices that nobody else can open.

  // Whether this port holds the write lock, until endWriteLock. False queues the port, which asks
  // again later. True as well on platforms without such locks.
  virtual bool tryWriteLock() { return true; }

  // Releases the write lock, or leaves the queue. Closing the port does the same.
  virtual void endWriteLock() {}

  // The program that holds the write lock, if it is another one and known. May take a fraction of a
  // second.
  virtual std::optional<NodeHolder> writeLockHolder() { return std::nullopt; }

  // Starts to watch for other programs that open the device.
  virtual void watchForOthers() {}

  // Whether another program may have written since the watch began: it had the device open at some
  // time, or that is unknown, as without a watch. Stays true once it is. Call it while holding the
  // write lock.
  virtual bool othersMayHaveWritten() { return false; }
};

struct HIDOpenResult {
  HIDReturn code = HIDReturnCode::success;
  std::unique_ptr<HIDPort> port;  // present exactly on success
};

// A property as the platform gives it: a number, a text or a byte blob.
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

// A copy of a property, if there is one. Safe when memory runs out, which the copying of a
// HIDProperty as such is not: libstdc++ 12 then destroys a value that was never made.
std::optional<HIDProperty> propertyIn(const HIDProperties& properties, std::string_view key);

// Adds what a device's properties take from its descriptor: the descriptor itself, the primary
// usage (of the first top-level collection) and the largest report sizes, report ID byte counted
// and by the complete reading (HIDElements). An empty descriptor adds nothing.
void addDescriptorProperties(HIDProperties& properties, const Bytes& descriptor);

// A device that can be described and opened. Immutable; shared by whoever holds a description.
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

// Reports that devices came, went, or changed in who may open them.
class HIDMonitor {
 public:
  virtual ~HIDMonitor() = default;

  // Blocks until a device arrived, left or changed (true) or `interrupt` was called (false, now and
  // ever after). Belongs to one thread; events since the monitor's creation are kept.
  virtual bool waitForEvent() = 0;
  virtual void interrupt() = 0;
};

// Where devices come from. Any thread may call.
class HIDBackend {
 public:
  virtual ~HIDBackend() = default;

  // The attached devices of a vendor, or of all vendors, in no order.
  virtual std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> vendorID) = 0;

  // Null when the platform has no such service.
  virtual std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> vendorID) = 0;

  // This machine's devices.
  static HIDBackend& system();
};

}  // namespace quorvane
