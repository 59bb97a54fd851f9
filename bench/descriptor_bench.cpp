// The cost of summarising a report descriptor, which happens at every enumeration of devices.

#include <benchmark/benchmark.h>

#include "hid/report_descriptor.h"
#include "simulator/simulated_base.h"
#include "support/invariant.h"

namespace quorvane {
namespace {

constexpr std::size_t descriptorLength = 237;

// The simulated base's descriptor, padded to the length with feature reports of `elements` elements
// each.
HIDReportDescriptor longDescriptor(std::int64_t elements) {
  Bytes bytes = SimulatedBase::reportDescriptor();
  const auto append = [&](const Bytes& more) {
    if (bytes.size() + more.size() > descriptorLength) return;
    bytes.insert(bytes.end(), more.begin(), more.end());
  };
  for (std::uint8_t reportID = 2; bytes.size() + 2 <= descriptorLength; ++reportID) {
    append({0x85, reportID});
    for (std::int64_t i = 0; i < elements; ++i) append({0x95, 0x07, 0x09, reportID, 0xB1, 0x02});
  }
  while (bytes.size() < descriptorLength) append({0xC0});  // End Collection
  invariant(bytes.size() == descriptorLength, "the descriptor has another length");
  return HIDReportDescriptor(bytes);
}

void summarise(benchmark::State& state, std::int64_t elements) {
  const HIDReportDescriptor descriptor = longDescriptor(elements);
  for ([[maybe_unused]] const auto iteration : state) {
    benchmark::DoNotOptimize(descriptor.summaries());
  }
  state.counters["reports"] = static_cast<double>(descriptor.summaries().size());
}

// Several elements per report, as in real devices.
void usualDescriptor(benchmark::State& state) { summarise(state, 4); }
BENCHMARK(usualDescriptor);

// As many reports as fit.
void crowdedDescriptor(benchmark::State& state) { summarise(state, 1); }
BENCHMARK(crowdedDescriptor);

}  // namespace
}  // namespace quorvane
