#include "fuzz/packets.h"

#include <vector>

namespace quorvane::Fuzz {

Bytes nextPacket(Input& input, const std::array<PacketForm, 3>& forms) {
  const std::uint8_t lead = input.byte();
  const std::size_t kind = lead >> 6U;
  const std::size_t length = lead & 0x3FU;
  Bytes packet = kind == 0 ? Bytes() : forms.at(kind - 1).beginning;
  const ByteView more = input.bytes(kind == 0 ? 2 * length : length);
  packet.insert(packet.end(), more.begin(), more.end());
  if (kind != 0) packet.resize(forms.at(kind - 1).length);
  return packet;
}

FanatecProduct nextProduct(Input& input) {
  std::vector<FanatecProduct> menus;
  for (const FanatecProduct& product : FanatecProduct::all()) {
    if (product.hasTuningMenu()) menus.push_back(product);
  }
  return menus[input.byte() % menus.size()];
}

}  // namespace quorvane::Fuzz
