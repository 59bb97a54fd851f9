#include "fuzz/scratch.h"

#include <stdlib.h>  // NOLINT(modernize-deprecated-headers): mkdtemp is not in namespace std
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>

#include "support/invariant.h"

namespace quorvane::Fuzz {
namespace {

namespace fs = std::filesystem;

// The in-memory directory if the user may write there, else the usual temporary directory.
fs::path parentDirectory() {
  const fs::path memory = "/dev/shm";
  return ::access(memory.c_str(), W_OK | X_OK) == 0 ? memory : fs::temp_directory_path();
}

}  // namespace

ScratchDirectory::ScratchDirectory() {
  std::string name = parentDirectory() / "quorvane-fuzz-XXXXXX";
  invariant(::mkdtemp(name.data()) != nullptr, "there is room for temporary files");
  path_ = name;
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::size_t ScratchDirectory::count(std::string_view beginning) const {
  const auto entries = fs::directory_iterator(path_);
  return static_cast<std::size_t>(
      std::count_if(fs::begin(entries), fs::end(entries), [&](const fs::directory_entry& entry) {
        return entry.path().filename().string().starts_with(beginning);
      }));
}

void writeFile(const fs::path& file, std::string_view content) {
  std::ofstream stream(file, std::ios::binary);
  stream.write(content.data(), static_cast<std::streamsize>(content.size()));
  stream.close();
  invariant(!stream.fail(), "temporary files can be written");
}

}  // namespace quorvane::Fuzz
