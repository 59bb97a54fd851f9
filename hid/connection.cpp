#include "hid/connection.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "hid/element_reader.h"
#include "protocol/error.h"
#include "support/mutex.h"
#include "support/semaphore.h"

namespace quorvane {
namespace {

constexpr std::int64_t smallestInputReport = 64;

// Handlers by registration. Readers take a snapshot, which stays whole while handlers come and go.
template <typename Handler>
class Registry {
 public:
  using Snapshot = std::shared_ptr<const std::map<HIDConnection::HandlerID, Handler>>;

  Snapshot snapshot() const { return handlers_; }

  // Both return the map that was replaced, to be destroyed outside the caller's lock.
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
  auto copy() const {
    return std::make_shared<std::map<HIDConnection::HandlerID, Handler>>(*handlers_);
  }

  Snapshot handlers_ = std::make_shared<std::map<HIDConnection::HandlerID, Handler>>();
};

// The hand-over between open and the reader thread.
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

  HandlerID addReportHandler(ReportHandler handler) {
    Registry<ReportHandler>::Snapshot old;
    MutexLock held(lock_);
    const auto id = HandlerID{++lastHandler_};
    old = reportHandlers_.add(id, std::move(handler));
    return id;
  }

  HandlerID addValueHandler(ValueHandler handler) {
    Registry<ValueHandler>::Snapshot old;
    MutexLock held(lock_);
    const auto id = HandlerID{++lastHandler_};
    old = valueHandlers_.add(id, std::move(handler));
    return id;
  }

  void removeHandler(HandlerID id) {
    Registry<ReportHandler>::Snapshot oldReports;
    Registry<ValueHandler>::Snapshot oldValues;
    MutexLock held(lock_);
    oldReports = reportHandlers_.remove(id);
    oldValues = valueHandlers_.remove(id);
  }

  void setOnGone(std::function<void()> handler) {
    auto replaced =
        handler ? std::make_shared<const std::function<void()>>(std::move(handler)) : nullptr;
    MutexLock held(lock_);
    onGone_.swap(replaced);
  }

  // Reads until the port is interrupted or the device is gone. The reader thread's body.
  void deliverFrom(HIDPort& port) {
    if (deliverAll(port) == HIDReturnCode::aborted) return;
    if (const auto handler = goneHandler()) (*handler)();
  }

 private:
  // Returns what ended it.
  HIDReturn deliverAll(HIDPort& port) {
    for (;;) {
      const HIDPort::ReadResult result = port.read(buffer_);
      if (result.code != HIDReturnCode::success) return result.code;
      if (result.length > 0) deliver(result.reportID, ByteView(buffer_.data(), result.length));
    }
  }

  std::shared_ptr<const std::function<void()>> goneHandler() const {
    MutexLock held(lock_);
    return onGone_;
  }

  void deliver(std::uint8_t reportID, ByteView bytes) {
    HIDInputReport report;
    report.reportID = reportID;
    const bool addID = reportID != 0 && bytes[0] != reportID;
    report.bytes.reserve(bytes.size() + (addID ? 1 : 0));
    if (addID) report.bytes.push_back(reportID);
    report.bytes.insert(report.bytes.end(), bytes.begin(), bytes.end());
    report.receivedAt = WallClock::now();

    const auto [reportHandlers, valueHandlers] = handlers();
    for (const auto& [id, handler] : *reportHandlers) handler(report);
    deliverValues(report, *valueHandlers);
  }

  std::pair<Registry<ReportHandler>::Snapshot, Registry<ValueHandler>::Snapshot> handlers() const {
    MutexLock held(lock_);
    return {reportHandlers_.snapshot(), valueHandlers_.snapshot()};
  }

  void deliverValues(const HIDInputReport& report,
                     const std::map<HandlerID, ValueHandler>& valueHandlers) {
    if (valueHandlers.empty()) {
      reader_.reset();
      return;
    }
    if (!reader_) reader_.emplace(HIDElements::parse(descriptor_.bytes()));
    for (const HIDElementValue& value : reader_->changes(report)) {
      for (const auto& [id, handler] : valueHandlers) handler(value);
    }
  }

  mutable Mutex lock_;
  std::shared_ptr<HIDPort> port_ QUORVANE_GUARDED_BY(lock_);  // present exactly while open
  Registry<ReportHandler> reportHandlers_ QUORVANE_GUARDED_BY(lock_);
  Registry<ValueHandler> valueHandlers_ QUORVANE_GUARDED_BY(lock_);
  std::uint64_t lastHandler_ QUORVANE_GUARDED_BY(lock_) = 0;
  std::shared_ptr<const std::function<void()>> onGone_ QUORVANE_GUARDED_BY(lock_);

  // The reader thread's own.
  Bytes buffer_;
  HIDReportDescriptor descriptor_;
  std::optional<HIDElementReader> reader_;
};

HIDConnection::HIDConnection(HIDDeviceInfo info)
    : info_(std::move(info)), state_(std::make_shared<State>(info_)) {}

HIDConnection::~HIDConnection() { close(); }

std::size_t HIDConnection::bufferSize() const { return state_->bufferSize(); }

bool HIDConnection::isOpen() const { return state_->port() != nullptr; }

void HIDConnection::open(bool exclusive) {
  if (isOpen()) return;
  // A reader that is still closing the device from the last time shares the buffer: let it end.
  thread_.join();
  const auto status = std::make_shared<OpenStatus>();
  thread_ = Thread("FanatecKit.HID." + info_.id,
                   [state = state_, device = info_.device, status, exclusive] {
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
    throw FanatecError::ioFailed(describe(status->code));
  }
}

void HIDConnection::close() {
  if (const auto port = state_->takePort()) port->interrupt();
}

void HIDConnection::join() { thread_.join(); }

HIDConnection::HandlerID HIDConnection::onReport(ReportHandler handler) {
  return state_->addReportHandler(std::move(handler));
}

HIDConnection::HandlerID HIDConnection::onValue(ValueHandler handler) {
  return state_->addValueHandler(std::move(handler));
}

void HIDConnection::setOnGone(std::function<void()> handler) {
  state_->setOnGone(std::move(handler));
}

void HIDConnection::removeHandler(HandlerID id) { state_->removeHandler(id); }

void HIDConnection::send(const HIDReportPacket& packet) {
  const auto port = state_->openPort();
  const HIDReturn code = port->write(packet.reportID, packet.wireBytes());
  if (code != HIDReturnCode::success) {
    throw FanatecError::ioFailed(
        fmt::format("SetReport id 0x{:X} -> {}", packet.reportID, describe(code)));
  }
}

Bytes HIDConnection::getReport(HIDReportKind kind, std::uint8_t reportID, std::size_t length) {
  const auto port = state_->openPort();
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

bool HIDConnection::tryWriteTurn() { return state_->openPort()->tryWriteTurn(); }

void HIDConnection::endWriteTurn() {
  if (const auto port = state_->port()) port->endWriteTurn();
}

void HIDConnection::watchForOthers() { state_->openPort()->watchForOthers(); }

bool HIDConnection::othersMayHaveWritten() { return state_->openPort()->othersMayHaveWritten(); }

std::string HIDConnection::describe(HIDReturn code) { return describeHIDReturn(code); }

}  // namespace quorvane
