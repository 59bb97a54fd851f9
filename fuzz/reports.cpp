#include <algorithm>
#include <atomic>
#include <memory>
#include <optional>

#include "fuzz/input.h"
#include "fuzz/packets.h"
#include "fuzz/properties.h"
#include "hid/device_info.h"
#include "presets/preset_coding.h"
#include "protocol/error.h"
#include "session/wheel_base.h"
#include "simulator/simulated_device.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

constexpr std::uint8_t vendorReport = 0xFF;
constexpr std::size_t longReport = 64;
constexpr std::uint8_t statusReport = 0x01;
constexpr std::size_t statusLength = 34;

const std::array<PacketForm, 3>& reportForms() {
  static const std::array<PacketForm, 3> forms{{{{vendorReport, 0x03}, longReport},
                                                {{vendorReport, 0x08}, longReport},
                                                {{statusReport}, statusLength}}};
  return forms;
}

// The expected state of a session after the reports so far.
struct Expected {
  Bytes tuning;
  Bytes identity;
  std::optional<std::pair<unsigned, unsigned>> status;
  int tuningUpdates = 0;
  int statusUpdates = 0;

  void take(const Bytes& report) {
    const bool isLong = report.size() == longReport && report[0] == vendorReport;
    if (isLong && report[1] == 0x08) identity = report;
    if (isLong && report[1] == 0x03) {
      tuning = report;
      ++tuningUpdates;
    }
    if (report.size() == statusLength && report[0] == statusReport) takeStatus(report);
  }

 private:
  void takeStatus(const Bytes& report) {
    if (report[30] == 0xFF) return;
    const std::pair<unsigned, unsigned> seen{report[30] + 256U * report[31],
                                             report[32] + 256U * report[33]};
    if (status != seen) ++statusUpdates;
    status = seen;
  }
};

// The packet that would write a value; none if it is out of range.
std::optional<Bytes> written(WheelBase& base, TuningParameter parameter, std::int64_t value) {
  try {
    return base.packet(parameter, value).wireBytes();
  } catch (const FanatecError&) {
    return std::nullopt;
  }
}

std::uint8_t roundedByte(TuningParameter parameter, std::uint8_t raw) {
  const bool inTens = parameter == TuningParameter::brakeForce ||
                      parameter == TuningParameter::forceEffectIntensity;
  return inTens ? static_cast<std::uint8_t>(raw - raw % 10) : raw;
}

bool isSettable(TuningParameter parameter, std::int64_t value, const FanatecProduct& product) {
  const bool isAngle = parameter == TuningParameter::sensitivity;
  if (isAngle && value == 0) return product.autoRotation > 0;
  if (isAngle && product.autoRotation > 0 && value == product.autoRotation) return true;
  return parameter.allowedRange(product).contains(value);
}

// The menu block of a write must be the reported menu with only one byte changed.
void expectBlock(const Bytes& wire, const Bytes& menu, TuningParameter parameter,
                 std::uint8_t wanted, TuningLayout layout) {
  const std::size_t shift = layout == TuningLayout::inPlace ? 0 : 1;
  invariant(wire.size() == longReport && wire[0] == vendorReport && wire[1] == 0x03,
            "a write has the form of the tuning channel");
  for (std::size_t offset = 3; offset + shift < longReport; ++offset) {
    const std::uint8_t kept = offset == parameter.offset() ? wanted : menu[offset];
    invariant(wire[offset + shift] == kept, "a write changes one byte of the menu");
  }
}

void expectWritesBack(WheelBase& base, const TuningSnapshot& snapshot) {
  const FanatecProduct& product = *base.product();
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    const std::uint8_t raw = snapshot.rawValue(parameter);
    const std::int64_t value = snapshot.value(parameter, product);
    // 0 requests the automatic angle of a CSL Elite, so it cannot be written back as an angle.
    if (parameter == TuningParameter::sensitivity && value == 0) continue;
    const bool isSettable = Fuzz::isSettable(parameter, value, product);
    for (const TuningLayout layout : {TuningLayout::inPlace, TuningLayout::deviceID}) {
      base.writeLayout = layout;
      const auto wire = written(base, parameter, value);
      invariant(wire.has_value() == isSettable, "exactly the values in range can be written");
      if (!wire) break;
      expectBlock(*wire, snapshot.raw(), parameter, roundedByte(parameter, raw), layout);
    }
  }
}

void expectCaptures(const TuningSnapshot& snapshot, const FanatecProduct& product) {
  const TuningPreset preset = TuningPreset::capture(product, "Kept", snapshot);
  const auto available = TuningParameter::available(product);
  invariant(preset.values.size() + 1 == available.size(), "a capture has all but the set's number");
  invariant(decodePresets(parseJSON(encodePresets({preset}))) == std::vector{preset},
            "a captured menu survives its file");
}

// A session with a simulated base in simulated time.
class Session {
 public:
  explicit Session(const FanatecProduct& product)
      : device_(SimulatedDevice::create(product, SimulatedDevice::Time::simulated)),
        base_(WheelBase::create(HIDEnumerator::info(device_), device_->clock())) {
    base_->setOnTuningUpdate([this](const TuningSnapshot&) { ++tuningUpdates_; });
    base_->setOnStatusUpdate([this](WheelBase&) { ++statusUpdates_; });
    base_->connect();
    base_->connection().onValue([](const HIDElementValue& value) {
      invariant(value.reportID == statusReport || value.reportID == vendorReport,
                "values are those of the base's reports");
    });
  }

  ~Session() {
    base_->disconnect();
    device_->waitUntilQuiet();
    base_.reset();
    invariant(device_->violations().empty(), "a session treats its base by the rules");
    invariant(device_->openPorts() == 0, "a session that ends leaves nothing open");
  }

  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void receive(Bytes report) {
    report.resize(std::min(report.size(), base_->connection().bufferSize()));
    const int menusBefore = expected_.tuningUpdates;
    expected_.take(report);
    device_->sendReport(std::move(report));
    device_->waitUntilQuiet();
    expectKept();
    if (expected_.tuningUpdates > menusBefore) expectUsable(*base_->tuning());
  }

 private:
  void expectKept() {
    const auto tuning = base_->tuning();
    const auto identity = base_->identity();
    invariant((tuning ? tuning->raw() : Bytes()) == expected_.tuning, "the latest menu is kept");
    invariant((identity ? identity->raw() : Bytes()) == expected_.identity,
              "the latest identity is kept");
    invariant(base_->wheelID().has_value() == expected_.status.has_value(), "a status is kept");
    if (expected_.status) {
      invariant(*base_->wheelID() == expected_.status->first &&
                    *base_->firmwareVersion() == expected_.status->second,
                "the latest status is kept");
    }
    invariant(tuningUpdates_ == expected_.tuningUpdates, "every menu is told of");
    invariant(statusUpdates_ == expected_.statusUpdates, "every change of the status is told of");
    if (identity) expectNames(*identity);
  }

  void expectUsable(const TuningSnapshot& tuning) {
    expectWritesBack(*base_, tuning);
    expectCaptures(tuning, *base_->product());
  }

  static void expectNames(const IdentityReport& identity) {
    invariant(!identity.baseName().empty() && !identity.wheelName().empty() &&
                  !identity.moduleName().empty(),
              "whatever is connected has a name");
  }

  Expected expected_;
  std::atomic<int> tuningUpdates_ = 0;
  std::atomic<int> statusUpdates_ = 0;
  const std::shared_ptr<SimulatedDevice> device_;
  std::shared_ptr<WheelBase> base_;
};

}  // namespace

void reports(ByteView bytes) {
  Input input(bytes);
  Session session(nextProduct(input));
  while (!input.atEnd()) session.receive(nextPacket(input, reportForms()));
}

}  // namespace quorvane::Fuzz
