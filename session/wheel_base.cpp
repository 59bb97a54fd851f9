#include "session/wheel_base.h"

#include <algorithm>
#include <utility>

#include "protocol/error.h"
#include "support/invariant.h"

namespace quorvane {
namespace {

// The pauses of the dialogue: what the base needs to do as it was told.
constexpr Seconds ackPause{0.002};
constexpr Seconds selectPause{0.15};
constexpr Seconds commitPause{0.25};
constexpr Seconds menuPause{0.4};

constexpr int ackPairs = 4;

constexpr const char* tuningReportText =
    "tuning menu report (is the base in PC mode and on a supported firmware?)";
constexpr const char* identityReportText = "system report (FF 08)";

constexpr std::int64_t lowestRotation = 90;
constexpr std::int64_t highestRotation = 2520;  // of products that the catalogue does not know

template <typename Handler>
std::shared_ptr<const Handler> shared(Handler handler) {
  return handler ? std::make_shared<const Handler>(std::move(handler)) : nullptr;
}

void signalAll(const std::vector<std::shared_ptr<Semaphore>>& waiters) {
  for (const auto& waiter : waiters) waiter->signal();
}

}  // namespace

std::shared_ptr<WheelBase> WheelBase::create(HIDDeviceInfo info, Clock& clock) {
  return std::shared_ptr<WheelBase>(new WheelBase(std::move(info), clock));
}

WheelBase::WheelBase(HIDDeviceInfo info, Clock& clock)
    : commandReportID(info.commandReportID()),
      info_(std::move(info)),
      product_(FanatecProduct::lookup(info_.productID)),
      clock_(clock),
      connection_(info_) {}

void WheelBase::setOnTuningUpdate(TuningHandler handler) {
  auto replaced = shared(std::move(handler));
  MutexLock held(lock_);
  onTuningUpdate_.swap(replaced);
}

void WheelBase::setOnStatusUpdate(StatusHandler handler) {
  auto replaced = shared(std::move(handler));
  MutexLock held(lock_);
  onStatusUpdate_.swap(replaced);
}

void WheelBase::connect() {
  connection_.open(false);
  try {
    MutexLock held(lock_);
    requireNotDisconnected();
  } catch (const FanatecError&) {
    connection_.close();
    throw;
  }
  connection_.onReport([weak = weak_from_this()](const HIDInputReport& report) {
    if (const auto base = weak.lock()) base->handle(report);
  });
}

void WheelBase::disconnect() {
  std::vector<Waiter> woken;
  {
    MutexLock held(lock_);
    disconnected_ = true;
    woken = takeAllWaiters();
  }
  connection_.close();
  signalAll(woken);
}

void WheelBase::requireNotDisconnected() const {
  if (disconnected_) throw FanatecError::notConnected();
}

std::vector<WheelBase::Waiter> WheelBase::takeAllWaiters() {
  std::vector<Waiter> waiters = std::exchange(tuningWaiters_, {});
  waiters.insert(waiters.end(), identityWaiters_.begin(), identityWaiters_.end());
  identityWaiters_.clear();
  return waiters;
}

std::optional<TuningSnapshot> WheelBase::tuning() const {
  MutexLock held(lock_);
  return tuning_;
}

std::optional<IdentityReport> WheelBase::identity() const {
  MutexLock held(lock_);
  return identity_;
}

std::optional<std::uint16_t> WheelBase::wheelID() const {
  MutexLock held(lock_);
  if (!wheelStatus_) return std::nullopt;
  return wheelStatus_->wheelID;
}

std::optional<std::uint16_t> WheelBase::firmwareVersion() const {
  MutexLock held(lock_);
  if (!wheelStatus_) return std::nullopt;
  return wheelStatus_->firmwareVersion;
}

void WheelBase::handle(const HIDInputReport& report) {
  if (const auto identity = IdentityReport::fromReport(report.bytes, report.receivedAt)) {
    keep(*identity);
  } else if (const auto snapshot = TuningSnapshot::fromReport(report.bytes, report.receivedAt)) {
    keep(*snapshot);
  } else if (const auto status = WheelStatus::fromReport(report.bytes)) {
    keep(*status);
  }
}

void WheelBase::keep(const IdentityReport& identity) {
  std::vector<Waiter> woken;
  {
    MutexLock held(lock_);
    identity_ = identity;
    woken.swap(identityWaiters_);
  }
  signalAll(woken);
}

void WheelBase::keep(const TuningSnapshot& snapshot) {
  std::vector<Waiter> woken;
  std::shared_ptr<const TuningHandler> handler;
  {
    MutexLock held(lock_);
    tuning_ = snapshot;
    woken.swap(tuningWaiters_);
    handler = onTuningUpdate_;
  }
  signalAll(woken);
  if (handler) (*handler)(snapshot);
}

void WheelBase::keep(WheelStatus status) {
  std::shared_ptr<const StatusHandler> handler;
  {
    MutexLock held(lock_);
    if (wheelStatus_ == status) return;
    wheelStatus_ = status;
    handler = onStatusUpdate_;
  }
  if (handler) (*handler)(*this);
}

// Registers a waiter, sends the requests, and waits until a report that came after that has taken
// the waiter off the list. A send that fails leaves its waiter there; the next report drops it.
bool WheelBase::await(std::vector<Waiter> WheelBase::*waiters,
                      const std::vector<HIDReportPacket>& requests, Seconds timeout) {
  const auto waiter = std::make_shared<Semaphore>();
  {
    MutexLock held(lock_);
    requireNotDisconnected();
    (this->*waiters).push_back(waiter);
  }
  for (const HIDReportPacket& request : requests) connection_.send(request);
  const bool woken = clock_.wait(*waiter, timeout);
  MutexLock held(lock_);
  requireNotDisconnected();
  if (!woken) std::erase(this->*waiters, waiter);
  return woken;
}

TuningSnapshot WheelBase::fetchTuning(Seconds timeout) {
  if (await(&WheelBase::tuningWaiters_, {FanatecCommands::requestTuningSnapshot()}, timeout)) {
    if (const auto latest = tuning()) return *latest;
  }
  throw FanatecError::timeout(tuningReportText);
}

IdentityReport WheelBase::fetchIdentity(Seconds timeout) {
  if (await(
          &WheelBase::identityWaiters_,
          {FanatecCommands::enableIdentityReports(true), FanatecCommands::requestIdentityReport()},
          timeout)) {
    if (const auto latest = identity()) return *latest;
  }
  throw FanatecError::timeout(identityReportText);
}

HIDReportPacket WheelBase::packet(TuningParameter parameter, std::int64_t value) const {
  const auto snapshot = tuning();
  if (!snapshot) throw FanatecError::noTuningSnapshot();
  return FanatecCommands::writeTuning(*snapshot, parameter, parameter.encode(value, product_),
                                      writeLayout, clearSetupFlagOnWrite);
}

std::optional<TuningSnapshot> WheelBase::set(TuningParameter parameter, std::int64_t value,
                                             bool verify) {
  const bool isSlot = parameter == TuningParameter::slot;
  if (isSlot) {
    connection_.send(FanatecCommands::selectTuningSlot(value, TuningLayout::inPlace));
  } else {
    connection_.send(packet(parameter, value));
    if (sendAckBurstAfterWrite) sendAckBurst();
  }
  if (!verify) return std::nullopt;

  clock_.sleepFor(commitPause);
  TuningSnapshot snapshot = fetchTuning(readTimeout);
  if (!isSlot && snapshot.rawValue(parameter) != parameter.encode(value, product_)) {
    throw FanatecError::writeIgnored(parameter, snapshot.value(parameter, product_));
  }
  return snapshot;
}

std::vector<WheelBase::ApplyResult> WheelBase::apply(const TuningPreset& preset,
                                                     const ApplyHandler& onResult) {
  std::vector<ApplyResult> results;
  for (const auto& [parameter, value] : preset.applicable(product_)) {
    ApplyResult result{parameter, value, std::nullopt};
    try {
      set(parameter, value, true);
    } catch (const FanatecError& error) {
      result.error = error.errorDescription();
    }
    if (onResult) onResult(result);
    results.push_back(std::move(result));
  }
  return results;
}

void WheelBase::sendAckBurst() {
  if (!commandReportID) return;
  for (const auto& packet : FanatecCommands::tuningAckBurst(*commandReportID, ackPairs)) {
    connection_.send(packet);
    clock_.sleepFor(ackPause);
  }
}

TuningSnapshot WheelBase::selectSlot(std::int64_t slot, TuningLayout layout) {
  connection_.send(FanatecCommands::selectTuningSlot(slot, layout));
  clock_.sleepFor(selectPause);
  return fetchTuning(readTimeout);
}

void WheelBase::toggleAdvancedMode() { connection_.send(FanatecCommands::toggleAdvancedMode()); }

TuningSnapshot WheelBase::switchMenuMode() {
  toggleAdvancedMode();
  clock_.sleepFor(menuPause);
  return fetchTuning(readTimeout);
}

TuningSnapshot WheelBase::factoryReset() {
  connection_.send(FanatecCommands::resetTuningToFactoryDefaults());
  clock_.sleepFor(menuPause);
  return fetchTuning(readTimeout);
}

void WheelBase::setRotation(std::int64_t degrees) {
  if (!commandReportID) throw FanatecError::noOutputReport();
  const ClosedRange allowed{lowestRotation, product_ ? product_->maxRotation : highestRotation};
  invariant(allowed.lower <= allowed.upper, "a rotation was asked of a product without steering");
  if (!allowed.contains(degrees)) {
    throw FanatecError::outOfRange(TuningParameter::sensitivity, degrees, allowed);
  }
  for (const auto& packet : FanatecCommands::setRotation(degrees, *commandReportID)) {
    connection_.send(packet);
  }
}

void WheelBase::sendRaw(const HIDReportPacket& packet) { connection_.send(packet); }

}  // namespace quorvane
