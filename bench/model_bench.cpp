// What it costs to start the application model with a simulated base: the processor time of the
// whole process from the model's construction until it is connected. The base answers at once, so
// none of it is waiting.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <filesystem>

#include "app/app_model.h"
#include "simulator/simulated_backend.h"
#include "simulator/simulated_usb_bus.h"

namespace quorvane {
namespace {

class NoPanels final : public FilePanels {
 public:
  void chooseDestination(const Request& /*request*/, Chosen /*chosen*/) override {}
  void chooseFile(const Request& /*request*/, Chosen /*chosen*/) override {}
};

void startModelUntilConnected(benchmark::State& state) {
  const auto device = SimulatedDevice::create(
      FanatecProduct::lookup(defaultSimulatedProduct).value(), SimulatedDevice::Time::real);
  SimulatedBackend backend;
  backend.add(device);
  SimulatedUSBBus usb(*device);
  NoPanels panels;
  const PresetStore store(std::filesystem::temp_directory_path() / "quorvane-bench-presets.json");
  for (auto _ : state) {
    AppModel model({panels, backend, usb, device->clock(), store});
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
