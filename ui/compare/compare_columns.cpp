#include "ui/compare/compare_columns.h"

#include <QFontMetrics>
#include <algorithm>

#include "protocol/tuning_parameter.h"
#include "ui/kit/metrics.h"
#include "ui/kit/text.h"
#include "ui/kit/tick_box.h"

namespace quorvane {
namespace {

constexpr int afterBox = 12;
constexpr int afterPlate = 16;
constexpr int afterRowTitle = 20;
constexpr int afterValue = 20;
constexpr int afterNumber = 12;
constexpr int afterDistance = 13;
constexpr int platePart = 16;  // of a plate beside its code
constexpr int leastPlateWidth = 38;
constexpr int leastValue = 76;
constexpr int leastNumber = 44;
constexpr int distanceLength = 90;
constexpr int compareRowHeight = 28;
constexpr int strongerTextGap = 4;

int advanceOf(Metrics::Type type, const char* words) {
  return QFontMetrics(Metrics::font(type)).horizontalAdvance(QString::fromUtf8(words));
}

int comparePlateWidth() {
  return std::max(leastPlateWidth, advanceOf(Metrics::Type::fixed, "SEN") + platePart);
}

int compareValueWidth() {
  return std::max(leastValue,
                  advanceOf(Metrics::Type::value, "2520 ") + advanceOf(Metrics::Type::unit, "deg"));
}

int compareNumberWidth() { return std::max(leastNumber, advanceOf(Metrics::Type::value, "−2430")); }

int strongerWidth() {
  return Metrics::symbolSide() + strongerTextGap + advanceOf(Metrics::Type::callout, "stronger");
}

int longestSettingTitle() {
  const QFontMetrics metrics(Metrics::font(Metrics::Type::body));
  int longest = 0;
  for (const TuningParameter parameter : TuningParameter::adjustable(std::nullopt)) {
    longest = std::max(longest, metrics.horizontalAdvance(text(parameter.title())));
  }
  return longest;
}

// All but the title.
int widthsBesideTitle() {
  return 2 * Metrics::pageInset + tickBoxSide() + afterBox + comparePlateWidth() + afterPlate +
         afterRowTitle + 2 * (compareValueWidth() + afterValue) + compareNumberWidth() +
         afterNumber + distanceLength + afterDistance + strongerWidth();
}

}  // namespace

CompareColumns CompareColumns::of(const QRect& row) {
  int x = row.left() + Metrics::pageInset;
  const auto next = [&](int width, int gap) {
    const QRect column(x, row.top(), width, row.height());
    x += width + gap;
    return column;
  };
  CompareColumns columns;
  const int box = tickBoxSide();
  columns.box = next(box, afterBox);
  columns.box.setTop(row.top() + (row.height() - box) / 2);
  columns.box.setHeight(box);
  columns.plate = next(comparePlateWidth(), afterPlate);
  columns.title = next(std::max(1, row.width() - widthsBesideTitle()), afterRowTitle);
  columns.left = next(compareValueWidth(), afterValue);
  columns.right = next(compareValueWidth(), afterValue);
  columns.number = next(compareNumberWidth(), afterNumber);
  columns.distance = next(distanceLength, afterDistance);
  columns.mark = next(strongerWidth(), 0);
  return columns;
}

QRect CompareColumns::words() const {
  QRect all = number;
  all.setRight(mark.right());
  return all;
}

int CompareColumns::fullWidth() { return widthsBesideTitle() + longestSettingTitle(); }

int CompareColumns::rowHeight() {
  return Metrics::atLeast(compareRowHeight, Metrics::font(Metrics::Type::body));
}

}  // namespace quorvane
