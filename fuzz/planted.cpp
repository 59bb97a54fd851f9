#include <string_view>

#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "support/invariant.h"

namespace quorvane::Fuzz {

void planted(ByteView bytes) {
  invariant(!textOf(bytes).starts_with("bug!"), "the planted property holds");
}

}  // namespace quorvane::Fuzz
