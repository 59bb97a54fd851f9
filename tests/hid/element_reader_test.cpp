#include "hid/element_reader.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <tuple>
#include <utility>
#include <vector>

#include "tests/hid/descriptors.h"

namespace quorvane::element_reader_test {
namespace {

// Usage page, usage, value.
using Change = std::tuple<std::int64_t, std::int64_t, std::int64_t>;
using Changes = std::vector<Change>;

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr WallClock::time_point received{std::chrono::seconds(1772357400)};

HIDElementReader readerOf(const Bytes& descriptor) {
  return HIDElementReader(HIDElements::parse(descriptor));
}

Changes read(HIDElementReader& reader, std::uint8_t reportID, Bytes bytes) {
  Changes changes;
  for (const HIDElementValue& value : reader.changes({reportID, std::move(bytes), received})) {
    EXPECT_EQ(value.reportID, reportID);
    EXPECT_EQ(value.receivedAt, received);
    changes.emplace_back(value.usagePage, value.usage, value.value);
  }
  return changes;
}

Changes readOnce(const Bytes& descriptor, Bytes bytes) {
  HIDElementReader reader = readerOf(descriptor);
  return read(reader, 0, std::move(bytes));
}

// The joystick's report 1: axis, buttons and dial.
Bytes joystickReport(unsigned axis, unsigned buttons, unsigned dial) {
  Bytes bytes{0x01};
  for (const unsigned value : {axis, axis >> 8U, buttons, buttons >> 8U, dial}) {
    bytes.push_back(static_cast<std::uint8_t>(value & 0xFFU));
  }
  return bytes;
}

Changes joystickChanges(std::int64_t axis, unsigned buttons, std::int64_t dial) {
  Changes changes{{1, 0x30, axis}};
  for (unsigned i = 0; i < 10; ++i) changes.emplace_back(9, i + 1, (buttons >> i) % 2);
  changes.emplace_back(1, 0x37, dial);
  return changes;
}

Bytes keys(std::uint8_t modifiers, Bytes pressed) {
  Bytes bytes{modifiers, 0x00};
  pressed.resize(6);
  bytes.insert(bytes.end(), pressed.begin(), pressed.end());
  return bytes;
}

TEST(HIDElementReader, TheFirstReportDeliversEveryValue) {
  HIDElementReader reader = readerOf(joystick());
  EXPECT_EQ(read(reader, 1, joystickReport(0x8000, 0x0205, 0xFF)),
            joystickChanges(-32768, 0x0205, -1));
}

TEST(HIDElementReader, AValueCarriesItsExtentsAndTheTime) {
  HIDElementReader reader = readerOf(joystick());
  const auto values = reader.changes({1, joystickReport(0x1234, 0, 5), received});
  ASSERT_EQ(values.size(), 12U);
  EXPECT_EQ(values.front(), (HIDElementValue{1, 0x30, 1, 0x1234, -32768, 32767, received}));
  EXPECT_EQ(values[3], (HIDElementValue{9, 3, 1, 0, 0, 1, received}));
  EXPECT_EQ(values.back(), (HIDElementValue{1, 0x37, 1, 5, -127, 127, received}));
}

TEST(HIDElementReader, LaterReportsDeliverWhatChanged) {
  HIDElementReader reader = readerOf(joystick());
  read(reader, 1, joystickReport(100, 0x0005, 0));
  EXPECT_EQ(read(reader, 1, joystickReport(101, 0x0005, 0)),
            (Changes{{1, 0x30, 101}, {1, 0x37, 0}}));
  EXPECT_EQ(read(reader, 1, joystickReport(101, 0x0201, 0)),
            (Changes{{9, 3, 0}, {9, 10, 1}, {1, 0x37, 0}}));
}

TEST(HIDElementReader, RelativeValuesComeWithEveryReport) {
  HIDElementReader reader = readerOf(joystick());
  read(reader, 1, joystickReport(0, 0, 3));
  EXPECT_EQ(read(reader, 1, joystickReport(0, 0, 3)), (Changes{{1, 0x37, 3}}));
  EXPECT_EQ(read(reader, 1, joystickReport(0, 0, 3)), (Changes{{1, 0x37, 3}}));
  EXPECT_EQ(read(reader, 1, joystickReport(0, 0, 0)), (Changes{{1, 0x37, 0}}));
}

TEST(HIDElementReader, PaddingIsNoValue) {
  HIDElementReader reader = readerOf(joystick());
  read(reader, 1, joystickReport(0, 0x0000, 0));
  EXPECT_EQ(read(reader, 1, joystickReport(0, 0xFC00, 0)), (Changes{{1, 0x37, 0}}));
}

TEST(HIDElementReader, OnlyInputsOfTheReportAreRead) {
  HIDElementReader reader = readerOf(joystick());
  for (const unsigned id : {0U, 2U, 3U, 4U, 255U}) {
    EXPECT_EQ(read(reader, static_cast<std::uint8_t>(id), Bytes(64, 0xFF)), Changes{}) << id;
  }
}

TEST(HIDElementReader, EveryReportIDHasItsOwnPast) {
  const Bytes descriptor{0x05, 0x09, 0x75, 0x08, 0x95, 0x01, 0x25, 0x7F,  // one byte each
                         0x85, 0x01, 0x09, 0x01, 0x81, 0x02, 0x85, 0x02, 0x09, 0x02, 0x81, 0x02};
  HIDElementReader reader = readerOf(descriptor);
  EXPECT_EQ(read(reader, 1, {0x01, 0x05}), (Changes{{9, 1, 5}}));
  EXPECT_EQ(read(reader, 2, {0x02, 0x05}), (Changes{{9, 2, 5}}));
  EXPECT_EQ(read(reader, 1, {0x01, 0x05}), Changes{});
  EXPECT_EQ(read(reader, 2, {0x02, 0x06}), (Changes{{9, 2, 6}}));
  EXPECT_EQ(read(reader, 1, {0x01, 0x06}), (Changes{{9, 1, 6}}));
}

TEST(HIDElementReader, AReportWithoutAnIDBeginsWithItsValues) {
  const Bytes descriptor{0x05, 0x09, 0x09, 0x01, 0x75, 0x08, 0x95, 0x02, 0x25, 0x7F, 0x81, 0x02};
  EXPECT_EQ(readOnce(descriptor, {0x11, 0x22}), (Changes{{9, 1, 0x11}, {9, 1, 0x22}}));
}

TEST(HIDElementReader, AShortReportDeliversTheValuesItHolds) {
  constexpr std::array<std::size_t, 7> counts{0, 0, 0, 1, 9, 11, 12};
  const Bytes whole = joystickReport(7, 0x03FF, 1);
  ASSERT_EQ(whole.size() + 1, counts.size());
  const Changes all = joystickChanges(7, 0x03FF, 1);
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE(length);
    HIDElementReader reader = readerOf(joystick());
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const auto end = all.begin() + static_cast<std::ptrdiff_t>(counts[length]);
    EXPECT_EQ(read(reader, 1, cut), Changes(all.begin(), end));
    // The other values are reported with the first report that contains them.
    Changes rest(end, all.end());
    if (length == whole.size()) rest.emplace_back(all.back());
    EXPECT_EQ(read(reader, 1, whole), rest);
  }
}

TEST(HIDElementReader, ALongReportIsReadToItsDeclaredEnd) {
  HIDElementReader reader = readerOf(joystick());
  Bytes bytes = joystickReport(7, 0x0001, 1);
  bytes.insert(bytes.end(), 100, 0xFF);
  EXPECT_EQ(read(reader, 1, bytes), joystickChanges(7, 0x0001, 1));
}

TEST(HIDElementReader, AnArrayDeliversUsagesThatComeAndGo) {
  HIDElementReader reader = readerOf(keyboard());
  const auto press = [&](Bytes pressed) { return read(reader, 0, keys(0, std::move(pressed))); };
  Changes modifiers;
  for (int i = 0; i < 8; ++i) modifiers.emplace_back(7, 0xE0 + i, 0);
  EXPECT_EQ(press({}), modifiers);
  EXPECT_EQ(press({0x04}), (Changes{{7, 0x04, 1}}));
  EXPECT_EQ(press({0x04}), Changes{});
  EXPECT_EQ(press({0x04, 0x05}), (Changes{{7, 0x05, 1}}));
  // Neither the position in the array nor a duplicate usage matters.
  EXPECT_EQ(press({0x05, 0x04}), Changes{});
  EXPECT_EQ(press({0x00, 0x05, 0x00, 0x04, 0x05}), Changes{});
  EXPECT_EQ(press({0x05, 0x06}), (Changes{{7, 0x04, 0}, {7, 0x06, 1}}));
  EXPECT_EQ(press({}), (Changes{{7, 0x05, 0}, {7, 0x06, 0}}));
}

TEST(HIDElementReader, VariablesAndArraysOfOneReportAreBothRead) {
  HIDElementReader reader = readerOf(keyboard());
  read(reader, 0, keys(0x00, {}));
  EXPECT_EQ(read(reader, 0, keys(0x02, {0x65})), (Changes{{7, 0xE1, 1}, {7, 0x65, 1}}));
  EXPECT_EQ(read(reader, 0, keys(0x82, {})), (Changes{{7, 0xE7, 1}, {7, 0x65, 0}}));
}

TEST(HIDElementReader, TheFirstReportOfAnArrayDeliversWhatIsActive) {
  HIDElementReader reader = readerOf(keyboard());
  const Changes changes = read(reader, 0, keys(0, {0x04, 0x1D}));
  ASSERT_EQ(changes.size(), 10U);
  EXPECT_EQ(changes[8], (Change{7, 0x04, 1}));
  EXPECT_EQ(changes[9], (Change{7, 0x1D, 1}));
}

TEST(HIDElementReader, AnArrayIgnoresValuesOutsideItsExtents) {
  HIDElementReader reader = readerOf(keyboard());
  read(reader, 0, keys(0, {}));
  EXPECT_EQ(read(reader, 0, keys(0, {0x66, 0x80, 0xFF})), Changes{});
  EXPECT_EQ(read(reader, 0, keys(0, {0x66, 0x65})), (Changes{{7, 0x65, 1}}));
}

TEST(HIDElementReader, AnArrayIgnoresUsagesThatItsExtentsDoNotReach) {
  const Bytes descriptor = joined({{0x05, 0x0C, 0x19, 0x10, 0x29, 0x20},
                                   {0x15, 0x02, 0x25, 0x05, 0x75, 0x08, 0x95, 0x01, 0x81, 0x00}});
  EXPECT_EQ(readOnce(descriptor, {0x01}), Changes{});
  EXPECT_EQ(readOnce(descriptor, {0x02}), (Changes{{12, 0x10, 1}}));
  EXPECT_EQ(readOnce(descriptor, {0x05}), (Changes{{12, 0x13, 1}}));
  EXPECT_EQ(readOnce(descriptor, {0x06}), Changes{});
}

TEST(HIDElementReader, AnArrayIndexesItsUsagesFromTheLogicalMinimum) {
  // Values 1 to 3 stand for the usages 0x10, 0x11 and 0x20.
  const Bytes fromOne = joined({{0x05, 0x0C, 0x19, 0x10, 0x29, 0x11, 0x09, 0x20},
                                {0x15, 0x01, 0x25, 0x03, 0x75, 0x02, 0x95, 0x04, 0x81, 0x00}});
  EXPECT_EQ(readOnce(fromOne, {0b00'11'10'01}),
            (Changes{{12, 0x10, 1}, {12, 0x11, 1}, {12, 0x20, 1}}));
  EXPECT_EQ(readOnce(fromOne, {0b00'00'00'00}), Changes{});
  // Values -2 to 0 stand for the same usages.
  const Bytes negative = joined({{0x05, 0x0C, 0x19, 0x10, 0x29, 0x11, 0x09, 0x20},
                                 {0x15, 0xFE, 0x25, 0x00, 0x75, 0x08, 0x95, 0x01, 0x81, 0x00}});
  EXPECT_EQ(readOnce(negative, {0xFE}), (Changes{{12, 0x10, 1}}));
  EXPECT_EQ(readOnce(negative, {0xFF}), (Changes{{12, 0x11, 1}}));
  EXPECT_EQ(readOnce(negative, {0x00}), (Changes{{12, 0x20, 1}}));
  EXPECT_EQ(readOnce(negative, {0x01}), Changes{});
  EXPECT_EQ(readOnce(negative, {0xFD}), Changes{});
}

TEST(HIDElementReader, AnArrayValueWithoutAUsageIsNothing) {
  const Bytes three = joined({{0x05, 0x0C, 0x19, 0x10, 0x29, 0x12},
                              {0x15, 0x00, 0x25, 0x0A, 0x75, 0x08, 0x95, 0x01, 0x81, 0x00}});
  EXPECT_EQ(readOnce(three, {0x02}), (Changes{{12, 0x12, 1}}));
  EXPECT_EQ(readOnce(three, {0x03}), Changes{});
  EXPECT_EQ(readOnce(three, {0x0A}), Changes{});
  const Bytes none{0x15, 0x00, 0x25, 0x0A, 0x75, 0x08, 0x95, 0x01, 0x81, 0x00};
  EXPECT_EQ(readOnce(none, {0x02}), Changes{});
}

TEST(HIDElementReader, AShortReportReleasesTheKeysItNoLongerHolds) {
  HIDElementReader reader = readerOf(keyboard());
  read(reader, 0, keys(0, {0x04, 0x05}));
  EXPECT_EQ(read(reader, 0, {0x00, 0x00, 0x04}), (Changes{{7, 0x05, 0}}));
  EXPECT_EQ(read(reader, 0, {}), (Changes{{7, 0x04, 0}}));
}

TEST(HIDElementReader, ExtendsTheSignWhenTheMinimumIsNegative) {
  struct Case {
    std::uint8_t bits;
    std::uint8_t minimum;
    Bytes bytes;
    std::int64_t value;
  };
  const std::vector<Case> cases{
      {1, 0x00, {0x01}, 1},
      {1, 0xFF, {0x01}, -1},
      {4, 0x00, {0x0F}, 15},
      {4, 0xF8, {0x0F}, -1},
      {4, 0xF8, {0x08}, -8},
      {4, 0xF8, {0x07}, 7},
      {8, 0x00, {0xFF}, 255},
      {8, 0x81, {0xFF}, -1},
      {8, 0x81, {0x81}, -127},
      {8, 0x81, {0x7F}, 127},
      {12, 0x80, {0x00, 0xF8}, -2048},
      {12, 0x00, {0x00, 0xF8}, 2048},
      {16, 0x80, {0x00, 0x80}, -32768},
      {16, 0x00, {0x00, 0x80}, 32768},
      {32, 0x80, {0x00, 0x00, 0x00, 0x80}, -2147483648},
      {32, 0x00, {0xFF, 0xFF, 0xFF, 0xFF}, 4294967295},
      {63, 0x80, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F}, -1},
      {63, 0x00, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F}, largest},
      {64, 0x80, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, -1},
      {64, 0x80, {0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x80}, smallest},
      {64, 0x00, {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F}, largest},
      {64, 0x00, {0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01}, 0x0102030405060708},
  };
  for (const Case& c : cases) {
    const Bytes descriptor{0x05, 0x09,   0x09, 0x01, 0x15, c.minimum,
                           0x75, c.bits, 0x95, 0x01, 0x81, 0x02};
    EXPECT_EQ(readOnce(descriptor, c.bytes), (Changes{{9, 1, c.value}}))
        << int{c.bits} << " bits: " << hexDump(c.bytes);
  }
}

TEST(HIDElementReader, ReadsValuesThatStraddleBytes) {
  // Three bits of padding, then one value of every width.
  for (unsigned width = 1; width <= 61; ++width) {
    const Bytes descriptor{0x75,
                           0x03,
                           0x95,
                           0x01,
                           0x81,
                           0x03,
                           0x05,
                           0x09,
                           0x09,
                           0x01,
                           0x14,
                           0x75,
                           static_cast<std::uint8_t>(width),
                           0x81,
                           0x02};
    const std::uint64_t value = 0x123456789ABCDEF5 & ((std::uint64_t{1} << width) - 1);
    const std::uint64_t bits = value << 3U | 0x7U;
    Bytes bytes;
    for (unsigned i = 0; i < 8; ++i) bytes.push_back(static_cast<std::uint8_t>(bits >> (8 * i)));
    EXPECT_EQ(readOnce(descriptor, bytes), (Changes{{9, 1, static_cast<std::int64_t>(value)}}))
        << width;
  }
}

TEST(HIDElementReader, ValuesWiderThanSixtyFourBitsAreLeftOut) {
  for (const unsigned width : {65U, 72U, 255U}) {
    // The value after them is still found.
    const Bytes descriptor{0x05, 0x09, 0x09, 0x01, 0x75, static_cast<std::uint8_t>(width),
                           0x95, 0x01, 0x81, 0x02, 0x09, 0x02,
                           0x75, 0x01, 0x81, 0x02};
    EXPECT_EQ(readOnce(descriptor, Bytes(64, 0xFF)), (Changes{{9, 2, 1}})) << width;
  }
}

TEST(HIDElementReader, ValuesWithoutBitsAreLeftOut) {
  const Bytes descriptor{0x05, 0x09, 0x09, 0x01, 0x75, 0x00, 0x97,
                         0xFF, 0xFF, 0xFF, 0xFF, 0x81, 0x02};
  EXPECT_EQ(readOnce(descriptor, Bytes(64, 0xFF)), Changes{});
}

TEST(HIDElementReader, VariablesShareTheirLastUsage) {
  const Bytes descriptor{0x05, 0x01, 0x09, 0x30, 0x09, 0x31, 0x25,
                         0x7F, 0x75, 0x08, 0x95, 0x04, 0x81, 0x02};
  EXPECT_EQ(readOnce(descriptor, {1, 2, 3, 4}),
            (Changes{{1, 0x30, 1}, {1, 0x31, 2}, {1, 0x31, 3}, {1, 0x31, 4}}));
}

TEST(HIDElementReader, AVariableWithoutAUsageHasItsPage) {
  const Bytes descriptor{0x06, 0x00, 0xFF, 0x25, 0x7F, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02};
  EXPECT_EQ(readOnce(descriptor, {5}), (Changes{{0xFF00, 0, 5}}));
}

TEST(HIDElementReader, ACountBeyondTheReportIsCutToIt) {
  constexpr std::size_t reportBits = 512;
  for (const Bytes& size :
       {Bytes{0x75, 0x01}, Bytes{0x75, 0x40}, Bytes{0x77, 0xFF, 0xFF, 0xFF, 0xFF}}) {
    const Bytes descriptor =
        joined({{0x05, 0x09, 0x09, 0x01}, size, {0x97, 0xFF, 0xFF, 0xFF, 0xFF}, {0x81, 0x02}});
    const std::size_t bits = size.size() > 2 ? 0xFFFFFFFF : size[1];
    EXPECT_EQ(readOnce(descriptor, Bytes(64, 0x55)).size(), reportBits / bits);
    const Bytes array = joined({{0x05, 0x09, 0x19, 0x01, 0x2A, 0xFF, 0xFF},
                                size,
                                {0x27, 0xFF, 0xFF, 0xFF, 0x7F},
                                {0x97, 0xFF, 0xFF, 0xFF, 0xFF},
                                {0x81, 0x00}});
    EXPECT_LE(readOnce(array, Bytes(64, 0x01)).size(), reportBits / bits);
  }
}

TEST(HIDElementReader, AnElementBeyondEveryReportIsLeftOut) {
  const Bytes descriptor = joined({{0x75, 0x01, 0x97, 0xFF, 0xFF, 0xFF, 0xFF, 0x81, 0x03},
                                   {0x05, 0x09, 0x09, 0x01, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02}});
  EXPECT_EQ(readOnce(descriptor, Bytes(4096, 0xFF)), Changes{});
}

TEST(HIDElementReader, ADeviceWithoutElementsHasNoChanges) {
  EXPECT_EQ(readOnce({}, {}), Changes{});
  EXPECT_EQ(readOnce({}, Bytes(64, 0xFF)), Changes{});
}

TEST(HIDElementReader, ReadsRandomReportsOfRandomDescriptors) {
  std::mt19937 random(2);
  constexpr std::array<std::uint8_t, 16> likely{0x81, 0x81, 0x82, 0x75, 0x95, 0x85, 0x05, 0x09,
                                                0x19, 0x29, 0x2A, 0x96, 0x97, 0x77, 0x15, 0x25};
  for (int round = 0; round < 2000; ++round) {
    Bytes descriptor(random() % 100);
    for (std::uint8_t& byte : descriptor) {
      byte = random() % 2 == 0 ? likely[random() % likely.size()]
                               : static_cast<std::uint8_t>(random() % 8);
    }
    const HIDElements elements = HIDElements::parse(descriptor);
    HIDElementReader reader(elements);
    for (int i = 0; i < 4; ++i) {
      Bytes bytes(random() % 40);
      for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random());
      const auto reportID = static_cast<std::uint8_t>(random() % 3);
      const std::size_t most = elements.elements.size() * bytes.size() * 8;
      // Keys of the report before it may be released as well.
      const std::size_t gone = elements.elements.size() * 40 * 8;
      ASSERT_LE(read(reader, reportID, bytes).size(), most + gone) << hexDump(descriptor);
    }
  }
}

}  // namespace
}  // namespace quorvane::element_reader_test
