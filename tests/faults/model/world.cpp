#include "tests/faults/model/world.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace quorvane {
namespace {

std::string namesOfPresets(const std::vector<TuningPreset>& presets) {
  Lines names;
  for (const TuningPreset& preset : presets) names.push_back(preset.name);
  return fmt::format("{}", fmt::join(names, " "));
}

// The checks that failed.
Lines checksOf(const AppModel& model) {
  if (!model.examination()) return {};
  Lines lines;
  for (const DoctorCheck& check : model.examination()->diagnosis.checks) {
    if (check.outcome == CheckOutcome::failed) {
      lines.push_back(fmt::format("[check] {} failed", check.title));
    }
  }
  if (lines.empty()) lines.emplace_back("[check] nothing failed");
  return lines;
}

}  // namespace

World::World() {
  store_->save({presetOf(ownPreset, {{TuningParameter::forceFeedback, 70}})});
  PresetStore::exportShare(presetOf(sharedPreset, {{TuningParameter::forceFeedback, 60}}), {},
                           directory_ / sharedFile);
  base();
}

World::~World() { TearDown(); }

Lines World::takeSeen() {
  Lines seen = takeLog();
  for (std::string& line : seen) line = withoutDirectory(std::move(line));
  if (seen.empty()) seen = checksOf(model());
  if (seen.empty()) seen.push_back("[status] " + model().statusLine());
  return seen;
}

void World::resetUSB() {
  if (usbRefuses_ || !base().isPlugged()) {
    const std::size_t before = model().log().size();
    model().usbReset();
    waitUntil([&] { return model().log().size() > before; });
    return;
  }
  resetUSBAndReconnect();
}

void World::refuseUSBWith(int error) {
  usbRefuses_ = error != 0;
  usb_.refuseWith(error);
}

std::string World::withoutDirectory(std::string text) const {
  const std::string directory = directory_.path().string() + "/";
  for (auto at = text.find(directory); at != std::string::npos; at = text.find(directory)) {
    text.erase(at, directory.size());
  }
  return text;
}

std::string World::presets() { return namesOfPresets(model().userPresets()); }

std::string World::presetsInFile() const { return namesOfPresets(store_->read()); }

std::string World::files() const { return fmt::format("{}", fmt::join(directory_.names(), " ")); }

}  // namespace quorvane
