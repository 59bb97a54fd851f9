// The cost of comparing, loading and saving presets: a typical library, and one of thousands beside
// the JSON library alone.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "bench/samples.h"
#include "presets/json_reader.h"
#include "presets/preset_coding.h"
#include "presets/preset_store.h"
#include "presets/settings_comparison.h"
#include "support/file.h"
#include "support/invariant.h"

namespace quorvane {
namespace {

constexpr std::size_t usualPresets = 20;
constexpr std::size_t manyPresets = 10000;
constexpr std::size_t valuesEach = 12;
constexpr int usualRounds = 2000;
constexpr int manyRounds = 5;

// Presets as captured by a user, with twelve values: 400 bytes each, as the limits assume.
std::vector<TuningPreset> library(std::size_t count) {
  Bytes report(TuningSnapshot::length, 100);
  report[0] = TuningSnapshot::reportID;
  report[1] = TuningSnapshot::subID;
  const auto snapshot = TuningSnapshot::fromReport(report, WallClock::time_point()).value();
  const auto product = FanatecProduct::lookup(0x0020);
  std::vector<TuningPreset> presets;
  presets.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    presets.push_back(TuningPreset::capture(product, "My GT7 " + std::to_string(i), snapshot));
    auto& values = presets.back().values;
    while (values.size() > valuesEach) values.erase(values.begin());
  }
  return presets;
}

// RAII: a temporary directory; the destructor deletes it with its files.
class ScratchDirectory {
 public:
  ScratchDirectory() {
    std::string name = std::filesystem::temp_directory_path() / "quorvane-bench-XXXXXX";
    invariant(::mkdtemp(name.data()) != nullptr, "no directory could be made");
    path_ = name;
  }
  ~ScratchDirectory() { std::filesystem::remove_all(path_); }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// Alternates the complete load and only reading the file: the difference is the decoding.
void loadUsualPresets(benchmark::State& state) {
  const ScratchDirectory directory;
  const PresetStore store(directory.path() / "presets.json");
  store.save(library(usualPresets));
  invariant(store.load().size() == usualPresets, "the presets do not load");
  const std::string text = readFile(store.fileURL());
  Samples ofLoad;
  Samples ofRead;
  Samples ofParse;
  for ([[maybe_unused]] const auto iteration : state) {
    timed(ofLoad, [&] { benchmark::DoNotOptimize(store.load()); });
    timed(ofRead, [&] { benchmark::DoNotOptimize(readFile(store.fileURL())); });
    timed(ofParse, [&] { benchmark::DoNotOptimize(nlohmann::json::parse(text)); });
  }
  const double load = ofLoad.quantile(0.5);
  const double read = ofRead.quantile(0.5);
  state.counters["load_ns"] = load;
  state.counters["read_ns"] = read;
  state.counters["beyond_read_ns"] = load - read;
  state.counters["parse_ns"] = ofParse.quantile(0.5);
  state.counters["bytes"] = static_cast<double>(text.size());
}
BENCHMARK(loadUsualPresets)->Iterations(usualRounds);

void decodeManyPresets(benchmark::State& state) {
  const std::string text = encodePresets(library(manyPresets));
  Samples ofDecode;
  Samples ofParse;
  for ([[maybe_unused]] const auto iteration : state) {
    timed(ofDecode, [&] { benchmark::DoNotOptimize(decodePresets(parseJSON(text))); });
    timed(ofParse, [&] { benchmark::DoNotOptimize(nlohmann::json::parse(text)); });
  }
  state.counters["decode_ns"] = ofDecode.quantile(0.5);
  state.counters["parse_ns"] = ofParse.quantile(0.5);
  state.counters["decode_ratio"] = ofDecode.quantile(0.5) / ofParse.quantile(0.5);
  state.counters["bytes"] = static_cast<double>(text.size());
}
BENCHMARK(decodeManyPresets)->Iterations(manyRounds);

void encodeManyPresets(benchmark::State& state) {
  const std::vector<TuningPreset> presets = library(manyPresets);
  const nlohmann::json document = nlohmann::json::parse(encodePresets(presets));
  Samples ofEncode;
  Samples ofDump;
  for ([[maybe_unused]] const auto iteration : state) {
    timed(ofEncode, [&] { benchmark::DoNotOptimize(encodePresets(presets)); });
    timed(ofDump, [&] { benchmark::DoNotOptimize(document.dump(2)); });
  }
  state.counters["encode_ns"] = ofEncode.quantile(0.5);
  state.counters["dump_ns"] = ofDump.quantile(0.5);
  state.counters["encode_ratio"] = ofEncode.quantile(0.5) / ofDump.quantile(0.5);
}
BENCHMARK(encodeManyPresets)->Iterations(manyRounds);

// A whole menu with a built-in preset.
void compareTwoSides(benchmark::State& state) {
  const auto product = FanatecProduct::lookup(0x0020);
  TuningPreset::Values menu;
  for (const TuningParameter parameter : TuningParameter::adjustable(product)) {
    menu.emplace(parameter.code(), parameter.amounts(product).lower);
  }
  const TuningPreset::Values& preset = TuningPreset::builtIn().back().values;
  Samples ofComparison;
  for ([[maybe_unused]] const auto iteration : state) {
    timed(ofComparison,
          [&] { benchmark::DoNotOptimize(SettingsComparison(menu, preset, product)); });
  }
  state.counters["compare_ns"] = ofComparison.quantile(0.5);
}
BENCHMARK(compareTwoSides)->Iterations(usualRounds);

}  // namespace
}  // namespace quorvane
