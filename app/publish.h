#pragma once

#include <utility>

#include "app/app_model.h"

namespace quorvane {

// Sets a field of the model and emits changed(); does nothing if the value is equal.
template <typename Field, typename Value>
void AppModel::publish(Field& field, Value&& value) {
  if (field == value) return;
  field = std::forward<Value>(value);
  emit changed();
}

}  // namespace quorvane
