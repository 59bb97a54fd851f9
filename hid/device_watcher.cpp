#include "hid/device_watcher.h"

#include <atomic>
#include <utility>

namespace quorvane {

struct HIDDeviceWatcher::Shared {
  Mutex lock;
  std::shared_ptr<const ChangeHandler> onChange QUORVANE_GUARDED_BY(lock);

  std::shared_ptr<const ChangeHandler> handler() {
    MutexLock held(lock);
    return onChange;
  }

  void deliver(std::optional<std::int64_t> vendorID, HIDBackend& backend) {
    if (const auto handler = this->handler()) (*handler)(HIDEnumerator::devices(vendorID, backend));
  }
};

// One watching, from start to stop.
struct HIDDeviceWatcher::Watch {
  explicit Watch(std::unique_ptr<HIDMonitor> events) : monitor(std::move(events)) {}

  void stop() {
    stopped = true;
    monitor->interrupt();
  }

  const std::unique_ptr<HIDMonitor> monitor;
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
  // The monitor exists before the first look, so that nothing can arrive in between unseen.
  auto monitor = backend_.monitor(vendorID_);
  if (!monitor) return;
  watch_ = std::make_shared<Watch>(std::move(monitor));
  thread_ = Thread("FanatecKit.HIDDeviceWatcher",
                   [watch = watch_, shared = shared_, vendorID = vendorID_, &backend = backend_] {
                     const std::size_t present = backend.devices(vendorID).size();
                     for (std::size_t i = 0; i < present && !watch->stopped; ++i)
                       shared->deliver(vendorID, backend);
                     while (watch->monitor->waitForEvent()) shared->deliver(vendorID, backend);
                   });
}

void HIDDeviceWatcher::stop() {
  if (const auto watch = std::exchange(watch_, nullptr)) watch->stop();
}

std::vector<HIDDeviceInfo> HIDDeviceWatcher::currentDevices() const {
  return HIDEnumerator::devices(vendorID_, backend_);
}

}  // namespace quorvane
