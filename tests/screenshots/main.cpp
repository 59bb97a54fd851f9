// Renders every section of the window in its states, as PNG files:
//
//   quorvane-screenshots DIRECTORY [SCENE...]     without SCENE: all scenes
//
// A picture is a grab of the real window on the display, with a simulated base:
// SCENE-SCHEME-SIZE.png for the schemes light and dark and each of the sizes. Some scenes are also
// taken in light with larger fonts and from right to left: SCENE-13pt-light-SIZE.png, and so on.
// Qt's environment variables (QT_SCALE_FACTOR) apply.

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QListView>
#include <QMimeData>
#include <QPointer>
#include <QScopeGuard>
#include <QScreen>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "history/history_file.h"
#include "simulator/simulated_machine.h"
#include "tests/app/no_panels.h"
#include "tests/screenshots/written_history.h"
#include "ui/kit/metrics.h"
#include "ui/kit/style.h"
#include "ui/kit/text.h"
#include "ui/model/window_state.h"
#include "ui/shell/comparing.h"
#include "ui/shell/main_window.h"

namespace quorvane {
namespace {

using enum TuningParameter::Case;

constexpr int usual = 0x0020;

// A survey with the facts that the scene sets; by default those of a simulated machine.
class ToldSurvey final : public HIDSurvey {
 public:
  ToldSurvey() { facts_.isSimulated = true; }

  void tell(MachineFacts facts) { facts_ = std::move(facts); }
  MachineFacts take(std::int64_t /*vendorID*/) override { return facts_; }

 private:
  MachineFacts facts_;
};

// The window of one picture, with its model and bases.
class Stage {
 public:
  // With these bases plugged in. The model connects to the first one in its order.
  Stage(const std::filesystem::path& directory, QSize size, const std::vector<int>& bases)
      : machine_(productsOf(bases)), store_(directory / "presets.json") {
    const bool hasBase = !bases.empty();
    std::filesystem::remove(store_.fileURL());
    std::filesystem::remove_all(directory / "history");
    if (!hasBase) machine_.device().unplug();
    for (std::size_t number = 1; number < bases.size(); ++number) {
      machine_.device(number).setProperty(HIDPropertyKey::serialNumber,
                                          "QV-000" + std::to_string(number));
    }
    store_.save(ownPresets());
    const Platform simulated = machine_.platform();
    std::filesystem::remove_all(directory / "history");
    model_ = std::make_unique<AppModel>(
        AppModel::World{{simulated.backend, simulated.usb, simulated.clock, survey_},
                        panels_,
                        store_,
                        History{directory / "history", "quorvane"}});
    window_ = std::make_unique<MainWindow>(*model_);
    window_->resize(size);
    window_->show();
    if (hasBase) until([this] { return model_->isConnected() && model_->tuning(); });
  }

  AppModel& model() { return *model_; }
  MainWindow& window() { return *window_; }
  SimulatedDevice& device() { return machine_.device(); }
  ToldSurvey& survey() { return survey_; }

  // Handles events until the condition holds.
  static void until(const std::function<bool()>& holds) {
    while (!holds()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  void untilIdle() {
    until([this] { return !model_->busy() && !model_->isReadingHistory(); });
  }

  // Rows of a long list are created when the list is laid out.
  void click(const char* objectName) {
    settle();
    auto* const button = window_->findChild<QAbstractButton*>(QString::fromLatin1(objectName));
    if (button == nullptr) qFatal("there is no %s", objectName);
    button->click();
  }

  // Handles events until everything is laid out.
  static void settle() {
    for (int i = 0; i < settlingRounds; ++i) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents();
    }
  }

  // Grabs the window's part of the display, once everything is drawn.
  QPixmap picture() {
    settle();
    const QRect place = window_->frameGeometry();
    return window_->screen()->grabWindow(0, place.x(), place.y(), place.width(), place.height());
  }

 private:
  static constexpr int settlingRounds = 20;

  // The products of these bases; if there is none, the one that is not plugged in.
  static std::vector<FanatecProduct> productsOf(const std::vector<int>& bases) {
    std::vector<FanatecProduct> products;
    products.reserve(bases.size() + 1);
    for (const int base : bases) products.push_back(FanatecProduct::lookup(base).value());
    if (products.empty()) products.push_back(FanatecProduct::lookup(usual).value());
    return products;
  }

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
  ToldSurvey survey_;
  NoPanels panels_;
  std::unique_ptr<AppModel> model_;
  std::unique_ptr<MainWindow> window_;
};

struct Scene {
  const char* name;
  Section section;
  std::vector<int> bases;
  std::function<void(Stage&)> prepare;
  bool isWideToo = false;  // also in a wide window, where the screen has room for one
};

// The application's font and direction for a picture.
struct Look {
  const char* suffix = "";
  double points = 0;  // of the font; 0: the system's
  Qt::LayoutDirection direction = Qt::LeftToRight;
};

constexpr Look usualLook{""};
constexpr std::array otherLooks{Look{"-13pt", 13}, Look{"-16pt", 16},
                                Look{"-rtl", 0, Qt::RightToLeft}};

// The scenes that are taken in the other looks too.
constexpr std::array<const char*, 7> variedScenes{
    "tuning", "presets", "compare", "history", "base-checks-failed", "tools", "log"};

void stageEdits(Stage& stage) {
  stage.model().stage(sensitivity, 540);
  stage.model().stage(forceFeedback, 80);
  stage.model().stage(brakeLevelIndicator, 90);
}

void explain(Stage& stage) {
  stage.model().stage(forceFeedback, 85);
  Stage::settle();
  stage.window().activateWindow();
  stage.window().findChild<QWidget*>(QStringLiteral("FFSlider"))->setFocus();
}

void explainOver(Stage& stage) {
  Stage::settle();
  stage.window().findChild<QWidget*>(QStringLiteral("NDPSlider"))->setFocus();
  stage.click("NDPHelp");
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

// A value that the base does not take.
void saveInVain(Stage& stage) {
  stage.device().withBase([](SimulatedBase& base) { base.behaviour().ignored = {brakeForce}; });
  stage.model().stage(forceFeedback, 80);
  stage.model().stage(brakeForce, 70);
  stage.model().saveStaged();
  stage.untilIdle();
}

void saveThree(Stage& stage) {
  stage.model().stage(forceFeedback, 80);
  stage.model().stage(naturalDamper, 15);
  stage.model().stage(interpolation, 3);
  stage.model().saveStaged();
  stage.untilIdle();
}

void saveAndUndo(Stage& stage) {
  saveThree(stage);
  stage.device().turn(naturalDamper, 40);
  Stage::settle();
  stage.model().undo();
  stage.untilIdle();
}

// Saves in a set, and plugs the base out and in with other values.
void comeBack(Stage& stage, std::int64_t set) {
  stage.model().selectSlot(set);
  stage.untilIdle();
  saveThree(stage);
  stage.device().unplug();
  Stage::until([&] { return !stage.model().isConnected(); });
  stage.device().withBase([](SimulatedBase& base) {
    base.menu().put(forceFeedback, 100);
    base.menu().put(naturalDamper, 50);
  });
  stage.device().plug();
  Stage::until([&] { return stage.model().isConnected() && stage.model().tuning(); });
  stage.untilIdle();
}

void addPresets(Stage& stage) {
  for (int number = 1; number <= 298; ++number) {
    stage.model().saveCurrentAsPreset("Track " + std::to_string(number));
  }
}

// Without the tick of the first row.
void compare(Stage& stage) {
  stage.window().comparing().comparePreset(TuningPreset::builtIn()[2]);
  Stage::settle();
  auto* const list =
      stage.window().findChild<QAbstractItemView*>(QStringLiteral("compareList"))->model();
  list->setData(list->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
}

void compareOnlyDifferent(Stage& stage) {
  stage.window().comparing().comparePreset(stage.model().userPresets().back());
  stage.click("onlyDifferentBox");
}

// Writes of some days, and one just now of which the base does not take a value.
void showHistory(Stage& stage) {
  const HistoryFile file(stage.model().historyFile().value());
  for (const HistoryRecord& record : writtenHistory(usual)) {
    file.append(record);
    file.append(record.id, *record.outcome);
  }
  saveInVain(stage);
  stage.model().discardStaged();
  stage.window().findChild<QAction*>(QStringLiteral("historyAction"))->trigger();
  const auto* const list = stage.window().findChild<QListView*>(QStringLiteral("historyList"));
  Stage::until([&] { return list->model()->rowCount() > 0; });
}

void drag(Stage& stage) {
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(QStringLiteral("/home/driver/Spa, wet.quorvane"))});
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&stage.window(), &enter);
}

void askToSwitch(Stage& stage) {
  stageEdits(stage);
  Stage::settle();
  for (QAbstractButton* const button : stage.window().findChildren<QAbstractButton*>()) {
    if (button->isVisible() && button->text() == QStringLiteral("Connect")) button->click();
  }
}

void examine(Stage& stage) {
  stage.click("whyNotFoundButton");
  stage.untilIdle();
}

// A base on the bus that udev has not handled, and to which no rule grants access.
void examineUnready(Stage& stage) {
  MachineFacts facts;
  facts.hasUSB = true;
  facts.hasUdev = true;
  facts.seatedUsers = {1000};
  facts.user.id = 1000;
  USBInterfaceFacts interface;
  interface.name = "3-1:1.0";
  interface.isHID = true;
  interface.driver = "usbhid";
  USBDeviceFacts& usb = facts.usb.emplace_back();
  usb.name = "3-1";
  usb.productID = usual;
  usb.product = "FANATEC Wheel";
  usb.interfaces = {interface};
  HIDFacts& hid = facts.hid.emplace_back();
  hid.name = "0003:0EB7:0020.0001";
  hid.productID = usual;
  hid.product = "FANATEC Wheel";
  hid.usbInterface = interface.name;
  hid.driver = "hid-generic";
  NodeFacts& node = hid.node.emplace();
  node.path = "/dev/hidraw3";
  node.exists = true;
  node.mode = 0600;
  node.isTaggedForSeat = false;
  stage.survey().tell(facts);
  examine(stage);
}

void examineSilent(Stage& stage) {
  stage.device().withBase([](SimulatedBase& base) { base.behaviour().tuningSilent = true; });
  stage.model().refresh();
  stage.untilIdle();
  examine(stage);
}

const std::vector<Scene>& scenes() {
  const auto nothing = [](Stage&) {};
  static const std::vector<Scene> all{
      {"tuning", Section::tuning, {usual}, stageEdits, true},
      {"tuning-unchanged", Section::tuning, {usual}, nothing},
      {"tuning-auto-warning",
       Section::tuning,
       {usual},
       [](Stage& stage) {
         stage.model().selectSlot(1);
         stage.untilIdle();
         stage.model().stage(forceFeedback, 80);
       }},
      {"tuning-advanced",
       Section::tuning,
       {usual},
       [](Stage& stage) {
         stage.model().toggleMode();
         stage.untilIdle();
       }},
      {"tuning-explained", Section::tuning, {usual}, explain, true},
      {"tuning-explained-over", Section::tuning, {usual}, explainOver},
      {"tuning-empty", Section::tuning, {}, nothing, true},
      {"tuning-saving",
       Section::tuning,
       {usual},
       [](Stage& stage) {
         stageEdits(stage);
         stage.model().saveStaged();
         Stage::until(
             [&] { return stage.model().progress() && stage.model().progress()->done == 1; });
       }},
      {"tuning-changed-at-base",
       Section::tuning,
       {usual},
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
      {"tuning-not-taken", Section::tuning, {usual}, saveInVain},
      {"tuning-saved", Section::tuning, {usual}, saveThree},
      {"tuning-receipt",
       Section::tuning,
       {usual},
       [](Stage& stage) {
         saveThree(stage);
         stage.click("savedDetailsButton");
       }},
      {"tuning-undone", Section::tuning, {usual}, saveAndUndo},
      {"tuning-not-as-left-set-a",
       Section::tuning,
       {usual},
       [](Stage& stage) { comeBack(stage, 1); }},
      {"tuning-not-as-left", Section::tuning, {usual}, [](Stage& stage) { comeBack(stage, 2); }},
      {"tuning-closing",
       Section::tuning,
       {usual},
       [](Stage& stage) {
         stageEdits(stage);
         stage.window().close();
       }},
      {"presets", Section::presets, {usual}, nothing, true},
      {"presets-many", Section::presets, {usual}, addPresets},
      {"presets-dragged", Section::presets, {usual}, drag},
      {"presets-confirm",
       Section::presets,
       {usual},
       [](Stage& stage) { stage.click("applyButton"); }},
      {"presets-applying",
       Section::presets,
       {usual},
       [](Stage& stage) {
         stage.model().apply(TuningPreset::builtIn().front());
         Stage::until(
             [&] { return stage.model().progress() && stage.model().progress()->done == 2; });
       }},
      {"presets-no-base",
       Section::presets,
       {},
       [](Stage& stage) {
         while (!stage.model().userPresets().empty()) {
           stage.model().deletePreset(TuningPreset(stage.model().userPresets().front()));
         }
       }},
      {"compare", Section::presets, {usual}, compare},
      {"compare-different", Section::presets, {usual}, compareOnlyDifferent},
      {"base", Section::base, {usual}, nothing, true},
      {"base-none", Section::base, {}, nothing},
      {"base-two", Section::base, {0x0006, usual}, nothing},
      {"base-three", Section::base, {0x0001, usual, usual}, nothing},
      {"base-switch", Section::base, {0x0006, usual}, askToSwitch},
      {"base-checks-failed", Section::base, {}, examineUnready, true},
      {"base-checks-unfolded",
       Section::base,
       {},
       [](Stage& stage) {
         examineUnready(stage);
         stage.click("passedChecksLine");
         stage.click("uncheckedChecksLine");
       }},
      {"base-checks-silent", Section::base, {usual}, examineSilent},
      {"tools", Section::tools, {usual}, nothing},
      {"tools-confirm",
       Section::tools,
       {usual},
       [](Stage& stage) { stage.click("factoryResetButton"); }},
      {"log", Section::log, {usual}, logSomething, true},
      {"log-errors",
       Section::log,
       {usual},
       [](Stage& stage) {
         logSomething(stage);
         stage.click("errorsOnlyToggle");
       }},
      {"history", Section::tuning, {usual}, showHistory},
      {"about",
       Section::tuning,
       {usual},
       [](Stage& stage) {
         stage.window().findChild<QAction*>(QStringLiteral("aboutAction"))->trigger();
       }},
      {"shortcuts",
       Section::tuning,
       {usual},
       [](Stage& stage) {
         stage.window().findChild<QAction*>(QStringLiteral("shortcutsAction"))->trigger();
       }},
  };
  return all;
}

constexpr std::array sizes{QSize(Metrics::defaultWidth, Metrics::defaultHeight),
                           QSize(Metrics::minimumWidth, Metrics::minimumHeight), QSize(1920, 1080)};

bool isTaken(const Scene& scene, QSize size) {
  if (size.width() < Metrics::wideFrom) return true;
  const QSize screen = QGuiApplication::primaryScreen()->size();
  return scene.isWideToo && size.boundedTo(screen) == size;
}

bool isVaried(const Scene& scene) {
  return std::any_of(variedScenes.begin(), variedScenes.end(),
                     [&](const char* name) { return std::string_view(scene.name) == name; });
}

bool take(const Scene& scene, QSize size, const QString& scheme, const Look& look,
          const std::filesystem::path& scratch, const QDir& directory) {
  const QFont usualFont = QApplication::font();
  QFont font = usualFont;
  if (look.points > 0) font.setPointSizeF(look.points);
  QApplication::setFont(font);
  QApplication::setLayoutDirection(look.direction);
  const auto restore = qScopeGuard([&] { QApplication::setFont(usualFont); });
  // What the window remembers of the scene before.
  for (const char* const flag : {"presets/compact", "presets/compactOffered"}) {
    WindowState::setFlag(QString::fromLatin1(flag), false);
  }
  Stage stage(scratch, size, scene.bases);
  stage.window().setSection(scene.section);
  scene.prepare(stage);
  const QString name = QStringLiteral("%1%2-%3-%4x%5.png")
                           .arg(QString::fromLatin1(scene.name), QLatin1String(look.suffix), scheme)
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
  if (argc < 2 || !QDir().mkpath(QString::fromLocal8Bit(argv[1]))) {
    std::fprintf(stderr, "usage: quorvane-screenshots DIRECTORY [SCENE...]\n");
    return 2;
  }
  auto* const style = new Style;
  QApplication::setStyle(style);
  const QStringList wanted = QApplication::arguments().mid(2);
  const QTemporaryDir scratch;
  const QDir directory(QString::fromLocal8Bit(argv[1]));
  for (const bool isDark : {false, true}) {
    style->setPrefersDark(isDark);
    const QString scheme = isDark ? QStringLiteral("dark") : QStringLiteral("light");
    for (const QSize size : sizes) {
      for (const Scene& scene : scenes()) {
        const bool isWanted = wanted.empty() || wanted.contains(QString::fromLatin1(scene.name));
        if (!isWanted || !isTaken(scene, size)) continue;
        if (!take(scene, size, scheme, usualLook, text(scratch.path()), directory)) return 1;
        if (isDark || !isVaried(scene)) continue;
        for (const Look& look : otherLooks) {
          if (!take(scene, size, scheme, look, text(scratch.path()), directory)) return 1;
        }
      }
    }
  }
  return 0;
}
