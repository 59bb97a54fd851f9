#include "cli/input_file.h"

#include <unistd.h>

#include "cli/context.h"
#include "presets/preset_store.h"
#include "support/read_pipe.h"

namespace quorvane {
namespace {

constexpr const char* standardInputName = "standard input";

}  // namespace

InputFile readInputFile(const std::string& file) {
  constexpr std::uint64_t longest = PresetStore::longestImport;
  if (file == standardInput) {
    return {standardInputName, readToEnd(STDIN_FILENO, standardInputName, longest)};
  }
  const auto piped = readPipe(file, longest);
  return {file, piped ? *piped : readFile(file, longest)};
}

}  // namespace quorvane
