#pragma once

#include <string>

namespace quorvane {

// The content of an input, and its name in messages.
struct InputFile {
  std::string name;  // the path, or "standard input"
  std::string content;
};

// Reads a file of settings: a regular file, a pipe, or standard input for "-". Blocks until the end
// of a pipe. Throws FileError, also for more than PresetStore::longestImport bytes.
InputFile readInputFile(const std::string& file);

}  // namespace quorvane
