#include <algorithm>
#include <iterator>
#include <vector>

#include "fuzz/decoding.h"
#include "fuzz/input.h"
#include "fuzz/properties.h"
#include "fuzz/scratch.h"
#include "presets/preset_coding.h"
#include "presets/preset_store.h"

namespace quorvane::Fuzz {
namespace {

using Presets = std::vector<TuningPreset>;

constexpr const char* storeName = "presets.json";
constexpr const char* keptNames = "presets.json.corrupt-";

// A clock without pauses: no other process uses the file, so there is no lock to wait for.
class HurriedClock final : public Clock {
 public:
  Monotonic::time_point now() override { return system().now(); }
  void sleepFor(Seconds /*duration*/) override {}
  bool wait(Semaphore& semaphore, Seconds timeout) override {
    return system().wait(semaphore, timeout);
  }
};

void expectRoundTrip(const Presets& presets) {
  const std::string text = encodePresets(presets);
  const auto again = decodedOrRefused(text, decodePresets);
  invariant(again == presets, "presets come back as they were saved");
  invariant(encodePresets(*again) == text, "a file is written the same way twice");
}

Presets ownOf(const Presets& presets) {
  Presets own;
  std::copy_if(presets.begin(), presets.end(), std::back_inserter(own),
               [](const TuningPreset& preset) { return !preset.isBuiltIn; });
  return own;
}

void expectStored(const std::string& text, const std::optional<Presets>& presets) {
  const ScratchDirectory directory;
  writeFile(directory / storeName, text);
  HurriedClock clock;
  const PresetStore store(directory / storeName, clock);
  const Presets loaded = store.load();
  invariant(loaded == presets.value_or(Presets()), "the store loads what its file holds");
  store.save(loaded);
  invariant(store.load() == ownOf(loaded), "the store saves what is not built in");
  invariant(directory.count(keptNames) == (presets ? 0 : 1), "only what does not load is kept");
}

}  // namespace

void presetFile(ByteView bytes) {
  const std::string text = textOf(bytes);
  const auto presets = decodedOrRefused(text, decodePresets);
  if (presets) expectRoundTrip(*presets);
  expectStored(text, presets);
}

}  // namespace quorvane::Fuzz
