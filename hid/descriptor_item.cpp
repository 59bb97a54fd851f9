#include "hid/descriptor_item.h"

#include <array>

namespace quorvane {
namespace {

constexpr std::uint8_t longItemPrefix = 0xFE;
constexpr std::size_t longItemOverhead = 3;
constexpr std::array<std::size_t, 4> dataSizes{0, 1, 2, 4};

}  // namespace

std::int64_t DescriptorItem::signedValue() const {
  switch (size) {
    case 1:
      return static_cast<std::int8_t>(value);
    case 2:
      return static_cast<std::int16_t>(value);
    case 4:
      return static_cast<std::int32_t>(value);
    default:
      return 0;
  }
}

std::optional<HIDReportSummary::Kind> kindOfMainTag(std::uint8_t tag) {
  switch (tag) {
    case MainTag::input:
      return HIDReportSummary::Kind::input;
    case MainTag::output:
      return HIDReportSummary::Kind::output;
    case MainTag::feature:
      return HIDReportSummary::Kind::feature;
    default:
      return std::nullopt;
  }
}

std::optional<DescriptorItem> DescriptorItems::next() {
  while (position_ < bytes_.size() && bytes_[position_] == longItemPrefix) {
    if (position_ + 1 >= bytes_.size()) return std::nullopt;
    position_ += bytes_[position_ + 1] + longItemOverhead;
  }
  if (position_ >= bytes_.size()) return std::nullopt;

  const std::uint8_t prefix = bytes_[position_];
  DescriptorItem item;
  item.type = static_cast<DescriptorItem::Type>((prefix >> 2U) & 0x3U);
  item.tag = static_cast<std::uint8_t>(prefix >> 4U);
  item.size = dataSizes[prefix & 0x3U];
  for (std::size_t i = 0; i < item.size && position_ + 1 + i < bytes_.size(); ++i) {
    item.value |= static_cast<std::uint32_t>(bytes_[position_ + 1 + i]) << (8 * i);
  }
  position_ += item.size + 1;
  return item;
}

}  // namespace quorvane
