#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "protocol/tuning_parameter.h"
#include "support/bytes.h"
#include "support/clock.h"

namespace quorvane {

// One received tuning report: the whole menu of the active set, as received. Immutable.
class TuningSnapshot {
 public:
  static constexpr std::uint8_t reportID = 0xFF;
  static constexpr std::uint8_t subID = 0x03;
  static constexpr std::size_t length = 64;
  static constexpr std::size_t statusOffset = 2;

  // None unless the bytes are a tuning report: 64 bytes that begin with report ID and sub-ID.
  static std::optional<TuningSnapshot> fromReport(ByteView report,
                                                  WallClock::time_point receivedAt);

  // The 64 bytes, report ID first.
  const Bytes& raw() const { return raw_; }
  WallClock::time_point receivedAt() const { return receivedAt_; }

  // The active set: 1...5 in practice, 0...15 possible.
  int slot() const { return raw_[statusOffset] & 0x0F; }

  // The mode bit is set in the standard menu.
  bool isAdvancedMode() const { return (raw_[statusOffset] & 0x80) == 0; }

  // "advanced" or "standard".
  std::string_view modeName() const { return isAdvancedMode() ? "advanced" : "standard"; }

  // The display name of the active set: "A (Auto Setup)" or "C (Custom)" in the standard menu, the
  // set's number in the advanced one.
  std::string setName() const;

  // The parameter's byte. For `slot`, the whole status byte, including the mode bit.
  std::uint8_t rawValue(TuningParameter parameter) const { return raw_[parameter.offset()]; }

  // The display value in this product's menu.
  std::int64_t value(TuningParameter parameter,
                     const std::optional<FanatecProduct>& product) const {
    return parameter.decode(rawValue(parameter), product);
  }

  // Like value(), but for `slot` the number of the set.
  std::int64_t settingValue(TuningParameter parameter,
                            const std::optional<FanatecProduct>& product) const {
    return parameter == TuningParameter::slot ? slot() : value(parameter, product);
  }

  std::string hexDump() const { return quorvane::hexDump(raw_); }

  bool operator==(const TuningSnapshot&) const = default;

 private:
  TuningSnapshot(ByteView report, WallClock::time_point receivedAt);

  Bytes raw_;
  WallClock::time_point receivedAt_;
};

}  // namespace quorvane
