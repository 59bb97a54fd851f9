#pragma once

#include <cstdint>
#include <optional>

#include "session/menu_writer.h"
#include "session/value_receipt.h"
#include "support/clock.h"

namespace quorvane {

// Writes several values one by one into the same set, like MenuWriter, and reports what became of
// each. An error of the base is in the receipt instead of being thrown.
class ReceiptWriter {
 public:
  // As for MenuWriter. The clock measures the writes; base and clock must outlive this.
  ReceiptWriter(WheelBase& base, const std::optional<TuningSnapshot>& menu, Clock& clock);

  // Writes and verifies one value. Blocks like WheelBase::set().
  ValueReceipt write(TuningParameter parameter, std::int64_t value);

 private:
  void write(ValueReceipt& receipt);
  std::optional<std::int64_t> valueIn(const std::optional<TuningSnapshot>& menu,
                                      TuningParameter parameter) const;

  WheelBase& base_;
  Clock& clock_;
  MenuWriter writer_;
};

}  // namespace quorvane
