#pragma once

#include <string>

#include "protocol/error.h"

namespace quorvane {

// What a person reads when the operation fails; "no error" when it does not.
template <typename Operation>
std::string errorText(const Operation& operation) {
  try {
    operation();
  } catch (const FanatecError& error) {
    return error.errorDescription();
  }
  return "no error";
}

}  // namespace quorvane
