#include "ui/presets/preset_finder.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QListWidget>
#include <string>
#include <vector>

#include "presets/preset_coding.h"
#include "tests/ui/window_fixture.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class Finder : public WindowTest {
 protected:
  // Opens the window with two presets of one's own, and the finder by its key.
  void openFinder() {
    std::vector<TuningPreset> presets{presetOf("Spa, wet", {{P::forceFeedback, 60}}),
                                      presetOf("GT3", {{P::forceFeedback, 80}})};
    presets[1].game = "Assetto Corsa";
    presets[1].notes = "Gain 78 %";
    putFile(directory_ / "presets.json", encodePresets(presets));
    open();
    takeLog();
    press(Qt::Key_L, Qt::ControlModifier);
  }

  Lines found() {
    const auto& list = find<QListWidget>("finderList");
    Lines lines;
    for (int row = 0; row < list.count(); ++row) {
      lines.push_back(list.item(row)->text().toStdString());
    }
    return lines;
  }
};

TEST_F(Finder, ListsOnesOwnFirst) {
  openFinder();
  EXPECT_EQ(found(), (Lines{"Spa, wet", "GT3 · Assetto Corsa", "Fanatec factory defaults",
                            "Fanatec recommended, Gran Turismo 7 · Gran Turismo 7",
                            "Redline Lab 2025, Gran Turismo 7 (8 Nm) · Gran Turismo 7",
                            "Gearwerk 2025, Gran Turismo 7 (8 Nm) · Gran Turismo 7"}));
  EXPECT_EQ(focused(), "finderField");
}

TEST_F(Finder, TypingFinds) {
  struct Case {
    std::string typed;
    Lines found;
  };
  const std::vector<Case> cases{
      {"gt3", {"GT3 · Assetto Corsa"}},
      {"assetto", {"GT3 · Assetto Corsa"}},
      {"gain 78", {"GT3 · Assetto Corsa"}},
      {"FF=60", {"Spa, wet"}},
      {"redline", {"Redline Lab 2025, Gran Turismo 7 (8 Nm) · Gran Turismo 7"}},
      {"nothing at all", {}}};
  openFinder();
  for (const Case& c : cases) {
    find<QLineEdit>("finderField").clear();
    type(c.typed);
    EXPECT_EQ(found(), c.found) << c.typed;
    EXPECT_EQ(state("finderLoadButton"),
              c.found.empty() ? "disabled: No preset matches" : "enabled");
  }
}

TEST_F(Finder, EnterLoadsWhatIsChosen) {
  openFinder();
  press(Qt::Key_Down);
  press(Qt::Key_Down);
  press(Qt::Key_Up);
  press(Qt::Key_Return);
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(takeLog(), (Lines{"[log] Loaded \"GT3\": 1 value to save"}));
}

TEST_F(Finder, ShowsTheTuningSection) {
  open();
  visit(Section::log);
  press(Qt::Key_L, Qt::ControlModifier);
  type("redline");
  press(Qt::Key_Return);
  settle();
  EXPECT_EQ(window().section(), Section::tuning);
}

TEST_F(Finder, EnterWithoutAMatchLoadsNothing) {
  openFinder();
  type("nothing at all");
  press(Qt::Key_Down);
  press(Qt::Key_PageUp);
  press(Qt::Key_Return);
  settle();
  EXPECT_NE(dialog(), nullptr);
  EXPECT_EQ(staged(), "");
}

TEST_F(Finder, StaysOpenWhileTheBaseIsBusy) {
  openFinder();
  whileReading([this] {
    emit find<QListWidget>("finderList").itemActivated(find<QListWidget>("finderList").item(0));
    press(Qt::Key_Return);
    EXPECT_NE(dialog(), nullptr);
    EXPECT_EQ(state("finderLoadButton"), std::string("disabled: ") + waitReason);
  });
  EXPECT_EQ(staged(), "");
  EXPECT_EQ(state("finderLoadButton"), "enabled");
}

TEST_F(Finder, KeepsWhatIsChosenWhenTheListChanges) {
  openFinder();
  press(Qt::Key_Down);
  model().deletePreset(model().userPresets()[0]);
  settle();
  EXPECT_EQ(find<QListWidget>("finderList").currentItem()->text(),
            QStringLiteral("GT3 · Assetto Corsa"));
}

TEST_F(Finder, GoesWithTheBase) {
  openFinder();
  ASSERT_NE(dialog(), nullptr);
  base().unplug();
  settle();
  EXPECT_EQ(dialog(), nullptr);
}

}  // namespace
}  // namespace quorvane
