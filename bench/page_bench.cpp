// The time to open the section "Presets" with many user presets, until all is laid out and painted.
// Prints the median in milliseconds. With "search", the time after a letter is typed into the
// search field of the open section: the 95th percentile.
//
//   page_bench PRESETS [search]

#include <QApplication>
#include <QLineEdit>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
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

double openingTime(AppModel& model) {
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
  return samples.quantile(0.5);
}

double searchTime(AppModel& model) {
  MainWindow window(model);
  window.setSection(Section::presets);
  window.show();
  handleEvents();
  auto& field = *window.findChild<QLineEdit*>(QStringLiteral("presetSearchField"));
  Samples samples;
  for (int i = 0; i < openings; ++i) {
    field.clear();
    handleEvents();
    for (const QChar letter : QStringLiteral("preset 12 gran")) {
      timed(samples, [&] {
        field.insert(letter);
        handleEvents();
      });
    }
  }
  return samples.quantile(0.95);
}

void run(int count, bool isSearch) {
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
    std::printf("%.2f\n", (isSearch ? searchTime(model) : openingTime(model)) / 1e6);
  }
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setStyle(new quorvane::Style);
  const int count = argc == 2 || argc == 3 ? std::atoi(argv[1]) : 0;
  const bool isSearch = argc == 3 && std::string_view(argv[2]) == "search";
  if (count < 1 || (argc == 3 && !isSearch)) {
    std::fputs("usage: page_bench PRESETS [search]\n", stderr);
    return 2;
  }
  // What the window remembers is not the user's.
  const auto state = std::filesystem::temp_directory_path() /
                     ("quorvane-bench-" + quorvane::UUID::random().text());
  qputenv("XDG_STATE_HOME", QByteArray::fromStdString(state.string()));
  quorvane::run(count, isSearch);
  std::filesystem::remove_all(state);
  return EXIT_SUCCESS;
}
