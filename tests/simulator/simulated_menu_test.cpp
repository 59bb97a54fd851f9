#include "simulator/simulated_menu.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "protocol/error.h"
#include "protocol/tuning_snapshot.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;

const FanatecProduct& product(std::int64_t productID) {
  static const std::vector<FanatecProduct> all(FanatecProduct::all().begin(),
                                               FanatecProduct::all().end());
  return *std::find_if(all.begin(), all.end(),
                       [&](const FanatecProduct& p) { return p.productID == productID; });
}

std::vector<FanatecProduct> productsWithAMenu() {
  std::vector<FanatecProduct> products;
  for (const FanatecProduct& candidate : FanatecProduct::all()) {
    if (candidate.hasTuningMenu()) products.push_back(candidate);
  }
  return products;
}

TuningSnapshot snapshot(const SimulatedMenu& menu) {
  return *TuningSnapshot::fromReport(menu.report(), {});
}

// The report's menu bytes, as in a write.
Bytes menuBytes(const SimulatedMenu& menu) {
  const Bytes report = menu.report();
  return {report.begin() + 3, report.end()};
}

const FanatecProduct& directDrive() { return product(0x0020); }

TEST(SimulatedMenu, ItsReportIsATuningReport) {
  const SimulatedMenu menu(directDrive());
  const Bytes report = menu.report();
  ASSERT_EQ(report.size(), 64U);
  EXPECT_EQ(report[0], 0xFF);
  EXPECT_EQ(report[1], 0x03);
  EXPECT_TRUE(TuningSnapshot::fromReport(report, {}));
}

TEST(SimulatedMenu, StartsInTheFirstSetAndTheStandardMode) {
  for (const FanatecProduct& each : productsWithAMenu()) {
    const SimulatedMenu menu(each);
    EXPECT_EQ(menu.activeSet(), 1);
    EXPECT_FALSE(menu.isAdvanced());
    EXPECT_EQ(menu.report()[2], 0x81);
    EXPECT_EQ(snapshot(menu).slot(), 1);
    EXPECT_FALSE(snapshot(menu).isAdvancedMode());
  }
}

TEST(SimulatedMenu, StartsWithValuesThatItsProductCanHave) {
  for (const FanatecProduct& each : productsWithAMenu()) {
    const SimulatedMenu menu(each);
    for (const TuningParameter parameter : TuningParameter::available(each)) {
      if (parameter == slot) continue;
      const std::int64_t value = snapshot(menu).value(parameter, each);
      EXPECT_EQ(parameter.encode(value, each), snapshot(menu).rawValue(parameter))
          << each.name << " " << parameter.code();
    }
  }
}

TEST(SimulatedMenu, StartsAtTheAutomaticAngleWhereThereIsOne) {
  for (const FanatecProduct& each : productsWithAMenu()) {
    const std::int64_t angle = each.autoRotation > 0 ? each.autoRotation : each.maxRotation;
    EXPECT_EQ(snapshot(SimulatedMenu(each)).value(sensitivity, each), angle) << each.name;
  }
}

TEST(SimulatedMenu, BytesThatItsProductLacksAreZero) {
  const SimulatedMenu menu(product(0x0001));
  for (const TuningParameter parameter :
       {vibration, brakeLevelIndicator, forceFeedbackScaling, driftMode, naturalDamper,
        naturalFriction, interpolation, naturalInertia, fullForce}) {
    EXPECT_EQ(snapshot(menu).rawValue(parameter), 0) << parameter.code();
  }
}

TEST(SimulatedMenu, TheStatusByteTellsTheSetAndTheMode) {
  SimulatedMenu menu(directDrive());
  menu.select(4);
  EXPECT_EQ(menu.report()[2], 0x84);
  menu.toggleMode();
  EXPECT_TRUE(menu.isAdvanced());
  EXPECT_EQ(menu.report()[2], 0x04);
  menu.toggleMode();
  EXPECT_FALSE(menu.isAdvanced());
  EXPECT_EQ(menu.report()[2], 0x84);
}

TEST(SimulatedMenu, SelectsSets1To5) {
  SimulatedMenu menu(directDrive());
  for (int set = 1; set <= SimulatedMenu::setCount; ++set) {
    menu.select(set);
    EXPECT_EQ(menu.activeSet(), set);
  }
  for (const int set : {0, -1, 6, 255}) {
    menu.select(set);
    EXPECT_EQ(menu.activeSet(), 5);
  }
}

TEST(SimulatedMenu, EverySetHasItsOwnValues) {
  SimulatedMenu menu(directDrive());
  for (int set = 1; set <= SimulatedMenu::setCount; ++set) {
    menu.select(set);
    menu.put(forceFeedback, 10L * set);
  }
  for (int set = 1; set <= SimulatedMenu::setCount; ++set) {
    menu.select(set);
    EXPECT_EQ(snapshot(menu).value(forceFeedback, directDrive()), 10 * set);
  }
}

TEST(SimulatedMenu, SavesTheActiveValuesIntoAnotherSet) {
  SimulatedMenu menu(directDrive());
  menu.put(forceFeedback, 42);
  for (const int set : {3, 0, -1, 6}) menu.saveInto(set);
  EXPECT_EQ(menu.activeSet(), 1);
  for (int set = 1; set <= SimulatedMenu::setCount; ++set) {
    menu.select(set);
    const std::int64_t value = snapshot(menu).value(forceFeedback, directDrive());
    EXPECT_EQ(value, set == 1 || set == 3 ? 42 : 100) << set;
  }
}

TEST(SimulatedMenu, AResetRestoresEverySetAndTheMode) {
  SimulatedMenu menu(directDrive());
  const Bytes factory = menu.report();
  for (int set = 1; set <= SimulatedMenu::setCount; ++set) {
    menu.select(set);
    menu.put(forceFeedback, 1);
  }
  menu.toggleMode();
  menu.reset();
  EXPECT_EQ(menu.report(), factory);
  for (int set = 1; set <= SimulatedMenu::setCount; ++set) {
    menu.select(set);
    EXPECT_EQ(snapshot(menu).value(forceFeedback, directDrive()), 100);
  }
}

TEST(SimulatedMenu, LossOfPowerRestoresSetAOnly) {
  SimulatedMenu menu(directDrive());
  const SimulatedMenu::State factory = menu.state();
  for (int set = 1; set <= SimulatedMenu::setCount; ++set) {
    menu.select(set);
    menu.put(forceFeedback, 10L + set);
  }
  SimulatedMenu::State expected = menu.state();
  expected.sets.front() = factory.sets.front();
  menu.boot();
  EXPECT_EQ(menu.state(), expected);
}

TEST(SimulatedMenu, TakesEveryByteOfEveryParameterThatIsInItsRangeAndNoOther) {
  for (const FanatecProduct& each : productsWithAMenu()) {
    for (const TuningParameter parameter : TuningParameter::available(each)) {
      if (parameter == slot) continue;
      const ClosedRange range = parameter.allowedRange(each);
      for (int raw = 0; raw <= 0xFF; ++raw) {
        SimulatedMenu menu(each);
        const Bytes before = menu.report();
        const auto byte = static_cast<std::uint8_t>(raw);
        const std::int64_t value = parameter.decode(byte, each);
        const bool automatic =
            parameter == sensitivity && each.autoRotation > 0 && value == each.autoRotation;
        Bytes written = menuBytes(menu);
        written[parameter.offset() - 3] = byte;
        menu.write(written);
        Bytes expected = before;
        if (automatic || range.contains(value)) expected[parameter.offset()] = byte;
        ASSERT_EQ(menu.report(), expected)
            << fmt::format("{} {} = 0x{:02x}", each.name, parameter.code(), raw);
      }
    }
  }
}

TEST(SimulatedMenu, BytesOfNoParameterKeepTheirValue) {
  for (const FanatecProduct& each : productsWithAMenu()) {
    std::set<std::size_t> known;
    for (const TuningParameter parameter : TuningParameter::available(each)) {
      known.insert(parameter.offset());
    }
    SimulatedMenu menu(each);
    const Bytes before = menu.report();
    menu.write(Bytes(61, 1));
    for (std::size_t i = 0; i < before.size(); ++i) {
      if (known.contains(i)) continue;
      EXPECT_EQ(menu.report()[i], before[i]) << each.name << " " << i;
    }
  }
}

TEST(SimulatedMenu, AWriteThatIsTooShortChangesWhatItReaches) {
  SimulatedMenu menu(directDrive());
  Bytes expected = menu.report();
  menu.write({});
  EXPECT_EQ(menu.report(), expected);
  Bytes written = menuBytes(menu);
  written.resize(2);
  written[1] = 42;
  menu.write(written);
  expected[4] = 42;
  EXPECT_EQ(menu.report(), expected);
}

TEST(SimulatedMenu, AWriteChangesTheActiveSetOnly) {
  SimulatedMenu menu(directDrive());
  menu.select(2);
  Bytes written = menuBytes(menu);
  written[1] = 42;
  menu.write(written);
  EXPECT_EQ(snapshot(menu).value(forceFeedback, directDrive()), 42);
  menu.select(1);
  EXPECT_EQ(snapshot(menu).value(forceFeedback, directDrive()), 100);
}

TEST(SimulatedMenu, PutsDisplayValues) {
  SimulatedMenu menu(directDrive());
  menu.put(sensitivity, 0);
  EXPECT_EQ(snapshot(menu).value(sensitivity, directDrive()), 2530);
  menu.put(sensitivity, 1080);
  EXPECT_EQ(snapshot(menu).value(sensitivity, directDrive()), 1080);
  EXPECT_THROW(menu.put(forceFeedback, 101), FanatecError);
  EXPECT_THROW(menu.put(driftMode, 0), FanatecError);
}

TEST(SimulatedMenuDeathTest, AProductWithoutAMenuStopsTheProgram) {
  EXPECT_DEATH(SimulatedMenu(product(0x6204)),
               "a simulated base needs a product with a tuning menu");
}

TEST(SimulatedMenu, TakesBackAStateOfItsOwnProduct) {
  for (const FanatecProduct& each : productsWithAMenu()) {
    SimulatedMenu menu(each);
    const SimulatedMenu::State factory = menu.state();
    menu.select(3);
    menu.toggleMode();
    menu.put(forceFeedback, 37);
    const SimulatedMenu::State state = menu.state();
    EXPECT_NE(state, factory);
    SimulatedMenu other(each);
    ASSERT_TRUE(other.canHave(state)) << each.name;
    other.restore(state);
    EXPECT_EQ(other.state(), state);
    EXPECT_EQ(other.report(), menu.report());
    other.reset();
    EXPECT_EQ(other.state(), factory);
  }
}

TEST(SimulatedMenu, KnowsWhatItCannotHave) {
  const SimulatedMenu menu(directDrive());
  const auto can = [&](const std::function<void(SimulatedMenu::State&)>& change) {
    SimulatedMenu::State state = menu.state();
    change(state);
    return menu.canHave(state);
  };
  EXPECT_TRUE(can([](auto&) {}));
  EXPECT_TRUE(can([](auto& state) { state.activeSet = 5; }));
  EXPECT_FALSE(can([](auto& state) { state.activeSet = 0; }));
  EXPECT_FALSE(can([](auto& state) { state.activeSet = 6; }));
  EXPECT_TRUE(can([](auto& state) { state.sets[4][1] = 37; }));
  EXPECT_FALSE(can([](auto& state) { state.sets[4][1] = 101; }));
  EXPECT_FALSE(can([](auto& state) { state.sets[0].back() = 1; }));
}

}  // namespace
}  // namespace quorvane
