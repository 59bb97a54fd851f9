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

// Watches the HID devices of one vendor, or of all, on its own thread. Calls the change handler
// with the complete, sorted list after each arrival, removal or change of permissions. It does not
// compare lists: a call may bring the same list again. A device that is being removed may still be
// listed until the next event.
//
// start(), stop() and destruction belong to one controlling thread; any thread may call
// currentDevices() and setOnChange().
class HIDDeviceWatcher {
 public:
  using ChangeHandler = std::function<void(const std::vector<HIDDeviceInfo>&)>;

  explicit HIDDeviceWatcher(std::optional<std::int64_t> vendorID,
                            HIDBackend& backend = HIDBackend::system());
  // Stops, and waits for a running call of the handler.
  ~HIDDeviceWatcher();
  HIDDeviceWatcher(const HIDDeviceWatcher&) = delete;
  HIDDeviceWatcher& operator=(const HIDDeviceWatcher&) = delete;

  // Sets the handler, which runs on the watcher's thread. After start() it is called once for each
  // device that is present. An empty function removes it.
  void setOnChange(ChangeHandler handler);

  // Does nothing when started. If the platform has no monitor, no change is ever reported. Throws
  // FanatecError ioFailed, and stays stopped, when there is no thread or file descriptor left.
  void start();

  // Stops without waiting for the thread: a call of the handler that is running or about to begin
  // goes on, no later one begins.
  // May be called from the handler. start() may follow.
  void stop();

  std::vector<HIDDeviceInfo> currentDevices() const;

 private:
  struct Shared;
  struct Watch;

  const std::optional<std::int64_t> vendorID_;
  HIDBackend& backend_;
  const std::shared_ptr<Shared> shared_;  // the handler; shared with the thread
  std::shared_ptr<Watch> watch_;          // while started
  Thread thread_;
};

}  // namespace quorvane
