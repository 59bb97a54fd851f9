// What recording a save of one value in the history adds to the save, with a history at its limit.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/samples.h"
#include "history/history_file.h"
#include "support/invariant.h"

namespace quorvane {
namespace {

constexpr int rounds = 300;

HistoryRecord oneValue() {
  Bytes report(TuningSnapshot::length, 100);
  report[0] = TuningSnapshot::reportID;
  report[1] = TuningSnapshot::subID;
  HistoryRecord record;
  record.id = UUID::random();
  record.program = "quorvane";
  record.base = "CSL DD / GT DD Pro / ClubSport DD";
  record.productID = 0x0020;
  record.action = HistoryAction::save;
  record.menu = TuningSnapshot::fromReport(report, WallClock::time_point());
  record.wanted = {{TuningParameter::forceFeedback, 80}};
  record.outcome = HistoryOutcome{
      {{TuningParameter::forceFeedback, 65, 80, 80, 250, std::nullopt}}, std::nullopt, record.menu};
  return record;
}

void add(const HistoryFile& file, const HistoryRecord& record) {
  file.append(record);
  file.append(record.id, *record.outcome);
}

// Each round adds two lines: some rounds replace the file by its newest three quarters.
void recordIn(benchmark::State& state, const std::filesystem::path& parent) {
  std::string name = parent / "quorvane-bench-XXXXXX";
  invariant(::mkdtemp(name.data()) != nullptr, "no directory could be made");
  const HistoryFile file(std::filesystem::path(name) / "history.jsonl");
  for (std::size_t line = 0; line < HistoryFile::mostLines; line += 2) add(file, oneValue());
  Samples samples;
  for ([[maybe_unused]] const auto iteration : state) {
    const HistoryRecord record = oneValue();
    timed(samples, [&] { add(file, record); });
  }
  state.counters["record_p99_ns"] = samples.quantile(0.99);
  std::filesystem::remove_all(name);
}

void recordInMemory(benchmark::State& state) { recordIn(state, "/dev/shm"); }
void recordOnDisk(benchmark::State& state) { recordIn(state, "/var/tmp"); }

BENCHMARK(recordInMemory)->Iterations(rounds);
BENCHMARK(recordOnDisk)->Iterations(rounds);

}  // namespace
}  // namespace quorvane
