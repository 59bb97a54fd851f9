#include "hid/connection.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <map>
#include <optional>
#include <system_error>
#include <utility>
#include <variant>
#include <vector>

#include "hid/element_reader.h"
#include "hid/reading_pace.h"
#include "protocol/error.h"
#include "support/mutex.h"
#include "support/semaphore.h"

namespace quorvane {
namespace {

constexpr std::int64_t smallestInputReport = 64;

// A copy-on-write map of handlers: a snapshot does not change when handlers are added or removed.
template <typename Handler>
class Registry {
 public:
  using Handlers = std::map<HIDConnection::HandlerID, Handler>;
  using Snapshot = std::shared_ptr<const Handlers>;

  Snapshot snapshot() const { return handlers_; }

  // Both return the replaced map, for the caller to destroy after releasing its lock.
  Snapshot add(HIDConnection::HandlerID id, Handler handler) {
    auto changed = copy();
    changed->emplace(id, std::move(handler));
    return std::exchange(handlers_, std::move(changed));
  }

  Snapshot remove(HIDConnection::HandlerID id) {
    if (!handlers_->contains(id)) return nullptr;
    auto changed = copy();
    changed->erase(id);
    return std::exchange(handlers_, std::move(changed));
  }

 private:
  auto copy() const { return std::make_shared<Handlers>(*handlers_); }

  Snapshot handlers_ = std::make_shared<Handlers>();
};

using AnyReportHandler = std::variant<HIDConnection::ReportHandler, HIDConnection::BytesHandler>;
using ReportRegistry = Registry<AnyReportHandler>;
using ValueRegistry = Registry<HIDConnection::ValueHandler>;

bool forbidsBatching(const AnyReportHandler& handler) {
  return std::holds_alternative<HIDConnection::ReportHandler>(handler);
}

// What the reader thread reports to open().
struct OpenStatus {
  Semaphore done;
  HIDReturn code = HIDReturnCode::success;
};

}  // namespace

// What the connection and its reader thread share.
class HIDConnection::State {
 public:
  explicit State(const HIDDeviceInfo& info)
      : buffer_(static_cast<std::size_t>(std::max(info.maxInputReportSize, smallestInputReport)) +
                1),
        descriptor_(info.reportDescriptor) {}

  std::size_t bufferSize() const { return buffer_.size(); }

  std::shared_ptr<HIDPort> port() const {
    MutexLock held(lock_);
    return port_;
  }

  // Throws notConnected.
  std::shared_ptr<HIDPort> openPort() const {
    std::shared_ptr<HIDPort> open = port();
    if (!open) throw FanatecError::notConnected();
    return open;
  }

  void setPort(std::shared_ptr<HIDPort> port) {
    MutexLock held(lock_);
    port_ = std::move(port);
  }

  std::shared_ptr<HIDPort> takePort() {
    MutexLock held(lock_);
    return std::move(port_);
  }

  HandlerID addReportHandler(AnyReportHandler handler) {
    if (forbidsBatching(handler)) requireLowLatency();
    ReportRegistry::Snapshot old;
    MutexLock held(lock_);
    const auto id = nextHandler();
    old = reportHandlers_.add(id, std::move(handler));
    return id;
  }

  HandlerID addValueHandler(ValueHandler handler) {
    requireLowLatency();
    ValueRegistry::Snapshot old;
    MutexLock held(lock_);
    const auto id = nextHandler();
    old = valueHandlers_.add(id, std::move(handler));
    return id;
  }

  void removeHandler(HandlerID id) {
    ReportRegistry::Snapshot oldReports;
    ValueRegistry::Snapshot oldValues;
    MutexLock held(lock_);
    oldReports = reportHandlers_.remove(id);
    oldValues = valueHandlers_.remove(id);
    if (!oldReports && !oldValues) return;
    ++registrations_;
    if (oldValues || forbidsBatching(oldReports->at(id))) releaseLowLatency();
  }

  // Disables batching until releaseLowLatency(). Calls nest.
  void requireLowLatency() {
    if (!pace_.hold()) return;
    if (const auto open = port()) open->hurry();
  }

  void releaseLowLatency() { pace_.release(); }

  void setOnGone(std::function<void()> handler) {
    auto replaced =
        handler ? std::make_shared<const std::function<void()>>(std::move(handler)) : nullptr;
    MutexLock held(lock_);
    onGone_.swap(replaced);
  }

  // The body of the reader thread: reads until the port is interrupted or the device is gone.
  void deliverFrom(HIDPort& port) {
    const HIDReturn end = deliverAll(port);
    reader_ = {};
    if (end == HIDReturnCode::aborted) return;
    if (const auto handler = goneHandler(port)) (*handler)();
  }

 private:
  // State of the reader thread, without the buffer.
  struct Reader {
    std::uint64_t registrations = 0;  // State::registrations_ at the last snapshots
    ReportRegistry::Snapshot reportHandlers;
    ValueRegistry::Snapshot valueHandlers;
    std::optional<HIDElementReader> elements;
  };

  // Returns the code of the read that failed.
  HIDReturn deliverAll(HIDPort& port) {
    pace_.restart();
    for (;;) {
      const HIDPort::ReadResult result =
          pace_.mayGather() ? port.readBatched(buffer_) : port.read(buffer_);
      if (result.code != HIDReturnCode::success) return result.code;
      pace_.took(result.length > 0 &&
                 deliver(result.reportID, ByteView(buffer_.data(), result.length)));
    }
  }

  // None once the port is closed.
  std::shared_ptr<const std::function<void()>> goneHandler(const HIDPort& port) const {
    MutexLock held(lock_);
    return port_.get() == &port ? onGone_ : nullptr;
  }

  // Delivers one report; true if it was of interest to any handler. Copies it only for handlers
  // that need a copy.
  bool deliver(std::uint8_t reportID, ByteView bytes) {
    lookForRegistrations();
    Bytes withID;
    if (reportID != 0 && bytes[0] != reportID) {
      withID.reserve(bytes.size() + 1);
      withID.push_back(reportID);
      withID.insert(withID.end(), bytes.begin(), bytes.end());
      bytes = withID;
    }
    bool isOfInterest = false;
    std::optional<HIDInputReport> report;
    for (const auto& [id, handler] : *reader_.reportHandlers) {
      if (const auto* const forBytes = std::get_if<BytesHandler>(&handler)) {
        isOfInterest = (*forBytes)(bytes) || isOfInterest;
        continue;
      }
      if (!report) report = received(reportID, bytes);
      std::get<ReportHandler>(handler)(*report);
    }
    if (!reader_.valueHandlers->empty() && !report) report = received(reportID, bytes);
    if (report) deliverValues(*report);
    return isOfInterest || report;
  }

  static HIDInputReport received(std::uint8_t reportID, ByteView bytes) {
    return {reportID, Bytes(bytes.begin(), bytes.end()), WallClock::now()};
  }

  // Takes new snapshots if handlers were added or removed. Not called during a delivery.
  void lookForRegistrations() {
    if (reader_.registrations == registrations_.load() && reader_.reportHandlers) return;
    ReportRegistry::Snapshot reports;
    ValueRegistry::Snapshot values;
    {
      MutexLock held(lock_);
      reader_.registrations = registrations_.load();
      reports = reportHandlers_.snapshot();
      values = valueHandlers_.snapshot();
    }
    reader_.reportHandlers.swap(reports);
    reader_.valueHandlers.swap(values);
    if (reader_.valueHandlers->empty()) reader_.elements.reset();
  }

  void deliverValues(const HIDInputReport& report) {
    if (reader_.valueHandlers->empty()) return;
    if (!reader_.elements) reader_.elements.emplace(HIDElements::parse(descriptor_.bytes()));
    for (const HIDElementValue& value : reader_.elements->changes(report)) {
      for (const auto& [id, handler] : *reader_.valueHandlers) handler(value);
    }
  }

  HandlerID nextHandler() QUORVANE_REQUIRES(lock_) { return HandlerID{++registrations_}; }

  mutable Mutex lock_;
  std::shared_ptr<HIDPort> port_ QUORVANE_GUARDED_BY(lock_);  // present exactly while open
  ReportRegistry reportHandlers_ QUORVANE_GUARDED_BY(lock_);
  ValueRegistry valueHandlers_ QUORVANE_GUARDED_BY(lock_);
  // Counts additions and removals. Written under the lock, read by the reader thread without it.
  std::atomic<std::uint64_t> registrations_{0};
  std::shared_ptr<const std::function<void()>> onGone_ QUORVANE_GUARDED_BY(lock_);

  ReadingPace pace_;

  // Used by the reader thread only.
  Bytes buffer_;
  HIDReportDescriptor descriptor_;
  Reader reader_;
};

HIDConnection::HIDConnection(HIDDeviceInfo info)
    : info_(std::move(info)), state_(std::make_shared<State>(info_)) {}

HIDConnection::~HIDConnection() { close(); }

std::size_t HIDConnection::bufferSize() const { return state_->bufferSize(); }

bool HIDConnection::isOpen() const { return state_->port() != nullptr; }

void HIDConnection::open(bool exclusive) {
  if (isOpen()) return;
  // The previous reader thread may still be running, and uses the same buffer: wait for it.
  thread_.join();
  const auto status = std::make_shared<OpenStatus>();
  startReader([state = state_, device = info_.device, status, exclusive] {
    HIDOpenResult opened = device->open(exclusive);
    const std::shared_ptr<HIDPort> port = std::move(opened.port);
    status->code = opened.code;
    if (port) state->setPort(port);
    status->done.signal();
    if (port) state->deliverFrom(*port);
  });
  status->done.wait();
  if (status->code != HIDReturnCode::success) {
    thread_.join();
    throw FanatecError::ioFailed(describe(status->code), status->code);
  }
}

void HIDConnection::startReader(std::function<void()> body) {
  try {
    thread_ = Thread("FanatecKit.HID." + info_.id, std::move(body));
  } catch (const std::system_error& error) {
    throw FanatecError::ioFailed(error.what());
  }
}

void HIDConnection::close() {
  if (const auto port = state_->takePort()) port->interrupt();
}

void HIDConnection::join() { thread_.join(); }

HIDConnection::HandlerID HIDConnection::onReport(ReportHandler handler) {
  return state_->addReportHandler(std::move(handler));
}

HIDConnection::HandlerID HIDConnection::onReport(BytesHandler handler) {
  return state_->addReportHandler(std::move(handler));
}

HIDConnection::HandlerID HIDConnection::onValue(ValueHandler handler) {
  return state_->addValueHandler(std::move(handler));
}

void HIDConnection::setOnGone(std::function<void()> handler) {
  state_->setOnGone(std::move(handler));
}

void HIDConnection::removeHandler(HandlerID id) { state_->removeHandler(id); }

HIDConnection::LowLatencyScope HIDConnection::lowLatencyScope() { return LowLatencyScope(state_); }

HIDConnection::LowLatencyScope::LowLatencyScope(std::shared_ptr<State> state)
    : state_(std::move(state)) {
  state_->requireLowLatency();
}

HIDConnection::LowLatencyScope& HIDConnection::LowLatencyScope::operator=(
    LowLatencyScope&& other) noexcept {
  std::swap(state_, other.state_);
  return *this;
}

HIDConnection::LowLatencyScope::~LowLatencyScope() {
  if (state_) state_->releaseLowLatency();
}

void HIDConnection::send(const HIDReportPacket& packet) {
  const auto port = state_->openPort();
  const LowLatencyScope scope = lowLatencyScope();
  const HIDReturn code = port->write(packet.reportID, packet.wireBytes());
  if (code != HIDReturnCode::success) {
    throw FanatecError::ioFailed(
        fmt::format("SetReport id 0x{:X} -> {}", packet.reportID, describe(code)));
  }
}

Bytes HIDConnection::getReport(HIDReportKind kind, std::uint8_t reportID, std::size_t length) {
  const auto port = state_->openPort();
  const LowLatencyScope scope = lowLatencyScope();
  Bytes buffer(std::max<std::size_t>(length, 1) + 1);
  buffer[0] = reportID;
  std::size_t returned = buffer.size();
  const HIDReturn code = port->getReport(kind, reportID, buffer, returned);
  if (code != HIDReturnCode::success) {
    throw FanatecError::ioFailed(fmt::format("GetReport id {} -> {}", reportID, describe(code)));
  }
  buffer.resize(std::min(returned, buffer.size()));
  if (reportID != 0 && (buffer.empty() || buffer[0] != reportID)) {
    buffer.insert(buffer.begin(), reportID);
  }
  return buffer;
}

Bytes HIDConnection::getFeature(std::uint8_t reportID, std::size_t length) {
  return getReport(HIDReportKind::feature, reportID, length);
}

bool HIDConnection::tryWriteLock() { return state_->openPort()->tryWriteLock(); }

void HIDConnection::endWriteLock() {
  if (const auto port = state_->port()) port->endWriteLock();
}

std::optional<NodeHolder> HIDConnection::writeLockHolder() {
  return state_->openPort()->writeLockHolder();
}

void HIDConnection::watchForOthers() { state_->openPort()->watchForOthers(); }

bool HIDConnection::othersMayHaveWritten() { return state_->openPort()->othersMayHaveWritten(); }

std::uint64_t HIDConnection::possibleLosses() const { return state_->openPort()->possibleLosses(); }

std::string HIDConnection::describe(HIDReturn code) { return describeHIDReturn(code); }

}  // namespace quorvane
