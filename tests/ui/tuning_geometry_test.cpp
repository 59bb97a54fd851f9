#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <string>
#include <utility>
#include <vector>

#include "tests/ui/window_fixture.h"
#include "ui/kit/button.h"
#include "ui/tuning/parameter_row.h"

// Whether everything in the section Tuning has its room, at every size of the font and the window.
namespace quorvane {
namespace {

using P = TuningParameter;

class FontOfSize {
 public:
  explicit FontOfSize(int points) : before_(QApplication::font()) {
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), points));
  }
  ~FontOfSize() { QApplication::setFont(before_); }
  FontOfSize(const FontOfSize&) = delete;
  FontOfSize& operator=(const FontOfSize&) = delete;

 private:
  QFont before_;
};

// A part of the window with its name, for messages.
struct Part {
  std::string name;
  QRect rect;
};

class TuningGeometry : public WindowTest, public testing::WithParamInterface<int> {
 protected:
  // The visible controls and labels in a widget, without those in other controls.
  static std::vector<Part> partsOf(const QWidget& parent) {
    std::vector<Part> parts;
    for (const QWidget* const child :
         parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      if (child->isVisible() && !child->geometry().isEmpty()) {
        parts.push_back({child->objectName().toStdString(), child->geometry()});
      }
    }
    return parts;
  }

  static void expectApart(const std::vector<Part>& parts, const QRect& room) {
    for (const Part& part : parts) {
      EXPECT_TRUE(room.contains(part.rect)) << part.name;
      for (const Part& other : parts) {
        if (&part == &other) break;
        EXPECT_FALSE(part.rect.intersects(other.rect)) << part.name << " and " << other.name;
      }
    }
  }

  static int advance(const QWidget& widget, const QString& text) {
    return widget.fontMetrics().horizontalAdvance(text);
  }

  void expectRoomInRow(const ParameterRow& row) {
    SCOPED_TRACE(row.objectName().toStdString());
    const RowLayout::Places& p = row.places();
    std::vector<Part> parts{{"plate", p.plate}, {"button", p.button}};
    for (const Part& part : partsOf(row)) {
      const bool isButton = part.name.ends_with("Revert") || part.name.ends_with("Help");
      // A slider's widget is wider than its track.
      const bool isSlider = part.name.ends_with("Slider");
      if (!isButton) {
        parts.push_back({part.name, isSlider ? part.rect.adjusted(9, 0, -9, 0) : part.rect});
      }
    }
    expectApart(parts, row.rect());
    for (const Part& part : parts) {
      const QWidget* const widget = row.findChild<QWidget*>(QString::fromStdString(part.name));
      if (widget == nullptr || part.name.ends_with("Slider")) continue;
      if (part.name.ends_with("Title")) {
        // Only beside a state, in two lines, a title may have to be elided.
        const bool mayBeElided = p.control.left() == p.title.left() && !p.state.isEmpty();
        const int needed = advance(*widget, static_cast<const QLabel*>(widget)->text());
        EXPECT_GE(part.rect.width(), mayBeElided ? needed / 2 : needed);
      } else {
        EXPECT_GE(part.rect.width(), widget->sizeHint().width()) << part.name;
        EXPECT_GE(part.rect.height(), widget->sizeHint().height() - 2) << part.name;
      }
    }
    const QWidget* const slider =
        row.findChild<QWidget*>(QString::fromUtf8(row.parameter().code()) + "Slider");
    if (slider != nullptr) {
      EXPECT_GE(slider->width(), 96 + 18);
    }
  }

  // The state and the note stand clear of everything else.
  void expectRoomForState(const ParameterRow& row) {
    SCOPED_TRACE(row.objectName().toStdString());
    const RowLayout::Places& p = row.places();
    for (const QRect& painted : {p.state, p.note}) {
      if (painted.isEmpty()) continue;
      EXPECT_TRUE(row.rect().contains(painted));
      for (const QRect& other : {p.plate, p.title, p.button, p.readout}) {
        EXPECT_FALSE(painted.intersects(other));
      }
    }
    EXPECT_FALSE(p.state.isEmpty());
  }

  void expectRoom() {
    const auto rows = find("parameterList").findChildren<ParameterRow*>();
    ASSERT_EQ(rows.size(), 16);
    const RowLayout::Places& first = rows.front()->places();
    for (const ParameterRow* const row : rows) {
      expectRoomInRow(*row);
      EXPECT_EQ(row->places().readout.left(), first.readout.left());
      EXPECT_EQ(row->places().control.left(), first.control.left());
    }
    for (const char* const changed : {"SENRow", "FFRow", "SHORow"}) {
      expectRoomForState(find<ParameterRow>(changed));
    }
    for (const char* const bar : {"tuningHeader", "saveBar"}) {
      SCOPED_TRACE(bar);
      expectApart(partsOf(find(bar)), find(bar).rect());
    }
    for (const char* const button :
         {"switchModeButton", "sourcesButton", "readAgainButton", "discardButton", "saveButton"}) {
      EXPECT_GE(find(button).width(), find(button).sizeHint().width()) << button;
    }
    for (const char* const line : {"unsavedCount", "saveFailure"}) {
      const auto& label = find<QLabel>(line);
      const QRect needed = label.fontMetrics().boundingRect(QRect(0, 0, label.width(), 1000),
                                                            Qt::TextWordWrap, label.text());
      EXPECT_GE(label.width(), needed.width()) << line;
      EXPECT_GE(label.height(), needed.height()) << line;
    }
  }

  // One value not taken, one that a preset left, one changed.
  void stageEveryState() {
    behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
    stage(P::forceFeedback, 80);
    model().saveStaged();
    settle();
    stage(P::vibration, 50);
    model().apply(presetOf("Wet", {{P::naturalInertia, 9}}));
    settle();
    stage(P::sensitivity, 540);
    settle();
  }
};

TEST_P(TuningGeometry, EverythingHasItsRoom) {
  const FontOfSize font(GetParam());
  for (const bool isAdvanced : {false, true}) {
    simulate([&](SimulatedBase& simulated) {
      simulated.menu().reset();
      simulated.menu().select(2);
      simulated.menu().put(P::sensitivity, 900);
      if (isAdvanced) simulated.menu().toggleMode();
    });
    open();
    stageEveryState();
    for (const QSize& size : {QSize(860, 560), QSize(1120, 740), QSize(1920, 1080)}) {
      SCOPED_TRACE(testing::Message()
                   << (isAdvanced ? "advanced, " : "standard, ") << size.width());
      window().resize(size);
      settle();
      expectRoom();
    }
    closeWindow();
    end();
  }
}

INSTANTIATE_TEST_SUITE_P(Points, TuningGeometry, testing::Values(9, 10, 11, 13, 15, 16, 18),
                         [](const auto& test) { return "Of" + std::to_string(test.param); });

class TuningForms : public WindowTest {
 protected:
  RowLayout::Form formAt(int points, const QSize& size) {
    const FontOfSize font(points);
    open();
    window().resize(size);
    settle();
    const auto& row = find<ParameterRow>("FFRow");
    const RowLayout::Places& p = row.places();
    const bool isOneLine = p.state.left() > p.readout.right();
    const auto form = isOneLine                            ? RowLayout::Form::oneLine
                      : p.control.left() > p.title.right() ? RowLayout::Form::stacked
                                                           : RowLayout::Form::twoLines;
    closeWindow();
    end();
    return form;
  }
};

TEST_F(TuningForms, TheFirstFormThatFitsIsTaken) {
  using enum RowLayout::Form;
  EXPECT_EQ(formAt(10, {1120, 740}), oneLine);
  EXPECT_EQ(formAt(10, {860, 560}), stacked);
  EXPECT_EQ(formAt(15, {1120, 740}), stacked);
  EXPECT_EQ(formAt(15, {860, 560}), twoLines);
  EXPECT_EQ(formAt(13, {1920, 1080}), oneLine);
}

// The columns of the usual font and window do not change.
TEST_F(TuningForms, InTheUsualWindowTheColumnsAreAtTheirUsualPlaces) {
  const FontOfSize font(10);
  open();
  window().resize(1120, 740);
  settle();
  const auto& row = find<ParameterRow>("FFRow");
  const int right = row.width();
  EXPECT_EQ(row.height(), 36);
  EXPECT_EQ(find("FFTitle").geometry(), QRect(70, 0, 196, 36));
  EXPECT_EQ(find("FFSlider").geometry(), QRect(QPoint(271, 0), QPoint(right - 346, 35)));
  EXPECT_EQ(find("FFReadout").geometry(), QRect(right - 340, 5, 118, 26));
  EXPECT_EQ(find("FFRevert").geometry(), QRect(right - 48, 4, 28, 28));
  EXPECT_EQ(row.places().state, QRect(right - 208, 0, 160, 36));
  EXPECT_EQ(find("SENToggle").x(), right - 431);
  EXPECT_EQ(find("tuningHeader").height(), 54);
  stage(P::forceFeedback, 80);
  EXPECT_EQ(find("saveBar").height(), 50);
}

TEST_F(TuningForms, ARowThatWasNotTakenGrowsOnlyWhereItsStateIsBelowTheTitle) {
  const FontOfSize font(10);
  open();
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  stage(P::forceFeedback, 80);
  model().saveStaged();
  for (const auto& [width, grows] : std::vector<std::pair<int, bool>>{{1120, false}, {860, true}}) {
    window().resize(width, 740);
    settle();
    EXPECT_EQ(find("FFRow").height() > find("SHORow").height(), grows) << width;
  }
}

TEST_F(TuningForms, TheHeaderBreaksAfterTheTitleOrAfterTheMode) {
  struct Case {
    int points;
    int width;
    const char* first;  // of the second line
  };
  for (const auto& [points, width, first] :
       {Case{10, 980, "setPicker"}, Case{15, 860, "switchModeButton"}}) {
    const FontOfSize font(points);
    open();
    window().resize(width, 560);
    settle();
    EXPECT_LT(find("tuningTitle").geometry().bottom(), find(first).y()) << points;
    EXPECT_EQ(find("readAgainButton").geometry().center().y(),
              find("switchModeButton").geometry().center().y());
    closeWindow();
    end();
  }
}

TEST_F(TuningForms, TheWarningOfTheAutoSetRunsOnAfterItsHeading) {
  const FontOfSize font(10);
  simulate([](SimulatedBase& simulated) { simulated.menu().select(1); });
  open();
  window().resize(1120, 740);
  settle();
  EXPECT_EQ(find("warningHeading").y(), find("warningBody").y());
  EXPECT_LT(find("warningBar").height(), 70);
  EXPECT_EQ(find("warningBar").width(), find("parameterList").width());
  const FontOfSize larger(18);
  window().resize(860, 560);
  settle();
  const QWidget& bar = find("warningBar");
  EXPECT_TRUE(bar.rect().contains(find("warningHeading").geometry()));
  EXPECT_TRUE(bar.rect().contains(find("warningBody").geometry()));
}

}  // namespace
}  // namespace quorvane
