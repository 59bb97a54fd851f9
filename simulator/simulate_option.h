#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "protocol/product.h"

// The option --simulate[=PRODUCT[,PRODUCT...]] that all programs have.
namespace quorvane {

// The words of a command line with the product that --simulate alone stands for: it takes one with
// "=" only, since the word after it means something else.
std::vector<std::string> withSimulatedProduct(std::vector<std::string> words);

// Throws std::invalid_argument, in words for the person who typed it, unless --simulate and
// --simulate-state go together: the file has a name, and there are bases to keep.
void requireBasesForState(const std::string& file, bool isSimulating);

// The products that the text of the option names, one base for each. Throws std::invalid_argument,
// in words for the person who typed it, unless all of them have a tuning menu.
std::vector<FanatecProduct> productsToSimulate(const std::string& text);

}  // namespace quorvane
