#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <string>
#include <utility>
#include <vector>

#include "protocol/identity_report.h"
#include "tests/ui/window_fixture.h"
#include "ui/kit/button.h"
#include "ui/kit/form.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr const char* usbDone = "[log] USB reset issued; the base will reconnect in a few seconds";

class Tools : public WindowTest {
 protected:
  void openTools() {
    open();
    visit(Section::tools);
  }

  Lines states() {
    Lines lines;
    for (const char* const button :
         {"rereadButton", "usbResetButton", "toggleModeButton", "factoryResetButton"}) {
      lines.push_back(state(button));
    }
    return lines;
  }

  // "Caption: text | text", the labels and buttons in order.
  Lines cards() {
    Lines lines;
    for (const Card* const card : find("toolsPage").findChildren<Card*>()) {
      std::string line = card->accessibleName().toStdString() + ":";
      for (const QWidget* const part : card->findChildren<QWidget*>()) {
        const bool isText = qobject_cast<const QLabel*>(part) != nullptr ||
                            qobject_cast<const Button*>(part) != nullptr;
        const bool isDump = part->objectName().endsWith(QStringLiteral("Dump"));
        if (!isText || isDump || !part->isVisible()) continue;
        if (textOf(*part) != card->accessibleName().toStdString())
          line += " " + textOf(*part) + " |";
      }
      lines.push_back(line);
    }
    return lines;
  }
};

TEST_F(Tools, HasItsCardsInOrder) {
  openTools();
  EXPECT_EQ(
      cards(),
      (Lines{"Connection: Re-read everything | Reset the USB link | Re-enumerates the base exactly "
             "as if the cable were unplugged and plugged back in. Use it if the base stops "
             "answering. |",
             "Tuning menu: Switch standard / advanced menu | Factory-reset all tuning values… | "
             "Sends the same reset the wheel performs when you hold the tuning button. Every set "
             "goes back to defaults and the base returns to the standard menu. |",
             "Raw: Tuning | Identity |"}));
  EXPECT_EQ(find<Button>("factoryResetButton").kind(), Button::Kind::destructive);
}

TEST_F(Tools, ButtonsAreAvailableWhenTheyCanDoSomething) {
  const std::string connect = std::string("disabled: ") + connectReason;
  openWithoutBase();
  visit(Section::tools);
  EXPECT_EQ(states(), (Lines{connect, "enabled", connect, connect}));
  base();
  settle();
  EXPECT_EQ(states(), Lines(4, "enabled"));
  whileReading([this] { EXPECT_EQ(states(), Lines(4, std::string("disabled: ") + waitReason)); });
  EXPECT_EQ(states(), Lines(4, "enabled"));
}

TEST_F(Tools, ReadsEverythingAgain) {
  openTools();
  click("rereadButton");
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{menuRequest, identityOn, identityRequest}));
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(Tools, AReadThatFailsIsCalledByItsLabel) {
  openTools();
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  click("rereadButton");
  settle();
  EXPECT_EQ(takeLog(), (Lines{std::string("[error] Read failed: ") + menuTimeout}));
}

TEST_F(Tools, SwitchesTheMenu) {
  openTools();
  for (const char* const mode : {"advanced", "standard"}) {
    click("toggleModeButton");
    settle();
    EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 06 +61", "pause 400 ms", menuRequest}));
    EXPECT_EQ(takeLog(), (Lines{std::string("[log] Now in ") + mode + " mode"}));
  }
  behave([](SimulatedBehaviour& b) { b.silent = true; });
  click("toggleModeButton");
  settle();
  EXPECT_EQ(takeLog(), (Lines{std::string("[error] Toggle mode failed: ") + menuTimeout}));
}

TEST_F(Tools, ResetsTheLinkOfABaseThatCannotBeOpened) {
  base().failOpenWith(HIDReturnCode::exclusiveAccess);
  openTools();
  ASSERT_EQ(state("usbResetButton"), "enabled");
  backend_.hold(true);
  click("usbResetButton");
  waitUntil([this] { return model().statusLine().starts_with("USB reset"); });
  EXPECT_EQ(takeLog(), (Lines{usbDone}));
  base().failOpenWith(HIDReturnCode::success);
  backend_.hold(false);
  settle();
}

TEST_F(Tools, ALinkThatIsNotThereCannotBeReset) {
  openWithoutBase();
  visit(Section::tools);
  ASSERT_EQ(state("usbResetButton"), "enabled");
  click("usbResetButton");
  waitUntil([this] { return !model().log().empty(); });
  EXPECT_EQ(takeLog(), (Lines{"[error] USB reset failed: HID I/O failed: no USB device with vendor "
                              "0xeb7 found"}));
}

TEST_F(Tools, AResetIsAskedForFirst) {
  openTools();
  click("factoryResetButton");
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(textOf(find("dialogTitle", *dialog())),
            "Factory-reset every tuning value on the base?");
  EXPECT_EQ(textOf(find("dialogMessage", *dialog())),
            "This cannot be undone. Save the sets you care about as presets first.");
  EXPECT_EQ(text("confirmButton"), "Reset everything");
  EXPECT_EQ(text("cancelButton"), "Cancel");
  EXPECT_EQ(find<Button>("confirmButton").kind(), Button::Kind::destructive);
  settle();
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(Tools, CancelIsTheAnswerOfEnter) {
  openTools();
  click("factoryResetButton");
  EXPECT_TRUE(find<Button>("cancelButton").isDefault());
  EXPECT_FALSE(find<Button>("confirmButton").isDefault());
  EXPECT_EQ(focused(), "cancelButton");
  press(Qt::Key_Return);
  settle();
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(takeTranscript(), Lines{});
}

TEST_F(Tools, CancelAndEscSendNothing) {
  openTools();
  for (const bool byKey : {false, true}) {
    click("factoryResetButton");
    ASSERT_NE(dialog(), nullptr);
    if (byKey) {
      press(Qt::Key_Escape);
    } else {
      click("cancelButton");
    }
    settle();
    EXPECT_EQ(dialog(), nullptr);
  }
  EXPECT_EQ(takeTranscript(), Lines{});
  EXPECT_EQ(takeLog(), Lines{});
}

TEST_F(Tools, ResetsTheMenu) {
  openTools();
  click("factoryResetButton");
  click("confirmButton");
  settle();
  EXPECT_EQ(takeTranscript(), (Lines{"> ff 03 04 +61", "pause 400 ms", menuRequest}));
  EXPECT_EQ(takeLog(), (Lines{"[log] Tuning menu reset to factory defaults"}));
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_FALSE(exists("confirmDialog"));
}

TEST_F(Tools, TheQuestionGoesWithTheBase) {
  openTools();
  click("factoryResetButton");
  base().unplug();
  settle();
  EXPECT_EQ(dialog(), nullptr);
}

TEST_F(Tools, TheQuestionIsAskedOnceAtATime) {
  openTools();
  find<Button>("factoryResetButton").click();
  find<Button>("factoryResetButton").click();
  EXPECT_EQ(window().findChildren<QDialog*>().size(), 1);
}

TEST_F(Tools, ShowsTheReportsAsTheyCame) {
  openTools();
  EXPECT_EQ(text("tuningDump"), model().tuning()->hexDump());
  EXPECT_EQ(text("identityDump"), model().identity()->hexDump());
  EXPECT_TRUE(text("tuningDump").starts_with("ff 03 82 ")) << text("tuningDump");
  base().turn(P::forceFeedback, 70);
  settle();
  EXPECT_EQ(text("tuningDump"), model().tuning()->hexDump());
  const auto& dump = find<QLabel>("tuningDump");
  EXPECT_TRUE(dump.wordWrap());
  EXPECT_TRUE(dump.textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
}

TEST_F(Tools, AReportThatHasNotComeHasNoRow) {
  behave([](SimulatedBehaviour& b) { b.tuningSilent = true; });
  openTools();
  EXPECT_FALSE(isVisible("tuningDump"));
  EXPECT_TRUE(isVisible("identityDump"));
  base().unplug();
  settle();
  EXPECT_FALSE(isVisible("identityDump"));
  EXPECT_EQ(cards()[2], "Raw:");
}

}  // namespace
}  // namespace quorvane
