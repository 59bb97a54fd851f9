#include "doctor/doctor.h"

#include "doctor/judgement.h"
#include "doctor/preset_check.h"
#include "session/candidates.h"

namespace quorvane {
namespace {

// Both of the session's time-outs, and some more; what remains of the 5 s is for everything else.
constexpr Seconds askLimit{4.3};

std::optional<HIDDeviceInfo> firstCandidate(const std::vector<HIDDeviceInfo>& devices) {
  const auto candidates = wheelBaseCandidates(devices);
  if (candidates.empty()) return std::nullopt;
  return candidates.front();
}

}  // namespace

Diagnosis examine(const DoctorWorld& world) {
  DoctorFacts facts;
  facts.machine = world.survey.take(Fanatec::vendorID);
  facts.devices = HIDEnumerator::devices(Fanatec::vendorID, world.backend);
  facts.base = world.base ? world.base : firstCandidate(facts.devices);
  if (facts.base && facts.base->device->accessible()) {
    facts.answers = askBase(*facts.base, world.clock, askLimit);
  }
  facts.presets = examinePresets(world.presetFile);
  std::vector<DoctorCheck> checks = judge(facts);
  return {std::move(checks), std::move(facts)};
}

}  // namespace quorvane
