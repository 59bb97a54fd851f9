// The cost of starting the application model with a simulated base: the CPU time of the process
// from the model's construction until it is connected. The base answers without delay. Also counts
// the packets to a base while other devices are plugged and unplugged.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <filesystem>

#include "app/app_model.h"
#include "simulator/simulated_machine.h"
#include "tests/app/no_panels.h"

namespace quorvane {
namespace {

constexpr int lists = 100;

// The model's other dependencies.
struct Surroundings {
  NoPanels panels;
  PresetStore store{std::filesystem::temp_directory_path() / "quorvane-bench-presets.json"};

  AppModel::World with(SimulatedMachine& machine) {
    return {machine.platform(machine.device().clock()), panels, store};
  }
};

// Runs the event loop until the condition holds.
template <typename Condition>
void runUntil(AppModel& model, Condition isMet) {
  QEventLoop loop;
  const auto quitWhenMet = [&] {
    if (isMet()) loop.quit();
  };
  QObject::connect(&model, &AppModel::changed, &loop, quitWhenMet);
  if (!isMet()) loop.exec();
}

void runUntilConnected(AppModel& model) {
  runUntil(model, [&] { return model.isConnected() && model.tuning(); });
}

void startModelUntilConnected(benchmark::State& state) {
  SimulatedMachine machine(FanatecProduct::lookup(defaultSimulatedProduct).value());
  Surroundings surroundings;
  for (auto _ : state) {
    AppModel model(surroundings.with(machine));
    runUntilConnected(model);
  }
}
BENCHMARK(startModelUntilConnected)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

void listWhileConnected(benchmark::State& state) {
  const FanatecProduct product = FanatecProduct::lookup(defaultSimulatedProduct).value();
  SimulatedMachine machine({product, product});
  SimulatedDevice& other = machine.device(1);
  Surroundings surroundings;
  AppModel model(surroundings.with(machine));
  runUntilConnected(model);
  runUntil(model, [&] { return !model.busy() && model.devices().size() == 2; });
  const std::size_t before = machine.device().transcript().lines().size();
  for (auto _ : state) {
    other.unplug();
    runUntil(model, [&] { return model.devices().size() == 1; });
    other.plug();
    runUntil(model, [&] { return model.devices().size() == 2; });
  }
  const std::size_t sent = machine.device().transcript().lines().size() - before;
  state.counters["sent"] = static_cast<double>(sent);
}
BENCHMARK(listWhileConnected)->Iterations(lists);

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
