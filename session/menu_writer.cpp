#include "session/menu_writer.h"

#include "protocol/error.h"

namespace quorvane {

MenuWriter::MenuWriter(WheelBase& base, const std::optional<TuningSnapshot>& menu)
    : base_(base), meant_(menu) {}

TuningSnapshot MenuWriter::write(TuningParameter parameter, std::int64_t value) {
  if (parameter == TuningParameter::slot) return switchTo(value);
  TuningSnapshot readBack = base_.set(parameter, value, true, meant_).value();
  // Compare the set number only: a write can flip the mode bit in the reply without changing the
  // set.
  if (meant_ && readBack.slot() == meant_->slot) meant_ = readBack;
  return readBack;
}

TuningSnapshot MenuWriter::switchTo(std::int64_t set) {
  const auto latest = base_.tuning();
  const bool isAdvanced = meant_ ? meant_->isAdvanced : latest && latest->isAdvancedMode();
  meant_ = MenuPlace(set, isAdvanced);
  // Throws outOfRange: WheelBase::set() does not check a set's number.
  TuningParameter(TuningParameter::slot).encode(set, std::nullopt);
  TuningSnapshot readBack = base_.set(TuningParameter::slot, set, true).value();
  if (readBack.slot() != set) {
    throw FanatecError::writeIgnored(TuningParameter::slot, readBack.slot());
  }
  meant_ = readBack;
  return readBack;
}

}  // namespace quorvane
