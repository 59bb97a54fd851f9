#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "hid/device_info.h"
#include "support/mutex.h"
#include "support/thread.h"

namespace quorvane {

// Watches the HID devices of one vendor, or of all, on a thread of its own: after every arrival,
// removal or change of who may open one, the change handler gets the complete, sorted list. It
// compares nothing and remembers nothing; a device that is just leaving may still be in the list,
// which a later event corrects.
//
// start, stop and destruction belong to one controlling thread; currentDevices and setOnChange may
// be called from any.
class HIDDeviceWatcher {
 public:
  using ChangeHandler = std::function<void(const std::vector<HIDDeviceInfo>&)>;

  explicit HIDDeviceWatcher(std::optional<std::int64_t> vendorID,
                            HIDBackend& backend = HIDBackend::system());
  // Stops, and waits until a call of the handler that is under way has returned.
  ~HIDDeviceWatcher();
  HIDDeviceWatcher(const HIDDeviceWatcher&) = delete;
  HIDDeviceWatcher& operator=(const HIDDeviceWatcher&) = delete;

  // Called on the watcher's thread, first once for each device already there; an empty function
  // ignores events.
  void setOnChange(ChangeHandler handler);

  // Does nothing when started. Where the platform cannot watch, no change is ever reported. Throws
  // FanatecError ioFailed, and is not started, when the system has no thread or descriptor left.
  void start();

  // Ends the watching without waiting for the thread: no call of the handler begins after that, and
  // at most the one that is under way goes on. The handler may call it. May be started again.
  void stop();

  std::vector<HIDDeviceInfo> currentDevices() const;

 private:
  struct Shared;
  struct Watch;

  const std::optional<std::int64_t> vendorID_;
  HIDBackend& backend_;
  const std::shared_ptr<Shared> shared_;  // the handler; outlives the watcher on its thread
  std::shared_ptr<Watch> watch_;          // while started
  Thread thread_;
};

}  // namespace quorvane
