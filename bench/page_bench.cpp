// The processor time to open the section "Presets" with many user presets, until all is laid out
// and painted. Prints the median in milliseconds. With "search", the time after a letter is typed
// into the search field of the open section: the 95th percentile. With "memory", the memory that
// the section takes when it is opened, in MiB.
//
//   page_bench PRESETS [search|memory]

#include <malloc.h>

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
constexpr int roundsOfEvents = 10;  // of event handling, since events may post others

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
  for (int round = 0; round < roundsOfEvents; ++round) QApplication::processEvents();
}

double openingTime(AppModel& model) {
  Samples samples;
  for (int i = 0; i < openings; ++i) {
    MainWindow window(model);
    window.setSection(Section::log);
    window.show();
    handleEvents();
    timedOnProcessor(samples, [&] {
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
      timedOnProcessor(samples, [&] {
        field.insert(letter);
        handleEvents();
      });
    }
  }
  return samples.quantile(0.95);
}

// The first opening fills caches that do not depend on the presets.
double openingMemory(AppModel& model) {
  double mebibytes = 0;
  for (int i = 0; i < 2; ++i) {
    MainWindow window(model);
    window.setSection(Section::log);
    window.show();
    handleEvents();
    const auto before = ::mallinfo2().uordblks;
    window.setSection(Section::presets);
    handleEvents();
    mebibytes = static_cast<double>(::mallinfo2().uordblks - before) / (1024.0 * 1024.0);
  }
  return mebibytes;
}

void run(int count, std::string_view what) {
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
    std::printf("%.2f\n", what == "memory"   ? openingMemory(model)
                          : what == "search" ? searchTime(model) / 1e6
                                             : openingTime(model) / 1e6);
  }
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setStyle(new quorvane::Style);
  const int count = argc == 2 || argc == 3 ? std::atoi(argv[1]) : 0;
  const std::string_view what = argc == 3 ? argv[2] : "";
  if (count < 1 || (argc == 3 && what != "search" && what != "memory")) {
    std::fputs("usage: page_bench PRESETS [search|memory]\n", stderr);
    return 2;
  }
  // What the window remembers is not the user's.
  const auto state = std::filesystem::temp_directory_path() /
                     ("quorvane-bench-" + quorvane::UUID::random().text());
  qputenv("XDG_STATE_HOME", QByteArray::fromStdString(state.string()));
  quorvane::run(count, what);
  std::filesystem::remove_all(state);
  return EXIT_SUCCESS;
}
