#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <string>

#include "tests/ui/window_fixture.h"
#include "ui/kit/theme.h"

// The receipt of the last write, over its bar.
namespace quorvane {
namespace {

using P = TuningParameter;

class Receipt : public WindowTest {
 protected:
  void saveTwo() {
    stage(P::forceFeedback, 80);
    stage(P::vibration, 50);
    model().saveStaged();
    settle();
  }

  bool isOpen() { return isVisible("receipt"); }
};

TEST_F(Receipt, TellsWhatBecameOfEachValue) {
  open();
  saveTwo();
  click("savedDetailsButton");
  ASSERT_TRUE(isOpen());
  EXPECT_EQ(name("FFReceipt"),
            "FF, Force feedback strength, was 65 %, wanted 80 %, read back 80 %, 250 ms, taken");
  EXPECT_EQ(name("SHOReceipt"),
            "SHO, Wheel vibration motor, was 100 %, wanted 50 %, read back 50 %, 250 ms, taken");
  EXPECT_EQ(text("receiptSummary"),
            "2 of 2 taken in 0.5 s, 14 were left alone. Kept in the history.");
  const QRect bar(find("savedBar").mapTo(&window(), QPoint()), find("savedBar").size());
  const QRect receipt(find("receipt").mapTo(&window(), QPoint()), find("receipt").size());
  EXPECT_LT(receipt.bottom(), bar.top());
  EXPECT_LE(receipt.right(), bar.right());
}

TEST_F(Receipt, EscClosesItAndTheButtonHasTheFocusAgain) {
  open();
  saveTwo();
  focus("savedDetailsButton");
  press(Qt::Key_Space);
  EXPECT_EQ(focused(), "copyReceiptLink");
  press(Qt::Key_Escape);
  EXPECT_FALSE(isOpen());
  EXPECT_EQ(focused(), "savedDetailsButton");
  press(Qt::Key_Space);
  EXPECT_TRUE(isOpen());
  click("savedDetailsButton");
  EXPECT_FALSE(isOpen());
}

TEST_F(Receipt, IsCopiedAsText) {
  open();
  saveTwo();
  click("savedDetailsButton");
  click("copyReceiptLink");
  const std::string copied = QGuiApplication::clipboard()->text().toStdString();
  EXPECT_TRUE(copied.starts_with("Saved 2 to set C (Custom), ")) << copied;
  EXPECT_NE(copied.find("\nFF, Force feedback strength, was 65 %, wanted 80 %, read back 80 %, "
                        "250 ms, taken\nSHO, "),
            std::string::npos)
      << copied;
  EXPECT_TRUE(copied.ends_with("Kept in the history.")) << copied;
}

TEST_F(Receipt, OfAFailureIsOpenedFromTheSaveBar) {
  open();
  EXPECT_FALSE(isVisible("failureDetailsLink"));
  behave([](SimulatedBehaviour& b) { b.ignored = {P::vibration}; });
  saveTwo();
  ASSERT_TRUE(isVisible("failureDetailsLink"));
  click("failureDetailsLink");
  ASSERT_TRUE(isOpen());
  EXPECT_EQ(name("SHOReceipt"),
            "SHO, Wheel vibration motor, was 100 %, wanted 50 %, read back 100 %, 250 ms, not "
            "taken: The base ignored the SHO write; it still reports 100");
  EXPECT_TRUE(text("receiptSummary").starts_with("1 of 2 taken in "));
  const QImage row = find("SHOReceipt").grab().toImage();
  EXPECT_EQ(row.pixelColor(2, 2), theme().errorGround);
  press(Qt::Key_Escape);
  EXPECT_EQ(focused(), "failureDetailsLink");
}

TEST_F(Receipt, NamesWhatAnUndoLeftAlone) {
  open();
  saveTwo();
  base().turn(P::forceFeedback, 40);
  settle();
  click("savedUndoButton");
  settle();
  click("savedDetailsButton");
  EXPECT_EQ(name("FFReceipt"),
            "FF, Force feedback strength, was 80 %, read back 40 %, left alone: It was changed "
            "since.");
}

TEST_F(Receipt, SaysWhyItIsNotInTheHistory) {
  open();
  std::filesystem::create_directory(state_ / historyFileName(info(0)));
  saveTwo();
  click("savedDetailsButton");
  EXPECT_NE(text("receiptSummary").find(" Not in the history: "), std::string::npos);
}

TEST_F(Receipt, ClosesWithItsBarAndWithTheNextWrite) {
  open();
  saveTwo();
  click("savedDetailsButton");
  stage(P::naturalInertia, 9);
  settle();
  EXPECT_FALSE(isOpen());
  model().saveStaged();
  settle();
  click("savedDetailsButton");
  EXPECT_TRUE(isOpen());
  model().undo();
  settle();
  EXPECT_FALSE(isOpen());
}

TEST_F(Receipt, OfAWholePresetFitsIntoThePage) {
  open();
  window().resize(860, 560);
  model().apply(TuningPreset::builtIn().front());
  settle();
  click("savedDetailsButton");
  EXPECT_TRUE(isOpen());
  EXPECT_GE(find("receipt").y(), 0);
  EXPECT_GE(find("receipt").x(), 0);
}

}  // namespace
}  // namespace quorvane
