#include "session/menu_writer.h"

#include <utility>

namespace quorvane {

MenuWriter::MenuWriter(WheelBase& base, std::optional<TuningSnapshot> menu)
    : base_(base), menu_(std::move(menu)) {}

TuningSnapshot MenuWriter::write(TuningParameter parameter, std::int64_t value) {
  TuningSnapshot readBack = base_.set(parameter, value, true, menu_).value();
  // What the base makes of its mode byte by the write itself is no other set.
  const bool isThere = menu_ && readBack.slot() == menu_->slot();
  if (isThere || parameter == TuningParameter::slot) menu_ = readBack;
  return readBack;
}

}  // namespace quorvane
