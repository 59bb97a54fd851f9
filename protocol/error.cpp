#include "protocol/error.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace quorvane {
namespace {

struct Describe {
  std::string operator()(const FanatecError::OutOfRange& e) const {
    return fmt::format("{} value {} is outside {}...{}", e.parameter.code(), e.value,
                       e.allowed.lower, e.allowed.upper);
  }
  std::string operator()(const FanatecError::NotAvailable& e) const {
    return fmt::format("{} is not available on {}", e.parameter.code(), e.product);
  }
  std::string operator()(const FanatecError::Timeout& e) const {
    return "Timed out waiting for " + e.waitedFor;
  }
  std::string operator()(const FanatecError::IoFailed& e) const {
    return "HID I/O failed: " + e.detail;
  }
  std::string operator()(const FanatecError::InvalidReport& e) const {
    return "Invalid report: " + e.detail;
  }
  std::string operator()(const FanatecError::WriteIgnored& e) const {
    return fmt::format("The base ignored the {} write; it still reports {}", e.parameter.code(),
                       e.readBack);
  }
  std::string operator()(const FanatecError::NoTuningSnapshot& /*e*/) const {
    return "No tuning data received from the base yet; refusing to write blind";
  }
  std::string operator()(const FanatecError::NotConnected& /*e*/) const {
    return "Device is not open";
  }
  std::string operator()(const FanatecError::NoOutputReport& /*e*/) const {
    return "Could not find the base's 7-byte output report; pass --report-id";
  }
};

// In the order of FanatecError::Case.
constexpr std::array<std::string_view, std::variant_size_v<FanatecError::Case>> kinds{
    "outOfRange",   "notAvailable",     "timeout",      "ioFailed",      "invalidReport",
    "writeIgnored", "noTuningSnapshot", "notConnected", "noOutputReport"};

}  // namespace

FanatecError::FanatecError(Case value)
    : case_(std::move(value)), description_(std::visit(Describe{}, case_)) {}

FanatecError FanatecError::outOfRange(TuningParameter parameter, std::int64_t value,
                                      ClosedRange allowed) {
  return FanatecError(OutOfRange{parameter, value, allowed});
}

FanatecError FanatecError::notAvailable(TuningParameter parameter, std::string product) {
  return FanatecError(NotAvailable{parameter, std::move(product)});
}

FanatecError FanatecError::timeout(std::string waitedFor) {
  return FanatecError(Timeout{std::move(waitedFor)});
}

FanatecError FanatecError::ioFailed(std::string detail, std::uint32_t openCode) {
  FanatecError error(IoFailed{std::move(detail)});
  error.openCode_ = openCode;
  return error;
}

FanatecError FanatecError::invalidReport(std::string detail) {
  return FanatecError(InvalidReport{std::move(detail)});
}

FanatecError FanatecError::writeIgnored(TuningParameter parameter, std::int64_t readBack) {
  return FanatecError(WriteIgnored{parameter, readBack});
}

FanatecError FanatecError::noTuningSnapshot() { return FanatecError(NoTuningSnapshot{}); }
FanatecError FanatecError::notConnected() { return FanatecError(NotConnected{}); }
FanatecError FanatecError::noOutputReport() { return FanatecError(NoOutputReport{}); }

std::string_view FanatecError::kind() const { return kinds[case_.index()]; }

}  // namespace quorvane
