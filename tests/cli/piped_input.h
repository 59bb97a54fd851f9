#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "support/unique_fd.h"
#include "tests/support/child_process.h"

namespace quorvane {

// RAII: replaces standard input with a pipe that contains some text.
class PipedInput {
 public:
  explicit PipedInput(const std::string& content) : before_(::dup(STDIN_FILENO)) {
    Pipe pipe;
    EXPECT_EQ(::write(pipe.writing.get(), content.data(), content.size()),
              static_cast<ssize_t>(content.size()));
    ::dup2(pipe.reading.get(), STDIN_FILENO);
  }
  ~PipedInput() { ::dup2(before_.get(), STDIN_FILENO); }
  PipedInput(const PipedInput&) = delete;
  PipedInput& operator=(const PipedInput&) = delete;

 private:
  UniqueFd before_;
};

}  // namespace quorvane
