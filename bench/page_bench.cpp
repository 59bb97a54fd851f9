// The time to open the section "Presets" with many user presets, until all is laid out and painted.
// Prints the median in milliseconds.
//
//   page_bench PRESETS

#include <QApplication>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/samples.h"
#include "simulator/simulated_backend.h"
#include "simulator/simulated_usb_bus.h"
#include "tests/app/no_panels.h"
#include "ui/kit/style.h"
#include "ui/shell/main_window.h"

namespace quorvane {
namespace {

constexpr int openings = 21;
constexpr int rounds = 10;  // of event handling, since events may post others

std::vector<TuningPreset> presets(int count) {
  const std::vector<TuningPreset>& samples = TuningPreset::builtIn();
  std::vector<TuningPreset> presets;
  for (int i = 0; i < count; ++i) {
    TuningPreset preset = samples[static_cast<std::size_t>(i) % samples.size()];
    preset.id = UUID::random();
    preset.name = "Preset " + std::to_string(i);
    preset.isBuiltIn = false;
    presets.push_back(preset);
  }
  return presets;
}

void handleEvents() {
  for (int round = 0; round < rounds; ++round) QApplication::processEvents();
}

void run(int count) {
  const auto device = SimulatedDevice::create(*FanatecProduct::lookup(defaultSimulatedProduct),
                                              SimulatedDevice::Time::real);
  SimulatedBackend backend;
  backend.add(device);
  SimulatedUSBBus usb(*device);
  NoPanels panels;
  const auto file = std::filesystem::temp_directory_path() /
                    ("quorvane-bench-" + UUID::random().text() + ".json");
  const PresetStore store(file);
  store.save(presets(count));
  {
    AppModel model({{backend, usb, device->clock()}, panels, store});
    while (!model.tuning() || model.busy()) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    Samples samples;
    for (int i = 0; i < openings; ++i) {
      MainWindow window(model);
      window.setSection(Section::log);
      window.show();
      handleEvents();
      timed(samples, [&] {
        window.setSection(Section::presets);
        handleEvents();
      });
    }
    std::printf("%.2f\n", samples.quantile(0.5) / 1e6);
  }
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setStyle(new quorvane::Style);
  const int count = argc == 2 ? std::atoi(argv[1]) : 0;
  if (count < 1) {
    std::fputs("usage: page_bench PRESETS\n", stderr);
    return 2;
  }
  quorvane::run(count);
  return EXIT_SUCCESS;
}
