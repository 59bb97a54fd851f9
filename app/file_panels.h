#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace quorvane {

// File dialogs. The calls do not block: the callback `chosen` runs later, on the main thread, or
// never if the user cancels.
class FilePanels {
 public:
  using Chosen = std::function<void(const std::filesystem::path&)>;

  // The kind of file that a panel is for.
  enum class Content { settings, presets, report };

  struct Request {
    std::string title;
    std::string button;
    Content content;
    std::string suggestedName;  // of a new file
  };

  virtual ~FilePanels() = default;

  // For a file to write. The panel asks before an existing file is replaced.
  virtual void chooseDestination(const Request& request, Chosen chosen) = 0;

  // For a file to read.
  virtual void chooseFile(const Request& request, Chosen chosen) = 0;
};

}  // namespace quorvane
