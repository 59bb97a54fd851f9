#pragma once

#include "app/file_panels.h"

namespace quorvane {

// File panels that never call back, for programs without a window.
class NoPanels final : public FilePanels {
 public:
  void chooseDestination(const Request& /*request*/, Chosen /*chosen*/) override {}
  void chooseFile(const Request& /*request*/, Chosen /*chosen*/) override {}
};

}  // namespace quorvane
