#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "hid/report_summary.h"
#include "support/bytes.h"

namespace quorvane {

// One short item of a report descriptor.
struct DescriptorItem {
  enum class Type : std::uint8_t { main = 0, global = 1, local = 2, reserved = 3 };

  Type type = Type::reserved;
  std::uint8_t tag = 0;
  std::size_t size = 0;     // data bytes according to the prefix: 0, 1, 2 or 4
  std::uint32_t value = 0;  // unsigned; bytes missing at the end of the descriptor count as 0

  // The value as a number of `size` bytes in two's complement.
  std::int64_t signedValue() const;
};

// The tags used here, by item type.
namespace MainTag {
inline constexpr std::uint8_t input = 0x8;
inline constexpr std::uint8_t output = 0x9;
inline constexpr std::uint8_t collection = 0xA;
inline constexpr std::uint8_t feature = 0xB;
inline constexpr std::uint8_t endCollection = 0xC;
}  // namespace MainTag

namespace GlobalTag {
inline constexpr std::uint8_t usagePage = 0x0;
inline constexpr std::uint8_t logicalMinimum = 0x1;
inline constexpr std::uint8_t logicalMaximum = 0x2;
inline constexpr std::uint8_t reportSize = 0x7;
inline constexpr std::uint8_t reportID = 0x8;
inline constexpr std::uint8_t reportCount = 0x9;
inline constexpr std::uint8_t push = 0xA;
inline constexpr std::uint8_t pop = 0xB;
}  // namespace GlobalTag

namespace LocalTag {
inline constexpr std::uint8_t usage = 0x0;
inline constexpr std::uint8_t usageMinimum = 0x1;
inline constexpr std::uint8_t usageMaximum = 0x2;
}  // namespace LocalTag

// The report kind that a main item declares; none for collections and reserved tags.
std::optional<HIDReportSummary::Kind> kindOfMainTag(std::uint8_t tag);

// Iterates over the short items of a descriptor. Skips long items; one without its length byte ends
// the iteration.
class DescriptorItems {
 public:
  explicit DescriptorItems(ByteView descriptor) : bytes_(descriptor) {}

  // The next item; none at the end.
  std::optional<DescriptorItem> next();

 private:
  ByteView bytes_;
  std::size_t position_ = 0;
};

}  // namespace quorvane
