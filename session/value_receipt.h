#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "protocol/tuning_parameter.h"

namespace quorvane {

// What became of one value that was to be written. Values are in display units, as
// TuningParameter::encode() takes them.
struct ValueReceipt {
  TuningParameter parameter = TuningParameter::slot;
  std::optional<std::int64_t> was;  // right before the write; none when it is not known
  std::int64_t wanted = 0;
  std::optional<std::int64_t> readBack;  // none when it was not read back
  std::int64_t milliseconds = 0;         // that the write took, with its read-back
  std::optional<std::string> error;      // none on success, else the error's description

  bool operator==(const ValueReceipt&) const = default;
};

}  // namespace quorvane
