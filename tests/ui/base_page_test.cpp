#include <gtest/gtest.h>

#include <QLabel>
#include <string>
#include <utility>
#include <vector>

#include "protocol/identity_report.h"
#include "tests/ui/window_fixture.h"
#include "ui/kit/form.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

using P = TuningParameter;

class BaseSection : public WindowTest {
 protected:
  void openBase() {
    open();
    visit(Section::base);
  }

  // Sends a wheel-status report with this firmware version.
  void sendStatus(std::uint16_t version) {
    Bytes report;
    simulate([&](SimulatedBase& simulated) {
      simulated.attachWheel(0x12, version);
      report = simulated.wheelStatusReport();
    });
    base().sendReport(report);
    settle();
  }

  // "Caption: label | label", visible ones only.
  Lines cards() {
    Lines lines;
    for (const Card* const card : find("basePage").findChildren<Card*>()) {
      if (!card->isVisible()) continue;
      std::string line = card->accessibleName().toStdString() + ":";
      for (const FormRow* const row : card->findChildren<FormRow*>()) {
        if (row->isVisible()) line += " " + textOf(*row->findChild<QLabel*>()) + " |";
      }
      lines.push_back(line);
    }
    return lines;
  }
};

TEST_F(BaseSection, HasItsCardsAndRowsInOrder) {
  openBase();
  EXPECT_EQ(cards(), (Lines{"Connection: Status | Devices seen |",
                            "Identity: Base | Steering wheel | Button module | Max rotation |",
                            "Tuning menu: Mode | Active set | Last read |"}));
  sendStatus(1234);
  EXPECT_EQ(cards()[1],
            "Identity: Base | Steering wheel | Button module | Firmware (input report) | Max "
            "rotation |");
}

TEST_F(BaseSection, WithoutABaseKnowsNothing) {
  openWithoutBase();
  visit(Section::base);
  EXPECT_EQ(cards(), (Lines{"Connection: Status | Devices seen |",
                            "Identity: Base | Steering wheel | Button module |", "Tuning menu:"}));
  EXPECT_EQ(text("connectionStatus"), "Not connected");
  EXPECT_EQ(text("devicesSeen"), "none");
  for (const char* const row : {"baseName", "wheelName", "moduleName"}) EXPECT_EQ(text(row), "");
  EXPECT_EQ(text("noTuningData"), "No tuning data yet");
  EXPECT_TRUE(isVisible("noTuningData"));
}

TEST_F(BaseSection, ShowsWhatTheBaseTells) {
  openBase();
  EXPECT_EQ(text("connectionStatus"), "Connected");
  EXPECT_EQ(text("devicesSeen"), displayName);
  EXPECT_EQ(text("baseName"), model().identity()->baseName());
  EXPECT_EQ(text("baseName"), baseName);
  EXPECT_EQ(text("wheelName"), model().identity()->wheelName());
  EXPECT_EQ(text("moduleName"), model().identity()->moduleName());
  EXPECT_EQ(text("maxRotation"), "2520°");
  EXPECT_EQ(text("baseMenuMode"), "Standard");
  EXPECT_EQ(text("lastRead"), timeText(model().tuning()->receivedAt()).toStdString());
  EXPECT_FALSE(isVisible("noTuningData"));
}

TEST_F(BaseSection, ForgetsABaseThatLeaves) {
  openBase();
  sendStatus(1234);
  base().unplug();
  settle();
  EXPECT_EQ(text("connectionStatus"), "Not connected");
  EXPECT_EQ(text("baseName") + text("wheelName") + text("moduleName"), "");
  EXPECT_EQ(cards()[1], "Identity: Base | Steering wheel | Button module |");
  EXPECT_TRUE(isVisible("noTuningData"));
}

TEST_F(BaseSection, TwoDevicesAreSeparatedByACommaAndABlank) {
  useRealTime();
  attach(0x0E03);
  attach(0x0020);
  openBase();
  ASSERT_EQ(model().devices().size(), 2U);
  EXPECT_EQ(text("devicesSeen"),
            model().devices()[0].displayName() + ", " + model().devices()[1].displayName());
}

TEST_F(BaseSection, NamesTheActiveSetByTheMenusMode) {
  struct Case {
    int set;
    bool isAdvanced;
    std::string mode;
    std::string shown;
  };
  const std::vector<Case> cases{{1, false, "Standard", "A (Auto Setup)"},
                                {2, false, "Standard", "C (Custom)"},
                                {4, false, "Standard", "C (Custom)"},
                                {3, true, "Advanced", "3"},
                                {1, true, "Advanced", "1"}};
  for (const auto& [set, isAdvanced, mode, shown] : cases) {
    simulate([number = set, advanced = isAdvanced](SimulatedBase& simulated) {
      simulated.menu().reset();
      simulated.menu().select(number);
      if (advanced) simulated.menu().toggleMode();
    });
    openBase();
    EXPECT_EQ(text("baseMenuMode"), mode);
    EXPECT_EQ(text("activeSet"), shown);
    closeWindow();
    end();
  }
}

TEST_F(BaseSection, TheFirmwareIsShownInBothBases) {
  openBase();
  EXPECT_FALSE(isVisible("firmwareVersion"));
  for (const auto& [version, shown] : std::vector<std::pair<std::uint16_t, std::string>>{
           {0x0130, "304 (0x0130)"}, {1234, "1234 (0x04D2)"}, {0xFFFF, "65535 (0xFFFF)"}}) {
    sendStatus(version);
    EXPECT_EQ(text("firmwareVersion"), shown);
    EXPECT_TRUE(isVisible("firmwareVersion"));
  }
}

TEST_F(BaseSection, TheRotationIsTheProducts) {
  for (const auto& [product, shown] : std::vector<std::pair<std::int64_t, std::string>>{
           {0x0001, "900°"}, {0x0E03, "1080°"}, {0x0006, "2520°"}}) {
    useRealTime();
    SimulatedDevice& device = attach(product);
    startWithoutBase();
    show();
    visit(Section::base);
    EXPECT_EQ(text("maxRotation"), shown);
    device.unplug();
    closeWindow();
    end();
  }
}

TEST_F(BaseSection, TheButtonReadsAgain) {
  openBase();
  EXPECT_EQ(text("baseReadAgainButton"), "Read again");
  click("baseReadAgainButton");
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, identityOn, identityRequest}));
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(BaseSection, TheButtonTellsWhyNot) {
  openWithoutBase();
  visit(Section::base);
  EXPECT_EQ(state("baseReadAgainButton"), std::string("disabled: ") + connectReason);
  base();
  settle();
  EXPECT_EQ(state("baseReadAgainButton"), "enabled");
  whileReading([this] {
    EXPECT_EQ(state("baseReadAgainButton"), std::string("disabled: ") + waitReason);
    EXPECT_EQ(text("connectionStatus"), "Connected");
  });
}

TEST_F(BaseSection, AReadThatFailsSaysSoOnce) {
  openBase();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  click("baseReadAgainButton");
  settle();
  EXPECT_EQ(takeLog(), (Lines{std::string("[error] Read the tuning menu failed: ") + menuTimeout}));
}

TEST_F(BaseSection, ValuesCanBeSelectedAndAreNamed) {
  openBase();
  for (const char* const row : {"connectionStatus", "devicesSeen", "baseName", "activeSet"}) {
    EXPECT_TRUE(find<QLabel>(row).textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
  }
  EXPECT_EQ(name("activeSet"), "Active set, C (Custom)");
  EXPECT_EQ(name("connectionStatus"), "Status, Connected");
}

}  // namespace
}  // namespace quorvane
