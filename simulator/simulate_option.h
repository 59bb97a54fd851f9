#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "protocol/product.h"

// The option --simulate[=PRODUCT] that all programs have.
namespace quorvane {

// The words of a command line with the product that --simulate alone stands for: it takes one with
// "=" only, since the word after it means something else.
std::vector<std::string> withSimulatedProduct(std::vector<std::string> words);

// The product that the text of the option names. Throws std::invalid_argument, in words for the
// person who typed it, unless it is one with a tuning menu.
FanatecProduct productToSimulate(const std::string& text);

}  // namespace quorvane
