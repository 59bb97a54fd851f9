#pragma once

#include <cstdint>
#include <filesystem>
#include <utility>

#include "platform/survey.h"
#include "platform/system_files.h"

namespace quorvane {

// Collects the facts about a Linux system from the files below a root directory.
class SystemSurvey final : public HIDSurvey {
 public:
  // `self` is the ID of this process, which is not listed as a holder of nodes.
  SystemSurvey(std::filesystem::path root, std::int64_t self)
      : system_(std::move(root)), self_(self) {}

  MachineFacts take(std::int64_t vendorID) override;

 private:
  const SystemFiles system_;
  const std::int64_t self_;
};

}  // namespace quorvane
