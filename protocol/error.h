#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <variant>

#include "protocol/tuning_parameter.h"

namespace quorvane {

// Any error in the communication with a device. errorDescription() is the message for the user.
class FanatecError : public std::exception {
 public:
  struct OutOfRange {
    TuningParameter parameter;
    std::int64_t value;
    ClosedRange allowed;
    bool operator==(const OutOfRange&) const = default;
  };
  struct NotAvailable {
    TuningParameter parameter;
    std::string product;  // display name
    bool operator==(const NotAvailable&) const = default;
  };
  struct Timeout {
    std::string waitedFor;
    bool operator==(const Timeout&) const = default;
  };
  struct IoFailed {
    std::string detail;
    bool operator==(const IoFailed&) const = default;
  };
  struct InvalidReport {
    std::string detail;
    bool operator==(const InvalidReport&) const = default;
  };
  struct WriteIgnored {
    TuningParameter parameter;
    std::int64_t readBack;  // display units
    bool operator==(const WriteIgnored&) const = default;
  };
  struct NoTuningSnapshot {
    bool operator==(const NoTuningSnapshot&) const = default;
  };
  struct NotConnected {
    bool operator==(const NotConnected&) const = default;
  };
  struct NoOutputReport {
    bool operator==(const NoOutputReport&) const = default;
  };
  using Case = std::variant<OutOfRange, NotAvailable, Timeout, IoFailed, InvalidReport,
                            WriteIgnored, NoTuningSnapshot, NotConnected, NoOutputReport>;

  static FanatecError outOfRange(TuningParameter parameter, std::int64_t value,
                                 ClosedRange allowed);
  static FanatecError notAvailable(TuningParameter parameter, std::string product);
  static FanatecError timeout(std::string waitedFor);
  static FanatecError ioFailed(std::string detail, std::uint32_t openCode = 0);
  static FanatecError invalidReport(std::string detail);
  static FanatecError writeIgnored(TuningParameter parameter, std::int64_t readBack);
  static FanatecError noTuningSnapshot();
  static FanatecError notConnected();
  static FanatecError noOutputReport();

  explicit FanatecError(Case value);

  const Case& value() const { return case_; }

  // The case's name: "outOfRange", "timeout", ...
  std::string_view kind() const;

  // Why the platform could not open the device (a HIDReturnCode); 0 for any other error.
  std::uint32_t openCode() const { return openCode_; }

  const std::string& errorDescription() const { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

  bool operator==(const FanatecError& other) const { return case_ == other.case_; }

 private:
  Case case_;
  std::string description_;
  std::uint32_t openCode_ = 0;
};

}  // namespace quorvane
