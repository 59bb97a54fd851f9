#pragma once

#include <array>
#include <cstddef>

#include "fuzz/input.h"
#include "protocol/product.h"
#include "support/bytes.h"

namespace quorvane::Fuzz {

// The first bytes and the length of a well-formed packet.
struct PacketForm {
  Bytes beginning;
  std::size_t length = 0;
};

// The next packet of an input. The first byte has the kind in the upper two bits and a length N in
// the others. Kind 0: the next 2 * N bytes, unchanged. Kinds 1 to 3: a packet of that form, with
// the next N bytes after its beginning, resized with zeros to the form's length.
Bytes nextPacket(Input& input, const std::array<PacketForm, 3>& forms);

// Picks a product with a tuning menu by the next byte.
FanatecProduct nextProduct(Input& input);

}  // namespace quorvane::Fuzz
