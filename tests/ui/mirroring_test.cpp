#include "ui/kit/mirroring.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>

#include "tests/ui/window_fixture.h"
#include "ui/kit/painting.h"
#include "ui/kit/toggle.h"

namespace quorvane {
namespace {

// The window with a layout from right to left.
class Mirroring : public WindowTest {
 public:
  Mirroring() { QApplication::setLayoutDirection(Qt::RightToLeft); }
  ~Mirroring() override { QApplication::setLayoutDirection(Qt::LeftToRight); }
  Mirroring(const Mirroring&) = delete;
  Mirroring& operator=(const Mirroring&) = delete;

 protected:
  QRect placeOf(const std::string& name) {
    const QWidget& widget = find(name);
    return {widget.mapTo(&window(), QPoint()), widget.size()};
  }
};

TEST_F(Mirroring, PlacesAreMirroredAtTheMiddle) {
  QWidget widget;
  widget.resize(100, 20);
  EXPECT_EQ(visualRect(widget, QRect(10, 2, 30, 5)), QRect(60, 2, 30, 5));
  EXPECT_EQ(visualRect(widget, QRectF(10, 2, 30, 5)), QRectF(60, 2, 30, 5));
  EXPECT_EQ(visualMargins(widget, {1, 2, 3, 4}), QMargins(3, 2, 1, 4));
  widget.setLayoutDirection(Qt::LeftToRight);
  EXPECT_EQ(visualRect(widget, QRect(10, 2, 30, 5)), QRect(10, 2, 30, 5));
  EXPECT_EQ(visualRect(widget, QRectF(10, 2, 30, 5)), QRectF(10, 2, 30, 5));
  EXPECT_EQ(visualMargins(widget, {1, 2, 3, 4}), QMargins(1, 2, 3, 4));
}

TEST_F(Mirroring, TheSidebarIsAtTheRightAndTheSaveButtonAtTheLeft) {
  open();
  stage(TuningParameter::forceFeedback, 80);
  settle();
  EXPECT_EQ(placeOf("sidebar").right(), window().width() - 1);
  EXPECT_EQ(placeOf("saveButton").left(), 20);
  EXPECT_GT(placeOf("discardButton").left(), placeOf("saveButton").right());
  EXPECT_GT(placeOf("unsavedCount").left(), placeOf("discardButton").right());
  EXPECT_EQ(placeOf("unsavedCount").right(), window().width() - placeOf("sidebar").width() - 39);
}

TEST_F(Mirroring, HeadersAndLabelsBeginAtTheRight) {
  open();
  visit(Section::log);
  EXPECT_LT(placeOf("copyAllLogButton").right(), placeOf("errorsOnlyToggle").left());
  const auto& toggle = find<Toggle>("errorsOnlyToggle");
  EXPECT_EQ(toggle.switchRect().right(), toggle.width() - 5);
  visit(Section::base);
  EXPECT_TRUE(find<QLabel>("connectionStatus").alignment().testFlag(Qt::AlignRight));
  visit(Section::tools);
  EXPECT_TRUE(find<QLabel>("tuningDump").alignment().testFlag(Qt::AlignLeft));
}

}  // namespace
}  // namespace quorvane
