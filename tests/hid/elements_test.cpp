#include "hid/elements.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <utility>
#include <vector>

#include "tests/hid/descriptors.h"

namespace quorvane::elements_test {
namespace {

using Type = HIDElementType;
using Usages = std::vector<HIDUsageRange>;

std::vector<HIDElement> elementsOf(const Bytes& bytes) {
  return HIDElements::parse(bytes).elements;
}

// The only element of a descriptor.
HIDElement elementOf(const Bytes& bytes) {
  const auto elements = elementsOf(bytes);
  EXPECT_EQ(elements.size(), 1U);
  return elements.empty() ? HIDElement{} : elements.front();
}

void expectElement(const HIDElement& got, const HIDElement& wanted) {
  EXPECT_EQ(got.type, wanted.type);
  EXPECT_EQ(got.usagePage, wanted.usagePage);
  EXPECT_EQ(got.reportID, wanted.reportID);
  EXPECT_EQ(got.reportSize, wanted.reportSize);
  EXPECT_EQ(got.reportCount, wanted.reportCount);
  EXPECT_EQ(got.bitOffset, wanted.bitOffset);
  EXPECT_EQ(got.logicalMin, wanted.logicalMin);
  EXPECT_EQ(got.logicalMax, wanted.logicalMax);
  EXPECT_EQ(got.isConstant, wanted.isConstant);
  EXPECT_EQ(got.isArray, wanted.isArray);
  EXPECT_EQ(got.isRelative, wanted.isRelative);
  EXPECT_EQ(got.usages, wanted.usages);
}

void expectElements(const std::vector<HIDElement>& got, const std::vector<HIDElement>& wanted) {
  ASSERT_EQ(got.size(), wanted.size());
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    SCOPED_TRACE(i);
    expectElement(got[i], wanted[i]);
  }
}

// Appends a main item of one eight-bit value, by default an input.
Bytes withEightBits(Bytes before, std::uint8_t flags = 0x02) {
  before.insert(before.end(), {0x75, 0x08, 0x95, 0x01, 0x81, flags});
  return before;
}

TEST(HIDElements, AnEmptyDescriptorHasNone) {
  const HIDElements elements = HIDElements::parse({});
  EXPECT_TRUE(elements.elements.empty());
  EXPECT_FALSE(elements.primaryUsage.has_value());
  EXPECT_FALSE(elements.usesReportIDs);
}

TEST(HIDElements, ReadsAKeyboard) {
  const HIDElements read = HIDElements::parse(keyboard());
  EXPECT_FALSE(read.usesReportIDs);
  EXPECT_EQ(read.primaryUsage, (HIDUsageRange{0x01, 0x06, 0x06}));
  expectElements(read.elements, {
                                    {.type = Type::inputMisc,
                                     .usagePage = 7,
                                     .reportSize = 1,
                                     .reportCount = 8,
                                     .bitOffset = 0,
                                     .logicalMax = 1,
                                     .usages = {{7, 0xE0, 0xE7}}},
                                    {.type = Type::inputMisc,
                                     .usagePage = 7,
                                     .reportSize = 8,
                                     .reportCount = 1,
                                     .bitOffset = 8,
                                     .logicalMax = 1,
                                     .isConstant = true,
                                     .isArray = true,
                                     .usages = {}},
                                    {.type = Type::output,
                                     .usagePage = 8,
                                     .reportSize = 1,
                                     .reportCount = 5,
                                     .bitOffset = 0,
                                     .logicalMax = 1,
                                     .usages = {{8, 1, 5}}},
                                    {.type = Type::output,
                                     .usagePage = 8,
                                     .reportSize = 3,
                                     .reportCount = 1,
                                     .bitOffset = 5,
                                     .logicalMax = 1,
                                     .isConstant = true,
                                     .isArray = true,
                                     .usages = {}},
                                    {.type = Type::inputScanCodes,
                                     .usagePage = 7,
                                     .reportSize = 8,
                                     .reportCount = 6,
                                     .bitOffset = 16,
                                     .logicalMax = 101,
                                     .isArray = true,
                                     .usages = {{7, 0, 101}}},
                                });
}

TEST(HIDElements, ReadsAJoystick) {
  const HIDElements read = HIDElements::parse(joystick());
  EXPECT_TRUE(read.usesReportIDs);
  EXPECT_EQ(read.primaryUsage, (HIDUsageRange{0x01, 0x04, 0x04}));
  expectElements(read.elements, {
                                    {.type = Type::inputAxis,
                                     .usagePage = 1,
                                     .reportID = 1,
                                     .reportSize = 16,
                                     .reportCount = 1,
                                     .bitOffset = 0,
                                     .logicalMin = -32768,
                                     .logicalMax = 32767,
                                     .usages = {{1, 0x30, 0x30}}},
                                    {.type = Type::inputButton,
                                     .usagePage = 9,
                                     .reportID = 1,
                                     .reportSize = 1,
                                     .reportCount = 10,
                                     .bitOffset = 16,
                                     .logicalMax = 1,
                                     .usages = {{9, 1, 10}}},
                                    {.type = Type::inputMisc,
                                     .usagePage = 9,
                                     .reportID = 1,
                                     .reportSize = 6,
                                     .reportCount = 1,
                                     .bitOffset = 26,
                                     .logicalMax = 1,
                                     .isConstant = true,
                                     .usages = {}},
                                    {.type = Type::inputAxis,
                                     .usagePage = 1,
                                     .reportID = 1,
                                     .reportSize = 8,
                                     .reportCount = 1,
                                     .bitOffset = 32,
                                     .logicalMin = -127,
                                     .logicalMax = 127,
                                     .isRelative = true,
                                     .usages = {{1, 0x37, 0x37}}},
                                    {.type = Type::output,
                                     .usagePage = 0xFF00,
                                     .reportID = 2,
                                     .reportSize = 8,
                                     .reportCount = 7,
                                     .bitOffset = 0,
                                     .logicalMax = 255,
                                     .usages = {{0xFF00, 1, 1}}},
                                    {.type = Type::feature,
                                     .usagePage = 0xFF00,
                                     .reportID = 3,
                                     .reportSize = 8,
                                     .reportCount = 3,
                                     .bitOffset = 0,
                                     .logicalMax = 255,
                                     .usages = {{0xFF00, 2, 2}}},
                                });
}

TEST(HIDElements, CountsBitsForEachReportAndKind) {
  const Bytes bytes{0x75, 0x08, 0x95, 0x02, 0x85, 0x01, 0x81, 0x02,  // input 1 at 0
                    0x91, 0x02,                                      // output 1 at 0
                    0xB1, 0x02,                                      // feature 1 at 0
                    0x85, 0x02, 0x81, 0x02,                          // input 2 at 0
                    0x85, 0x01, 0x81, 0x02,                          // input 1 at 16
                    0x91, 0x02,                                      // output 1 at 16
                    0x95, 0x01, 0x81, 0x02, 0x81, 0x02};             // input 1 at 32 and 40
  std::vector<std::pair<std::uint32_t, std::uint64_t>> places;
  for (const HIDElement& element : elementsOf(bytes)) {
    places.emplace_back(element.reportID, element.bitOffset);
  }
  EXPECT_EQ(places,
            (decltype(places){{1, 0}, {1, 0}, {1, 0}, {2, 0}, {1, 16}, {1, 16}, {1, 32}, {1, 40}}));
}

TEST(HIDElements, ReadsTheFlagsOfAMainItem) {
  for (unsigned flags = 0; flags <= 0xFF; ++flags) {
    const HIDElement element = elementOf(withEightBits({}, static_cast<std::uint8_t>(flags)));
    EXPECT_EQ(element.isConstant, flags % 2 == 1) << flags;
    EXPECT_EQ(element.isArray, flags / 2 % 2 == 0) << flags;
    EXPECT_EQ(element.isRelative, flags / 4 % 2 == 1) << flags;
  }
}

TEST(HIDElements, TellsInputsApartByTheirFirstUsage) {
  struct Case {
    std::uint8_t page;
    std::uint8_t usage;
    Type type;
  };
  constexpr std::array cases{
      Case{0x01, 0x2F, Type::inputMisc},   Case{0x01, 0x30, Type::inputAxis},
      Case{0x01, 0x35, Type::inputAxis},   Case{0x01, 0x38, Type::inputAxis},
      Case{0x01, 0x39, Type::inputMisc},   Case{0x02, 0x30, Type::inputMisc},
      Case{0x09, 0x01, Type::inputButton}, Case{0x09, 0x30, Type::inputButton},
      Case{0x0C, 0xE9, Type::inputMisc},
  };
  for (const Case& c : cases) {
    const Bytes variable = withEightBits({0x05, c.page, 0x09, c.usage});
    EXPECT_EQ(elementOf(variable).type, c.type) << int{c.page} << " " << int{c.usage};
    const Bytes array = withEightBits({0x05, c.page, 0x09, c.usage}, 0x00);
    EXPECT_EQ(elementOf(array).type, Type::inputScanCodes);
  }
  EXPECT_EQ(elementOf(withEightBits({0x05, 0x09})).type, Type::inputMisc);
  EXPECT_EQ(elementOf(withEightBits({0x05, 0x09, 0x09, 0x01}, 0x03)).type, Type::inputButton);
}

TEST(HIDElements, KnowsTheKindOfEveryType) {
  using Kind = HIDReportSummary::Kind;
  for (std::uint32_t value = 0; value <= 1024; ++value) {
    std::optional<Kind> kind;
    if (value >= 1 && value <= 4) kind = Kind::input;
    if (value == 129) kind = Kind::output;
    if (value == 257) kind = Kind::feature;
    EXPECT_EQ(reportKind(static_cast<Type>(value)), kind) << value;
  }
}

TEST(HIDElements, ReadsLogicalExtentsWithTheirSign) {
  struct Case {
    Bytes items;
    std::int64_t min;
    std::int64_t max;
  };
  const std::vector<Case> cases{
      {{}, 0, 0},
      {{0x15, 0x00, 0x25, 0x01}, 0, 1},
      {{0x15, 0x81, 0x25, 0x7F}, -127, 127},
      {{0x15, 0xFF, 0x25, 0xFF}, -1, -1},
      // The maximum is unsigned unless the minimum is negative.
      {{0x15, 0x00, 0x25, 0xFF}, 0, 255},
      {{0x14, 0x26, 0xFF, 0xFF}, 0, 65535},
      {{0x14, 0x27, 0xFF, 0xFF, 0xFF, 0xFF}, 0, 4294967295},
      {{0x15, 0x01, 0x25, 0x80}, 1, 128},
      {{0x16, 0x00, 0x80, 0x26, 0xFF, 0x7F}, -32768, 32767},
      {{0x17, 0x00, 0x00, 0x00, 0x80, 0x27, 0xFF, 0xFF, 0xFF, 0x7F}, -2147483648, 2147483647},
      // The order of the two items does not matter.
      {{0x25, 0xFE, 0x15, 0xF0}, -16, -2},
      {{0x25, 0xFE, 0x15, 0x00}, 0, 254},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(hexDump(c.items));
    const HIDElement element = elementOf(withEightBits(c.items));
    EXPECT_EQ(element.logicalMin, c.min);
    EXPECT_EQ(element.logicalMax, c.max);
  }
}

TEST(HIDElements, KeepsUsagesInOrder) {
  const std::vector<std::pair<Bytes, Usages>> cases{
      {{}, {}},
      {{0x05, 0x01, 0x09, 0x31, 0x09, 0x30}, {{1, 0x31, 0x31}, {1, 0x30, 0x30}}},
      {{0x05, 0x09, 0x19, 0x01, 0x29, 0x0A}, {{9, 1, 10}}},
      {{0x05, 0x09, 0x19, 0x05, 0x29, 0x05}, {{9, 5, 5}}},
      {{0x05, 0x01, 0x19, 0x30, 0x29, 0x32, 0x09, 0x39, 0x19, 0x40, 0x29, 0x41},
       {{1, 0x30, 0x32}, {1, 0x39, 0x39}, {1, 0x40, 0x41}}},
      {{0x06, 0x00, 0xFF, 0x0A, 0x34, 0x12}, {{0xFF00, 0x1234, 0x1234}}},
      {{0x08}, {{0, 0, 0}}},
  };
  for (const auto& [items, usages] : cases) {
    EXPECT_EQ(elementOf(withEightBits(items)).usages, usages) << hexDump(items);
  }
}

TEST(HIDElements, AShortUsageTakesThePageInForceAtTheMainItem) {
  EXPECT_EQ(elementOf(withEightBits({0x05, 0x01, 0x09, 0x30, 0x05, 0x09})).usages,
            (Usages{{9, 0x30, 0x30}}));
}

TEST(HIDElements, AFourByteUsageCarriesItsOwnPage) {
  EXPECT_EQ(elementOf(withEightBits({0x05, 0x01, 0x0B, 0x02, 0x00, 0x0C, 0x00})).usages,
            (Usages{{0x0C, 2, 2}}));
  const Bytes range{0x05, 0x01, 0x1B, 1, 0, 0x09, 0, 0x2B, 8, 0, 0x09, 0};
  EXPECT_EQ(elementOf(withEightBits(range)).usages, (Usages{{9, 1, 8}}));
  EXPECT_EQ(elementOf(withEightBits({0x05, 0x01, 0x0B, 0xFF, 0xFF, 0xFF, 0xFF})).usages,
            (Usages{{0xFFFF, 0xFFFF, 0xFFFF}}));
}

TEST(HIDElements, ARangeThatIsNoneIsLeftOut) {
  const std::vector<Bytes> cases{
      {0x29, 0x0A},                          // no minimum
      {0x19, 0x01},                          // no maximum
      {0x19, 0x0A, 0x29, 0x01},              // backwards
      {0x29, 0x0A, 0x19, 0x01},              // the wrong way round
      {0x19, 0x0A, 0x29, 0x01, 0x29, 0x20},  // the minimum is used up
  };
  for (const Bytes& items : cases) {
    EXPECT_TRUE(elementOf(withEightBits(items)).usages.empty()) << hexDump(items);
  }
}

TEST(HIDElements, LocalItemsEndWithTheMainItem) {
  const Bytes bytes = joined({{0x05, 0x09, 0x75, 0x01, 0x95, 0x01},
                              {0x09, 0x01, 0x81, 0x02},  // usage 1
                              {0x81, 0x02},              // none
                              {0x19, 0x01, 0x81, 0x02},  // half a range
                              {0x29, 0x05, 0x81, 0x02},  // and not its other half
                              {0x09, 0x07, 0xA1, 0x00, 0x81, 0x02},
                              {0x09, 0x08, 0xC0, 0x81, 0x02}});
  std::vector<Usages> usages;
  for (const HIDElement& element : elementsOf(bytes)) usages.push_back(element.usages);
  EXPECT_EQ(usages, (std::vector<Usages>{{{9, 1, 1}}, {}, {}, {}, {}, {}}));
}

TEST(HIDElements, PopBringsBackEveryGlobalThatPushKept) {
  const Bytes bytes = joined({{0x05, 0x01, 0x15, 0xFF, 0x25, 0x05, 0x75, 0x08, 0x95, 0x02},
                              {0x85, 0x01},
                              {0xA4},
                              {0x05, 0x09, 0x15, 0x00, 0x25, 0x01, 0x75, 0x01, 0x95, 0x04},
                              {0x85, 0x02},
                              {0x81, 0x02},
                              {0xB4},
                              {0x81, 0x02}});
  expectElements(elementsOf(bytes), {{.usagePage = 9,
                                      .reportID = 2,
                                      .reportSize = 1,
                                      .reportCount = 4,
                                      .logicalMax = 1,
                                      .usages = {}},
                                     {.usagePage = 1,
                                      .reportID = 1,
                                      .reportSize = 8,
                                      .reportCount = 2,
                                      .logicalMin = -1,
                                      .logicalMax = 5,
                                      .usages = {}}});
}

TEST(HIDElements, PushesNest) {
  Bytes bytes{0x95, 0x01};
  constexpr std::uint8_t depth = 64;
  for (std::uint8_t size = 1; size <= depth; ++size) {
    bytes.insert(bytes.end(), {0x75, size, 0xA4});
  }
  bytes.insert(bytes.end(), {0x75, 0xEE});
  for (std::uint8_t size = depth; size >= 1; --size) {
    bytes.insert(bytes.end(), {0xB4, 0x81, 0x02});
  }
  const auto elements = elementsOf(bytes);
  ASSERT_EQ(elements.size(), depth);
  for (std::size_t i = 0; i < depth; ++i) EXPECT_EQ(elements[i].reportSize, depth - i);
}

TEST(HIDElements, APopWithoutAPushChangesNothing) {
  const HIDElement element = elementOf({0xB4, 0x75, 0x08, 0x95, 0x02, 0xB4, 0xB4, 0x81, 0x02});
  EXPECT_EQ(element.reportSize, 8U);
  EXPECT_EQ(element.reportCount, 2U);
}

TEST(HIDElements, PushesWithoutEndAreBounded) {
  Bytes bytes(4096, 0xA4);
  bytes.insert(bytes.end(), 4096, 0xB4);
  EXPECT_EQ(elementOf(withEightBits(bytes)).reportSize, 8U);
}

TEST(HIDElements, ThePrimaryUsageIsThatOfTheFirstTopLevelCollection) {
  struct Case {
    Bytes bytes;
    std::optional<HIDUsageRange> usage;
  };
  const std::vector<Case> cases{
      {{0x05, 0x01, 0x09, 0x04, 0xA1, 0x01, 0xC0}, HIDUsageRange{1, 4, 4}},
      {{0x05, 0x01, 0x09, 0x04, 0xA1, 0x01}, HIDUsageRange{1, 4, 4}},
      {{0x0B, 0x05, 0x00, 0x01, 0x00, 0xA1, 0x01, 0xC0}, HIDUsageRange{1, 5, 5}},
      {{0x06, 0x00, 0xFF, 0x09, 0x01, 0xA1, 0x01, 0xC0}, HIDUsageRange{0xFF00, 1, 1}},
      // Only the first top-level collection counts.
      {{0x05, 0x01, 0x09, 0x04, 0xA1, 0x01, 0x09, 0x05, 0xA1, 0x00, 0xC0, 0xC0},
       HIDUsageRange{1, 4, 4}},
      {{0x05, 0x01, 0x09, 0x04, 0xA1, 0x01, 0xC0, 0x09, 0x05, 0xA1, 0x01, 0xC0},
       HIDUsageRange{1, 4, 4}},
      {{0xA1, 0x01, 0x09, 0x05, 0xA1, 0x00, 0xC0, 0xC0}, std::nullopt},
      {{0xA1, 0x01, 0xC0, 0x05, 0x01, 0x09, 0x04, 0xA1, 0x01, 0xC0}, std::nullopt},
      // End items without a collection do not change the depth.
      {{0xC0, 0xC0, 0x05, 0x01, 0x09, 0x04, 0xA1, 0x01}, HIDUsageRange{1, 4, 4}},
      {{0x05, 0x01, 0x09, 0x30, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02}, std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(HIDElements::parse(c.bytes).primaryUsage, c.usage) << hexDump(c.bytes);
  }
}

TEST(HIDElements, AnyReportIDItemMeansThatReportIDsAreUsed) {
  EXPECT_TRUE(HIDElements::parse(Bytes{0x85, 0x01}).usesReportIDs);
  EXPECT_TRUE(HIDElements::parse(Bytes{0x85, 0x00}).usesReportIDs);
  EXPECT_TRUE(HIDElements::parse(Bytes{0xA4, 0x85, 0x01, 0xB4}).usesReportIDs);
  EXPECT_FALSE(HIDElements::parse(Bytes{0x75, 0x85}).usesReportIDs);
}

TEST(HIDElements, UsageAtCountsThroughTheRanges) {
  HIDElement element;
  element.usages = {{1, 0x30, 0x32}, {1, 0x39, 0x39}, {9, 1, 2}};
  const Usages wanted{{1, 0x30, 0x30}, {1, 0x31, 0x31}, {1, 0x32, 0x32},
                      {1, 0x39, 0x39}, {9, 1, 1},       {9, 2, 2}};
  for (const bool array : {false, true}) {
    element.isArray = array;
    for (std::size_t i = 0; i < wanted.size(); ++i) EXPECT_EQ(element.usageAt(i), wanted[i]) << i;
  }
}

TEST(HIDElements, VariablesRepeatTheirLastUsage) {
  HIDElement element;
  element.usages = {{9, 1, 2}};
  for (const std::uint64_t index : {std::uint64_t{2}, std::uint64_t{3}, std::uint64_t{1} << 40U,
                                    std::numeric_limits<std::uint64_t>::max()}) {
    EXPECT_EQ(element.usageAt(index), (HIDUsageRange{9, 2, 2}));
    element.isArray = true;
    EXPECT_EQ(element.usageAt(index), std::nullopt);
    element.isArray = false;
  }
}

TEST(HIDElements, WithoutUsagesThereIsNone) {
  HIDElement element;
  for (const bool array : {false, true}) {
    element.isArray = array;
    EXPECT_EQ(element.usageAt(0), std::nullopt);
    EXPECT_EQ(element.usageAt(7), std::nullopt);
  }
}

TEST(HIDElements, UsageAtReadsTheWidestRange) {
  HIDElement element;
  element.usages = {{9, 0, 0xFFFFFFFF}, {1, 5, 5}};
  EXPECT_EQ(element.usageAt(0xFFFFFFFF), (HIDUsageRange{9, 0xFFFFFFFF, 0xFFFFFFFF}));
  EXPECT_EQ(element.usageAt(0x100000000), (HIDUsageRange{1, 5, 5}));
}

TEST(HIDElements, ACutDescriptorGivesTheElementsBeforeTheCut) {
  for (const DescriptorText& text : {keyboardText(), joystickText()}) {
    const Bytes whole = joined(text);
    const auto all = elementsOf(whole);
    for (std::size_t length = 0; length <= whole.size(); ++length) {
      SCOPED_TRACE(length);
      // A main item counts as soon as its first byte is there. Its flags may be missing.
      std::size_t begun = 0;
      std::size_t complete = 0;
      std::size_t position = 0;
      for (const Bytes& item : text) {
        if (declaresValues(item)) {
          if (position < length) ++begun;
          if (position + item.size() <= length) ++complete;
        }
        position += item.size();
      }
      const auto cut =
          elementsOf({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)});
      ASSERT_EQ(cut.size(), begun);
      for (std::size_t i = 0; i < complete; ++i) expectElement(cut[i], all[i]);
      if (begun > complete) {
        EXPECT_EQ(cut.back().bitOffset, all[complete].bitOffset);
        EXPECT_TRUE(cut.back().isArray);
      }
    }
  }
}

TEST(HIDElements, MeaninglessBytesDeclareNothing) {
  for (const std::uint8_t value : Bytes{0x00, 0x85, 0xA1, 0xC0, 0xFE, 0xFF}) {
    EXPECT_TRUE(elementsOf(Bytes(4096, value)).empty()) << int{value};
  }
}

TEST(HIDElements, LongItemsAreSkipped) {
  EXPECT_TRUE(elementsOf({0xFE}).empty());
  EXPECT_TRUE(elementsOf({0xFE, 0x02, 0x99, 0x81, 0x02}).empty());
  EXPECT_EQ(elementsOf({0xFE, 0x02, 0x99, 0x81, 0x02, 0x81, 0x02}).size(), 1U);
  EXPECT_EQ(elementsOf({0x81, 0x02, 0xFE}).size(), 1U);
}

TEST(HIDElements, GiantSizesAndCountsTakeNoMemory) {
  Bytes bytes{0x77, 0xFF, 0xFF, 0xFF, 0xFF, 0x97, 0xFF, 0xFF, 0xFF, 0xFF};
  for (int i = 0; i < 1000; ++i) bytes.insert(bytes.end(), {0x81, 0x02});
  const auto elements = elementsOf(bytes);
  ASSERT_EQ(elements.size(), 1000U);
  for (const HIDElement& element : elements) {
    EXPECT_EQ(element.reportSize, 0xFFFFFFFF);
    EXPECT_EQ(element.reportCount, 0xFFFFFFFF);
    EXPECT_TRUE(element.usages.empty());
  }
  EXPECT_EQ(elements[1].bitOffset, 0xFFFFFFFE00000001U);
}

TEST(HIDElements, ATotalBeyondEveryReportStaysThere) {
  // Four inputs of 2^31 x 2^31 bits: 2^64, which must not begin at 0 again.
  Bytes bytes{0x77, 0x00, 0x00, 0x00, 0x80, 0x97, 0x00, 0x00, 0x00, 0x80};
  for (int i = 0; i < 6; ++i) bytes.insert(bytes.end(), {0x81, 0x02});
  const auto elements = HIDElements::parse(bytes).elements;
  ASSERT_EQ(elements.size(), 6U);
  EXPECT_EQ(elements[4].bitOffset, std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(elements[5].bitOffset, std::numeric_limits<std::uint64_t>::max());
}

TEST(HIDElements, MemoryIsBoundedByTheDescriptor) {
  // Wide usage ranges, and more usages than an element could need.
  Bytes bytes;
  for (int i = 0; i < 800; ++i) bytes.insert(bytes.end(), {0x18, 0x2A, 0xFF, 0xFF, 0x08});
  const HIDElement element = elementOf(withEightBits(bytes));
  EXPECT_EQ(element.usages.size(), 1600U);
  // The following elements do not repeat them.
  for (int i = 0; i < 1000; ++i) bytes.push_back(0x80);
  std::size_t usages = 0;
  for (const HIDElement& one : elementsOf(bytes)) usages += one.usages.size();
  EXPECT_EQ(usages, 1600U);
}

TEST(HIDElements, RandomBytesDeclareAtMostOneElementAByte) {
  std::mt19937 random(1);
  constexpr std::array<std::uint8_t, 16> likely{0x81, 0x91, 0xB1, 0x75, 0x95, 0x85, 0x05, 0x09,
                                                0x19, 0x29, 0xA4, 0xB4, 0xA1, 0xC0, 0x15, 0x25};
  for (int round = 0; round < 5000; ++round) {
    Bytes bytes(random() % 200);
    for (std::uint8_t& byte : bytes) {
      byte = random() % 2 == 0 ? likely[random() % likely.size()]
                               : static_cast<std::uint8_t>(random());
    }
    const auto elements = elementsOf(bytes);
    ASSERT_LE(elements.size(), bytes.size());
    std::size_t usages = 0;
    for (const HIDElement& element : elements) {
      usages += element.usages.size();
      for (const HIDUsageRange& range : element.usages) ASSERT_LE(range.first, range.last);
    }
    ASSERT_LE(usages, bytes.size());
  }
}

}  // namespace
}  // namespace quorvane::elements_test
