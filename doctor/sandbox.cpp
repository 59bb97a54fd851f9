#include "doctor/sandbox.h"

#include <fmt/format.h>

namespace quorvane {

std::string installRuleOutside(const SandboxFacts& sandbox) {
  return fmt::format(
      "flatpak run --command=quorvanectl {} udev-rule | sudo tee "
      "/etc/udev/rules.d/70-quorvane.rules && sudo udevadm control --reload && sudo udevadm "
      "trigger",
      sandbox.application);
}

std::string allowDevicesOutside(const SandboxFacts& sandbox) {
  return "flatpak override --user --device=all " + sandbox.application;
}

}  // namespace quorvane
