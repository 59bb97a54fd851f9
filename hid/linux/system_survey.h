#pragma once

#include <cstdint>
#include <filesystem>
#include <utility>

#include "hid/linux/system_files.h"
#include "hid/survey.h"

namespace quorvane {

// The facts about a Linux system, from the files below a root.
class SystemSurvey final : public HIDSurvey {
 public:
  // `self` is the process whose openings of nodes do not count: its own.
  SystemSurvey(std::filesystem::path root, std::int64_t self)
      : system_(std::move(root)), self_(self) {}

  MachineFacts take(std::int64_t vendorID) override;

 private:
  const SystemFiles system_;
  const std::int64_t self_;
};

}  // namespace quorvane
