#include <QApplication>
#include <QFile>
#include <QIcon>
#include <QSessionManager>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

#include "app/environment.h"
#include "simulator/simulated_machine.h"
#include "support/file.h"
#include "support/printing.h"
#include "support/standard_streams.h"
#include "support/text.h"
#include "support/user_directories.h"
#include "ui/desktop/dark_preference.h"
#include "ui/desktop/desktop_panels.h"
#include "ui/desktop/display_failure.h"
#include "ui/desktop/platform_data.h"
#include "ui/desktop/session_bus.h"
#include "ui/desktop/single_instance.h"
#include "ui/desktop/termination_signals.h"
#include "ui/kit/style.h"
#include "ui/kit/text.h"
#include "ui/model/addresses.h"
#include "ui/shell/closing.h"
#include "ui/shell/main_window.h"
#include "ui/shell/start_options.h"

namespace quorvane {
namespace {

constexpr const char* otherWindow =
    "Quorvane is open already and keeps its base: choose another in the section Base of its "
    "window, "
    "or close it first.\n";

constexpr const char* noHome = "You have no home directory to keep presets in: set HOME.\n";

QStringList wordsOf(int argc, char** argv) {
  QStringList words;
  for (int i = 0; i < argc; ++i) words += QFile::decodeName(argv[i]);
  return words;
}

int print(const StartText& text) {
  printLinesTo(text.exitStatus == 0 ? stdout : stderr, quorvane::text(text.text));
  const bool isWritten = text.exitStatus != 0 || finishStandardOutput() == 0;
  return isWritten ? text.exitStatus : EXIT_FAILURE;
}

// Connects the requests of later processes to this window.
void follow(SingleInstance& instance, MainWindow& window) {
  QObject::connect(&instance, &SingleInstance::activated, &window,
                   [&window](const QString& token) { PlatformData::bringToFront(window, token); });
  QObject::connect(&instance, &SingleInstance::opened, &window,
                   [&window](const QStringList& uris, const QString& token) {
                     window.importFiles(uris);
                     PlatformData::bringToFront(window, token);
                   });
  QObject::connect(&instance, &SingleInstance::sectionChosen, &window,
                   [&window](Section section, const QString& token) {
                     window.setSection(section);
                     PlatformData::bringToFront(window, token);
                   });
}

// Waits for running writes when a signal or the end of the session ends the program.
void endGently(TerminationSignals& termination, MainWindow& window) {
  Closing* const closing = &window.closing();
  QObject::connect(&termination, &TerminationSignals::received, closing, &Closing::terminate);
  QObject::connect(closing, &Closing::ended, qApp, [] { QCoreApplication::exit(0); });
  QObject::connect(
      qApp, &QGuiApplication::commitDataRequest, closing,
      [closing](QSessionManager& session) {
        if (!closing->sessionEnds(session.allowsInteraction())) session.cancel();
        session.release();
      },
      Qt::DirectConnection);
}

// For desktops that do not find the icon by the application ID. Searching the icon themes takes
// some milliseconds, so the window is shown first. An uninstalled program has no icon.
void setIconLater(MainWindow& window) {
  QTimer::singleShot(std::chrono::milliseconds(200), &window, [&window] {
    window.setWindowIcon(QIcon::fromTheme(Addresses::applicationID()));
  });
}

int show(const AppModel::World& world, DesktopPanels& panels, SingleInstance& instance,
         const StartOptions& options) {
  AppModel model(world, options.device);
  MainWindow window(model, options.simulated.empty() ? QString() : QStringLiteral("simulated"));
  panels.setWindow(&window);
  follow(instance, window);
  TerminationSignals termination;
  endGently(termination, window);
  window.show();
  window.raise();
  window.activateWindow();
  setIconLater(window);
  model.importAll(options.files);
  return QApplication::exec();
}

// Writes one transcript after the other, separated by a blank line.
void writeTranscripts(SimulatedMachine& machine, const std::filesystem::path& file) {
  std::string text;
  for (std::size_t number = 0; number < machine.deviceCount(); ++number) {
    if (number > 0) text += '\n';
    for (const std::string& line : machine.device(number).transcript().lines()) text += line + '\n';
  }
  try {
    replaceFile(file, text);
  } catch (const FileError& error) {
    printTo(stderr, "{}\n", oneLine(error.what()));
  }
}

// Prints a line on standard error and returns false if the file cannot be used.
bool keepState(SimulatedMachine& machine, const std::filesystem::path& file) {
  const auto complain = [](const std::string& reason) {
    printTo(stderr, "The simulated base's state was not kept: {}\n", oneLine(reason));
  };
  try {
    machine.keepStateIn(file, complain);
    return true;
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    printTo(stderr, "{}\n", oneLine(error.what()));
    return false;
  }
}

// With simulated bases there is no single instance: each process has its own bases and window.
int start(const StartOptions& options, const QVariantMap& platformData) {
  const auto bus = sessionBus();
  SingleInstance instance(options.simulated.empty() ? bus : std::nullopt,
                          Addresses::applicationID());
  const auto started = instance.start(options.files, platformData, section(Environment::section()));
  if (started == SingleInstance::Start::handedOver) {
    if (!options.device.empty()) printLinesTo(stderr, otherWindow);
    return 0;
  }

  auto* const style = new Style;  // the application owns it
  QApplication::setStyle(style);
  std::optional<DarkPreference> dark;
  if (bus) {
    dark.emplace(*bus);
    QObject::connect(&*dark, &DarkPreference::told, style, &Style::setPrefersDark);
  }
  DesktopPanels panels(bus);
  if (options.simulated.empty()) {
    return show({{}, panels, PresetStore::shared(), History::ofUser("quorvane")}, panels, instance,
                options);
  }
  SimulatedMachine machine(options.simulated);
  if (options.state && !keepState(machine, *options.state)) return 1;
  const int status = show(
      {machine.platform(), panels, PresetStore::simulated(), History::ofSimulation("quorvane")},
      panels, instance, options);
  if (options.transcript) writeTranscripts(machine, *options.transcript);
  return status;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;  // NOLINT(google-build-using-namespace): this program's own
  prepareStandardStreams();
  std::optional<StartText> instead;
  const StartOptions options = parseStart(wordsOf(argc, argv), instead);
  if (instead) return print(*instead);
  if (!userDataDirectory()) {
    printLinesTo(stderr, noHome);
    return EXIT_FAILURE;
  }
  const QVariantMap platformData = PlatformData::fromEnvironment();
  std::optional<DisplayFailure> displayFailure(std::in_place);
  const QApplication application(argc, argv);
  displayFailure.reset();
  QGuiApplication::setDesktopFileName(Addresses::applicationID());
  return start(options, platformData);
}
