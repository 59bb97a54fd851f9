// Renders every section of the window in its states, as PNG files:
//
//   quorvane-screenshots DIRECTORY
//
// A picture is what the display shows of the real window, on a simulated base:
// SCENE-SCHEME-SIZE.png for the schemes light and dark and each of the sizes. The toolkit's own
// settings (QT_SCALE_FACTOR) hold.

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QScreen>
#include <QTemporaryDir>
#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include "app/no_panels.h"
#include "simulator/simulated_machine.h"
#include "ui/main_window.h"
#include "ui/metrics.h"
#include "ui/painting.h"
#include "ui/style.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;

// The window of one picture, and all that stands behind it.
class Stage {
 public:
  Stage(const std::filesystem::path& directory, QSize size, bool hasBase)
      : machine_(FanatecProduct::lookup(defaultSimulatedProduct).value()),
        store_(directory / "presets.json") {
    std::filesystem::remove(store_.fileURL());
    if (!hasBase) machine_.device().unplug();
    store_.save(ownPresets());
    model_ = std::make_unique<AppModel>(
        AppModel::World{panels_, machine_.backend(), machine_.usb(), Clock::system(), store_});
    window_ = std::make_unique<MainWindow>(*model_);
    window_->resize(size);
    window_->show();
    if (hasBase) until([this] { return model_->isConnected() && model_->tuning(); });
  }

  AppModel& model() { return *model_; }
  MainWindow& window() { return *window_; }
  SimulatedDevice& device() { return machine_.device(); }

  // Handles events until the condition holds.
  static void until(const std::function<bool()>& holds) {
    while (!holds()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
  }
  void untilIdle() {
    until([this] { return !model_->busy(); });
  }

  void click(const char* objectName) {
    auto* const button = window_->findChild<QAbstractButton*>(QString::fromLatin1(objectName));
    if (button == nullptr) qFatal("there is no %s", objectName);
    button->click();
  }

  // The picture of the display where the window is, once everything is drawn.
  QPixmap picture() {
    for (int i = 0; i < settlingRounds; ++i) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents();
    }
    const QRect place = window_->frameGeometry();
    return window_->screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height());
  }

 private:
  static constexpr int settlingRounds = 20;

  static std::vector<TuningPreset> ownPresets() {
    const auto preset = [](const char* name, const char* source,
                           const std::vector<ParameterValue>& values) {
      TuningPreset own;
      own.name = name;
      own.source = source;
      own.values = TuningPreset::codeValues(values);
      return own;
    };
    return {preset("Spa, wet", "Shared settings file",
                   {{sensitivity, 900},
                    {forceFeedback, 65},
                    {vibration, 60},
                    {brakeLevelIndicator, 90},
                    {forceFeedbackScaling, 1},
                    {forceEffect, 100},
                    {springEffect, 0},
                    {damperEffect, 30},
                    {naturalDamper, 25},
                    {naturalFriction, 10},
                    {brakeForce, 50},
                    {forceEffectIntensity, 70},
                    {analogPaddles, 1},
                    {interpolation, 6},
                    {naturalInertia, 5},
                    {fullForce, 0}}),
            preset("Nordschleife, dry", "Team notes, 2025",
                   {{sensitivity, 1080},
                    {forceFeedback, 80},
                    {vibration, 100},
                    {brakeLevelIndicator, 101},
                    {forceFeedbackScaling, 1},
                    {forceEffect, 110},
                    {springEffect, 0},
                    {damperEffect, 20},
                    {naturalDamper, 15},
                    {naturalFriction, 8},
                    {brakeForce, 70},
                    {forceEffectIntensity, 100},
                    {analogPaddles, 1},
                    {interpolation, 2},
                    {naturalInertia, 8},
                    {fullForce, 40}})};
  }

  SimulatedMachine machine_;
  PresetStore store_;
  NoPanels panels_;
  std::unique_ptr<AppModel> model_;
  std::unique_ptr<MainWindow> window_;
};

struct Scene {
  const char* name;
  Section section;
  bool hasBase;
  std::function<void(Stage&)> prepare;
};

void stageEdits(Stage& stage) {
  stage.model().stage(sensitivity, 540);
  stage.model().stage(forceFeedback, 80);
  stage.model().stage(brakeLevelIndicator, 90);
}

void logSomething(Stage& stage) {
  stage.device().withBase([](SimulatedBase& base) { base.behaviour().ignored = {brakeForce}; });
  stage.model().stagePreset(TuningPreset::builtIn().back());
  stage.model().discardStaged();
  stage.model().stage(forceFeedback, 80);
  stage.model().stage(brakeForce, 70);
  stage.model().saveStaged();
  stage.untilIdle();
  stage.model().discardStaged();
  stage.model().toggleMode();
  stage.model().selectSlot(4);
  stage.untilIdle();
}

const std::vector<Scene>& scenes() {
  const auto nothing = [](Stage&) {};
  static const std::vector<Scene> all{
      {"tuning", Section::tuning, true, stageEdits},
      {"tuning-unchanged", Section::tuning, true, nothing},
      {"tuning-auto-warning", Section::tuning, true,
       [](Stage& stage) {
         stage.model().selectSlot(1);
         stage.untilIdle();
         stage.model().stage(forceFeedback, 80);
       }},
      {"tuning-advanced", Section::tuning, true,
       [](Stage& stage) {
         stage.model().toggleMode();
         stage.untilIdle();
       }},
      {"tuning-empty", Section::tuning, false, nothing},
      {"tuning-saving", Section::tuning, true,
       [](Stage& stage) {
         stageEdits(stage);
         stage.model().saveStaged();
         Stage::until(
             [&] { return stage.model().progress() && stage.model().progress()->done == 1; });
       }},
      {"tuning-changed-at-base", Section::tuning, true,
       [](Stage& stage) {
         stageEdits(stage);
         for (const auto& [parameter, value] :
              {ParameterValue{forceFeedback, 70}, ParameterValue{naturalDamper, 40}}) {
           stage.device().turn(parameter, value);
           Stage::until([&, p = parameter, v = value] {
             return stage.model().tuning()->value(p, stage.model().product()) == v;
           });
         }
       }},
      {"presets", Section::presets, true, nothing},
      {"presets-confirm", Section::presets, true, [](Stage& stage) { stage.click("applyButton"); }},
      {"presets-applying", Section::presets, true,
       [](Stage& stage) {
         stage.model().apply(TuningPreset::builtIn().front());
         Stage::until(
             [&] { return stage.model().progress() && stage.model().progress()->done == 2; });
       }},
      {"presets-no-base", Section::presets, false,
       [](Stage& stage) {
         while (!stage.model().userPresets().empty()) {
           stage.model().deletePreset(TuningPreset(stage.model().userPresets().front()));
         }
       }},
      {"base", Section::base, true, nothing},
      {"base-none", Section::base, false, nothing},
      {"tools", Section::tools, true, nothing},
      {"tools-confirm", Section::tools, true,
       [](Stage& stage) { stage.click("factoryResetButton"); }},
      {"log", Section::log, true, logSomething},
      {"shortcuts", Section::tuning, true,
       [](Stage& stage) {
         stage.window().findChild<QAction*>(QStringLiteral("shortcutsAction"))->trigger();
       }},
  };
  return all;
}

constexpr std::array sizes{QSize(Metrics::defaultWidth, Metrics::defaultHeight),
                           QSize(Metrics::minimumWidth, Metrics::minimumHeight)};

bool take(const Scene& scene, QSize size, const QString& scheme,
          const std::filesystem::path& scratch, const QDir& directory) {
  Stage stage(scratch, size, scene.hasBase);
  stage.window().setSection(scene.section);
  scene.prepare(stage);
  const QString name = QStringLiteral("%1-%2-%3x%4.png")
                           .arg(QString::fromLatin1(scene.name), scheme)
                           .arg(size.width())
                           .arg(size.height());
  std::printf("%s\n", qPrintable(name));
  return stage.picture().save(directory.filePath(name));
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;  // NOLINT(google-build-using-namespace): this program's own
  const QApplication application(argc, argv);
  if (argc != 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
    std::fprintf(stderr, "usage: quorvane-screenshots DIRECTORY\n");
    return 2;
  }
  auto* const style = new Style;
  QApplication::setStyle(style);
  const QTemporaryDir scratch;
  const QDir directory(QString::fromLocal8Bit(argv[1]));
  for (const bool isDark : {false, true}) {
    style->setPrefersDark(isDark);
    const QString scheme = isDark ? QStringLiteral("dark") : QStringLiteral("light");
    for (const QSize size : sizes) {
      for (const Scene& scene : scenes()) {
        if (!take(scene, size, scheme, text(scratch.path()), directory)) return 1;
      }
    }
  }
}
