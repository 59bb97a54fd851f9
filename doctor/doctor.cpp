#include "doctor/doctor.h"

#include <system_error>

#include "doctor/judgement.h"
#include "doctor/preset_check.h"
#include "doctor/timed_task.h"
#include "session/candidates.h"

namespace quorvane {
namespace {

// Two read timeouts of the session and a margin. The rest of the 5 s is for everything else.
constexpr Seconds askLimit{4.3};

// Reads the user's presets on another thread, because a network file system may block.
class PresetReading {
 public:
  explicit PresetReading(const std::optional<std::filesystem::path>& file) : file_(file) {
    try {
      presetTask_.emplace([file] { return examinePresets(file); });
    } catch (const std::system_error&) {  // the thread could not be started
    }
  }

  PresetFacts await(Monotonic::time_point deadline) {
    if (!presetTask_) return examinePresets(file_);
    auto found = presetTask_->await(deadline);
    return found ? *std::move(found) : presetsOutOfTime(file_);
  }

 private:
  const std::optional<std::filesystem::path> file_;
  std::optional<TimedTask<PresetFacts>> presetTask_;
};

std::optional<HIDDeviceInfo> firstCandidate(const std::vector<HIDDeviceInfo>& devices) {
  const auto candidates = wheelBaseCandidates(devices);
  if (candidates.empty()) return std::nullopt;
  return candidates.front();
}

}  // namespace

Diagnosis examine(const DoctorWorld& world) {
  const auto deadline =
      Monotonic::now() + std::chrono::duration_cast<Monotonic::duration>(askLimit);
  PresetReading presets(world.presetFile);
  DoctorFacts facts;
  facts.machine = world.survey.take(Fanatec::vendorID);
  facts.devices = HIDEnumerator::devices(Fanatec::vendorID, world.backend);
  facts.base = world.base ? world.base : firstCandidate(facts.devices);
  if (facts.base && facts.base->device->accessible()) {
    facts.answers = askBase(*facts.base, world.clock, askLimit);
  }
  facts.presets = presets.await(deadline);
  std::vector<DoctorCheck> checks = judge(facts);
  return {std::move(checks), std::move(facts)};
}

}  // namespace quorvane
