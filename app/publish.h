#pragma once

#include <utility>

#include "app/app_model.h"

namespace quorvane {

// Changes a field of the model and says so; an equal value changes nothing.
template <typename Field, typename Value>
void AppModel::publish(Field& field, Value&& value) {
  if (field == value) return;
  field = std::forward<Value>(value);
  emit changed();
}

}  // namespace quorvane
