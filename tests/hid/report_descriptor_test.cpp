#include "hid/report_descriptor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/hid/descriptors.h"

namespace quorvane::report_descriptor_test {
namespace {

using Kind = HIDReportSummary::Kind;
using Summaries = std::vector<HIDReportSummary>;

Summaries summariesOf(Bytes bytes) { return HIDReportDescriptor(std::move(bytes)).summaries(); }

TEST(HIDReportDescriptor, KeepsItsBytes) {
  EXPECT_EQ(HIDReportDescriptor(keyboard()).bytes(), keyboard());
  EXPECT_TRUE(HIDReportDescriptor().bytes().empty());
  EXPECT_EQ(HIDReportDescriptor(keyboard()), HIDReportDescriptor(keyboard()));
  EXPECT_NE(HIDReportDescriptor(keyboard()), HIDReportDescriptor(joystick()));
}

TEST(HIDReportDescriptor, DumpsItsBytes) {
  EXPECT_EQ(HIDReportDescriptor({0x01, 0xAB}).hexDump(), "01 ab");
  EXPECT_EQ(HIDReportDescriptor({0x05, 0x01, 0xC0}).hexDump(), "05 01 c0");
  EXPECT_EQ(HIDReportDescriptor().hexDump(), "");
}

TEST(HIDReportDescriptor, AnEmptyOneHasNoSummaries) { EXPECT_TRUE(summariesOf({}).empty()); }

TEST(HIDReportDescriptor, SummarisesWholeDevices) {
  EXPECT_EQ(summariesOf(keyboard()),
            (Summaries{{Kind::input, 0, 8, 3, {0x07}}, {Kind::output, 0, 1, 2, {0x08}}}));
  EXPECT_EQ(summariesOf(joystick()), (Summaries{{Kind::feature, 3, 3, 1, {0xFF00}},
                                                {Kind::input, 1, 5, 4, {0x01, 0x09}},
                                                {Kind::output, 2, 7, 1, {0xFF00}}}));
}

TEST(HIDReportDescriptor, WithoutAReportIDItemTheIDIsZero) {
  EXPECT_EQ(summariesOf({0x75, 0x08, 0x95, 0x02, 0x81, 0x02}),
            (Summaries{{Kind::input, 0, 2, 1, {0}}}));
}

TEST(HIDReportDescriptor, SevenBytesUnderOneReportID) {
  EXPECT_EQ(summariesOf({0x75, 0x08, 0x95, 0x07, 0x85, 0x01, 0x91, 0x02}),
            (Summaries{{Kind::output, 1, 7, 1, {0}}}));
}

TEST(HIDReportDescriptor, TwoHalfBytesMakeOne) {
  EXPECT_EQ(summariesOf({0x85, 0x01, 0x75, 0x04, 0x95, 0x01, 0x91, 0x02, 0x91, 0x02}),
            (Summaries{{Kind::output, 1, 1, 2, {0}}}));
}

TEST(HIDReportDescriptor, NineBitsTakeTwoBytes) {
  EXPECT_EQ(summariesOf({0x75, 0x09, 0x95, 0x01, 0x81, 0x02}),
            (Summaries{{Kind::input, 0, 2, 1, {0}}}));
  EXPECT_EQ(summariesOf({0x75, 0x01, 0x95, 0x09, 0x81, 0x02}),
            (Summaries{{Kind::input, 0, 2, 1, {0}}}));
}

TEST(HIDReportDescriptor, SortsFeatureBeforeInputBeforeOutput) {
  const Bytes bytes{0x75, 0x08, 0x95, 0x01,   // one byte each
                    0x81, 0x02,               // input 0
                    0x85, 0x01, 0x91, 0x02,   // output 1
                    0x81, 0x02,               // input 1
                    0x85, 0x03, 0xB1, 0x02};  // feature 3
  EXPECT_EQ(summariesOf(bytes), (Summaries{{Kind::feature, 3, 1, 1, {0}},
                                           {Kind::input, 0, 1, 1, {0}},
                                           {Kind::input, 1, 1, 1, {0}},
                                           {Kind::output, 1, 1, 1, {0}}}));
}

TEST(HIDReportDescriptor, GlobalsHoldUntilTheyAreChanged) {
  const Bytes bytes{0x05, 0x01, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02,  // 8 bits, page 1
                    0x05, 0x09, 0x81, 0x02,                          // 8 bits, page 9
                    0x95, 0x02, 0x81, 0x02,                          // 16 bits, page 9
                    0x85, 0x05, 0x81, 0x02};                         // 16 bits, report 5
  EXPECT_EQ(summariesOf(bytes),
            (Summaries{{Kind::input, 0, 4, 3, {1, 9}}, {Kind::input, 5, 2, 1, {9}}}));
}

TEST(HIDReportDescriptor, PushAndPopChangeNothing) {
  const Bytes plain{0x75, 0x08, 0x95, 0x02, 0x75, 0x10, 0x81, 0x02};
  const Bytes pushed{0x75, 0x08, 0x95, 0x02, 0xA4, 0x75, 0x10, 0xB4, 0x81, 0x02};
  EXPECT_EQ(summariesOf(pushed), summariesOf(plain));
  EXPECT_EQ(summariesOf(pushed), (Summaries{{Kind::input, 0, 4, 1, {0}}}));
  EXPECT_EQ(summariesOf({0xB4, 0xB4, 0x75, 0x08, 0x95, 0x01, 0x81, 0x02, 0xA4}),
            (Summaries{{Kind::input, 0, 1, 1, {0}}}));
}

TEST(HIDReportDescriptor, IgnoresEveryOtherItem) {
  for (unsigned prefix = 0; prefix <= 0xFF; ++prefix) {
    const unsigned kind = prefix & 0xFCU;
    const bool used = kind == 0x80 || kind == 0x90 || kind == 0xB0 ||  // main
                      kind == 0x04 || kind == 0x74 || kind == 0x84 || kind == 0x94;
    if (used || prefix == 0xFE) continue;
    Bytes bytes{0x05, 0x0C, 0x75, 0x08, 0x95, 0x03, 0x85, 0x04, static_cast<std::uint8_t>(prefix)};
    constexpr std::size_t sizes[] = {0, 1, 2, 4};
    bytes.insert(bytes.end(), sizes[prefix % 4], 0x55);
    bytes.insert(bytes.end(), {0xB1, 0x02});
    EXPECT_EQ(summariesOf(bytes), (Summaries{{Kind::feature, 4, 3, 1, {0x0C}}})) << prefix;
  }
}

TEST(HIDReportDescriptor, ReadsGlobalsOfEverySize) {
  for (const Bytes& size : {Bytes{0x75, 0x08}, Bytes{0x76, 0x08, 0x00}, Bytes{0x77, 8, 0, 0, 0}}) {
    EXPECT_EQ(summariesOf(joined({size, {0x95, 0x02}, {0x81, 0x02}})),
              (Summaries{{Kind::input, 0, 2, 1, {0}}}));
  }
  // An item without data sets 0.
  EXPECT_EQ(summariesOf({0x75, 0x08, 0x95, 0x02, 0x74, 0x81, 0x02}),
            (Summaries{{Kind::input, 0, 0, 1, {0}}}));
}

TEST(HIDReportDescriptor, ReadsGlobalsAsUnsignedNumbers) {
  EXPECT_EQ(summariesOf({0x75, 0x01, 0x95, 0xFF, 0x85, 0xFF, 0x05, 0xFF, 0x81, 0x02}),
            (Summaries{{Kind::input, 255, 32, 1, {255}}}));
  EXPECT_EQ(summariesOf({0x07, 0xFF, 0xFF, 0xFF, 0xFF, 0x76, 0xFF, 0xFF, 0x95, 0x08, 0x81, 0x02}),
            (Summaries{{Kind::input, 0, 65535, 1, {0xFFFFFFFF}}}));
}

TEST(HIDReportDescriptor, AReportIDMayLieAboveTwoHundredFiftyFive) {
  EXPECT_EQ(summariesOf({0x75, 0x08, 0x95, 0x01, 0x86, 0x00, 0x01, 0x91, 0x02}),
            (Summaries{{Kind::output, 256, 1, 1, {0}}}));
}

TEST(HIDReportDescriptor, AMissingDataByteCountsAsZero) {
  EXPECT_TRUE(summariesOf({0x75}).empty());
  EXPECT_EQ(summariesOf({0x75, 0x08, 0x95, 0x02, 0x81, 0x02, 0x75}),
            (Summaries{{Kind::input, 0, 2, 1, {0}}}));
  EXPECT_EQ(summariesOf({0x75, 0x08, 0x95, 0x02, 0x81}), (Summaries{{Kind::input, 0, 2, 1, {0}}}));
}

TEST(HIDReportDescriptor, SkipsLongItems) {
  const Bytes bytes{0x75, 0x08, 0xFE, 0x02, 0x99, 0x81, 0x02, 0x95, 0x01, 0x81, 0x02};
  EXPECT_EQ(summariesOf(bytes), (Summaries{{Kind::input, 0, 1, 1, {0}}}));
}

TEST(HIDReportDescriptor, ALongItemWithoutALengthEndsTheParse) {
  EXPECT_TRUE(summariesOf({0xFE}).empty());
  EXPECT_EQ(summariesOf({0x75, 0x08, 0x95, 0x01, 0x81, 0x02, 0xFE}),
            (Summaries{{Kind::input, 0, 1, 1, {0}}}));
}

TEST(HIDReportDescriptor, MeaninglessBytesHaveNoSummaries) {
  EXPECT_TRUE(summariesOf(Bytes(4096, 0xFF)).empty());
  EXPECT_TRUE(summariesOf(Bytes(4096, 0xFE)).empty());
  EXPECT_TRUE(summariesOf(Bytes(4096, 0x00)).empty());
}

TEST(HIDReportDescriptor, ACutOneGivesWhatWasReadSoFar) {
  for (const DescriptorText& text : {keyboardText(), joystickText()}) {
    const Bytes whole = joined(text);
    Summaries before;
    std::size_t position = 0;
    for (const Bytes& item : text) {
      // A main item counts as soon as its first byte is there; other items change nothing.
      const Summaries with = summariesOf(
          {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(position + item.size())});
      EXPECT_EQ(with == before, !declaresValues(item)) << position;
      for (std::size_t part = 1; part <= item.size(); ++part) {
        const auto end = whole.begin() + static_cast<std::ptrdiff_t>(position + part);
        EXPECT_EQ(summariesOf({whole.begin(), end}), with) << position + part;
      }
      before = with;
      position += item.size();
    }
    EXPECT_EQ(position, whole.size());
  }
}

// Compares the summaries of random items with totals that the test adds up itself.
TEST(HIDReportDescriptor, AddsUpRandomItems) {
  std::mt19937 random(20260301);
  const auto below = [&](unsigned bound) { return static_cast<std::uint32_t>(random() % bound); };
  struct Total {
    std::int64_t bits = 0;
    std::int64_t items = 0;
    std::set<std::int64_t> pages;
  };
  for (int round = 0; round < 500; ++round) {
    Bytes bytes;
    std::map<std::string, std::uint32_t> state{{"page", 0}, {"size", 0}, {"id", 0}, {"count", 0}};
    std::map<std::pair<std::string, std::int64_t>, Total> totals;
    const auto global = [&](const std::string& name, unsigned prefix, std::uint32_t value) {
      state[name] = value;
      bytes.insert(bytes.end(), {static_cast<std::uint8_t>(prefix | 2U),
                                 static_cast<std::uint8_t>(value & 0xFFU),
                                 static_cast<std::uint8_t>(value >> 8U)});
    };
    const auto main = [&](const std::string& kind, std::uint8_t prefix) {
      bytes.insert(bytes.end(), {prefix, static_cast<std::uint8_t>(below(256))});
      Total& total = totals[{kind, state["id"]}];
      total.bits += std::int64_t{state["size"]} * state["count"];
      ++total.items;
      total.pages.insert(state["page"]);
    };
    for (unsigned i = below(60); i > 0; --i) {
      switch (below(9)) {
        case 0:
          global("page", 0x04, below(0x10000));
          break;
        case 1:
          global("size", 0x74, below(0x10000));
          break;
        case 2:
          global("id", 0x84, below(4));
          break;
        case 3:
          global("count", 0x94, below(0x10000));
          break;
        case 4:
          main("input", 0x81);
          break;
        case 5:
          main("output", 0x91);
          break;
        case 6:
          main("feature", 0xB1);
          break;
        case 7:
          bytes.insert(bytes.end(), {0xFE, 0x01, 0x81, 0x91});
          break;
        default:
          bytes.insert(bytes.end(), {0xA4, 0x09, 0x30, 0x15, 0xFF, 0xA1, 0x01, 0xB4, 0xC0});
          break;
      }
    }
    const std::map<std::string, Kind> kinds{
        {"feature", Kind::feature}, {"input", Kind::input}, {"output", Kind::output}};
    Summaries wanted;
    for (const auto& [key, total] : totals) {
      wanted.push_back({kinds.at(key.first),
                        key.second,
                        total.bits / 8 + (total.bits % 8 != 0 ? 1 : 0),
                        total.items,
                        {total.pages.begin(), total.pages.end()}});
    }
    ASSERT_EQ(summariesOf(bytes), wanted) << hexDump(bytes);
  }
}

constexpr const char* overflow = "^quorvane: internal fault: the bits of a report overflow\n$";

TEST(HIDReportDescriptorDeathTest, AReportWhoseBitsOverflowStopsTheProgram) {
  const Bytes huge{0x77, 0xFF, 0xFF, 0xFF, 0xFF, 0x97, 0xFF, 0xFF, 0xFF, 0xFF, 0x81, 0x02};
  EXPECT_DEATH(summariesOf(huge), overflow);
}

TEST(HIDReportDescriptorDeathTest, AReportWhoseTotalOverflowsStopsTheProgram) {
  const Bytes twoHalves{0x77, 0, 0, 0, 0x80, 0x97, 0, 0, 0, 0x80, 0x81, 0x02, 0x81, 0x02};
  EXPECT_DEATH(summariesOf(twoHalves), overflow);
  const Bytes oneHalf(twoHalves.begin(), twoHalves.end() - 2);
  EXPECT_EQ(summariesOf(oneHalf).size(), 1U);
}

}  // namespace
}  // namespace quorvane::report_descriptor_test
