#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <optional>

#include "app/no_panels.h"
#include "simulator/simulated_machine.h"
#include "ui/main_window.h"
#include "ui/painting.h"
#include "ui/start_options.h"
#include "ui/style.h"

namespace quorvane {
namespace {

QStringList wordsOf(int argc, char** argv) {
  QStringList words;
  for (int i = 0; i < argc; ++i) words += QString::fromLocal8Bit(argv[i]);
  return words;
}

QList<QUrl> urls(const QStringList& files) {
  QList<QUrl> result;
  for (const QString& file : files) {
    result += QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath());
  }
  return result;
}

int run(const AppModel::World& world, const StartOptions& options, const QString& note) {
  AppModel model(world);
  MainWindow window(model, note);
  window.show();
  window.importFiles(urls(options.files));
  return QApplication::exec();
}

int start(const StartOptions& options) {
  QApplication::setStyle(new Style);
  NoPanels panels;
  if (!options.simulated) return run({panels}, options, {});
  SimulatedMachine machine(*options.simulated);
  return run({panels, machine.backend(), machine.usb()}, options, QStringLiteral("simulated"));
}

int print(const StartText& text) {
  std::FILE* const stream = text.exitStatus == 0 ? stdout : stderr;
  std::fputs(quorvane::text(text.text).c_str(), stream);
  return text.exitStatus;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;  // NOLINT(google-build-using-namespace): this program's own
  std::optional<StartText> instead;
  const StartOptions options = parseStart(wordsOf(argc, argv), instead);
  if (instead) return print(*instead);
  const QApplication application(argc, argv);
  return start(options);
}
