// What it costs to start the application model with a simulated base: the processor time of the
// whole process from the model's construction until it is connected. The base answers at once, so
// none of it is waiting.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <filesystem>

#include "app/app_model.h"
#include "app/no_panels.h"
#include "simulator/simulated_machine.h"

namespace quorvane {
namespace {

void startModelUntilConnected(benchmark::State& state) {
  SimulatedMachine machine(FanatecProduct::lookup(defaultSimulatedProduct).value());
  NoPanels panels;
  const PresetStore store(std::filesystem::temp_directory_path() / "quorvane-bench-presets.json");
  for (auto _ : state) {
    AppModel model({panels, machine.backend(), machine.usb(), machine.device().clock(), store});
    QEventLoop loop;
    QObject::connect(&model, &AppModel::changed, &loop, [&] {
      if (model.isConnected() && model.tuning()) loop.quit();
    });
    loop.exec();
  }
}
BENCHMARK(startModelUntilConnected)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
