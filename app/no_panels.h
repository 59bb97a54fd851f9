#pragma once

#include "app/file_panels.h"

namespace quorvane {

// Panels in which nobody ever chooses a file: for programs that have no window.
class NoPanels final : public FilePanels {
 public:
  void chooseDestination(const Request& /*request*/, Chosen /*chosen*/) override {}
  void chooseFile(const Request& /*request*/, Chosen /*chosen*/) override {}
};

}  // namespace quorvane
