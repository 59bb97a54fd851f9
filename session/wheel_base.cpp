#include "session/wheel_base.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>
#include <variant>

#include "protocol/error.h"
#include "session/menu_writer.h"
#include "session/report_filter.h"
#include "session/write_lock.h"

namespace quorvane {
namespace {

// Pauses after commands: the time that the base needs to execute them.
constexpr Seconds ackPause{0.002};
constexpr Seconds selectPause{0.15};
constexpr Seconds commitPause{0.25};
constexpr Seconds menuPause{0.4};

constexpr int ackPairs = 4;

constexpr const char* tuningReportText =
    "tuning menu report (is the base in PC mode and on a supported firmware?)";
constexpr const char* identityReportText = "system report (FF 08)";

constexpr std::int64_t lowestRotation = 90;
constexpr std::int64_t highestRotation = 2520;  // for products that are not in the catalogue

template <typename Handler>
std::shared_ptr<const Handler> shared(Handler handler) {
  return handler ? std::make_shared<const Handler>(std::move(handler)) : nullptr;
}

std::string placeText(const MenuPlace& place) {
  return fmt::format("set {} of the {} menu", place.slot,
                     place.isAdvanced ? "advanced" : "standard");
}

void requireSameSet(const MenuPlace& actual, const MenuPlace& meantFor) {
  if (actual == meantFor) return;
  throw FanatecError::invalidReport(
      fmt::format("the base is in {} now, not in {}; write it again if it belongs there",
                  placeText(actual), placeText(meantFor)));
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

void WheelBase::connect(Use use) {
  connection_.open(false);
  try {
    {
      MutexLock held(lock_);
      requireNotDisconnected();
    }
    if (use == Use::writing) connection_.watchForOthers();
  } catch (const FanatecError&) {
    connection_.close();
    throw;
  }
  connection_.onReport(
      [filter = std::make_shared<ReportFilter>(), weak = weak_from_this()](ByteView bytes) {
        const auto report = filter->pass(bytes);
        if (!report) return false;
        if (const auto base = weak.lock()) {
          std::visit([&](const auto& decoded) { base->keep(decoded); }, *report);
        }
        return true;
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
    wheelStatus_ = status;
    handler = onStatusUpdate_;
  }
  if (handler) (*handler)(*this);
}

// Registers a waiter, sends the requests, and waits until the next report signals the waiter and
// removes it. Disables batching meanwhile. When a send fails, the waiter stays registered until the
// next report removes it.
bool WheelBase::await(std::vector<Waiter> WheelBase::*waiters,
                      const std::vector<HIDReportPacket>& requests, Seconds timeout) {
  const HIDConnection::LowLatencyScope scope = connection_.lowLatencyScope();
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
  const std::uint64_t losses = connection_.possibleLosses();
  if (await(&WheelBase::tuningWaiters_, {FanatecCommands::requestTuningSnapshot()}, timeout)) {
    lossesMadeUpFor_ = losses;
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

TuningSnapshot WheelBase::latestMenu() const {
  auto menu = tuning();
  if (!menu) throw FanatecError::noTuningSnapshot();
  return *std::move(menu);
}

HIDReportPacket WheelBase::packet(TuningParameter parameter, std::int64_t value) const {
  return packetFrom(latestMenu(), parameter, value);
}

HIDReportPacket WheelBase::packetFrom(const TuningSnapshot& menu, TuningParameter parameter,
                                      std::int64_t value) const {
  return FanatecCommands::writeTuning(menu, parameter, parameter.encode(value, product_),
                                      writeLayout, clearSetupFlagOnWrite);
}

// Call it with the write lock held.
void WheelBase::readUnlessSure() {
  const bool mayHaveMissedAny = connection_.possibleLosses() != lossesMadeUpFor_;
  if (connection_.othersMayHaveWritten() || mayHaveMissedAny) fetchTuning(readTimeout);
}

void WheelBase::sendValue(TuningParameter parameter, std::int64_t value,
                          const std::optional<MenuPlace>& meantFor) {
  readUnlessSure();
  const TuningSnapshot menu = latestMenu();
  if (meantFor) requireSameSet(menu, *meantFor);
  menuBeforeSet_ = menu;
  connection_.send(packetFrom(menu, parameter, value));
  if (sendAckBurstAfterWrite) sendAckBurst();
}

std::optional<TuningSnapshot> WheelBase::set(TuningParameter parameter, std::int64_t value,
                                             bool verify,
                                             const std::optional<MenuPlace>& meantFor) {
  const bool isSlot = parameter == TuningParameter::slot;
  menuBeforeSet_.reset();
  // Throws for an invalid value before waiting for the write lock.
  if (!isSlot) packet(parameter, value);
  const WriteLock lock(connection_, clock_, readTimeout);
  if (isSlot) {
    connection_.send(FanatecCommands::selectTuningSlot(value, TuningLayout::inPlace));
  } else {
    sendValue(parameter, value, meantFor);
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
  MenuWriter writer(*this, tuning());
  for (const auto& [parameter, value] : preset.applicable(product_)) {
    ApplyResult result{parameter, value, std::nullopt};
    try {
      writer.write(parameter, value);
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
  const WriteLock lock(connection_, clock_, readTimeout);
  connection_.send(FanatecCommands::selectTuningSlot(slot, layout));
  clock_.sleepFor(selectPause);
  return fetchTuning(readTimeout);
}

void WheelBase::toggleAdvancedMode() { connection_.send(FanatecCommands::toggleAdvancedMode()); }

TuningSnapshot WheelBase::switchMenuMode() {
  const WriteLock lock(connection_, clock_, readTimeout);
  toggleAdvancedMode();
  clock_.sleepFor(menuPause);
  return fetchTuning(readTimeout);
}

TuningSnapshot WheelBase::factoryReset() {
  const WriteLock lock(connection_, clock_, readTimeout);
  connection_.send(FanatecCommands::resetTuningToFactoryDefaults());
  clock_.sleepFor(menuPause);
  return fetchTuning(readTimeout);
}

void WheelBase::setRotation(std::int64_t degrees) {
  if (!commandReportID) throw FanatecError::noOutputReport();
  const ClosedRange allowed{lowestRotation, product_ ? product_->maxRotation : highestRotation};
  // Pedals whose HID usage is joystick also get a session (isWheelBaseCandidate).
  if (product_ && allowed.upper < allowed.lower) {
    throw FanatecError::notAvailable(TuningParameter::sensitivity, std::string(product_->name));
  }
  if (!allowed.contains(degrees)) {
    throw FanatecError::outOfRange(TuningParameter::sensitivity, degrees, allowed);
  }
  for (const auto& packet : FanatecCommands::setRotation(degrees, *commandReportID)) {
    connection_.send(packet);
  }
}

void WheelBase::sendRaw(const HIDReportPacket& packet) { connection_.send(packet); }

}  // namespace quorvane
