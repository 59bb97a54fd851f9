#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "support/bytes.h"
#include "support/clock.h"

namespace quorvane {

// One received identity ("system") report: which base this is, and which steering wheel and button
// module are attached. Immutable; keeps the bytes as received.
class IdentityReport {
 public:
  static constexpr std::uint8_t reportID = 0xFF;
  static constexpr std::uint8_t subID = 0x08;
  static constexpr std::size_t length = 64;
  static constexpr std::size_t baseTypeOffset = 2;
  static constexpr std::size_t layoutOffset = 3;  // 0: the base type byte is valid
  static constexpr std::size_t wheelOffset = 24;
  static constexpr std::size_t moduleOffset = 31;

  // None unless the bytes are an identity report: 64 bytes that begin with report ID and sub-ID.
  static std::optional<IdentityReport> fromReport(ByteView report,
                                                  WallClock::time_point receivedAt);

  const Bytes& raw() const { return raw_; }
  WallClock::time_point receivedAt() const { return receivedAt_; }

  // The base's type code, which is not the USB product ID; none in the extended layout.
  std::optional<std::int64_t> baseType() const;
  std::uint8_t wheelCode() const { return raw_[wheelOffset]; }
  std::uint8_t moduleCode() const { return raw_[moduleOffset]; }

  // Display names; for unknown codes, a text with the code.
  std::string baseName() const;
  std::string wheelName() const;
  std::string moduleName() const;

  std::string hexDump() const { return quorvane::hexDump(raw_); }

  static const std::map<std::int64_t, std::string_view>& baseNames();
  static const std::map<std::int64_t, std::string_view>& wheelNames();

  bool operator==(const IdentityReport&) const = default;

 private:
  IdentityReport(ByteView report, WallClock::time_point receivedAt);

  Bytes raw_;
  WallClock::time_point receivedAt_;
};

}  // namespace quorvane
