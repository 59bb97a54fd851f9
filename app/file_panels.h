#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace quorvane {

// The dialogs in which people choose files. They block nobody: the choice comes later, on the main
// thread, or never when the person thinks better of it.
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

  // For a file to write; existing ones are confirmed by the panel.
  virtual void chooseDestination(const Request& request, Chosen chosen) = 0;

  // For a file to read.
  virtual void chooseFile(const Request& request, Chosen chosen) = 0;
};

}  // namespace quorvane
