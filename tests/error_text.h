#pragma once

#include <exception>
#include <string>

namespace quorvane {

// The text of the exception that the operation throws; "no error" if it throws none.
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
