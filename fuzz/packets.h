#pragma once

#include <array>
#include <cstddef>

#include "fuzz/input.h"
#include "protocol/product.h"
#include "support/bytes.h"

namespace quorvane::Fuzz {

// How a well-formed packet begins, and how long it is.
struct PacketForm {
  Bytes beginning;
  std::size_t length = 0;
};

// The next packet of an input. Its first byte has the kind in the upper two bits and a length in
// the others: kind 0 is twice so many bytes as they are; the others are packets of the three forms,
// so many bytes after the beginning and zeros up to the form's length.
Bytes nextPacket(Input& input, const std::array<PacketForm, 3>& forms);

// One of the products that can be simulated.
FanatecProduct nextProduct(Input& input);

}  // namespace quorvane::Fuzz
