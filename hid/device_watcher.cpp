#include "hid/device_watcher.h"

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

HIDDeviceWatcher::HIDDeviceWatcher(std::optional<std::int64_t> vendorID, HIDBackend& backend)
    : vendorID_(vendorID), backend_(backend), shared_(std::make_shared<Shared>()) {}

HIDDeviceWatcher::~HIDDeviceWatcher() { stop(); }

void HIDDeviceWatcher::setOnChange(ChangeHandler handler) {
  auto shared = handler ? std::make_shared<const ChangeHandler>(std::move(handler)) : nullptr;
  MutexLock held(shared_->lock);
  shared_->onChange.swap(shared);
}

void HIDDeviceWatcher::start() {
  if (monitor_) return;
  // The monitor exists before the first look, so that nothing can arrive in between unseen.
  monitor_ = backend_.monitor(vendorID_);
  if (!monitor_) return;
  thread_ = Thread("FanatecKit.HIDDeviceWatcher", [monitor = monitor_, shared = shared_,
                                                   vendorID = vendorID_, &backend = backend_] {
    const std::size_t present = backend.devices(vendorID).size();
    for (std::size_t i = 0; i < present; ++i) shared->deliver(vendorID, backend);
    while (monitor->waitForEvent()) shared->deliver(vendorID, backend);
  });
}

void HIDDeviceWatcher::stop() {
  if (!monitor_) return;
  monitor_->interrupt();
  monitor_.reset();
}

std::vector<HIDDeviceInfo> HIDDeviceWatcher::currentDevices() const {
  return HIDEnumerator::devices(vendorID_, backend_);
}

}  // namespace quorvane
