#include "simulator/simulated_state_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "presets/decoding_error.h"
#include "simulator/simulated_base.h"
#include "support/file.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;
using Products = std::vector<FanatecProduct>;

FanatecProduct productOf(std::int64_t productID) {
  return FanatecProduct::lookup(productID).value();
}

SimulatedMenu::State freshState(std::int64_t productID) {
  return SimulatedBase(productOf(productID)).menu().state();
}

// The state after a change of the menu.
SimulatedMenu::State changed(const SimulatedMenu::State& state,
                             const std::function<void(SimulatedMenu&)>& change) {
  SimulatedMenu menu(productOf(0x0020));
  menu.restore(state);
  change(menu);
  return menu.state();
}

class SimulatedStateFileTest : public testing::Test {
 protected:
  std::unique_ptr<MenuStorage> storage(std::size_t number = 0,
                                       const Products& products = {productOf(0x0020)}) const {
    return SimulatedStateFile(file_, products).storage(number);
  }

  std::string refusal(const std::function<void()>& action) const {
    try {
      action();
    } catch (const std::runtime_error& error) {
      const std::string text = error.what();
      EXPECT_TRUE(text.starts_with(file_.string() + ": ")) << text;
      return text.substr(std::min(text.size(), file_.string().size() + 2));
    }
    return "none";
  }

  const TemporaryDirectory directory_;
  const std::filesystem::path file_ = directory_ / "my.state";
  const SimulatedMenu::State fresh_ = freshState(0x0020);
  const SimulatedMenu::State weak_ =
      changed(fresh_, [](SimulatedMenu& menu) { menu.put(forceFeedback, 37); });
  const SimulatedMenu::State narrow_ =
      changed(fresh_, [](SimulatedMenu& menu) { menu.put(sensitivity, 540); });
};

TEST_F(SimulatedStateFileTest, IsMadeByTheFirstChange) {
  EXPECT_EQ(storage()->read(), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(file_));
  EXPECT_EQ(storage()->change(fresh_, weak_), weak_);
  EXPECT_EQ(storage()->read(), weak_);
}

TEST_F(SimulatedStateFileTest, TakesOnlyWhatWasChanged) {
  storage()->change(fresh_, weak_);
  const auto both = changed(weak_, [](SimulatedMenu& menu) { menu.put(sensitivity, 540); });
  EXPECT_EQ(storage()->change(fresh_, narrow_), both);
  const auto other = changed(both, [](SimulatedMenu& menu) {
    menu.select(4);
    menu.toggleMode();
  });
  const auto otherOfFresh = changed(fresh_, [](SimulatedMenu& menu) {
    menu.select(4);
    menu.toggleMode();
  });
  EXPECT_EQ(storage()->change(fresh_, otherOfFresh), other);
  EXPECT_EQ(storage()->change(weak_, fresh_).sets, changed(other, [](SimulatedMenu& menu) {
                                                     menu.select(2);
                                                     menu.put(forceFeedback, 65);
                                                   }).sets);
}

TEST_F(SimulatedStateFileTest, HasAnEntryForEachBase) {
  const Products both{productOf(0x0006), productOf(0x0020)};
  EXPECT_EQ(storage(1, both)->change(fresh_, weak_), weak_);
  EXPECT_EQ(storage(0, both)->read(), freshState(0x0006));
  EXPECT_EQ(storage(1, both)->read(), weak_);
  EXPECT_EQ(refusal([&] { storage(0, {productOf(0x0020)})->read(); }),
            "It is of other simulated bases; name another file, or use --simulate=0006,0020");
}

TEST_F(SimulatedStateFileTest, AFileOfAnotherProductIsNotTouched) {
  storage()->change(fresh_, weak_);
  const std::string before = contentOf(file_);
  const std::string reason =
      "It is of other simulated bases; name another file, or use --simulate=0020";
  const auto state = freshState(0x0006);
  EXPECT_EQ(refusal([&] { storage(0, {productOf(0x0006)})->read(); }), reason);
  EXPECT_EQ(refusal([&] { storage(0, {productOf(0x0006)})->change(state, state); }), reason);
  EXPECT_EQ(contentOf(file_), before);
}

TEST_F(SimulatedStateFileTest, ABrokenOrForeignFileIsNotTouched) {
  for (const std::string& content :
       {std::string(), std::string("[]"), std::string("{"), std::string(4096, 'x')}) {
    putFile(file_, content);
    EXPECT_NE(refusal([&] { storage()->read(); }), "none") << content;
    EXPECT_NE(refusal([&] { storage()->change(fresh_, weak_); }), "none") << content;
    EXPECT_EQ(contentOf(file_), content);
  }
  std::filesystem::remove(file_);
  std::filesystem::create_directory(file_);
  EXPECT_EQ(refusal([&] { storage()->read(); }), "Is a directory");
  EXPECT_EQ(refusal([&] { storage()->change(fresh_, weak_); }), "Is a directory");
}

TEST_F(SimulatedStateFileTest, ALongFileIsRefusedUnread) {
  putFile(file_, std::string((std::size_t{1} << 20) + 1, ' '));
  EXPECT_EQ(refusal([&] { storage()->read(); }), "Longer than 1 MiB");
}

TEST_F(SimulatedStateFileTest, AFolderThatIsNoneIsAnError) {
  putFile(directory_ / "file", "");
  const SimulatedStateFile missing(directory_ / "file/my.state", {productOf(0x0020)});
  EXPECT_THROW(missing.storage(0)->read(), FileError);
  EXPECT_THROW(missing.storage(0)->change(fresh_, weak_), FileError);
}

// Every process changes its own byte in its own set repeatedly.
TEST_F(SimulatedStateFileTest, ProcessesAtTheSameTimeLoseNothing) {
  constexpr int rounds = 40;
  std::vector<std::unique_ptr<ChildProcess>> processes;
  for (const int set : {1, 3, 4, 5}) {
    processes.push_back(std::make_unique<ChildProcess>([this, set]() -> std::string {
      SimulatedMenu menu(productOf(0x0020));
      menu.restore(fresh_);
      menu.select(set);
      menu.put(forceFeedback, 99);
      for (int round = 1; round <= rounds; ++round) {
        const auto before = menu.state();
        menu.put(forceFeedback, round);
        storage()->change(before, menu.state());
      }
      return "done";
    }));
  }
  for (const auto& process : processes) EXPECT_EQ(process->end(), "done");
  auto wanted = fresh_;
  for (const int set : {1, 3, 4, 5}) {
    wanted = changed(wanted, [set](SimulatedMenu& menu) {
      menu.select(set);
      menu.put(forceFeedback, rounds);
    });
  }
  EXPECT_EQ(storage()->read()->sets, wanted.sets);
}

}  // namespace
}  // namespace quorvane
