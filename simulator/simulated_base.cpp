#include "simulator/simulated_base.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "protocol/identity_report.h"
#include "support/text.h"

namespace quorvane {
namespace {

constexpr std::uint8_t commandReport = 0x01;
constexpr std::size_t tuningWireLength = FanatecCommands::tuningPayloadLength + 1;
constexpr std::size_t shortWireLength = FanatecCommands::shortPayloadLength + 1;

constexpr Monotonic::duration streamPeriod = std::chrono::milliseconds(1);
constexpr Monotonic::duration staleLead = std::chrono::milliseconds(10);

constexpr std::uint8_t formulaWheel = 28;
constexpr std::uint8_t enduranceModule = 1;
constexpr std::uint16_t defaultFirmware = 1234;
constexpr int defaultSet = 2;

// Values that differ from the factory's, so that a fresh simulation looks used.
constexpr std::array<std::pair<TuningParameter, std::int64_t>, 7> customValues{{
    {TuningParameter::sensitivity, 900},
    {TuningParameter::forceFeedback, 65},
    {TuningParameter::damperEffect, 50},
    {TuningParameter::naturalDamper, 25},
    {TuningParameter::naturalFriction, 10},
    {TuningParameter::forceEffect, 100},
    {TuningParameter::naturalInertia, 5},
}};

void putLittleEndian16(Bytes& bytes, std::size_t offset, std::uint16_t value) {
  bytes[offset] = static_cast<std::uint8_t>(value);
  bytes[offset + 1] = static_cast<std::uint8_t>(value >> 8U);
}

}  // namespace

std::optional<FanatecProduct> simulatableProduct(std::string_view text) {
  std::vector<FanatecProduct> menus;
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.hasTuningMenu()) menus.push_back(product);
  }
  const auto choose = [&](auto matches) -> std::optional<FanatecProduct> {
    const auto first = std::find_if(menus.begin(), menus.end(), matches);
    if (first == menus.end()) return std::nullopt;
    if (std::find_if(first + 1, menus.end(), matches) != menus.end()) return std::nullopt;
    return *first;
  };
  const auto id = parseHexNumber(text);
  if (const auto exact = choose([&](const auto& p) { return id && p.productID == *id; })) {
    return exact;
  }
  const std::string wanted = lowerCase(text);
  if (const auto whole = choose([&](const auto& p) { return lowerCase(p.name) == wanted; })) {
    return whole;
  }
  return choose([&](const auto& p) { return lowerCase(p.name).find(wanted) != std::string::npos; });
}

SimulatedBase::SimulatedBase(const FanatecProduct& product)
    : product_(product), menu_(product), identity_(IdentityReport::length) {
  identity_[0] = IdentityReport::reportID;
  identity_[1] = IdentityReport::subID;
  identity_[IdentityReport::baseTypeOffset] = baseTypeOf(product);
  identity_[IdentityReport::moduleOffset] = enduranceModule;
  attachWheel(formulaWheel, defaultFirmware);

  menu_.select(defaultSet);
  const auto available = TuningParameter::available(product_);
  for (const auto& [parameter, value] : customValues) {
    if (std::find(available.begin(), available.end(), parameter) != available.end()) {
      menu_.put(parameter, value);
    }
  }
}

HIDReturn SimulatedBase::receive(ByteView wire, Monotonic::time_point now) {
  const HIDReturn refused = refusal();
  ++received_;
  if (refused != HIDReturnCode::success) return refused;
  police(wire);
  finishSwitch(now);
  obey(wire, now);
  if (behaviour_.unplugAfter && received_ >= *behaviour_.unplugAfter) unplug();
  return HIDReturnCode::success;
}

HIDReturn SimulatedBase::refusal() {
  if (!plugged_) return HIDReturnCode::noDevice;
  const int number = received_ - behaviour_.failSendsFrom;
  const bool fails = number >= 0 && number < behaviour_.failSendsCount;
  return fails ? behaviour_.failSendsWith : HIDReturnCode::success;
}

void SimulatedBase::police(ByteView wire) {
  if (wire.empty()) {
    violations_.emplace_back("an empty packet");
    return;
  }
  const bool tuning = wire[0] == FanatecCommands::tuningReportID;
  if (!tuning && wire[0] != commandReport) {
    violations_.push_back(fmt::format("a packet on report 0x{:02x}, which has no output", wire[0]));
    return;
  }
  const std::size_t wanted = tuning ? tuningWireLength : shortWireLength;
  if (wire.size() != wanted) {
    violations_.push_back(
        fmt::format("{} bytes on report 0x{:02x} instead of {}", wire.size(), wire[0], wanted));
  }
}

void SimulatedBase::obey(ByteView wire, Monotonic::time_point now) {
  // The short commands drive the motor; they do not change the menu.
  if (wire.size() < 3 || wire[0] != FanatecCommands::tuningReportID) return;
  const ByteView payload = wire.subspan(1);
  if (payload[0] == FanatecCommands::tuningGroup) obeyTuning(payload, now);
  if (payload[0] == FanatecCommands::identityGroup) obeyIdentity(payload, now);
}

void SimulatedBase::obeyTuning(ByteView payload, Monotonic::time_point now) {
  if (payload[1] == FanatecCommands::requestCommand) {
    answerMenu(now);
    return;
  }
  Bytes before = menu_.report();
  carryOut(payload, now);
  if (menu_.report() != before) menuBefore_ = std::move(before);
}

void SimulatedBase::carryOut(ByteView payload, Monotonic::time_point now) {
  const std::uint8_t argument = payload.size() > 2 ? payload[2] : std::uint8_t{0};
  switch (payload[1]) {
    case FanatecCommands::writeCommand:
      write(payload);
      break;
    case FanatecCommands::selectCommand:
      // Set 0 does not exist: a 0 here is the device-ID byte of the other layout.
      select(argument == 0 && payload.size() > 3 ? payload[3] : argument, now);
      break;
    case FanatecCommands::saveCommand:
      menu_.saveInto(argument);
      break;
    case FanatecCommands::resetCommand:
      menu_.reset();
      break;
    case FanatecCommands::toggleModeCommand:
      menu_.toggleMode();
      break;
    default:
      break;
  }
}

void SimulatedBase::obeyIdentity(ByteView payload, Monotonic::time_point now) {
  if (payload[1] == FanatecCommands::enableIdentityCommand) {
    identityEnabled_ = payload.size() > 2 && payload[2] != 0;
  } else if (payload[1] == FanatecCommands::requestIdentityCommand && identityEnabled_) {
    answer(identity_, now);
  }
}

void SimulatedBase::select(int set, Monotonic::time_point now) {
  switch_ =
      Switch{now + std::chrono::duration_cast<Monotonic::duration>(behaviour_.switchDelay), set};
  finishSwitch(now);
}

void SimulatedBase::finishSwitch(Monotonic::time_point now) {
  if (!switch_ || switch_->due > now) return;
  menu_.select(switch_->set);
  switch_.reset();
}

void SimulatedBase::write(ByteView payload) {
  // The menu follows the two command bytes; in the deviceID layout, after a status byte.
  const std::size_t start = behaviour_.layout == TuningLayout::inPlace ? 2 : 3;
  if (payload.size() <= start) return;
  Bytes menu(payload.begin() + static_cast<std::ptrdiff_t>(start), payload.end());
  disobey(menu);
  menu_.write(menu);
}

// Applies the configured faults (ignored, most) to the bytes of a write.
void SimulatedBase::disobey(Bytes& menu) const {
  const auto byteOf = [&](TuningParameter parameter) -> std::uint8_t* {
    const std::size_t index = parameter.offset() - TuningSnapshot::statusOffset - 1;
    return parameter != TuningParameter::slot && index < menu.size() ? &menu[index] : nullptr;
  };
  const Bytes current = menu_.report();
  for (const TuningParameter parameter : behaviour_.ignored) {
    if (auto* const byte = byteOf(parameter)) *byte = current[parameter.offset()];
  }
  for (const auto& [parameter, most] : behaviour_.most) {
    auto* const byte = byteOf(parameter);
    if (byte != nullptr && parameter.decode(*byte, product_) > most) {
      *byte = parameter.encode(most, product_);
    }
  }
}

void SimulatedBase::answerMenu(Monotonic::time_point now) {
  if (behaviour_.tuningSilent) return;
  if (!behaviour_.staleAnswers) {
    answer(menu_.report(), now);
    return;
  }
  answer(menuBefore_.empty() ? menu_.report() : menuBefore_, now);
  answer(menu_.report(), now + staleLead);
}

void SimulatedBase::answer(Bytes report, Monotonic::time_point now) {
  if (behaviour_.silent) return;
  const auto due = now + std::chrono::duration_cast<Monotonic::duration>(behaviour_.answerDelay);
  if (behaviour_.foreignReports) {
    // One of an unknown kind, one of a known kind with a wrong length, one status report.
    queue(Bytes{FanatecCommands::tuningReportID, 0x7F}, due);
    queue(Bytes(TuningSnapshot::length - 1, FanatecCommands::tuningReportID), due);
    queue(wheelStatusReport(), due);
  }
  queue(std::move(report), due);
}

void SimulatedBase::queue(Bytes report, Monotonic::time_point due) {
  const auto position =
      std::upper_bound(pending_.begin(), pending_.end(), due,
                       [](Monotonic::time_point time, const Pending& p) { return time < p.due; });
  pending_.insert(position, {due, std::move(report)});
}

std::optional<Bytes> SimulatedBase::getReport(HIDReportKind kind, std::uint8_t reportID) const {
  if (!plugged_ || kind == HIDReportKind::feature) return std::nullopt;
  if (reportID == WheelStatus::reportID) return wheelStatusReport();
  if (reportID == FanatecCommands::tuningReportID) return menu_.report();
  return std::nullopt;
}

std::optional<Monotonic::time_point> SimulatedBase::nextDue(Monotonic::time_point now) {
  streamUntil(now);
  std::optional<Monotonic::time_point> due = nextStatus_;
  if (!pending_.empty() && (!due || pending_.front().due < *due)) due = pending_.front().due;
  return due;
}

std::optional<Bytes> SimulatedBase::takeDue(Monotonic::time_point now) {
  streamUntil(now);
  if (pending_.empty() || pending_.front().due > now) return std::nullopt;
  Bytes report = std::move(pending_.front().report);
  pending_.erase(pending_.begin());
  return report;
}

// Queues the status reports up to now. Like the hardware, the base keeps only a few for a host
// that does not fetch them, so that they do not delay answers.
void SimulatedBase::streamUntil(Monotonic::time_point now) {
  constexpr int longestBacklog = 8;
  if (!behaviour_.streamWheelStatus || !plugged_) {
    nextStatus_.reset();
    return;
  }
  if (!nextStatus_ || now - *nextStatus_ > longestBacklog * streamPeriod) nextStatus_ = now;
  while (*nextStatus_ <= now) {
    if (std::ssize(pending_) < longestBacklog) queue(wheelStatusReport(), *nextStatus_);
    *nextStatus_ += streamPeriod;
  }
}

void SimulatedBase::turn(TuningParameter parameter, std::int64_t value, Monotonic::time_point now) {
  menu_.put(parameter, value);
  sendReport(menu_.report(), now);
}

void SimulatedBase::sendReport(Bytes report, Monotonic::time_point now) {
  if (plugged_) queue(std::move(report), now);
}

void SimulatedBase::attachWheel(std::uint16_t wheelID, std::uint16_t firmwareVersion) {
  wheelStatus_ = {wheelID, firmwareVersion};
  identity_[IdentityReport::wheelOffset] = static_cast<std::uint8_t>(wheelID);
}

Bytes SimulatedBase::wheelStatusReport() const {
  Bytes report(WheelStatus::length);
  report[0] = WheelStatus::reportID;
  putLittleEndian16(report, 1, 0x8000);  // steering axis at rest
  putLittleEndian16(report, WheelStatus::wheelOffset, wheelStatus_.wheelID);
  putLittleEndian16(report, WheelStatus::firmwareOffset, wheelStatus_.firmwareVersion);
  return report;
}

void SimulatedBase::unplug() {
  plugged_ = false;
  switch_.reset();
  pending_.clear();
  nextStatus_.reset();
  identityEnabled_ = false;
}

void SimulatedBase::plug() {
  if (!plugged_) ++plugCount_;
  plugged_ = true;
  received_ = 0;
}

void SimulatedBase::plug(const FanatecProduct& product) {
  SimulatedBase other(product);
  other.plugCount_ = plugCount_ + 1;
  other.violations_ = std::move(violations_);
  *this = std::move(other);
}

}  // namespace quorvane
