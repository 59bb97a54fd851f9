#include "cli/output_file.h"

#include <filesystem>

#include "support/file.h"

namespace quorvane {

void requireFreeName(const std::string& file, bool replace) {
  std::error_code unknown;
  if (replace || !std::filesystem::is_regular_file(file, unknown)) return;
  throw FileError(file, "File exists; give --force to replace it");
}

}  // namespace quorvane
