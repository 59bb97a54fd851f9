#pragma once

#include <exception>
#include <string>

namespace quorvane {

// What a person reads when the operation fails; "no error" when it does not.
template <typename Operation>
std::string errorText(const Operation& operation) {
  try {
    operation();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "no error";
}

}  // namespace quorvane
