#include <gtest/gtest.h>

#include <QApplication>
#include <QSpinBox>
#include <QStyleOption>
#include <QTest>
#include <map>
#include <string>

#include "tests/ui/window_fixture.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/theme.h"
#include "ui/kit/value_slider.h"
#include "ui/presets/preset_strip.h"
#include "ui/tuning/parameter_row.h"

namespace quorvane {
namespace {

using P = TuningParameter;
using PlacesByName = std::map<std::string, QRect>;

QRect mirroredIn(int width, const QRect& rect) {
  return {width - rect.left() - rect.width(), rect.top(), rect.width(), rect.height()};
}

// The window, first from left to right and then from right to left, on the same model.
class MirroredRows : public WindowTest {
 public:
  ~MirroredRows() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

 protected:
  void TearDown() override {
    closeWindow();
    QApplication::setLayoutDirection(Qt::LeftToRight);
    WindowTest::TearDown();
  }

  void reopen(Qt::LayoutDirection direction, const QSize& size = {1120, 740}) {
    closeWindow();
    QApplication::setLayoutDirection(direction);
    show();
    window().resize(size);
    settle();
  }

  // Where the visible parts of a page are, by the names of the widgets that they are in.
  PlacesByName placesIn(const std::string& page) {
    PlacesByName places;
    for (const QWidget* const widget : find(page).findChildren<QWidget*>()) {
      if (!widget->isVisible() || widget->objectName().isEmpty()) continue;
      std::string name;
      for (const QWidget* part = widget; part != &window(); part = part->parentWidget()) {
        name.insert(0, part->objectName().toStdString() + "/");
      }
      places[name] = QRect(widget->mapTo(&window(), QPoint()), widget->size());
    }
    return places;
  }

  void expectMirrored(const std::string& page, Section section, const QSize& size) {
    SCOPED_TRACE(page + " at " + std::to_string(size.width()));
    reopen(Qt::LeftToRight, size);
    visit(section);
    settle();
    const PlacesByName usual = placesIn(page);
    reopen(Qt::RightToLeft, size);
    visit(section);
    settle();
    const PlacesByName mirrored = placesIn(page);
    EXPECT_EQ(usual.size(), mirrored.size());
    EXPECT_GT(usual.size(), 40U);
    for (const auto& [name, rect] : usual) {
      ASSERT_TRUE(mirrored.contains(name)) << name;
      EXPECT_EQ(mirrored.at(name), mirroredIn(window().width(), rect)) << name;
    }
  }

  // The value that a click at this distance from the beginning of the track gives.
  int clicked(ValueSlider& slider, int distance) {
    const int x = slider.isRightToLeft() ? slider.width() - distance : distance;
    QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(x, slider.height() / 2));
    settle();
    return slider.value();
  }

  QColor colourAt(QWidget& widget, int x) {
    return widget.grab().toImage().pixelColor(x, widget.height() / 2);
  }

  QRect stepRect(const std::string& readout, QStyle::SubControl step) {
    auto& box = find<QSpinBox>(readout);
    QStyleOptionSpinBox option;
    option.initFrom(&box);
    return box.style()->subControlRect(QStyle::CC_SpinBox, &option, step, &box);
  }

  PresetStrip& firstStrip() {
    return static_cast<PresetStrip&>(
        *find("builtInPresets").findChildren<QWidget*>(QStringLiteral("presetValues")).front());
  }
};

TEST_F(MirroredRows, EveryPartOfAPageIsAtTheMirroredPlace) {
  start();
  model().saveCurrentAsPreset("Mine");
  behave([](SimulatedBehaviour& b) { b.ignored = {P::forceFeedback}; });
  stage(P::forceFeedback, 80);
  model().saveStaged();
  settle();
  takeLog();
  takeTranscript();
  stage(P::sensitivity, 900);
  for (const QSize size : {QSize(1120, 740), QSize(860, 560), QSize(1600, 900)}) {
    expectMirrored("tuningPage", Section::tuning, size);
    expectMirrored("presetsPage", Section::presets, size);
  }
}

TEST_F(MirroredRows, PaintedPartsOfARowAreMirrored) {
  start();
  stage(P::forceFeedback, 80);
  reopen(Qt::LeftToRight);
  const RowLayout::Places usual = find<ParameterRow>("FFRow").places();
  reopen(Qt::RightToLeft);
  const auto& row = find<ParameterRow>("FFRow");
  const std::map<const char*, std::pair<QRect, QRect>> parts{
      {"plate", {usual.plate, row.places().plate}},
      {"title", {usual.title, row.places().title}},
      {"control", {usual.control, row.places().control}},
      {"readout", {usual.readout, row.places().readout}},
      {"state", {usual.state, row.places().state}},
      {"button", {usual.button, row.places().button}}};
  for (const auto& [name, rects] : parts) {
    EXPECT_EQ(rects.second, mirroredIn(row.width(), rects.first)) << name;
  }
}

TEST_F(MirroredRows, ASliderBeginsAtTheRight) {
  start();
  std::map<Qt::LayoutDirection, std::vector<int>> values;
  for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    reopen(direction);
    auto& slider = find<ValueSlider>("FFSlider");
    for (const int distance : {9, 60, 120, slider.width() - 9}) {
      values[direction].push_back(clicked(slider, distance));
    }
    EXPECT_EQ(slider.value(), slider.maximum());
    EXPECT_LT(clicked(slider, 60), 50);
    const bool isMirrored = direction == Qt::RightToLeft;
    EXPECT_EQ(slider.capRect().center().x() > slider.width() / 2, isMirrored);
    model().discardStaged();
    settle();
    const int begin = isMirrored ? slider.width() - 12 : 12;
    EXPECT_EQ(colourAt(slider, begin), theme().fill);
    EXPECT_NE(colourAt(slider, slider.width() - begin), theme().fill);
    takeLog();
  }
  EXPECT_EQ(values[Qt::LeftToRight], values[Qt::RightToLeft]);
}

TEST_F(MirroredRows, LeftIncreases) {
  start();
  reopen(Qt::RightToLeft);
  auto& slider = find<ValueSlider>("FFSlider");
  const int before = slider.value();
  slider.setFocus();
  press(Qt::Key_Left);
  EXPECT_EQ(slider.value(), before + slider.singleStep());
  press(Qt::Key_Right);
  EXPECT_EQ(slider.value(), before);
}

TEST_F(MirroredRows, TheStepsOfAReadoutChangeSides) {
  start();
  const std::map<Qt::LayoutDirection, QStyle::SubControl> atTheLeft{
      {Qt::LeftToRight, QStyle::SC_SpinBoxDown}, {Qt::RightToLeft, QStyle::SC_SpinBoxUp}};
  for (const auto& [direction, left] : atTheLeft) {
    reopen(direction);
    auto& readout = find<QSpinBox>("FFReadout");
    EXPECT_EQ(stepRect("FFReadout", left).left(), 0);
    const int before = readout.value();
    QTest::mouseClick(&readout, Qt::LeftButton, {}, stepRect("FFReadout", left).center());
    settle();
    const int step = left == QStyle::SC_SpinBoxUp ? readout.singleStep() : -readout.singleStep();
    EXPECT_EQ(readout.value(), before + step);
    model().discardStaged();
    settle();
  }
}

TEST_F(MirroredRows, TheValuesOfAPresetRunFromTheRight) {
  start();
  reopen(Qt::LeftToRight);
  visit(Section::presets);
  std::vector<QRect> usual;
  for (std::size_t cell = 0; cell < 16; ++cell) usual.push_back(firstStrip().cellRect(cell));
  reopen(Qt::RightToLeft);
  visit(Section::presets);
  for (std::size_t cell = 0; cell < 16; ++cell) {
    EXPECT_EQ(firstStrip().cellRect(cell), mirroredIn(firstStrip().width(), usual[cell])) << cell;
  }
}

TEST(MirroredText, KeepsItsOwnDirection) {
  const int left = Qt::AlignLeft | Qt::AlignAbsolute | Qt::TextSingleLine;
  const int right = Qt::AlignRight | Qt::AlignAbsolute | Qt::TextSingleLine;
  const QString latin = QStringLiteral("was -5 %");
  const QString hebrew = QStringLiteral("\u05D0");
  EXPECT_EQ(lineFlags(latin, Qt::AlignLeft, Qt::LeftToRight), left | Qt::TextForceLeftToRight);
  EXPECT_EQ(lineFlags(latin, Qt::AlignLeft, Qt::RightToLeft), right | Qt::TextForceLeftToRight);
  EXPECT_EQ(lineFlags(hebrew, Qt::AlignLeft, Qt::RightToLeft), right | Qt::TextForceRightToLeft);
}

TEST(MirroredText, ARectangleBeginsAtTheRight) {
  const QRect rect(10, 2, 100, 5);
  EXPECT_EQ(firstPart(rect, 30, Qt::LeftToRight), QRect(10, 2, 30, 5));
  EXPECT_EQ(withoutFirst(rect, 30, Qt::LeftToRight), QRect(40, 2, 70, 5));
  EXPECT_EQ(firstPart(rect, 30, Qt::RightToLeft), QRect(80, 2, 30, 5));
  EXPECT_EQ(withoutFirst(rect, 30, Qt::RightToLeft), QRect(10, 2, 70, 5));
}

}  // namespace
}  // namespace quorvane
