#include "presets/settings_comparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "protocol/error.h"

namespace quorvane {

// NOLINTNEXTLINE(readability-identifier-naming): the name that the test framework looks for
void PrintTo(ComparedState state, std::ostream* stream) { *stream << rawValue(state); }

namespace {

using P = TuningParameter;
using Product = std::optional<FanatecProduct>;
using State = ComparedState;
using Values = TuningPreset::Values;

constexpr std::int64_t directDriveID = 0x0020;
constexpr std::int64_t podiumID = 0x0006;
constexpr std::int64_t eliteID = 0x0E03;
constexpr std::int64_t classicID = 0x0001;
constexpr int pairsOfProduct = 1430;  // 10,000 for all seven products

TEST(SettingsComparison, HasARowForEachCodeInMenuOrder) {
  const Values left{{"FF", 65}, {"SEN", 900}, {"BLI", 101}, {"brF", 47},
                    {"XYZ", 1}, {"SLOT", 1},  {"DRI", 2},   {"NDP", 10}};
  const Values right{{"FF", 100}, {"SEN", 0},  {"FFS", 1},  {"brF", 40},
                     {"ABC", 2},  {"SLOT", 2}, {"NDP", 300}};
  struct Row {
    std::string code;
    State state;
    std::optional<std::int64_t> change;
  };
  const std::vector<Row> rows{
      {"SEN", State::differs, {}},   {"FF", State::differs, 35},    {"BLI", State::onlyLeft, {}},
      {"FFS", State::onlyRight, {}}, {"DRI", State::notOnBase, {}}, {"NDP", State::outOfRange, {}},
      {"brF", State::same, {}},      {"ABC", State::notOnBase, {}}, {"XYZ", State::notOnBase, {}},
  };
  const auto product = FanatecProduct::lookup(directDriveID);
  const SettingsComparison comparison(left, right, product);
  ASSERT_EQ(comparison.rows().size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ComparedRow& row = comparison.rows()[i];
    EXPECT_EQ(row.code, rows[i].code);
    EXPECT_EQ(row.state, rows[i].state) << row.code;
    EXPECT_EQ(row.change(product), rows[i].change) << row.code;
    EXPECT_EQ(row.title(), row.parameter ? row.parameter->title() : "") << row.code;
  }
  EXPECT_EQ(comparison.count(State::notOnBase), 3U);
  EXPECT_FALSE(comparison.isSame());
}

TEST(SettingsComparison, OfNothingIsTheSame) {
  const SettingsComparison comparison({}, {{"SLOT", 3}}, std::nullopt);
  EXPECT_TRUE(comparison.isSame());
  EXPECT_TRUE(comparison.rows().empty());
}

TEST(SettingsComparison, NamesItsStates) {
  const std::vector<std::string_view> names{"same",      "differs",    "onlyLeft",
                                            "onlyRight", "outOfRange", "notOnBase"};
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(rawValue(static_cast<State>(i)), names[i]);
  }
}

// The bytes that a product's values are encoded to. Keeps those that it has computed: an exception
// is slow.
class ProductBytes {
 public:
  explicit ProductBytes(const FanatecProduct& product) : product_(product) {}

  const FanatecProduct& product() const { return product_; }

  std::optional<std::uint8_t> of(P parameter, std::int64_t value) {
    const auto [known, isNew] = bytes_.try_emplace({parameter, value});
    if (isNew) {
      try {
        known->second = parameter.encode(value, product_);
      } catch (const FanatecError&) {
        known->second = std::nullopt;
      }
    }
    return known->second;
  }

 private:
  FanatecProduct product_;
  std::map<std::pair<P::Case, std::int64_t>, std::optional<std::uint8_t>> bytes_;
};

// Most values are in range and of few kinds, so that pairs are often the same.
Values randomValues(std::mt19937& random) {
  Values values;
  for (const P parameter : P::allCases()) {
    if (random() % 4 == 0) continue;
    const ClosedRange range = parameter.allowedRange(std::nullopt);
    const std::vector<std::int64_t> choices{
        range.lower, range.upper, 0,   10,
        40,          47,          101, range.upper + 1,
        2530,        1090,        -3,  range.lower + static_cast<std::int64_t>(random() % 100)};
    values.emplace(parameter.code(), choices[random() % choices.size()]);
  }
  if (random() % 8 == 0) values.emplace("XYZ", 1);
  return values;
}

// Expects that a row's state follows from the bytes of its values.
void expectState(const ComparedRow& row, ProductBytes& bytes) {
  SCOPED_TRACE(row.code);
  ASSERT_TRUE(row.left || row.right);
  const auto menu = P::adjustable(bytes.product());
  const bool isOnMenu =
      row.parameter && std::find(menu.begin(), menu.end(), *row.parameter) != menu.end();
  ASSERT_EQ(row.state == State::notOnBase, !isOnMenu);
  if (!isOnMenu) return;
  const auto left = row.left ? bytes.of(*row.parameter, *row.left) : std::nullopt;
  const auto right = row.right ? bytes.of(*row.parameter, *row.right) : std::nullopt;
  ASSERT_EQ(row.state == State::outOfRange, (row.left && !left) || (row.right && !right));
  ASSERT_EQ(row.state == State::same, left && right && *left == *right);
  ASSERT_EQ(row.state == State::onlyLeft, left && !row.right);
  ASSERT_EQ(row.state == State::onlyRight, right && !row.left);
}

TEST(SettingsComparison, OfRandomPairsFollowsFromTheBytesOnEveryProduct) {
  std::mt19937 random(18);
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (!product.hasTuningMenu()) continue;
    SCOPED_TRACE(product.name);
    ProductBytes bytes(product);
    for (int pair = 0; pair < pairsOfProduct; ++pair) {
      const Values left = randomValues(random);
      const Values right = randomValues(random);
      const SettingsComparison comparison(left, right, product);
      std::size_t sum = 0;
      for (int state = 0; state < 6; ++state) sum += comparison.count(static_cast<State>(state));
      ASSERT_EQ(sum, comparison.rows().size());
      for (const ComparedRow& row : comparison.rows()) {
        expectState(row, bytes);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(SettingsComparison, FindsTheStrengthThatIsRaisedTooFar) {
  struct Case {
    Values now;
    Values wanted;
    std::optional<P> stronger;
    std::int64_t product = directDriveID;
  };
  const std::vector<Case> cases{
      {{}, {{"FF", 100}}, {}},
      {{{"FF", 75}}, {{"FF", 99}}, {}},
      {{{"FF", 75}}, {{"FF", 100}}, P::forceFeedback},
      {{{"FF", 100}}, {{"FF", 20}}, {}},
      {{{"FUL", 0}, {"FF", 100}}, {{"FUL", 25}}, P::fullForce},
      {{{"FUL", 0}, {"FF", 100}}, {{"FUL", 25}}, {}, podiumID},
      {{{"FF", 40}, {"FOR", 100}}, {{"FF", 60}}, P::forceFeedback},
      {{{"FF", 40}, {"FOR", 100}}, {{"FF", 59}}, {}},
      {{{"FF", 80}, {"FOR", 80}}, {{"FF", 96}, {"FOR", 100}}, P::forceEffect},
      {{{"FF", 0}, {"FOR", 100}}, {{"FF", 5}}, P::forceFeedback},
      {{{"FF", 50}, {"FOR", 100}}, {{"FF", 300}}, {}},
      {{{"FF", 50}, {"FOR", 100}}, {{"FF", 75}, {"FOR", 0}}, P::forceFeedback},
  };
  for (const auto& [now, wanted, stronger, productID] : cases) {
    const auto product = FanatecProduct::lookup(productID);
    EXPECT_EQ(strengthRaised(now, wanted, product), stronger);
    EXPECT_EQ(SettingsComparison(now, wanted, product).stronger(), stronger);
  }
}

TEST(SettingsComparison, WithoutAProductHoldsForEveryBase) {
  const SettingsComparison comparison({{"SEN", 2530}, {"DRI", 1}, {"FUL", 5}, {"brF", 47}},
                                      {{"SEN", 0}, {"DRI", 1}, {"FUL", 200}, {"brF", 40}},
                                      std::nullopt);
  std::vector<State> states;
  for (const ComparedRow& row : comparison.rows()) states.push_back(row.state);
  EXPECT_EQ(states, (std::vector{State::differs, State::same, State::same, State::outOfRange}));
}

}  // namespace
}  // namespace quorvane
