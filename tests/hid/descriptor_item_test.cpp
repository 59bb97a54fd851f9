#include "hid/descriptor_item.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "tests/hid/descriptors.h"

namespace quorvane::descriptor_item_test {
namespace {

using Type = DescriptorItem::Type;

std::vector<DescriptorItem> itemsOf(const Bytes& bytes) {
  std::vector<DescriptorItem> items;
  DescriptorItems walk(bytes);
  while (const auto item = walk.next()) items.push_back(*item);
  return items;
}

std::vector<std::uint32_t> valuesOf(const Bytes& bytes) {
  std::vector<std::uint32_t> values;
  for (const DescriptorItem& item : itemsOf(bytes)) values.push_back(item.value);
  return values;
}

TEST(DescriptorItems, AnEmptyDescriptorHasNone) {
  DescriptorItems walk(ByteView{});
  EXPECT_FALSE(walk.next().has_value());
  EXPECT_FALSE(walk.next().has_value());
}

TEST(DescriptorItems, ReadsEveryPrefix) {
  constexpr std::array<std::uint32_t, 4> values{0, 0x11, 0x2211, 0x44332211};
  constexpr std::array<std::size_t, 4> sizes{0, 1, 2, 4};
  for (unsigned prefix = 0; prefix <= 0xFF; ++prefix) {
    if (prefix == 0xFE) continue;
    SCOPED_TRACE(prefix);
    const Bytes bytes{static_cast<std::uint8_t>(prefix), 0x11, 0x22, 0x33, 0x44};
    DescriptorItems walk(bytes);
    const auto item = walk.next();
    ASSERT_TRUE(item.has_value());
    EXPECT_EQ(item->tag, prefix / 16);
    EXPECT_EQ(static_cast<unsigned>(item->type), prefix / 4 % 4);
    EXPECT_EQ(item->size, sizes[prefix % 4]);
    EXPECT_EQ(item->value, values[prefix % 4]);
  }
}

TEST(DescriptorItems, StepsOverTheDataOfEachItem) {
  const auto items = itemsOf({0xC0, 0x05, 0x01, 0x06, 0x00, 0xFF, 0x27, 1, 2, 3, 4, 0x81, 0x02});
  ASSERT_EQ(items.size(), 5U);
  EXPECT_EQ(items[0].tag, MainTag::endCollection);
  EXPECT_EQ(items[1].value, 0x01U);
  EXPECT_EQ(items[2].value, 0xFF00U);
  EXPECT_EQ(items[3].value, 0x04030201U);
  EXPECT_EQ(items[4].type, Type::main);
  EXPECT_EQ(items[4].tag, MainTag::input);
}

TEST(DescriptorItems, DataBeyondTheEndCountsAsZero) {
  const std::vector<std::pair<Bytes, std::uint32_t>> cases{
      {{0x75}, 0},
      {{0x76}, 0},
      {{0x76, 0x11}, 0x11},
      {{0x77}, 0},
      {{0x77, 0x11}, 0x11},
      {{0x77, 0x11, 0x22}, 0x2211},
      {{0x77, 0x11, 0x22, 0x33}, 0x332211},
  };
  for (const auto& [bytes, value] : cases) EXPECT_EQ(valuesOf(bytes), (std::vector{value}));
}

TEST(DescriptorItems, SkipsLongItems) {
  const std::vector<std::pair<Bytes, std::vector<std::uint32_t>>> cases{
      {{0xFE, 0x00, 0x99, 0x05, 0x01}, {1}},
      {{0xFE, 0x02, 0x99, 0xAA, 0xBB, 0x05, 0x01}, {1}},
      {{0x05, 0x01, 0xFE, 0x01, 0x99, 0xAA, 0x05, 0x02}, {1, 2}},
      {{0xFE, 0x00, 0x99, 0xFE, 0x00, 0x99, 0x05, 0x01}, {1}},
      {{0xFE, 0x01, 0x99, 0xFE, 0x05, 0x01}, {1}},
  };
  for (const auto& [bytes, values] : cases) EXPECT_EQ(valuesOf(bytes), values);
}

TEST(DescriptorItems, ALongItemThatIsCutShortEndsTheWalk) {
  const std::vector<std::pair<Bytes, std::vector<std::uint32_t>>> cases{
      {{0xFE}, {}},
      {{0x05, 0x01, 0xFE}, {1}},
      {{0xFE, 0x00}, {}},
      {{0xFE, 0x00, 0x99}, {}},
      {{0xFE, 0x02, 0x99, 0x05}, {}},
      {{0xFE, 0xFF, 0x99, 0x05, 0x01}, {}},
      {{0xFE, 0x00, 0x99, 0xFE}, {}},
  };
  for (const auto& [bytes, values] : cases) EXPECT_EQ(valuesOf(bytes), values);
}

TEST(DescriptorItems, ADescriptorOfOneByteRepeatedEnds) {
  for (unsigned value = 0; value <= 0xFF; ++value) {
    const Bytes bytes(4096, static_cast<std::uint8_t>(value));
    constexpr std::array<std::size_t, 4> steps{1, 2, 3, 5};
    const std::size_t step = steps[value % 4];
    const std::size_t count = value == 0xFE ? 0 : (bytes.size() + step - 1) / step;
    EXPECT_EQ(itemsOf(bytes).size(), count) << value;
  }
}

TEST(DescriptorItems, ACutDescriptorHasTheItemsThatBeginBeforeTheCut) {
  for (const DescriptorText& text : {keyboardText(), joystickText()}) {
    const Bytes whole = joined(text);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
      std::size_t begun = 0;
      std::size_t position = 0;
      for (const Bytes& item : text) {
        if (position < length) ++begun;
        position += item.size();
      }
      const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
      EXPECT_EQ(itemsOf(cut).size(), begun) << length;
    }
  }
}

TEST(DescriptorItem, ReadsItsValueAsASignedNumberOfItsSize) {
  const std::vector<std::pair<Bytes, std::int64_t>> cases{
      {{0x14}, 0},
      {{0x15, 0x00}, 0},
      {{0x15, 0x7F}, 127},
      {{0x15, 0x80}, -128},
      {{0x15, 0xFF}, -1},
      {{0x16, 0xFF, 0x00}, 255},
      {{0x16, 0xFF, 0x7F}, 32767},
      {{0x16, 0x00, 0x80}, -32768},
      {{0x16, 0xFF, 0xFF}, -1},
      {{0x17, 0xFF, 0xFF, 0x00, 0x00}, 65535},
      {{0x17, 0xFF, 0xFF, 0xFF, 0x7F}, 2147483647},
      {{0x17, 0x00, 0x00, 0x00, 0x80}, -2147483648},
      {{0x17, 0xFF, 0xFF, 0xFF, 0xFF}, -1},
  };
  for (const auto& [bytes, value] : cases) {
    EXPECT_EQ(itemsOf(bytes).at(0).signedValue(), value) << hexDump(bytes);
  }
}

TEST(MainTag, ThreeOfSixteenDeclareAReport) {
  for (std::uint8_t tag = 0; tag < 16; ++tag) {
    std::optional<HIDReportSummary::Kind> kind;
    if (tag == 8) kind = HIDReportSummary::Kind::input;
    if (tag == 9) kind = HIDReportSummary::Kind::output;
    if (tag == 11) kind = HIDReportSummary::Kind::feature;
    EXPECT_EQ(kindOfMainTag(tag), kind) << int{tag};
  }
}

}  // namespace
}  // namespace quorvane::descriptor_item_test
