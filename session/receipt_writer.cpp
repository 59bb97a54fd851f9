#include "session/receipt_writer.h"

#include <chrono>
#include <variant>

#include "protocol/error.h"

namespace quorvane {

ReceiptWriter::ReceiptWriter(WheelBase& base, const std::optional<TuningSnapshot>& menu,
                             Clock& clock)
    : base_(base), clock_(clock), writer_(base, menu) {}

ValueReceipt ReceiptWriter::write(TuningParameter parameter, std::int64_t value) {
  ValueReceipt receipt{parameter, valueIn(base_.tuning(), parameter), value, {}, 0, {}};
  const auto begin = clock_.now();
  write(receipt);
  receipt.milliseconds =
      std::chrono::duration_cast<std::chrono::milliseconds>(clock_.now() - begin).count();
  // The session may have read the menu again before the write.
  if (const auto& menu = base_.menuBeforeSet()) receipt.was = valueIn(menu, parameter);
  return receipt;
}

void ReceiptWriter::write(ValueReceipt& receipt) {
  try {
    receipt.readBack = valueIn(writer_.write(receipt.parameter, receipt.wanted), receipt.parameter);
  } catch (const FanatecError& error) {
    receipt.error = error.errorDescription();
    if (const auto* const ignored = std::get_if<FanatecError::WriteIgnored>(&error.value())) {
      receipt.readBack = receipt.parameter.written(ignored->readBack, base_.product());
    }
  }
}

// The value as it would be written.
std::optional<std::int64_t> ReceiptWriter::valueIn(const std::optional<TuningSnapshot>& menu,
                                                   TuningParameter parameter) const {
  if (!menu) return std::nullopt;
  return parameter.written(menu->settingValue(parameter, base_.product()), base_.product());
}

}  // namespace quorvane
