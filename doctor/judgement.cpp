#include "doctor/judgement.h"

#include <array>
#include <string_view>
#include <utility>

#include "doctor/access_check.h"
#include "doctor/base_checks.h"
#include "doctor/device_checks.h"
#include "doctor/preset_check.h"

namespace quorvane {
namespace {

struct Step {
  std::string_view id;
  std::string_view title;
  Verdict (*judge)(const DoctorFacts&, const DevicePath&);
};

Verdict presets(const DoctorFacts& facts, const DevicePath& /*path*/) {
  return judgePresets(facts.presets);
}

constexpr std::array<Step, 9> steps{{
    {"usb", "Wheel base attached", judgeBus},
    {"driver", "Driver", judgeDriver},
    {"node", "Device node", judgeNode},
    {"access", "Permission", judgeAccess},
    {"reports", "Reports", judgeReports},
    {"identity", "Identity", judgeIdentity},
    {"tuning", "Tuning menu", judgeTuning},
    {"holders", "Other programs", judgeHolders},
    {"presets", "Preset file", presets},
}};

// Adds to a next step with sudo, which a sandbox cannot run, that it needs a terminal outside.
std::string forSandbox(const std::string& nextStep) {
  if (nextStep.find("sudo ") == std::string::npos) return nextStep;
  return "Use a terminal outside of the sandbox for this. " + nextStep;
}

}  // namespace

std::vector<DoctorCheck> judge(const DoctorFacts& facts) {
  const DevicePath path = devicePathOf(facts);
  std::vector<DoctorCheck> checks;
  checks.reserve(steps.size());
  for (const Step& step : steps) {
    Verdict verdict = step.judge(facts, path);
    if (facts.machine.sandbox) verdict.nextStep = forSandbox(verdict.nextStep);
    checks.push_back({std::string(step.id), std::string(step.title), verdict.outcome,
                      std::move(verdict.finding), std::move(verdict.nextStep),
                      std::move(verdict.command)});
  }
  return checks;
}

}  // namespace quorvane
