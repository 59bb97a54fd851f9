#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "protocol/product.h"

// The option --simulate[=PRODUCT[,PRODUCT...]] that all programs have.
namespace quorvane {

// Replaces each word "--simulate" before "--" by the option with the default product. The option
// takes a product after "=" only; the next word of the command line is never its value.
std::vector<std::string> withSimulatedProduct(std::vector<std::string> words);

// Checks the option --simulate-state=FILE. Throws std::invalid_argument, with a message for the
// user, when the file name is empty or --simulate is missing.
void requireBasesForState(const std::string& file, bool isSimulating);

// The products in the option's value, one base for each. Throws std::invalid_argument, with a
// message for the user, unless each names one product with a tuning menu.
std::vector<FanatecProduct> productsToSimulate(const std::string& text);

}  // namespace quorvane
