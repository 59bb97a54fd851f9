#include <cstdio>
#include <exception>
#include <system_error>

#include "cli/command_line.h"
#include "support/printing.h"
#include "support/standard_streams.h"
#include "support/text.h"

namespace {

using quorvane::ExitStatus;

ExitStatus run(const std::vector<std::string>& words) {
  try {
    return quorvane::runCommandLine(words, quorvane::World{});
  } catch (const std::exception& error) {  // such as std::bad_alloc
    quorvane::printTo(stderr, "{}\n", quorvane::oneLine(error.what()));
    return ExitStatus::failed;
  }
}

// Whether all output was written; false after a full disk or a closed pipe.
bool allWritten() {
  const int error = quorvane::finishStandardOutput();
  if (error == 0) return true;
  quorvane::printTo(stderr, "Could not write the output: {}\n",
                    std::generic_category().message(error));
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  quorvane::prepareStandardStreams();
  ExitStatus status = run({argv + 1, argv + argc});
  if (!allWritten() && status == ExitStatus::done) status = ExitStatus::failed;
  return static_cast<int>(status);
}
