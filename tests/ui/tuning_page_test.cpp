#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <algorithm>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/kit/button.h"
#include "ui/kit/pickers.h"
#include "ui/tuning/parameter_row.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr const char* noBaseMessage = "Connect a base to edit its tuning menu.";
constexpr const char* waitingMessage = "Waiting for the tuning menu…";
constexpr const char* stagedReason = "Save or discard your changes before switching sets";

class Tuning : public WindowTest {
 protected:
  // Expects that the page shows this message and nothing else.
  void expectOnly(const std::string& message) {
    EXPECT_EQ(text("tuningMessage"), message);
    EXPECT_TRUE(isVisible("tuningMessage"));
    for (const char* const part : {"tuningHeader", "warningBar", "parameterList", "saveBar"}) {
      EXPECT_FALSE(isVisible(part)) << part;
    }
  }

  Lines setTitles() {
    const auto& picker = find<Picker>("setPicker");
    Lines titles;
    for (int i = 0; i < picker.count(); ++i) titles.push_back(picker.itemText(i).toStdString());
    return titles;
  }

  void openIn(int set, bool isAdvanced) {
    simulate([=](SimulatedBase& simulated) {
      simulated.menu().select(set);
      if (isAdvanced) simulated.menu().toggleMode();
    });
    open();
  }

  QScrollBar& listBar() { return *find<QScrollArea>("parameterList").verticalScrollBar(); }

  bool isInView(const QWidget& widget) {
    const QWidget* const port = find<QScrollArea>("parameterList").viewport();
    const QRect rect(widget.mapTo(port, QPoint()), widget.size());
    return port->rect().contains(rect);
  }

  QAction& entry(const std::string& menu, const std::string& title) {
    for (QAction* const action : find<QMenu>(menu).actions()) {
      if (action->text().toStdString() == title) return *action;
    }
    throw std::runtime_error("no entry " + title);
  }
};

// The codes and titles of a product's rows, from top to bottom.
struct Listed {
  std::int64_t product;
  Lines rows;
};

// NOLINTNEXTLINE(readability-identifier-naming): googletest looks for this name
void PrintTo(const Listed& test, std::ostream* out) { *out << test.product; }

const Lines directDriveRows{"SEN Sensitivity (steering angle)",
                            "FF Force feedback strength",
                            "SHO Wheel vibration motor",
                            "BLI Brake level indicator",
                            "FFS Force feedback scaling",
                            "FOR Force effect strength",
                            "SPR Spring effect strength",
                            "DPR Damper effect strength",
                            "NDP Natural damper",
                            "NFR Natural friction",
                            "brF Brake force (load cell)",
                            "FEI Force effect intensity",
                            "ACP Analog paddle mode",
                            "INT FFB interpolation filter",
                            "NIN Natural inertia"};
const Lines fullForceRows = [] {
  Lines rows = directDriveRows;
  rows.emplace_back("FUL FullForce");
  return rows;
}();
const Lines classicRows{"SEN Sensitivity (steering angle)", "FF Force feedback strength",
                        "FOR Force effect strength",        "SPR Spring effect strength",
                        "DPR Damper effect strength",       "brF Brake force (load cell)",
                        "FEI Force effect intensity",       "ACP Analog paddle mode"};
const Lines cslEliteRows{"SEN Sensitivity (steering angle)",
                         "FF Force feedback strength",
                         "SHO Wheel vibration motor",
                         "BLI Brake level indicator",
                         "DRI Drift mode",
                         "FOR Force effect strength",
                         "SPR Spring effect strength",
                         "DPR Damper effect strength",
                         "brF Brake force (load cell)",
                         "FEI Force effect intensity",
                         "ACP Analog paddle mode"};

class TuningOfProduct : public Tuning, public testing::WithParamInterface<Listed> {};

TEST_P(TuningOfProduct, HasItsRowsInOrder) {
  attach(GetParam().product);
  open();
  auto rows = find("parameterList").findChildren<ParameterRow*>();
  std::sort(rows.begin(), rows.end(),
            [](const QWidget* a, const QWidget* b) { return a->y() < b->y(); });
  Lines shown;
  for (const ParameterRow* const row : rows) {
    const std::string code(row->parameter().code());
    EXPECT_TRUE(row->isVisible());
    shown.push_back(code + " " + text(code + "Title"));
  }
  EXPECT_EQ(shown, GetParam().rows);
}

INSTANTIATE_TEST_SUITE_P(Products, TuningOfProduct,
                         testing::Values(Listed{0x0001, classicRows}, Listed{0x0004, classicRows},
                                         Listed{0x0005, cslEliteRows}, Listed{0x0E03, cslEliteRows},
                                         Listed{0x0006, directDriveRows},
                                         Listed{0x0007, directDriveRows},
                                         Listed{0x0020, fullForceRows}),
                         [](const auto& test) {
                           const auto product = FanatecProduct::lookup(test.param.product).value();
                           return "Product" + std::to_string(product.productID);
                         });

TEST_F(Tuning, WithoutABaseSaysSoAndNothingElse) {
  openWithoutBase();
  expectOnly(noBaseMessage);
}

TEST_F(Tuning, BeforeTheMenuHasComeSaysSoAndNothingElse) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  open();
  expectOnly(waitingMessage);
}

TEST_F(Tuning, WhileABaseIsOpenedThereIsNone) {
  base();
  const auto gate = std::make_shared<Gate>();
  clock_.at(Moment::request, 0, [gate] { gate->pass(); });
  create();
  show();
  gate->awaitArrival();
  expectOnly(noBaseMessage);
  gate->open();
  settle();
  EXPECT_FALSE(isVisible("tuningMessage"));
  EXPECT_TRUE(isVisible("parameterList"));
}

TEST_F(Tuning, GoesBackToTheMessageWhenTheBaseLeaves) {
  open();
  stage(P::forceFeedback, 80);
  base().unplug();
  settle();
  expectOnly(noBaseMessage);
  base().plug();
  settle();
  EXPECT_FALSE(isVisible("tuningMessage"));
  EXPECT_FALSE(isVisible("saveBar"));
  EXPECT_EQ(text("FFReadout"), "65 %");
}

TEST_F(Tuning, AnotherProductHasOtherRows) {
  useRealTime();
  attach(0x0001);
  attach(0x0020);
  open();
  EXPECT_FALSE(exists("INTRow"));
  EXPECT_EQ(find<QSpinBox>("SENReadout").maximum(), 900);
  device(0).unplug();
  settle();
  EXPECT_TRUE(exists("INTRow"));
  EXPECT_EQ(find<QSpinBox>("SENReadout").maximum(), 2520);
}

TEST_F(Tuning, TheAutoSetIsWarnedOf) {
  openIn(1, false);
  EXPECT_TRUE(isVisible("warningBar"));
  EXPECT_EQ(text("warningHeading"), "This is the A set, Fanatec's Auto Setup.");
  EXPECT_EQ(text("warningBody"),
            "Games that support Auto Setup control these values, and the base reloads factory "
            "defaults at boot. Changes you save here work until the next power cycle. Use set C "
            "or an advanced set for values you want to keep.");
  stage(P::forceFeedback, 80);
  EXPECT_EQ(text("saveButton"), "Save to set A (Auto Setup)");
}

TEST_F(Tuning, NoOtherSetIsWarnedOf) {
  struct Case {
    int set;
    bool isAdvanced;
    std::string save;
  };
  const std::vector<Case> cases{{2, false, "Save to set C (Custom)"},
                                {4, false, "Save to set C (Custom)"},
                                {1, true, "Save to set 1"},
                                {2, true, "Save to set 2"},
                                {5, true, "Save to set 5"}};
  for (const auto& [set, isAdvanced, save] : cases) {
    simulate([](SimulatedBase& simulated) { simulated.menu().reset(); });
    openIn(set, isAdvanced);
    EXPECT_FALSE(isVisible("warningBar"));
    stage(P::forceFeedback, 80);
    EXPECT_EQ(text("saveButton"), save);
    closeWindow();
    end();
  }
}

TEST_F(Tuning, TheWarningComesAndGoesWithTheSet) {
  open();
  EXPECT_FALSE(isVisible("warningBar"));
  model().selectSlot(1);
  settle();
  EXPECT_TRUE(isVisible("warningBar"));
  model().toggleMode();
  settle();
  EXPECT_FALSE(isVisible("warningBar"));
}

TEST_F(Tuning, TheStandardMenuHasTwoSets) {
  open();
  EXPECT_EQ(text("tuningTitle"), "Tuning menu");
  EXPECT_EQ(setTitles(), (Lines{"A, Auto", "C, Custom"}));
  EXPECT_EQ(text("setPicker"), "C, Custom");
  EXPECT_EQ(text("menuMode"), "Standard menu");
  EXPECT_EQ(text("switchModeButton"), "Switch to advanced");
  EXPECT_EQ(text("sourcesButton"), "Load or share");
  EXPECT_EQ(text("readAgainButton"), "Read again");
}

TEST_F(Tuning, TheAdvancedMenuHasFiveSets) {
  openIn(4, true);
  EXPECT_EQ(setTitles(), (Lines{"Set 1", "Set 2", "Set 3", "Set 4", "Set 5"}));
  EXPECT_EQ(text("setPicker"), "Set 4");
  EXPECT_EQ(text("menuMode"), "Advanced menu");
  EXPECT_EQ(text("switchModeButton"), "Switch to standard");
}

TEST_F(Tuning, ThePickerIsLabelled) {
  open();
  const auto labels = find("tuningHeader").findChildren<QLabel*>();
  const auto label = std::find_if(labels.begin(), labels.end(), [](const QLabel* one) {
    return one->text() == QStringLiteral("Set");
  });
  ASSERT_NE(label, labels.end());
  EXPECT_EQ((*label)->buddy(), &find("setPicker"));
  EXPECT_EQ(name("setPicker"), "Set");
}

TEST_F(Tuning, TheHeaderIsInOrderFromLeftToRight) {
  open();
  int before = -1;
  for (const char* const part : {"tuningTitle", "setPicker", "menuMode", "switchModeButton",
                                 "sourcesButton", "readAgainButton"}) {
    EXPECT_GT(find(part).x(), before) << part;
    before = find(part).x();
  }
}

TEST_F(Tuning, ChoosingAnotherSetSwitchesToIt) {
  open();
  focus("setPicker");
  press(Qt::Key_Up);
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 01 01 +60", "pause 150 ms", menuRequest}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Switched to set 1"}));
  EXPECT_EQ(text("setPicker"), "A, Auto");
  press(Qt::Key_Up);
  settle();
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(Tuning, ASetThatTheBaseRefusesIsNotShown) {
  open();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  focus("setPicker");
  press(Qt::Key_Up);
  settle();
  EXPECT_EQ(text("setPicker"), "C, Custom");
  EXPECT_EQ(takeLog(), (Lines{std::string("[error] Switch set failed: ") + menuTimeout}));
}

TEST_F(Tuning, ThePickerIsDisabledWhileEditsAreStaged) {
  open();
  EXPECT_EQ(state("setPicker"), "enabled");
  stage(P::forceFeedback, 80);
  EXPECT_EQ(state("setPicker"), std::string("disabled: ") + stagedReason);
  EXPECT_EQ(description("setPicker"), stagedReason);
  click("discardButton");
  EXPECT_EQ(state("setPicker"), "enabled");
  EXPECT_EQ(takeLog(), (Lines{"[log] Discarded 1 unsaved change"}));
}

TEST_F(Tuning, TheButtonSwitchesTheMode) {
  open();
  for (const auto& [mode, shown, next] :
       std::vector<std::tuple<std::string, std::string, std::string>>{
           {"advanced", "Advanced menu", "Switch to standard"},
           {"standard", "Standard menu", "Switch to advanced"}}) {
    click("switchModeButton");
    settle();
    EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 06 +61", "pause 400 ms", menuRequest}));
    EXPECT_EQ(takeLog(), (Lines{"[log] Now in " + mode + " mode"}));
    EXPECT_EQ(text("menuMode"), shown);
    EXPECT_EQ(text("switchModeButton"), next);
  }
}

TEST_F(Tuning, TheButtonReadsAgain) {
  open();
  EXPECT_EQ(state("readAgainButton"), "enabled: Read the menu again");
  simulate([](SimulatedBase& simulated) { simulated.menu().put(P::forceFeedback, 42); });
  click("readAgainButton");
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, identityOn, identityRequest}));
  EXPECT_EQ(takeLog(), Lines{});
  EXPECT_EQ(text("FFReadout"), "42 %");
}

TEST_F(Tuning, SourcesHaveTheirEntriesAndHelp) {
  open();
  EXPECT_EQ(entriesOf(find<QMenu>("sourcesMenu")), (Lines{"Load defaults", "Import…", "Share…"}));
  EXPECT_EQ(
      entriesOf(find<QMenu>("loadDefaultsMenu")),
      (Lines{"Fanatec factory defaults", "Fanatec recommended, Gran Turismo 7",
             "Redline Lab 2025, Gran Turismo 7 (8 Nm)", "Gearwerk 2025, Gran Turismo 7 (8 Nm)"}));
  const auto help = [&](const char* title) {
    return entry("sourcesMenu", title).toolTip().toStdString();
  };
  EXPECT_EQ(help("Load defaults"),
            "Fill in a known set of values; nothing is written until you save");
  EXPECT_EQ(help("Import…"), "Load a settings file someone shared with you");
  EXPECT_EQ(help("Share…"), "Export the values on screen as a file you can send to someone");
  EXPECT_TRUE(find<QMenu>("sourcesMenu").toolTipsVisible());
  EXPECT_EQ(find<Button>("sourcesButton").menu(), &find<QMenu>("sourcesMenu"));
}

TEST_F(Tuning, DefaultsAreStagedAndNotWritten) {
  open();
  entry("loadDefaultsMenu", "Fanatec factory defaults").trigger();
  settle();
  EXPECT_EQ(takeLog(), (Lines{"[log] Loaded \"Fanatec factory defaults\": 6 values to save"}));
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(staged(), "SEN=0 FF=100 DPR=100 NDP=50 NFR=0 NIN=0");
  EXPECT_EQ(text("SENReadout"), "AUT");
  EXPECT_EQ(text("unsavedCount"), "6 unsaved changes");
}

TEST_F(Tuning, EntriesImportAndShare) {
  open();
  trigger("importEntry");
  trigger("shareEntry");
  EXPECT_EQ(panels_.takeRequests(),
            (Lines{"open: Import settings [Import] settings, no name",
                   "save: Share settings [Export] settings, CSL DD - GT DD Pro - ClubSport DD, set "
                   "C (Custom).quorvane"}));
}

TEST_F(Tuning, TheCountTellsOneFromMore) {
  open();
  EXPECT_FALSE(isVisible("saveBar"));
  stage(P::forceFeedback, 80);
  EXPECT_TRUE(isVisible("saveBar"));
  EXPECT_EQ(text("unsavedCount"), "1 unsaved change");
  stage(P::vibration, 50);
  EXPECT_EQ(text("unsavedCount"), "2 unsaved changes");
  stage(P::vibration, 100);
  EXPECT_EQ(text("unsavedCount"), "1 unsaved change");
  stage(P::forceFeedback, 65);
  EXPECT_FALSE(isVisible("saveBar"));
}

TEST_F(Tuning, TheSaveBarSaysWhatItsButtonsDo) {
  open();
  stage(P::forceFeedback, 80);
  EXPECT_EQ(text("discardButton"), "Discard");
  EXPECT_EQ(state("discardButton"), "enabled: Discard all unsaved changes (Ctrl+Shift+Z)");
  EXPECT_EQ(state("saveButton"), "enabled: Write the changes to the base (Ctrl+S)");
  EXPECT_EQ(find<Button>("saveButton").kind(), Button::Kind::prominent);
}

TEST_F(Tuning, WhileBusyNothingCanBeEdited) {
  open();
  stage(P::forceFeedback, 80);
  const Lines controls{"SENSlider",        "SENToggle",       "SENReadout",    "FFSlider",
                       "FFReadout",        "FFRevert",        "FFSSegments",   "ACPPicker",
                       "switchModeButton", "readAgainButton", "discardButton", "saveButton"};
  const auto isAnyEnabled = [&](bool enabled) {
    return std::any_of(controls.begin(), controls.end(), [&](const std::string& control) {
      return find(control).isEnabled() == enabled;
    });
  };
  EXPECT_FALSE(isAnyEnabled(false));
  whileReading([&] {
    for (const std::string& control : controls) {
      if (control == "FFSSegments") continue;
      EXPECT_EQ(state(control), std::string("disabled: ") + waitReason) << control;
    }
    EXPECT_FALSE(isAnyEnabled(true));
    EXPECT_EQ(state("setPicker"), std::string("disabled: ") + stagedReason);
    EXPECT_TRUE(find("sourcesButton").isEnabled());
    EXPECT_EQ(text("FFReadout"), "80 %");
  });
  EXPECT_FALSE(isAnyEnabled(false));
}

TEST_F(Tuning, TheSetCannotBeSwitchedWhileBusy) {
  open();
  whileReading([this] { EXPECT_EQ(state("setPicker"), std::string("disabled: ") + waitReason); });
}

TEST_F(Tuning, TheFocusComesBackWhenTheBaseHasAnswered) {
  open();
  for (const char* const control :
       {"FFSlider", "SENToggle", "SHOReadout", "ACPPicker", "switchModeButton", "setPicker"}) {
    focus(control);
    whileReading([&] { EXPECT_NE(focused(), control); });
    EXPECT_EQ(focused(), control);
  }
}

TEST_F(Tuning, TheFocusStaysWhereSomebodyTookItMeanwhile) {
  open();
  focus("FFSlider");
  whileReading([this] { focus("sectionTuning"); });
  EXPECT_EQ(focused(), "sectionTuning");
}

TEST_F(Tuning, TheWheelOverARowScrollsTheListAndChangesNoValue) {
  open();
  window().resize(860, 560);
  settle();
  ASSERT_GT(listBar().maximum(), 0);
  focus("sectionTuning");
  for (const char* const control :
       {"FFSlider", "FFReadout", "SENToggle", "FFSSegmentPEA", "ACPPicker", "FFTitle"}) {
    listBar().setValue(0);
    turnWheel(find(control), -1);
    EXPECT_GT(listBar().value(), 0) << control;
  }
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(focused(), "sectionTuning");
}

TEST_F(Tuning, TheWheelOverARowOfABusyBaseScrollsToo) {
  open();
  window().resize(860, 560);
  settle();
  whileReading([this] {
    turnWheel(find("FFSlider"), -1);
    EXPECT_GT(listBar().value(), 0);
  });
  EXPECT_EQ(staged(), "");
}

TEST_F(Tuning, TheWheelTurnsTheControlThatHasTheFocus) {
  open();
  focus("SHOSlider");
  turnWheel(find("SHOSlider"), -1);
  EXPECT_EQ(staged(), "SHO=90");
  focus("INTReadout");
  turnWheel(find("INTReadout"), 1);
  EXPECT_EQ(staged(), "SHO=90 INT=12");
}

TEST_F(Tuning, ARowThatGetsTheFocusScrollsIntoView) {
  open();
  window().resize(860, 560);
  settle();
  focus("SENSlider");
  std::string before;
  while (focused() != "FULSlider" && focused() != before) {
    before = focused();
    press(Qt::Key_Tab);
    if (focused().size() < 4) break;
  }
  ASSERT_EQ(focused(), "FULSlider");
  EXPECT_TRUE(isInView(find("FULSlider")));
}

TEST_F(Tuning, TheLargestMenuFitsTheWindowWithTheSaveBar) {
  open();
  stage(P::forceFeedback, 80);
  settle();
  EXPECT_EQ(listBar().maximum(), 0);
}

TEST_F(Tuning, TheListKeepsItsTopRowWhenTheSaveBarComes) {
  open();
  window().resize(860, 560);
  settle();
  listBar().setValue(50);
  stage(P::forceFeedback, 80);
  settle();
  EXPECT_EQ(listBar().value(), 50);
}

TEST_F(Tuning, FitsTheSmallestWindow) {
  open();
  stage(P::forceFeedback, 80);
  for (const QSize size : {QSize(860, 560), QSize(1000, 600), QSize(1600, 900)}) {
    window().resize(size);
    settle();
    for (const char* const part : {"setPicker", "menuMode", "switchModeButton", "sourcesButton",
                                   "readAgainButton", "discardButton", "saveButton"}) {
      const QWidget& widget = find(part);
      EXPECT_TRUE(widget.parentWidget()->rect().contains(widget.geometry())) << part;
    }
    EXPECT_LT(find("switchModeButton").geometry().right(), find("sourcesButton").x());
  }
}

}  // namespace
}  // namespace quorvane
