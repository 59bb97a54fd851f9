#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/base/base_row.h"
#include "ui/kit/button.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr const char* dd1 = "Podium Wheel Base DD1";

// The list of attached bases: first a DD1, which is connected, then a CSL DD.
class BaseListTest : public WindowTest {
 protected:
  BaseListTest() { useRealTime(); }

  void openBoth() {
    attach(0x0006);
    attach(0x0020);
    open();
    visit(Section::base);
  }

  // "NAME: Connected", or the button's text, with "disabled" if it is.
  Lines rows() {
    Lines lines;
    if (!isVisible("baseList")) return lines;
    for (const BaseRow* const row : find("baseList").findChildren<BaseRow*>()) {
      const auto& link = find<QLabel>("baseLink", *row);
      const Button& button = *row->findChild<Button*>();
      std::string line = textOf(find<QLabel>("attachedBaseName", *row)) + ": ";
      if (link.isVisible()) line += textOf(link);
      if (button.isVisible()) line += textOf(button) + ", " + stateOf(button);
      lines.push_back(line);
    }
    return lines;
  }

  std::string connectButton(std::size_t number) { return "connect " + info(number).id; }
  std::string connectedName() { return model().connectedName().value_or("none"); }
};

TEST_F(BaseListTest, ShowsWhileThereIsAChoice) {
  open();
  visit(Section::base);
  EXPECT_EQ(rows(), Lines{}) << "the one base is connected";
  attach(0x0006);
  settle();
  EXPECT_EQ(rows().size(), 2U);
  device(1).unplug();
  settle();
  EXPECT_EQ(rows(), Lines{});
  base().unplug();
  settle();
  EXPECT_EQ(rows(), Lines{}) << "there is none";
}

TEST_F(BaseListTest, ShowsTheOneBaseThatIsNotConnected) {
  base().failOpenWith(HIDReturnCode::exclusiveAccess);
  open();
  visit(Section::base);
  EXPECT_EQ(rows(), (Lines{std::string(displayName) + ": Connect, enabled"}));
  base().failOpenWith(HIDReturnCode::success);
  click(connectButton(0));
  settle();
  EXPECT_EQ(connectedName(), baseName);
  EXPECT_EQ(rows(), Lines{});
}

TEST_F(BaseListTest, TellsWhichOneIsConnected) {
  openBoth();
  EXPECT_EQ(rows(), (Lines{std::string(dd1) + ": Connected",
                           std::string(displayName) + ": Connect, enabled"}));
}

TEST_F(BaseListTest, TellsTwoOfAKindApart) {
  attach();
  attach();
  device(0).setProperty(HIDPropertyKey::locationID, std::int64_t{0x01200000});
  device(1).setProperty(HIDPropertyKey::locationID, std::int64_t{0x02140000});
  device(1).setProperty(HIDPropertyKey::serialNumber, std::string("QV-B"));
  open();
  visit(Section::base);
  Lines details;
  for (const QLabel* const detail : find("baseList").findChildren<QLabel*>("baseDetail")) {
    details.push_back(textOf(*detail) + " / " + detail->accessibleName().toStdString());
  }
  const std::string kind = displayName;
  EXPECT_EQ(details,
            (Lines{"Product ID 0x0020, USB port 1-2 / " + kind +
                       ", Product ID 0x0020, USB port 1-2, Connected",
                   "Product ID 0x0020, serial number QV-B, USB port 2-1.4 / " + kind +
                       ", Product ID 0x0020, serial number QV-B, USB port 2-1.4, Not connected"}));
  EXPECT_EQ(name("connect QV-B"), "Connect, " + kind + ", QV-B");
}

TEST_F(BaseListTest, ConnectsAnotherOne) {
  openBoth();
  click(connectButton(1));
  EXPECT_EQ(dialog(), nullptr);
  settle();
  EXPECT_EQ(takeLog(), (Lines{connectedLine}));
  EXPECT_EQ(rows(), (Lines{std::string(dd1) + ": Connect, enabled",
                           std::string(displayName) + ": Connected"}));
  EXPECT_EQ(device(0).transcript().lines(), (Lines{"close"}));
}

TEST_F(BaseListTest, WaitsWhileABaseIsAsked) {
  openBoth();
  whileReading([this] {
    EXPECT_EQ(rows(), (Lines{std::string(dd1) + ": Connected",
                             std::string(displayName) + ": Connect, disabled: " + waitReason}));
  });
  whileBusy([this] { click(connectButton(1)); },
            [this] {
              EXPECT_EQ(rows(), (Lines{std::string(dd1) + ": Connect, disabled: " + waitReason,
                                       std::string(displayName) + ": Connecting…"}));
            });
}

TEST_F(BaseListTest, AsksBeforeUnsavedChangesAreLost) {
  openBoth();
  stage(P::forceFeedback, 80);
  stage(P::sensitivity, 540);
  click(connectButton(1));
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(text("dialogTitle"), std::string("Connect ") + displayName + " instead?");
  EXPECT_EQ(text("dialogMessage"),
            std::string("2 unsaved changes for ") + dd1 + " will be discarded.");
  EXPECT_EQ(text("confirmButton"), "Discard and connect");
  EXPECT_EQ(find<Button>("confirmButton").kind(), Button::Kind::destructive);
  EXPECT_EQ(connectedName(), dd1);
  click("confirmButton");
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(connectedName(), baseName);
  EXPECT_TRUE(model().staged().empty());
}

TEST_F(BaseListTest, CancellingKeepsTheBaseAndItsChanges) {
  openBoth();
  stage(P::forceFeedback, 80);
  for (const bool isKey : {false, true}) {
    click(connectButton(1));
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(focused(), "cancelButton") << "Enter does no harm";
    if (isKey) {
      press(Qt::Key_Escape);
    } else {
      click("cancelButton");
    }
    EXPECT_EQ(dialog(), nullptr);
  }
  EXPECT_EQ(connectedName(), dd1);
  EXPECT_EQ(staged(), "FF=80");
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(BaseListTest, TheQuestionGoesWhenThereIsNothingToAskAnyMore) {
  const std::vector<std::function<void()>> events{[this] { device(0).unplug(); },
                                                  [this] { device(1).unplug(); },
                                                  [this] { model().discardStaged(); }};
  openBoth();
  for (const auto& event : events) {
    for (FaultyDevice* const device : {&this->device(0), &this->device(1)}) {
      if (!device->isPlugged()) device->plug();
      settle();
    }
    if (connectedName() != dd1) {
      model().connect(info(0));
      settle();
    }
    stage(P::forceFeedback, 80);
    click(connectButton(1));
    ASSERT_NE(dialog(), nullptr);
    event();
    settle();
    EXPECT_EQ(dialog(), nullptr);
  }
}

TEST_F(BaseListTest, TheKeyboardConnectsAndStaysInTheRow) {
  openBoth();
  focus(connectButton(1));
  press(Qt::Key_Space);
  settle();
  EXPECT_EQ(connectedName(), baseName);
  EXPECT_EQ(focused(), "baseDetail");
  EXPECT_TRUE(find("base " + info(1).id).isAncestorOf(QApplication::focusWidget()));
}

TEST_F(BaseListTest, TheFocusComesBackToTheButtonWhenItFails) {
  openBoth();
  device(1).failOpenWith(HIDReturnCode::exclusiveAccess);
  focus(connectButton(1));
  press(Qt::Key_Space);
  settle();
  EXPECT_FALSE(model().isConnected());
  EXPECT_EQ(focused(), connectButton(1));
  EXPECT_EQ(rows(), (Lines{std::string(dd1) + ": Connect, enabled",
                           std::string(displayName) + ": Connect, enabled"}));
}

TEST_F(BaseListTest, TheFocusStaysInTheListWhenItsRowGoes) {
  openBoth();
  attach(0x0001);
  settle();
  focus(connectButton(2));
  device(2).unplug();
  settle();
  EXPECT_EQ(focused(), "baseDetail");
}

TEST_F(BaseListTest, RowsOfBasesThatStayAreKept) {
  openBoth();
  focus(connectButton(1));
  const QWidget* const button = &find(connectButton(1));
  attach(0x0001);
  settle();
  EXPECT_EQ(&find(connectButton(1)), button);
  EXPECT_EQ(focused(), connectButton(1));
  EXPECT_EQ(rows().size(), 3U);
}

}  // namespace
}  // namespace quorvane
