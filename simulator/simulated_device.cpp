#include "simulator/simulated_device.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <deque>
#include <optional>
#include <thread>
#include <utility>

#include "simulator/virtual_clock.h"

namespace quorvane {
namespace {

// More than any reader falls behind. A full queue drops the newest reports, as the kernel does.
constexpr std::size_t longestQueue = 4096;

// The lengths that the kernel accepts for a report, its ID included.
constexpr std::size_t shortestPacket = 2;
constexpr std::size_t longestPacket = 16384;

bool isMenuWrite(ByteView data) {
  return data.size() > 2 && data[0] == FanatecCommands::tuningReportID &&
         data[1] == FanatecCommands::tuningGroup && data[2] == FanatecCommands::writeCommand;
}

}  // namespace

// One opening of the device. `read` runs on its reader's thread. The device's lock guards the rest.
class SimulatedDevice::Port final : public HIDPort {
 public:
  Port(std::shared_ptr<SimulatedDevice> device, bool exclusive, int plugCount)
      : device_(std::move(device)), exclusive_(exclusive), plugCount_(plugCount) {}

  ~Port() override {
    {
      MutexLock held(device_->lock_);
      std::erase(device_->ports_, this);
      std::erase(device_->line_, this);
      ++device_->visits_;
      device_->changed_.notifyAll();
    }
    device_->transcript_.add("close");
  }

  Port(const Port&) = delete;
  Port& operator=(const Port&) = delete;

  ReadResult read(std::span<std::uint8_t> buffer) override {
    MutexLock held(device_->lock_);
    if (ended_) device_->violations_.emplace_back("a read after the end");
    handling_ = false;
    device_->changed_.notifyAll();
    for (;;) {
      if (interrupter_) return end(HIDReturnCode::aborted);
      device_->pump();
      if (!queue_.empty()) return take(buffer);
      if (isGone(device_->base_)) return end(HIDReturnCode::noDevice);
      waitForReport();
    }
  }

  void interrupt() override {
    MutexLock held(device_->lock_);
    interrupter_ = std::this_thread::get_id();
    device_->changed_.notifyAll();
  }

  HIDReturn write(std::uint8_t reportID, ByteView data) override {
    if (!device_->keeper_) return send(reportID, data);
    return device_->keeper_->send(data, [&] { return send(reportID, data); });
  }

  HIDReturn send(std::uint8_t reportID, ByteView data) {
    bool before = false;
    HIDReturn code = HIDReturnCode::success;
    {
      MutexLock held(device_->lock_);
      // Other threads may write during a close; the thread that closes must not.
      if (interrupter_ == std::this_thread::get_id()) {
        device_->violations_.emplace_back("a write after close");
      }
      if (reportID != 0 && (data.empty() || data[0] != reportID)) {
        device_->violations_.emplace_back("a packet that does not begin with its report ID");
      }
      if (isMenuWrite(data) && isLockedByAnother()) {
        device_->violations_.emplace_back("a menu write in another's turn");
      }
      before = device_->base_.isPlugged();
      code = refusal(reportID, data);
      if (code == HIDReturnCode::success) code = device_->base_.receive(data, device_->now());
      device_->changed_.notifyAll();
    }
    const std::string failure =
        code == HIDReturnCode::success ? "" : fmt::format(" failed 0x{:08X}", code);
    device_->transcript_.add("> " + packetText(data) + failure);
    device_->reportPlugChange(before);
    return code;
  }

  HIDReturn getReport(HIDReportKind kind, std::uint8_t reportID, std::span<std::uint8_t> buffer,
                      std::size_t& length) override {
    MutexLock held(device_->lock_);
    if (isGone(device_->base_)) return HIDReturnCode::noDevice;
    const auto report = device_->base_.getReport(kind, reportID);
    if (!report) return HIDReturnCode::generalError;
    length = std::min(report->size(), buffer.size());
    std::copy_n(report->begin(), length, buffer.begin());
    return HIDReturnCode::success;
  }

  bool tryWriteLock() override {
    MutexLock held(device_->lock_);
    return isGone(device_->base_) || device_->isFirstInLine(this);
  }

  void endWriteLock() override {
    MutexLock held(device_->lock_);
    std::erase(device_->line_, this);
  }

  void watchForOthers() override {
    MutexLock held(device_->lock_);
    if (seenVisits_) return;
    seenVisits_ = device_->visits_;
    mayHaveCompany_ = !device_->isAlone(this);
  }

  bool othersMayHaveWritten() override {
    MutexLock held(device_->lock_);
    if (!seenVisits_) return true;
    mayHaveCompany_ = mayHaveCompany_ || seenVisits_ != device_->visits_;
    return mayHaveCompany_;
  }

  bool isExclusive() const { return exclusive_; }

  // Whether the base was unplugged since this port was opened, even if it is back.
  bool isGone(const SimulatedBase& base) const {
    return !base.isPlugged() || base.plugCount() != plugCount_;
  }

  bool isBusy() const { return handling_ || (!queue_.empty() && !ended_); }

  void enqueue(const Bytes& report) {
    if (!ended_ && queue_.size() < longestQueue) queue_.push_back(report);
  }

 private:
  bool isLockedByAnother() const QUORVANE_REQUIRES(device_->lock_) {
    return !isGone(device_->base_) && !device_->line_.empty() && device_->line_.front() != this;
  }

  // The kernel's error for a packet that it does not pass on; success for any other.
  HIDReturn refusal(std::uint8_t reportID, ByteView data) const QUORVANE_REQUIRES(device_->lock_) {
    if (isGone(device_->base_)) return HIDReturnCode::noDevice;
    const std::size_t length = data.size() + (reportID == 0 ? 1 : 0);
    const bool isReport = length >= shortestPacket && length <= longestPacket;
    return isReport ? HIDReturnCode::success : hidReturnFromErrno(EINVAL);
  }

  ReadResult end(HIDReturn code) {
    ended_ = true;
    device_->changed_.notifyAll();
    return {code, 0, 0};
  }

  ReadResult take(std::span<std::uint8_t> buffer) {
    const Bytes report = std::move(queue_.front());
    queue_.pop_front();
    handling_ = true;
    const std::size_t length = std::min(report.size(), buffer.size());
    std::copy_n(report.begin(), length, buffer.begin());
    return {HIDReturnCode::success, report.empty() ? std::uint8_t{0} : report[0], length};
  }

  void waitForReport() QUORVANE_REQUIRES(device_->lock_) {
    const auto due = device_->base_.nextDue(device_->now());
    if (due && !device_->virtualClock_) {
      device_->changed_.waitUntil(device_->lock_, *due);
    } else {
      device_->changed_.wait(device_->lock_);
    }
  }

  const std::shared_ptr<SimulatedDevice> device_;
  const bool exclusive_;
  const int plugCount_;  // of the base when it was opened
  std::deque<Bytes> queue_;
  std::optional<std::thread::id> interrupter_;
  std::optional<int> seenVisits_;  // visits_ of the device at watchForOthers()
  bool mayHaveCompany_ = false;
  bool handling_ = false;  // the reader is handling a report
  bool ended_ = false;
};

std::shared_ptr<SimulatedDevice> SimulatedDevice::create(const FanatecProduct& product, Time time) {
  return std::shared_ptr<SimulatedDevice>(new SimulatedDevice(product, time));
}

SimulatedDevice::SimulatedDevice(const FanatecProduct& product, Time time)
    : virtualClock_(time == Time::simulated ? std::make_unique<VirtualClock>(*this) : nullptr),
      base_(product),
      properties_(base_.properties()) {}

SimulatedDevice::~SimulatedDevice() = default;

Clock& SimulatedDevice::clock() {
  if (virtualClock_) return *virtualClock_;
  return Clock::system();
}

void SimulatedDevice::withBase(const std::function<void(SimulatedBase&)>& use) {
  bool before = false;
  {
    MutexLock held(lock_);
    before = base_.isPlugged();
    use(base_);
    changed_.notifyAll();
  }
  reportPlugChange(before);
}

void SimulatedDevice::turn(TuningParameter parameter, std::int64_t value) {
  MutexLock held(lock_);
  base_.turn(parameter, value, now());
  changed_.notifyAll();
}

void SimulatedDevice::sendReport(Bytes report) {
  MutexLock held(lock_);
  base_.sendReport(std::move(report), now());
  changed_.notifyAll();
}

void SimulatedDevice::unplug() {
  withBase([](SimulatedBase& base) { base.unplug(); });
}

void SimulatedDevice::plug() {
  withBase([](SimulatedBase& base) { base.plug(); });
}

void SimulatedDevice::setProperty(std::string_view key, HIDProperty value) {
  MutexLock held(lock_);
  properties_.insert_or_assign(std::string(key), std::move(value));
}

void SimulatedDevice::setOnPlugChange(std::function<void()> handler) {
  MutexLock held(lock_);
  onPlugChange_ = std::move(handler);
}

bool SimulatedDevice::isPlugged() const {
  MutexLock held(lock_);
  return base_.isPlugged();
}

std::size_t SimulatedDevice::openPorts() const {
  MutexLock held(lock_);
  return ports_.size();
}

void SimulatedDevice::waitUntilQuiet() {
  MutexLock held(lock_);
  while (!isQuiet()) changed_.wait(lock_);
}

std::vector<std::string> SimulatedDevice::violations() const {
  MutexLock held(lock_);
  std::vector<std::string> all = violations_;
  all.insert(all.end(), base_.violations().begin(), base_.violations().end());
  return all;
}

std::optional<HIDProperty> SimulatedDevice::property(std::string_view key) const {
  MutexLock held(lock_);
  return propertyIn(properties_, key);
}

std::vector<HIDElement> SimulatedDevice::elements() const {
  return HIDElements::parse(SimulatedBase::reportDescriptor()).elements;
}

HIDOpenResult SimulatedDevice::open(bool exclusive) {
  MutexLock held(lock_);
  if (!base_.isPlugged()) return {HIDReturnCode::noDevice, nullptr};
  for (const Port* const port : ports_) {
    if (!port->isGone(base_) && (exclusive || port->isExclusive())) {
      return {HIDReturnCode::exclusiveAccess, nullptr};
    }
  }
  pump();  // reports that were due before go to the other ports only
  auto port = std::make_unique<Port>(shared_from_this(), exclusive, base_.plugCount());
  ++visits_;
  ports_.push_back(port.get());
  transcript_.add(exclusive ? "open exclusive" : "open");
  return {HIDReturnCode::success, std::move(port)};
}

Monotonic::time_point SimulatedDevice::now() const {
  return virtualClock_ ? virtualNow_ : Monotonic::now();
}

// Queues every report that is due at every open port; without open ports, reports are lost.
void SimulatedDevice::pump() {
  bool any = false;
  while (const auto report = base_.takeDue(now())) {
    for (Port* const port : ports_) {
      if (!port->isGone(base_)) port->enqueue(*report);
    }
    any = true;
  }
  if (any) changed_.notifyAll();
}

bool SimulatedDevice::isQuiet() {
  pump();
  return std::none_of(ports_.begin(), ports_.end(),
                      [](const Port* port) { return port->isBusy(); });
}

// Also adds the port to the write lock queue.
bool SimulatedDevice::isFirstInLine(const Port* port) {
  while (!line_.empty() && line_.front()->isGone(base_)) line_.erase(line_.begin());
  if (std::find(line_.begin(), line_.end(), port) == line_.end()) line_.push_back(port);
  return line_.front() == port;
}

bool SimulatedDevice::isAlone(const Port* port) const {
  for (const Port* const other : ports_) {
    if (other != port && !other->isGone(base_)) return false;
  }
  return true;
}

void SimulatedDevice::reportPlugChange(bool before) {
  std::function<void()> handler;
  {
    MutexLock held(lock_);
    if (base_.isPlugged() == before) return;
    handler = onPlugChange_;
  }
  if (handler) handler();
}

}  // namespace quorvane
