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
      task_.emplace(askLimit, presetsOutOfTime(file),
                    [file](const auto& publish) { publish(examinePresets(file)); });
    } catch (const std::system_error&) {  // the thread could not be started
    }
  }

  PresetFacts await() { return task_ ? task_->await() : examinePresets(file_); }

 private:
  const std::optional<std::filesystem::path> file_;
  std::optional<TimedTask<PresetFacts>> task_;
};

std::optional<HIDDeviceInfo> firstCandidate(const std::vector<HIDDeviceInfo>& devices) {
  const auto candidates = wheelBaseCandidates(devices);
  if (candidates.empty()) return std::nullopt;
  return candidates.front();
}

}  // namespace

Diagnosis examine(const Platform& platform, const std::optional<std::filesystem::path>& presetFile,
                  const std::optional<HIDDeviceInfo>& base, const std::stop_token& stop) {
  PresetReading presets(presetFile);
  DoctorFacts facts;
  facts.machine = platform.survey.take(Fanatec::vendorID);
  facts.devices = HIDEnumerator::devices(Fanatec::vendorID, platform.backend);
  facts.base = base ? base : firstCandidate(facts.devices);
  if (facts.base && facts.base->device->accessible()) {
    facts.answers = askBase(*facts.base, platform.clock, askLimit, stop);
  }
  facts.presets = presets.await();
  std::vector<DoctorCheck> checks = judge(facts);
  return {std::move(checks), std::move(facts)};
}

}  // namespace quorvane
