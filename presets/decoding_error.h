#pragma once

#include <stdexcept>

namespace quorvane {

// Text with invalid content; what() is a message for people that says where and why.
class DecodingError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quorvane
