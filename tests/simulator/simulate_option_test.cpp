#include "simulator/simulate_option.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

using Words = std::vector<std::string>;
using IDs = std::vector<std::int64_t>;

IDs simulated(const std::string& text) {
  IDs ids;
  for (const FanatecProduct& product : productsToSimulate(text)) ids.push_back(product.productID);
  return ids;
}

std::string refusal(const std::string& text) {
  try {
    productsToSimulate(text);
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "none";
}

TEST(SimulateOption, StandsForAProductWhenItIsAlone) {
  EXPECT_EQ(withSimulatedProduct({}), Words{});
  EXPECT_EQ(withSimulatedProduct({"--simulate", "read"}), (Words{"--simulate=0x0020", "read"}));
  EXPECT_EQ(withSimulatedProduct({"read", "--simulate=DD1"}), (Words{"read", "--simulate=DD1"}));
  EXPECT_EQ(withSimulatedProduct({"--", "--simulate"}), (Words{"--", "--simulate"}));
  EXPECT_EQ(withSimulatedProduct({"--simulate-state", "a"}), (Words{"--simulate-state", "a"}));
}

TEST(SimulateOption, NamesAProductWithAMenu) {
  EXPECT_EQ(simulated("0x0020"), (IDs{0x0020}));
  EXPECT_EQ(simulated("dd1"), (IDs{0x0006}));
}

TEST(SimulateOption, NamesSeveralProductsWithCommas) {
  EXPECT_EQ(simulated("dd1,0x0020,DD1"), (IDs{0x0006, 0x0020, 0x0006}));
}

TEST(SimulateOption, EveryPartOfAListHasToNameAProduct) {
  for (const auto& [text, wrong] : std::vector<std::pair<std::string, std::string>>{
           {"dd1,", ""}, {",dd1", ""}, {"dd1,,dd1", ""}, {"dd1;dd2", "dd1;dd2"}}) {
    EXPECT_EQ(refusal(text).substr(0, wrong.size() + 16), "\"" + wrong + "\" does not name")
        << text;
  }
}

TEST(SimulateOption, SaysWhichProductsThereAreWhenTheTextNamesNone) {
  for (const char* const text : {"toaster", "", "Podium", "0xFFFF"}) {
    const std::string message = refusal(text);
    EXPECT_TRUE(message.starts_with(std::string("\"") + text + "\" does not name one product"))
        << message;
    EXPECT_NE(message.find("\n  0x0020  CSL DD"), std::string::npos) << message;
  }
}

TEST(SimulateOption, AStateIsOneOfSimulatedBases) {
  const auto refused = [](const std::string& file, bool isSimulating) -> std::string {
    try {
      requireBasesForState(file, isSimulating);
    } catch (const std::invalid_argument& error) {
      return error.what();
    }
    return "none";
  };
  EXPECT_EQ(refused("my.state", true), "none");
  EXPECT_EQ(refused("my.state", false),
            "--simulate-state keeps what a simulated base is set to: add --simulate");
  EXPECT_EQ(refused("", true), "--simulate-state takes the name of a file");
}

}  // namespace
}  // namespace quorvane
