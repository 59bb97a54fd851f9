#include "simulator/simulated_state_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <utility>

#include "presets/decoding_error.h"
#include "simulator/simulated_base.h"
#include "support/file.h"
#include "support/shared_file.h"

namespace quorvane {
namespace {

using std::filesystem::path;
using States = std::vector<SimulatedState>;
using Products = std::vector<FanatecProduct>;

constexpr std::uint64_t longestStateFile = std::uint64_t{1} << 20;  // 1 MiB

// The content; none when there is no file.
std::optional<std::string> contentOf(const path& file) {
  try {
    return readFile(file, longestStateFile);
  } catch (const FileError& error) {
    if (error.isMissingFile()) return std::nullopt;
    throw;
  }
}

States freshStates(const Products& products) {
  States states;
  std::transform(products.begin(), products.end(), std::back_inserter(states),
                 [](const FanatecProduct& product) -> SimulatedState {
                   return {product.productID, SimulatedBase(product).menu().state()};
                 });
  return states;
}

bool areOf(const States& states, const Products& products) {
  return std::equal(states.begin(), states.end(), products.begin(), products.end(),
                    [](const SimulatedState& state, const FanatecProduct& product) {
                      return state.productID == product.productID;
                    });
}

// The option that simulates the bases of a file.
std::string optionFor(const States& states) {
  std::string option = "--simulate=";
  for (const SimulatedState& state : states) {
    option += fmt::format("{}{:04x}", option.ends_with('=') ? "" : ",", state.productID);
  }
  return option;
}

States statesIn(const path& file, const std::string& content, const Products& products) {
  try {
    States states = decodeStates(content);
    if (areOf(states, products)) return states;
    throw DecodingError(fmt::format("It is of other simulated bases; name another file, or use {}",
                                    optionFor(states)));
  } catch (const DecodingError& error) {
    throw DecodingError(fmt::format("{}: {}", file.string(), error.what()));
  }
}

template <typename Value>
void takeChange(Value& kept, const Value& before, const Value& after) {
  if (after != before) kept = after;
}

void takeChanges(SimulatedMenu::State& kept, const SimulatedMenu::State& before,
                 const SimulatedMenu::State& after) {
  for (std::size_t set = 0; set < kept.sets.size(); ++set) {
    for (std::size_t i = 0; i < kept.sets[set].size(); ++i) {
      takeChange(kept.sets[set][i], before.sets[set][i], after.sets[set][i]);
    }
  }
  takeChange(kept.activeSet, before.activeSet, after.activeSet);
  takeChange(kept.isAdvanced, before.isAdvanced, after.isAdvanced);
}

}  // namespace

class SimulatedStateFile::Storage final : public MenuStorage {
 public:
  Storage(SimulatedStateFile file, std::size_t number) : file_(std::move(file)), number_(number) {}

  std::optional<SimulatedMenu::State> read() override {
    const auto content = contentOf(file_.path_);
    if (!content) return std::nullopt;
    return statesIn(file_.path_, *content, file_.products_).at(number_).menu;
  }

  SimulatedMenu::State change(const SimulatedMenu::State& before,
                              const SimulatedMenu::State& after) override {
    SimulatedMenu::State menu;
    SharedFile(file_.path_).change([&](const std::optional<std::string>& content) {
      States states =
          content ? statesIn(file_.path_, *content, file_.products_) : freshStates(file_.products_);
      SimulatedMenu::State& kept = states.at(number_).menu;
      if (content) {
        takeChanges(kept, before, after);
      } else {
        kept = after;
      }
      menu = kept;
      return SharedFile::Update{encodeStates(states), std::nullopt};
    });
    return menu;
  }

 private:
  const SimulatedStateFile file_;
  const std::size_t number_;
};

SimulatedStateFile::SimulatedStateFile(path path, Products products)
    : path_(std::move(path)), products_(std::move(products)) {}

std::unique_ptr<MenuStorage> SimulatedStateFile::storage(std::size_t number) const {
  return std::make_unique<Storage>(*this, number);
}

}  // namespace quorvane
