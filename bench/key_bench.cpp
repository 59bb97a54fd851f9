// The time from a key press on a slider until the new value is painted. Prints the median and the
// 99th percentile of many presses in microseconds.

#include <QAbstractSlider>
#include <QApplication>
#include <QKeyEvent>
#include <QSpinBox>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "bench/samples.h"
#include "simulator/simulated_backend.h"
#include "simulator/simulated_usb_bus.h"
#include "tests/app/no_panels.h"
#include "ui/kit/style.h"
#include "ui/shell/main_window.h"

namespace quorvane {
namespace {

constexpr int pressesToWarmUp = 50;
constexpr int presses = 1000;

// Records the number at every paint of a row's readout.
class Paints final : public QObject {
 public:
  explicit Paints(QSpinBox& readout) : readout_(readout) { readout.installEventFilter(this); }

  // Whether the number painted last is `value`; resets the record.
  bool take(int value) { return std::exchange(painted_, std::nullopt) == value; }

  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) painted_ = readout_.value();
    return false;
  }

 private:
  QSpinBox& readout_;
  std::optional<int> painted_;
};

template <typename Condition>
void runUntil(Condition isMet) {
  while (!isMet()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

// Each press changes the value, alternately up and down.
void press(QAbstractSlider& slider, Qt::Key key, Paints& paints) {
  const int before = slider.value();
  QApplication::postEvent(&slider, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
  runUntil([&] { return slider.value() != before && paints.take(slider.value()); });
}

int run() {
  const auto device = SimulatedDevice::create(*FanatecProduct::lookup(defaultSimulatedProduct),
                                              SimulatedDevice::Time::real);
  SimulatedBackend backend;
  backend.add(device);
  SimulatedUSBBus usb(*device);
  NoPanels panels;
  const PresetStore store(std::filesystem::temp_directory_path() / "quorvane-bench-presets.json");
  AppModel model({{backend, usb, device->clock()}, panels, store});
  MainWindow window(model);
  window.show();

  QAbstractSlider* slider = nullptr;
  runUntil([&] {
    slider = window.findChild<QAbstractSlider*>(QStringLiteral("FFSlider"));
    return slider != nullptr && slider->isVisible() && slider->isEnabled() && !model.busy();
  });
  auto* const readout = window.findChild<QSpinBox*>(QStringLiteral("FFReadout"));
  if (readout == nullptr) return EXIT_FAILURE;
  Paints paints(*readout);
  const bool canGrow = slider->value() < slider->maximum();
  const Qt::Key there = canGrow ? Qt::Key_Right : Qt::Key_Left;
  const Qt::Key back = canGrow ? Qt::Key_Left : Qt::Key_Right;
  Samples samples;
  for (int i = 0; i < pressesToWarmUp; ++i) press(*slider, i % 2 == 0 ? there : back, paints);
  for (int i = 0; i < presses; ++i) {
    timed(samples, [&] { press(*slider, i % 2 == 0 ? there : back, paints); });
  }
  std::printf("%.1f %.1f\n", samples.quantile(0.5) / 1000, samples.quantile(0.99) / 1000);
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QApplication::setStyle(new quorvane::Style);
  return quorvane::run();
}
