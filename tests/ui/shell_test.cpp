#include <gtest/gtest.h>

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QToolTip>
#include <algorithm>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "presets/preset_coding.h"
#include "support/version.h"
#include "tests/ui/window_fixture.h"
#include "ui/kit/file_uri.h"
#include "ui/kit/focus_ring.h"
#include "ui/kit/form.h"
#include "ui/kit/style.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using std::filesystem::path;

constexpr Qt::KeyboardModifiers controlKey = Qt::ControlModifier;

// The first column of the table "key", sorted.
Lines keysInTheUserGuide() {
  std::ifstream guide(USER_GUIDE);
  Lines keys;
  bool isInside = false;
  for (std::string line; std::getline(guide, line);) {
    if (line.starts_with("| key |")) {
      isInside = true;
    } else if (!line.starts_with('|')) {
      isInside = false;
    } else if (isInside && !line.starts_with("|-")) {
      keys.push_back(line.substr(2, line.find(" |", 2) - 2));
    }
  }
  std::sort(keys.begin(), keys.end());
  return keys;
}

class Shell : public WindowTest {
 protected:
  path fileOf(const std::string& preset) {
    path file = directory_ / (preset + ".json");
    putFile(file, encodePresets({presetOf(preset, {{P::forceFeedback, 80}})}));
    return file;
  }

  static QUrl urlOf(const path& file) {
    return QUrl::fromLocalFile(QString::fromStdString(file.string()));
  }

  Lines presetNames() {
    Lines names;
    for (const TuningPreset& preset : model().userPresets()) names.push_back(preset.name);
    return names;
  }

  QMenu& menu(int number) { return *window().menuBar()->actions().at(number)->menu(); }

  QColor colourAt(const std::string& widget, QPoint at) {
    return find(widget).grab().toImage().pixelColor(at);
  }

  // The colour of the dot before the status line.
  QColor dot() { return colourAt("statusBar", {16, find("statusBar").height() / 2}); }

  // The pages that exist, in the sidebar's order.
  Lines builtPages() {
    Lines built;
    for (const char* const page :
         {"basePage", "tuningPage", "presetsPage", "toolsPage", "logPage"}) {
      if (exists(page)) built.emplace_back(page);
    }
    return built;
  }
};

TEST_F(Shell, OpensOnTheSectionThatTheEnvironmentNames) {
  const std::vector<std::pair<std::optional<std::string>, Section>> cases{
      {"Log", Section::log},     {"Base", Section::base},    {"Presets", Section::presets},
      {"Tools", Section::tools}, {"log", Section::tuning},   {"", Section::tuning},
      {" Log", Section::tuning}, {"tools", Section::tuning}, {std::nullopt, Section::tuning}};
  for (const auto& [value, section] : cases) {
    const ScopedVariable variable("QUORVANE_SECTION", value);
    openWithoutBase();
    EXPECT_EQ(window().section(), section) << value.value_or("unset");
    closeWindow();
    end();
  }
}

TEST_F(Shell, GoesToTheSectionThatTheModelAsksFor) {
  open();
  model().setRequestedSection("Presets");
  settle();
  EXPECT_EQ(window().section(), Section::presets);
  EXPECT_TRUE(isVisible("presetsPage"));
  EXPECT_EQ(model().requestedSection(), std::nullopt);
}

TEST_F(Shell, LeavesARequestForNoSectionAsItIs) {
  open();
  for (const char* const title : {"Settings", "presets", ""}) {
    model().setRequestedSection(title);
    settle();
    EXPECT_EQ(window().section(), Section::tuning);
    EXPECT_EQ(model().requestedSection(), title);
  }
  model().setRequestedSection("Log");
  EXPECT_EQ(window().section(), Section::log);
  EXPECT_EQ(model().requestedSection(), std::nullopt);
}

TEST_F(Shell, ARequestFromBeforeTheWindowIsFollowed) {
  start();
  model().setRequestedSection("Tools");
  show();
  EXPECT_EQ(window().section(), Section::tools);
  EXPECT_EQ(model().requestedSection(), std::nullopt);
}

TEST_F(Shell, CannotBeMadeSmaller) {
  open();
  EXPECT_EQ(window().size(), QSize(1120, 740));
  EXPECT_EQ(window().minimumSize(), QSize(860, 560));
  for (const Section section : allSections) {
    visit(section);
    window().resize(100, 100);
    settle();
    EXPECT_EQ(window().size(), QSize(860, 560)) << rawValue(section);
  }
}

TEST_F(Shell, TheSidebarTakesItsIdealWidthWhereThereIsRoom) {
  open();
  for (const auto& [window, sidebar] :
       std::vector<std::pair<int, int>>{{860, 180}, {870, 190}, {880, 200}, {1600, 200}}) {
    WindowTest::window().resize(window, 600);
    settle();
    EXPECT_EQ(find("sidebar").width(), sidebar);
  }
}

TEST_F(Shell, ImportsFilesOneAfterAnotherInTheOrderGiven) {
  open();
  const path wet = fileOf("Wet");
  const path dry = fileOf("Dry");
  window().importFiles({FileURI::of(wet), FileURI::of(dry)});
  settle();
  EXPECT_EQ(presetNames(), (Lines{"Wet", "Dry"}));
  EXPECT_EQ(takeLog(),
            (Lines{"[log] Imported \"Wet\" from " + wet.string(),
                   "[log] Imported \"Dry\" from " + dry.string(), "[log] Imported 2 files"}));
  EXPECT_EQ(window().section(), Section::presets);
}

TEST_F(Shell, OneFileThatCannotBeReadKeepsNoOtherFromComingIn) {
  openWithoutBase();
  const path dry = fileOf("Dry");
  window().importFiles({QStringLiteral("https://quorvane.example/wet.json"),
                        FileURI::of(directory_ / "missing.json"), FileURI::of(dry)});
  const Lines log = takeLog();
  ASSERT_EQ(log.size(), 4U);
  EXPECT_TRUE(log[0].starts_with("[error] Could not import https:")) << log[0];
  EXPECT_TRUE(log[1].starts_with("[error] Could not import ")) << log[1];
  EXPECT_EQ(log[2], "[log] Imported \"Dry\" from " + dry.string() + "; connect a base to apply it");
  EXPECT_EQ(log[3], "[error] Imported 1 of 3 files");
}

TEST_F(Shell, DroppedFilesAreImportedInOrder) {
  open();
  QMimeData files;
  files.setUrls({urlOf(fileOf("Wet")), urlOf(fileOf("Dry"))});
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(&window(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  EXPECT_TRUE(isVisible("dropFrame"));
  EXPECT_EQ(name("dropFrame"), "Add the presets in 2 files to your own");
  EXPECT_EQ(find("dropFrame").geometry(), find("dropFrame").parentWidget()->rect());
  QDropEvent drop({50, 50}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window(), &drop);
  settle();
  EXPECT_FALSE(isVisible("dropFrame"));
  EXPECT_EQ(presetNames(), (Lines{"Wet", "Dry"}));
}

TEST_F(Shell, ADraggedFileThatLeavesTheWindowTakesTheFrameWithIt) {
  open();
  QMimeData file;
  file.setUrls({urlOf(fileOf("Wet & dry"))});
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window(), &enter);
  EXPECT_EQ(name("dropFrame"), "Add the presets in Wet & dry.json to your own");
  window().resize(1300, 800);
  settle();
  EXPECT_EQ(find("dropFrame").geometry(), find("dropFrame").parentWidget()->rect());
  QDragLeaveEvent leave;
  QApplication::sendEvent(&window(), &leave);
  EXPECT_FALSE(isVisible("dropFrame"));
  EXPECT_TRUE(presetNames().empty());
}

TEST_F(Shell, OtherThingsCannotBeDropped) {
  open();
  QMimeData words;
  words.setText(QStringLiteral("Wet"));
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &words, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  QApplication::sendEvent(&window(), &enter);
  EXPECT_FALSE(enter.isAccepted());
}

TEST_F(Shell, HasItsNameAsTitleAndANoteAfterIt) {
  open();
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Quorvane"));
  EXPECT_EQ(MainWindow(model(), QStringLiteral("simulated")).windowTitle(),
            QStringLiteral("Quorvane (simulated)"));
}

TEST_F(Shell, EverySectionHasItsTitle) {
  openWithoutBase();
  for (const auto& [section, page, title] :
       std::vector<std::tuple<Section, std::string, std::string>>{
           {Section::base, "basePage", "Base"},
           {Section::presets, "presetsPage", "Presets"},
           {Section::tools, "toolsPage", "Tools"},
           {Section::log, "logPage", "Log"}}) {
    visit(section);
    EXPECT_EQ(textOf(find("pageTitle", find(page))), title);
  }
}

TEST_F(Shell, TheSidebarHasTheSectionsInOrderAndTwoLinks) {
  open();
  const Lines names{"sectionBase", "sectionTuning", "sectionPresets", "sectionTools",
                    "sectionLog",  "supportLink",   "websiteLink"};
  const Lines texts{
      "Base", "Tuning", "Presets", "Tools", "Log", "Support the firmware work", "quorvane.example"};
  int above = -1;
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(text(names[i]), texts[i]);
    const int top = find(names[i]).mapTo(&window(), QPoint()).y();
    EXPECT_GT(top, above) << names[i];
    above = top;
  }
}

TEST_F(Shell, ASidebarRowShowsItsSection) {
  open();
  for (const Section section : allSections) {
    const std::string row = "section" + std::string(rawValue(section));
    click(row);
    EXPECT_EQ(window().section(), section);
    EXPECT_TRUE(find<QAbstractButton>(row).isChecked());
  }
}

TEST_F(Shell, ArrowKeysMoveThroughTheSidebar) {
  open();
  focus("sectionTuning");
  press(Qt::Key_Down);
  EXPECT_EQ(window().section(), Section::presets);
  EXPECT_EQ(focused(), "sectionPresets");
  press(Qt::Key_Up);
  press(Qt::Key_Up);
  EXPECT_EQ(window().section(), Section::base);
}

TEST_F(Shell, ThePillSaysHowManyEditsWait) {
  open();
  EXPECT_EQ(name("sectionTuning"), "Tuning");
  stage(P::forceFeedback, 80);
  EXPECT_EQ(name("sectionTuning"), "Tuning, 1 unsaved");
  visit(Section::log);
  stage(P::vibration, 50);
  EXPECT_EQ(name("sectionTuning"), "Tuning, 2 unsaved");
  EXPECT_EQ(text("sectionTuning"), "Tuning");
  EXPECT_EQ(name("sectionLog"), "Log");
  model().discardStaged();
  settle();
  EXPECT_EQ(name("sectionTuning"), "Tuning");
}

TEST_F(Shell, LinksOpenTheirAddresses) {
  open();
  click("supportLink");
  click("websiteLink");
  EXPECT_EQ(links_.take(),
            (Lines{"https://quorvane.example#firmware", "https://quorvane.example"}));
  for (const char* const action : {"websiteAction", "supportAction", "mailAction"}) trigger(action);
  EXPECT_EQ(links_.take(), (Lines{"https://quorvane.example", "https://quorvane.example#firmware",
                                  "mailto:support@quorvane.example"}));
  trigger("userGuideAction");
  EXPECT_EQ(links_.take(), Lines{"https://quorvane.example#guide"});
}

TEST_F(Shell, AboutTellsTheVersionAndTheLicenses) {
  open();
  trigger("aboutAction");
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(dialog()->objectName(), QStringLiteral("aboutDialog"));
  EXPECT_EQ(text("aboutVersion"),
            "Version " + std::string(version()) + " (" + std::string(commit()) + ")");
  const QString licenses = find<QPlainTextEdit>("licenses").toPlainText();
  for (const char* const part :
       {"MIT License", "The Quorvane developers", "{fmt}", "JSON for Modern C++", "CLI11", "Qt "}) {
    EXPECT_TRUE(licenses.contains(QString::fromLatin1(part))) << part;
  }
  EXPECT_EQ(focused(), "closeAboutButton");
  press(Qt::Key_Escape);
  EXPECT_EQ(dialog(), nullptr);
}

TEST_F(Shell, MenusHoldTheirEntriesInOrder) {
  open();
  Lines titles;
  for (const QAction* const action : window().menuBar()->actions()) {
    titles.push_back(action->text().remove(QLatin1Char('&')).toStdString());
  }
  EXPECT_EQ(titles, (Lines{"File", "Edit", "View", "Help"}));
  EXPECT_EQ(entriesOf(menu(0)), (Lines{"Import…", "Share…", "Export mine…", "-", "Quit"}));
  EXPECT_EQ(entriesOf(menu(1)),
            (Lines{"Undo", "Redo", "-", "Save to set", "Discard", "Read again", "-", "Load preset…",
                   "Compare…", "Save as preset…", "History…"}));
  EXPECT_EQ(entriesOf(menu(2)), (Lines{"Base", "Tuning", "Presets", "Tools", "Log", "-",
                                       "What it does", "Compact presets", "Keyboard shortcuts"}));
  EXPECT_EQ(entriesOf(menu(3)), (Lines{"Quorvane website", "Support the firmware work",
                                       "Email support", "-", "User guide", "About Quorvane"}));
}

TEST_F(Shell, EntriesAreAvailableWhenTheyCanDoSomething) {
  const Lines actions{"importAction", "shareAction",   "exportAction",    "quitAction",
                      "saveAction",   "discardAction", "readAgainAction", "loadPresetAction"};
  const auto states = [&] {
    Lines lines;
    for (const std::string& action : actions) lines.push_back(stateOf(find<QAction>(action)));
    return lines;
  };
  const std::string noEdits = "disabled: There are no unsaved changes";
  const std::string noPresets = "disabled: There is no preset of your own to export yet";
  openWithoutBase();
  EXPECT_EQ(states(),
            (Lines{"enabled", "disabled: Connect a base first: its menu is what gets shared",
                   noPresets, "enabled", noEdits, noEdits, "disabled: Connect a base first",
                   "disabled: Connect a base first"}));
  base();
  settle();
  EXPECT_EQ(states(), (Lines{"enabled", "enabled", noPresets, "enabled", noEdits, noEdits,
                             "enabled", "enabled"}));
  stage(P::forceFeedback, 80);
  model().saveCurrentAsPreset("Wet");
  EXPECT_EQ(states(), Lines(8, "enabled"));
  whileReading([&] {
    const std::string wait = std::string("disabled: ") + waitReason;
    EXPECT_EQ(states(),
              (Lines{"enabled", "enabled", "enabled", "enabled", wait, wait, wait, wait}));
  });
  EXPECT_EQ(states(), Lines(8, "enabled"));
}

TEST_F(Shell, SavingAsAPresetNeedsAMenu) {
  openWithoutBase();
  EXPECT_EQ(stateOf(find<QAction>("savePresetAction")),
            "disabled: Connect a base first: its menu is what gets saved");
  base();
  settle();
  EXPECT_EQ(stateOf(find<QAction>("savePresetAction")), "enabled");
  trigger("savePresetAction");
  EXPECT_EQ(window().section(), Section::presets);
  EXPECT_EQ(focused(), "presetNameField");
}

TEST_F(Shell, SharingNeedsAMenu) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  open();
  EXPECT_EQ(stateOf(find<QAction>("shareAction")),
            "disabled: Connect a base first: its menu is what gets shared");
}

TEST_F(Shell, KeysShowTheSections) {
  open();
  for (const auto& [key, section] :
       std::vector<std::pair<int, Section>>{{Qt::Key_1, Section::base},
                                            {Qt::Key_3, Section::presets},
                                            {Qt::Key_4, Section::tools},
                                            {Qt::Key_5, Section::log},
                                            {Qt::Key_2, Section::tuning}}) {
    press(key, controlKey);
    EXPECT_EQ(window().section(), section);
  }
}

TEST_F(Shell, CardsAreCentredInWideWindows) {
  open();
  for (const auto& [section, label] : std::vector<std::pair<Section, std::string>>{
           {Section::base, "baseReadAgainButton"}, {Section::tools, "rereadButton"}}) {
    visit(section);
    const QWidget* card = &find(label);
    while (qobject_cast<const Card*>(card) == nullptr) card = card->parentWidget();
    const auto left = [&] { return card->mapTo(&window(), QPoint()).x(); };
    window().resize(1499, 740);
    settle();
    EXPECT_EQ(left(), 220) << rawValue(section);
    window().resize(1920, 740);
    settle();
    EXPECT_EQ(left(), 200 + (1720 - 880) / 2) << rawValue(section);
    EXPECT_EQ(card->width(), 880);
  }
}

TEST_F(Shell, KeysPutTheFocusOnTheSectionsFirstRowOrBackWhereItWas) {
  open();
  model().saveCurrentAsPreset("Wet");
  find("sectionTuning").setFocus();
  press(Qt::Key_2, controlKey);
  EXPECT_EQ(focused(), "SENSlider");
  focus("NDPSlider");
  const std::string firstPreset = "preset-" + TuningPreset::builtIn().front().id.text();
  for (const auto& [key, wanted] :
       std::vector<std::pair<int, std::string>>{{Qt::Key_1, "connectionStatus"},
                                                {Qt::Key_3, firstPreset},
                                                {Qt::Key_4, "rereadButton"},
                                                {Qt::Key_5, "errorsOnlyToggle"},
                                                {Qt::Key_2, "NDPSlider"}}) {
    press(key, controlKey);
    settle();
    EXPECT_EQ(focused(), wanted);
  }
}

TEST_F(Shell, EntriesShowTheSections) {
  open();
  for (const Section section : allSections) {
    trigger("view" + std::string(rawValue(section)) + "Action");
    EXPECT_EQ(window().section(), section);
  }
}

TEST_F(Shell, KeysReadAgain) {
  open();
  press(Qt::Key_R, controlKey);
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, identityOn, identityRequest}));
  press(Qt::Key_F5);
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, identityOn, identityRequest}));
  trigger("readAgainAction");
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, identityOn, identityRequest}));
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(Shell, KeysSaveAndDiscard) {
  open();
  stage(P::forceFeedback, 80);
  press(Qt::Key_S, controlKey);
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{writeOf("db", "50", "05"), commitPause, menuRequest}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Saving 1 change…", "[log] Saved 1 change to set C (Custom)"}));
  stage(P::forceFeedback, 81);
  press(Qt::Key_Z, controlKey | Qt::ShiftModifier);
  EXPECT_EQ(takeLog(), (Lines{"[log] Discarded 1 unsaved change"}));
  EXPECT_EQ(staged(), "");
}

TEST_F(Shell, KeysForTheEditsOnlyShowTheTuningSectionFromAnother) {
  open();
  stage(P::forceFeedback, 80);
  visit(Section::log);
  press(Qt::Key_S, controlKey);
  EXPECT_EQ(window().section(), Section::tuning);
  visit(Section::base);
  press(Qt::Key_Z, controlKey | Qt::ShiftModifier);
  EXPECT_EQ(window().section(), Section::tuning);
  settle();
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(takeLog(), Lines{});
  press(Qt::Key_S, controlKey);
  settle();
  EXPECT_EQ(staged(), "");
}

TEST_F(Shell, KeysForTheEditsDoNothingWithoutOnes) {
  open();
  visit(Section::log);
  press(Qt::Key_S, controlKey);
  press(Qt::Key_Z, controlKey | Qt::ShiftModifier);
  settle();
  EXPECT_EQ(window().section(), Section::log);
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(Shell, KeysImportAndShare) {
  open();
  press(Qt::Key_I, controlKey);
  press(Qt::Key_E, controlKey);
  EXPECT_EQ(panels_.takeRequests(),
            (Lines{"open: Import settings [Import] settings, no name",
                   "save: Share settings [Export] settings, CSL DD - GT DD Pro - ClubSport DD, set "
                   "C (Custom).quorvane"}));
}

TEST_F(Shell, TheEntryExportsThePresets) {
  open();
  model().saveCurrentAsPreset("Wet");
  takeLog();
  const path file = directory_ / "mine.json";
  panels_.answerAtOnce(file);
  trigger("exportAction");
  EXPECT_EQ(takeLog(), (Lines{"[log] Exported 1 preset to " + file.string()}));
}

TEST_F(Shell, QuitsByItsKey) {
  open();
  press(Qt::Key_Q, controlKey);
  EXPECT_FALSE(window().isVisible());
}

TEST_F(Shell, EscGoesToDiscardOnTuningAndDoesNotPressIt) {
  open();
  focus("FFSlider");
  press(Qt::Key_Escape);
  EXPECT_EQ(focused(), "FFSlider");
  stage(P::forceFeedback, 80);
  press(Qt::Key_Escape);
  EXPECT_EQ(focused(), "discardButton");
  EXPECT_EQ(staged(), "FF=80");
  visit(Section::log);
  focus("logList");
  press(Qt::Key_Escape);
  EXPECT_EQ(focused(), "logList");
}

TEST_F(Shell, EscFirstEndsWhatIsBeingTyped) {
  open();
  stage(P::vibration, 50);
  focus("FFReadout");
  type("8");
  press(Qt::Key_Escape);
  EXPECT_EQ(focused(), "FFSlider");
  EXPECT_EQ(text("FFReadout"), "65 %");
  press(Qt::Key_Escape);
  EXPECT_EQ(focused(), "discardButton");
  EXPECT_EQ(staged(), "SHO=50");
}

TEST_F(Shell, TheSheetListsTheKeys) {
  open();
  focus("sectionTuning");
  press(Qt::Key_F1);
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(dialog()->objectName(), QStringLiteral("shortcutsSheet"));
  EXPECT_EQ(textOf(find("dialogTitle", *dialog())), "Keyboard shortcuts");
  Lines keys;
  for (const QLabel* const label : dialog()->findChildren<QLabel*>()) {
    if (label->foregroundRole() == QPalette::Dark) keys.push_back(label->text().toStdString());
  }
  std::sort(keys.begin(), keys.end());
  EXPECT_EQ(keys, keysInTheUserGuide());
  press(Qt::Key_Escape);
  EXPECT_EQ(dialog(), nullptr);
  trigger("shortcutsAction");
  ASSERT_NE(dialog(), nullptr);
  click("closeSheetButton");
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_FALSE(exists("shortcutsSheet"));
}

TEST_F(Shell, TheStatusBarShowsTheLastThingThatHappened) {
  openWithoutBase();
  EXPECT_EQ(text("statusLine"), noBaseStatus);
  EXPECT_EQ(name("statusLine"), noBaseStatus);
  base();
  settle();
  EXPECT_EQ(text("statusLine"), "Connected to CSL DD Wheel Base");
  visit(Section::log);
  model().selectSlot(4);
  settle();
  EXPECT_EQ(text("statusLine"), "Switched to set 4");
}

TEST_F(Shell, AnErrorIsMarkedInTheStatusBarUntilTheNextLine) {
  open();
  const auto look = [this] {
    const QImage image = find("statusBar").grab().toImage();
    int marked = 0;
    for (int x = 28; x < 42; ++x) {
      for (int y = 0; y < image.height(); ++y) marked += image.pixelColor(x, y) == theme().error;
    }
    return std::pair(find("statusLine").x(), marked > 20);
  };
  const auto usual = look();
  EXPECT_FALSE(usual.second);
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  model().refresh();
  settle();
  EXPECT_EQ(look(), std::pair(usual.first + 22, true));
  EXPECT_EQ(find("statusLine").foregroundRole(), QPalette::BrightText);
  EXPECT_EQ(name("statusLine"), "Error, " + model().statusLine());
  EXPECT_EQ(text("statusLine"), model().statusLine());
  model().saveCurrentAsPreset("Wet");
  settle();
  EXPECT_EQ(look(), usual);
  EXPECT_EQ(name("statusLine"), "Saved preset \"Wet\"");
}

TEST_F(Shell, EveryKindOfErrorIsMarked) {
  open();
  const auto isMarked = [this] {
    settle();
    return find("statusLine").foregroundRole() == QPalette::BrightText;
  };
  model().importSettings(directory_ / "missing.json");
  EXPECT_TRUE(isMarked());
  model().saveCurrentAsPreset("Wet");
  EXPECT_FALSE(isMarked());
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  stage(P::forceFeedback, 80);
  model().saveStaged();
  EXPECT_TRUE(isMarked()) << model().statusLine();
}

TEST_F(Shell, AStatusThatHasNoRoomIsItsTooltip) {
  open();
  window().resize(860, 560);
  const auto tooltip = [this] {
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, {5, 5}, {5, 5});
    QApplication::sendEvent(&find("statusLine"), &help);
    return QToolTip::isVisible() ? QToolTip::text().toStdString() : "";
  };
  EXPECT_EQ(tooltip(), "");
  model().stagePreset(presetOf(std::string(300, 'x'), {}));
  settle();
  EXPECT_EQ(tooltip(), model().statusLine());
  QToolTip::hideText();
}

TEST_F(Shell, TheRingShowsWhileTheKeyboardIsUsed) {
  open();
  const auto& ring = *window().findChild<FocusRing*>();
  press(Qt::Key_Tab);
  focus("FFReadout");
  EXPECT_TRUE(ring.isVisible());
  const QPoint place = find("FFReadout").mapTo(&window(), QPoint());
  EXPECT_EQ(ring.geometry(), QRect(place, find("FFReadout").size()).adjusted(-4, -4, 4, 4));
  click("FFSlider");
  EXPECT_EQ(focused(), "FFSlider");
  EXPECT_FALSE(ring.isVisible());
  press(Qt::Key_Right);
  EXPECT_TRUE(ring.isVisible());
}

TEST_F(Shell, MenusTellWhyAnEntryIsDisabled) {
  open();
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(menu(i).toolTipsVisible());
}

TEST_F(Shell, TheDotIsGreenWhileABaseIsConnected) {
  openWithoutBase();
  EXPECT_EQ(dot(), theme().idle);
  base();
  settle();
  EXPECT_EQ(dot(), theme().ok);
  base().unplug();
  settle();
  EXPECT_EQ(dot(), theme().idle);
}

TEST_F(Shell, TheSpinnerTurnsWhileTheModelIsBusy) {
  open();
  EXPECT_FALSE(isVisible("busySpinner"));
  whileReading([this] {
    EXPECT_TRUE(isVisible("busySpinner"));
    EXPECT_FALSE(isVisible("progress"));
  });
  EXPECT_FALSE(isVisible("busySpinner"));
}

TEST_F(Shell, TheStatusBarCountsTheValuesThatAreWritten) {
  open();
  stage(P::sensitivity, 800);
  stage(P::forceFeedback, 80);
  atPause(
      1, [this] { model().saveStaged(); },
      [this] {
        EXPECT_TRUE(isVisible("progress"));
        EXPECT_EQ(text("progress"), "1 of 2");
      });
  EXPECT_FALSE(isVisible("progress"));
}

TEST_F(Shell, PagesAreBuiltOnTheirFirstVisit) {
  open();
  EXPECT_EQ(builtPages(), (Lines{"tuningPage"}));
  visit(Section::log);
  EXPECT_EQ(builtPages(), (Lines{"tuningPage", "logPage"}));
  const QWidget* const page = &find("logPage");
  visit(Section::tuning);
  visit(Section::log);
  EXPECT_EQ(&find("logPage"), page);
  EXPECT_EQ(builtPages(), (Lines{"tuningPage", "logPage"}));
}

TEST_F(Shell, ThePageThatIsShownIsUpToDateAfterChangesBehindIt) {
  open();
  visit(Section::base);
  EXPECT_EQ(text("activeSet"), "C (Custom)");
  visit(Section::tuning);
  model().selectSlot(1);
  settle();
  EXPECT_EQ(text("activeSet"), "C (Custom)");
  visit(Section::base);
  EXPECT_EQ(text("activeSet"), "A (Auto Setup)");
}

TEST_F(Shell, FollowsTheDesktopWhenItTurnsDark) {
  auto* const style = qobject_cast<Style*>(QApplication::style());
  ASSERT_NE(style, nullptr);
  open();
  style->setPrefersDark(false);
  settle();
  const QPoint ground(100, find("sidebar").height() / 2);
  EXPECT_EQ(colourAt("sidebar", ground), Theme::light().sidebar);
  style->setPrefersDark(true);
  settle();
  EXPECT_EQ(colourAt("sidebar", ground), Theme::dark().sidebar);
  EXPECT_EQ(window().palette().color(QPalette::Window), Theme::dark().window);
  style->setPrefersDark(std::nullopt);
  settle();
  EXPECT_EQ(colourAt("sidebar", ground), theme().sidebar);
}

}  // namespace
}  // namespace quorvane
