#include "simulator/menu_keeper.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "simulator/simulated_device.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;

FanatecProduct keptProduct() { return FanatecProduct::lookup(0x0020).value(); }

// The content of a storage in memory, which the test can change, or make fail.
struct Kept {
  std::optional<SimulatedMenu::State> state;
  bool fails = false;
  int changes = 0;
};

class MemoryStorage final : public MenuStorage {
 public:
  explicit MemoryStorage(Kept& kept) : kept_(kept) {}

  std::optional<SimulatedMenu::State> read() override {
    requireWorking();
    return kept_.state;
  }

  SimulatedMenu::State change(const SimulatedMenu::State& before,
                              const SimulatedMenu::State& after) override {
    requireWorking();
    ++kept_.changes;
    if (!kept_.state) kept_.state = before;
    SimulatedMenu::State& state = *kept_.state;
    for (std::size_t set = 0; set < state.sets.size(); ++set) {
      for (std::size_t i = 0; i < state.sets[set].size(); ++i) {
        const std::uint8_t now = after.sets[set][i];
        if (now != before.sets[set][i]) state.sets[set][i] = now;
      }
    }
    if (after.activeSet != before.activeSet) state.activeSet = after.activeSet;
    if (after.isAdvanced != before.isAdvanced) state.isAdvanced = after.isAdvanced;
    return state;
  }

 private:
  void requireWorking() const {
    if (kept_.fails) throw std::runtime_error("my.state: the disk is full");
  }

  Kept& kept_;
};

class MenuKeeperTest : public testing::Test {
 protected:
  // Opens the base with the storage.
  void open() {
    device_->keepMenuIn(std::make_unique<MemoryStorage>(kept_),
                        [this](const std::string& reason) { complaints_.push_back(reason); });
    port_ = device_->open(false).port;
  }

  HIDReturn send(const Bytes& payload) {
    Bytes packet(64);
    packet[0] = 0xFF;
    std::copy(payload.begin(), payload.end(), packet.begin() + 1);
    return port_->write(0xFF, packet);
  }

  // Writes one value over the menu `seen`, the last one that the writer has read.
  HIDReturn write(SimulatedMenu seen, TuningParameter parameter, std::int64_t value) {
    seen.put(parameter, value);
    const Bytes report = seen.report();
    Bytes payload{0x03, 0x00, static_cast<std::uint8_t>(seen.activeSet())};
    payload.insert(payload.end(), report.begin() + 3, report.end() - 1);
    return send(payload);
  }

  SimulatedMenu menu() {
    std::optional<SimulatedMenu> menu;
    device_->withBase([&](SimulatedBase& base) { menu = base.menu(); });
    return *menu;
  }

  // Changes the stored menu, as another process does.
  void changeElsewhere(const std::function<void(SimulatedMenu&)>& change) {
    SimulatedMenu other(keptProduct());
    other.restore(kept_.state.value_or(SimulatedBase(keptProduct()).menu().state()));
    change(other);
    kept_.state = other.state();
  }

  static SimulatedMenu::State with(SimulatedMenu menu, TuningParameter parameter,
                                   std::int64_t value) {
    menu.put(parameter, value);
    return menu.state();
  }

  Kept kept_;
  std::vector<std::string> complaints_;
  std::shared_ptr<SimulatedDevice> device_ =
      SimulatedDevice::create(keptProduct(), SimulatedDevice::Time::simulated);
  std::unique_ptr<HIDPort> port_;
};

TEST_F(MenuKeeperTest, ABaseStartsWithWhatIsKept) {
  changeElsewhere([](SimulatedMenu& menu) { menu.select(4); });
  open();
  EXPECT_EQ(menu().state(), kept_.state);
}

TEST_F(MenuKeeperTest, EveryCommandThatChangesTheMenuIsKeptAtOnce) {
  open();
  const SimulatedMenu before = menu();
  EXPECT_EQ(write(before, forceFeedback, 37), HIDReturnCode::success);
  EXPECT_EQ(kept_.state, with(before, forceFeedback, 37));
  for (const Bytes& command :
       {Bytes{0x03, 0x03, 5}, Bytes{0x03, 0x01, 4}, Bytes{0x03, 0x06}, Bytes{0x03, 0x04}}) {
    const int changes = kept_.changes;
    EXPECT_EQ(send(command), HIDReturnCode::success);
    EXPECT_EQ(kept_.changes, changes + 1) << int{command[1]};
    EXPECT_EQ(menu().state(), kept_.state) << int{command[1]};
  }
}

TEST_F(MenuKeeperTest, WhatChangesNothingIsNotKept) {
  open();
  const SimulatedMenu before = menu();
  write(before, forceFeedback, 65);
  send({0x03, 0x02});
  send({0x03, 0x01, 2});
  port_->write(0x01, Bytes{0x01, 0xF5, 0, 0, 0, 0, 0, 0});
  EXPECT_EQ(kept_.changes, 0);
}

TEST_F(MenuKeeperTest, ARequestIsAnsweredWithWhatIsKeptNow) {
  open();
  changeElsewhere([](SimulatedMenu& menu) { menu.put(forceFeedback, 37); });
  send({0x03, 0x02});
  EXPECT_EQ(menu().state(), kept_.state);
}

TEST_F(MenuKeeperTest, AWriteDoesNotUndoWhatAnotherProcessWroteSinceTheMenuWasRead) {
  open();
  const SimulatedMenu seen = menu();
  changeElsewhere([](SimulatedMenu& menu) { menu.put(forceFeedback, 37); });
  EXPECT_EQ(write(seen, sensitivity, 540), HIDReturnCode::success);
  SimulatedMenu both = seen;
  both.put(forceFeedback, 37);
  EXPECT_EQ(kept_.state, with(both, sensitivity, 540));
  EXPECT_EQ(menu().state(), kept_.state);
}

TEST_F(MenuKeeperTest, AResetTakesBackWhatAnotherProcessWroteToo) {
  open();
  changeElsewhere([](SimulatedMenu& menu) { menu.put(forceFeedback, 37); });
  send({0x03, 0x04});
  EXPECT_EQ(kept_.state, SimulatedMenu(keptProduct()).state());
}

TEST_F(MenuKeeperTest, AChangeThatCannotBeKeptFailsAndIsUndone) {
  open();
  const SimulatedMenu before = menu();
  kept_.fails = true;
  EXPECT_EQ(write(before, forceFeedback, 37), HIDReturnCode::generalError);
  EXPECT_EQ(send({0x03, 0x01, 4}), HIDReturnCode::generalError);
  EXPECT_EQ(menu().state(), before.state());
  EXPECT_EQ(complaints_, std::vector<std::string>(2, "my.state: the disk is full"));
  kept_.fails = false;
  EXPECT_EQ(write(before, forceFeedback, 37), HIDReturnCode::success);
  EXPECT_EQ(kept_.state, with(before, forceFeedback, 37));
}

TEST_F(MenuKeeperTest, AStorageThatFailsAtTheStartIsNotUsed) {
  kept_.fails = true;
  EXPECT_THROW(open(), std::runtime_error);
}

}  // namespace
}  // namespace quorvane
