#include "hid/device_watcher.h"

#include <atomic>
#include <system_error>
#include <utility>

#include "protocol/error.h"

namespace quorvane {

struct HIDDeviceWatcher::Shared {
  Mutex lock;
  std::shared_ptr<const ChangeHandler> onChange QUORVANE_GUARDED_BY(lock);

  std::shared_ptr<const ChangeHandler> handler() {
    MutexLock held(lock);
    return onChange;
  }
};

// The state from one start() to its stop(). run() is the body of the thread.
struct HIDDeviceWatcher::Watch {
  Watch(std::unique_ptr<HIDMonitor> events, std::shared_ptr<Shared> handlers)
      : monitor(std::move(events)), shared(std::move(handlers)) {}

  void stop() {
    stopped = true;
    monitor->interrupt();
  }

  void run(std::optional<std::int64_t> vendorID, HIDBackend& backend) {
    const std::size_t present = backend.devices(vendorID).size();
    for (std::size_t i = 0; i < present && !stopped; ++i) deliver(vendorID, backend);
    while (monitor->waitForEvent()) deliver(vendorID, backend);
  }

  // Checks `stopped` after the enumeration, which takes a while.
  void deliver(std::optional<std::int64_t> vendorID, HIDBackend& backend) {
    const auto handler = shared->handler();
    if (!handler) return;
    const std::vector<HIDDeviceInfo> devices = HIDEnumerator::devices(vendorID, backend);
    if (!stopped) (*handler)(devices);
  }

  const std::unique_ptr<HIDMonitor> monitor;
  const std::shared_ptr<Shared> shared;
  std::atomic<bool> stopped = false;
};

HIDDeviceWatcher::HIDDeviceWatcher(std::optional<std::int64_t> vendorID, HIDBackend& backend)
    : vendorID_(vendorID), backend_(backend), shared_(std::make_shared<Shared>()) {}

HIDDeviceWatcher::~HIDDeviceWatcher() { stop(); }

void HIDDeviceWatcher::setOnChange(ChangeHandler handler) {
  auto shared = handler ? std::make_shared<const ChangeHandler>(std::move(handler)) : nullptr;
  MutexLock held(shared_->lock);
  shared_->onChange.swap(shared);
}

void HIDDeviceWatcher::start() {
  if (watch_) return;
  try {
    // Create the monitor before the first enumeration, so that no arrival is missed in between.
    auto monitor = backend_.monitor(vendorID_);
    if (!monitor) return;
    // Set before the thread starts, because the handler may call stop().
    watch_ = std::make_shared<Watch>(std::move(monitor), shared_);
    thread_ = Thread("FanatecKit.HIDDeviceWatcher",
                     [watch = watch_, vendorID = vendorID_, &backend = backend_] {
                       watch->run(vendorID, backend);
                     });
  } catch (const std::system_error& error) {
    watch_.reset();
    throw FanatecError::ioFailed(error.what());
  }
}

void HIDDeviceWatcher::stop() {
  if (const auto watch = std::exchange(watch_, nullptr)) watch->stop();
}

std::vector<HIDDeviceInfo> HIDDeviceWatcher::currentDevices() const {
  return HIDEnumerator::devices(vendorID_, backend_);
}

}  // namespace quorvane
