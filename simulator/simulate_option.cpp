#include "simulator/simulate_option.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "simulator/simulated_base.h"
#include "support/text.h"

namespace quorvane {
namespace {

FanatecProduct productToSimulate(const std::string& text) {
  if (const auto product = simulatableProduct(text)) return *product;
  std::string message =
      fmt::format("\"{}\" does not name one product with a tuning menu. There are:", oneLine(text));
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.hasTuningMenu()) {
      message += fmt::format("\n  0x{:04x}  {}", product.productID, product.name);
    }
  }
  throw std::invalid_argument(message);
}

}  // namespace

std::vector<std::string> withSimulatedProduct(std::vector<std::string> words) {
  for (std::string& word : words) {
    if (word == "--") break;
    if (word == "--simulate") word += fmt::format("=0x{:04x}", defaultSimulatedProduct);
  }
  return words;
}

void requireBasesForState(const std::string& file, bool isSimulating) {
  if (file.empty()) throw std::invalid_argument("--simulate-state takes the name of a file");
  if (!isSimulating) {
    throw std::invalid_argument(
        "--simulate-state keeps what a simulated base is set to: add --simulate");
  }
}

std::vector<FanatecProduct> productsToSimulate(const std::string& text) {
  std::vector<FanatecProduct> products;
  std::size_t begin = 0;
  std::size_t end = 0;
  do {
    end = std::min(text.find(',', begin), text.size());
    products.push_back(productToSimulate(text.substr(begin, end - begin)));
    begin = end + 1;
  } while (end < text.size());
  return products;
}

}  // namespace quorvane
