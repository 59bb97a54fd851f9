#include "simulator/simulate_option.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace quorvane {
namespace {

using Words = std::vector<std::string>;

TEST(SimulateOption, StandsForAProductWhenItIsAlone) {
  EXPECT_EQ(withSimulatedProduct({}), Words{});
  EXPECT_EQ(withSimulatedProduct({"--simulate", "read"}), (Words{"--simulate=0x0020", "read"}));
  EXPECT_EQ(withSimulatedProduct({"read", "--simulate=DD1"}), (Words{"read", "--simulate=DD1"}));
  EXPECT_EQ(withSimulatedProduct({"--", "--simulate"}), (Words{"--", "--simulate"}));
}

TEST(SimulateOption, NamesAProductWithAMenu) {
  EXPECT_EQ(productToSimulate("0x0020").productID, 0x0020);
  EXPECT_EQ(productToSimulate("dd1").productID, 0x0006);
}

TEST(SimulateOption, SaysWhichProductsThereAreWhenTheTextNamesNone) {
  for (const char* const text : {"toaster", "", "Podium", "0xFFFF"}) {
    try {
      productToSimulate(text);
      ADD_FAILURE() << text;
    } catch (const std::invalid_argument& error) {
      const std::string message = error.what();
      EXPECT_TRUE(message.starts_with(std::string("\"") + text + "\" does not name one product"))
          << message;
      EXPECT_NE(message.find("\n  0x0020  CSL DD"), std::string::npos) << message;
    }
  }
}

}  // namespace
}  // namespace quorvane
