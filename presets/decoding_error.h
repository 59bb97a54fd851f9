#pragma once

#include <stdexcept>

namespace quorvane {

// A text that does not hold what it should; what() says in plain words where and why.
class DecodingError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quorvane
