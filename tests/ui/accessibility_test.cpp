#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class Accessibility : public WindowTest {
 protected:
  static bool isControl(const QWidget& widget) {
    return widget.focusPolicy() != Qt::NoFocus && widget.focusProxy() == nullptr &&
           widget.isVisible();
  }

  // The controls without an object name or an accessible name.
  static Lines nameless(const QWidget& in) {
    Lines offenders;
    for (QWidget* const widget : in.findChildren<QWidget*>()) {
      if (!isControl(*widget)) continue;
      QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(widget);
      const bool isNamed = spoken != nullptr && !spoken->text(QAccessible::Name).isEmpty();
      if (!widget->objectName().isEmpty() && isNamed) continue;
      offenders.push_back(std::string(widget->metaObject()->className()) + " \"" +
                          widget->objectName().toStdString() + "\"" +
                          (isNamed ? "" : " without a name"));
    }
    return offenders;
  }

  void expectNamesEverywhere() {
    for (const Section section : allSections) {
      visit(section);
      EXPECT_EQ(nameless(window()), Lines{}) << rawValue(section);
    }
    visit(Section::tuning);
  }

  // The widgets that the Tab key reaches, from the current section's row in the sidebar on, once
  // around.
  Lines tabOrder() {
    Lines order;
    const std::string first = "section" + std::string(rawValue(window().section()));
    focus(first);
    do {
      order.push_back(focused());
      press(Qt::Key_Tab);
    } while (focused() != first && order.size() < 200);
    return order;
  }

  static Lines joined(const std::vector<Lines>& parts) {
    Lines all;
    for (const Lines& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
  }

  const Lines links_{"supportLink"};  // the arrow keys reach the other one
};

TEST_F(Accessibility, EveryControlIsNamedWithoutABase) {
  openWithoutBase();
  expectNamesEverywhere();
}

TEST_F(Accessibility, EveryControlIsNamedBeforeTheMenuHasCome) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  open();
  expectNamesEverywhere();
}

TEST_F(Accessibility, EveryControlIsNamedWithABase) {
  for (const std::int64_t product : {0x0020, 0x0E03, 0x0001}) {
    useRealTime();
    SimulatedDevice& device = attach(product);
    startWithoutBase();
    show();
    expectNamesEverywhere();
    device.unplug();
    closeWindow();
    end();
  }
}

TEST_F(Accessibility, EveryControlIsNamedWithStagedEditsAndPresets) {
  open();
  model().saveCurrentAsPreset("Wet");
  for (const P parameter : TuningParameter::available(model().product())) {
    if (parameter == P::slot) continue;
    const ClosedRange range = parameter.allowedRange(model().product());
    stage(parameter, valueOf(parameter) == range.lower ? range.upper : range.lower);
  }
  settle();
  expectNamesEverywhere();
  whileReading([this] { expectNamesEverywhere(); });
}

TEST_F(Accessibility, EveryControlOfADialogIsNamed) {
  open();
  for (const auto& [section, opener] : std::vector<std::pair<Section, std::string>>{
           {Section::presets, "applyButton"}, {Section::tools, "factoryResetButton"}}) {
    visit(section);
    find(section == Section::presets ? "presetsPage" : "toolsPage")
        .findChildren<QAbstractButton*>(QString::fromStdString(opener))
        .front()
        ->click();
    settle();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(nameless(*dialog()), Lines{});
    EXPECT_FALSE(dialog()->accessibleName().isEmpty());
    press(Qt::Key_Escape);
  }
  press(Qt::Key_F1);
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(nameless(*dialog()), Lines{});
}

TEST_F(Accessibility, TabGoesThroughTheMenuInReadingOrder) {
  attach(0x0E03);
  open();
  const Lines header{"switchModeButton", "sourcesButton", "readAgainButton"};
  const Lines rows{"SENSlider", "FFSlider",  "SHOSlider", "BLIToggle", "DRISlider", "FORSlider",
                   "SPRSlider", "DPRSlider", "brFSlider", "FEISlider", "ACPPicker"};
  EXPECT_EQ(tabOrder(), joined({{"sectionTuning"}, links_, {"setPicker"}, header, rows}));
  stage(P::forceFeedback, 80);
  EXPECT_EQ(tabOrder(),
            joined({{"sectionTuning"}, links_, header, rows, {"discardButton", "saveButton"}}));
}

TEST_F(Accessibility, TabGoesThroughTheRowsOfAnotherProductToo) {
  useRealTime();
  attach(0x0001);
  attach(0x0020);
  open();
  device(0).unplug();
  settle();
  stage(P::forceFeedbackScaling, 0);
  const Lines order = tabOrder();
  const auto place = [&](const std::string& control) {
    return std::find(order.begin(), order.end(), control) - order.begin();
  };
  const Lines sorted{"readAgainButton", "SENSlider", "BLIToggle",     "FFSSegmentLIN", "FORSlider",
                     "ACPPicker",       "FULSlider", "discardButton", "saveButton"};
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    EXPECT_LT(place(sorted[i - 1]), place(sorted[i])) << sorted[i];
    EXPECT_LT(place(sorted[i]), std::ssize(order)) << sorted[i];
  }
}

TEST_F(Accessibility, TabGoesThroughThePresetsInReadingOrder) {
  open();
  model().saveCurrentAsPreset("Wet");
  visit(Section::presets);
  const Lines header{"gamePicker", "presetSearchField"};
  const Lines rest{"presetNameField", "importButton", "exportButton"};
  const auto rows = [](const std::vector<TuningPreset>& presets) {
    Lines names;
    for (const TuningPreset& preset : presets) names.push_back("preset-" + preset.id.text());
    return names;
  };
  for (const char* const added : {"Dry", "Night"}) {
    EXPECT_EQ(tabOrder(), joined({{"sectionPresets"},
                                  links_,
                                  header,
                                  {"builtInCaption"},
                                  rows(TuningPreset::builtIn()),
                                  {"mineCaption"},
                                  rows(model().userPresets()),
                                  rest}));
    model().saveCurrentAsPreset(added);
    settle();
  }
}

TEST_F(Accessibility, TabGoesThroughTheOtherSectionsInReadingOrder) {
  open();
  visit(Section::base);
  EXPECT_EQ(tabOrder(), joined({{"sectionBase"},
                                links_,
                                {"connectionStatus", "devicesSeen", "baseReadAgainButton",
                                 "baseName", "wheelName", "moduleName", "maxRotation",
                                 "baseMenuMode", "activeSet", "lastRead"}}));
  attach();
  settle();
  EXPECT_EQ(tabOrder(),
            joined({{"sectionBase"},
                    links_,
                    {"connectionStatus", "devicesSeen", "baseReadAgainButton", "baseDetail",
                     "baseDetail", "connect " + info(1).id, "baseName", "wheelName", "moduleName",
                     "maxRotation", "baseMenuMode", "activeSet", "lastRead"}}));
  visit(Section::tools);
  EXPECT_EQ(tabOrder(), joined({{"sectionTools"},
                                links_,
                                {"rereadButton", "usbResetButton", "toggleModeButton",
                                 "factoryResetButton", "tuningDump", "identityDump"}}));
  visit(Section::log);
  EXPECT_EQ(tabOrder(),
            joined({{"sectionLog"}, links_, {"errorsOnlyToggle", "copyAllLogButton", "logList"}}));
}

TEST_F(Accessibility, TabGoesThroughTheChecksInReadingOrder) {
  openWithoutBase();
  visit(Section::base);
  click("whyNotFoundButton");
  settle();
  Lines rows;
  for (const DoctorCheck& check : model().examination().value().diagnosis.checks) {
    if (check.outcome != CheckOutcome::failed) continue;
    rows.insert(rows.end(), {"checkFinding", "checkNextStep"});
    if (!check.command.empty()) rows.insert(rows.end(), {"checkCommand", "copyCommandButton"});
  }
  EXPECT_EQ(tabOrder(), joined({{"sectionBase"},
                                links_,
                                {"connectionStatus", "devicesSeen", "whyNotFoundButton"},
                                {"checkAgainButton", "copyReportButton", "saveReportButton"},
                                rows,
                                {"passedChecksLine", "uncheckedChecksLine"},
                                {"baseName", "wheelName", "moduleName"}}));
  EXPECT_EQ(nameless(window()), Lines{});
}

TEST_F(Accessibility, SegmentsAreRadioButtons) {
  open();
  QAccessibleInterface* const spoken =
      QAccessible::queryAccessibleInterface(&find("FFSSegmentPEA"));
  ASSERT_NE(spoken, nullptr);
  EXPECT_EQ(spoken->role(), QAccessible::RadioButton);
}

}  // namespace
}  // namespace quorvane
