#include <QApplication>

#include "simulator/simulated_backend.h"
#include "simulator/simulated_usb_bus.h"
#include "ui/main_window.h"
#include "ui/style.h"

namespace quorvane {
namespace {
class NoPanels final : public FilePanels {
 public:
  void chooseDestination(const Request& /*request*/, Chosen /*chosen*/) override {}
  void chooseFile(const Request& /*request*/, Chosen /*chosen*/) override {}
};
}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;  // NOLINT(google-build-using-namespace): this program's own
  QApplication application(argc, argv);
  auto* style = new Style;
  if (qEnvironmentVariableIsSet("QV_DARK")) style->setPrefersDark(true);
  QApplication::setStyle(style);
  NoPanels panels;
  SimulatedBackend backend;
  const auto device = SimulatedDevice::create(*FanatecProduct::lookup(defaultSimulatedProduct),
                                              SimulatedDevice::Time::real);
  backend.add(device);
  SimulatedUSBBus usb(*device);
  AppModel model({panels, backend, usb});
  MainWindow window(model, QStringLiteral("simulated"));
  if (argc > 1) window.resize(QString(argv[1]).toInt(), QString(argv[2]).toInt());
  window.show();
  return QApplication::exec();
}
