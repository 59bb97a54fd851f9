#include "ui/tuning/row_layout.h"

#include <QFontMetrics>
#include <algorithm>

#include "ui/kit/metrics.h"
#include "ui/kit/text_width.h"

namespace quorvane::RowLayout {
namespace {

// Columns in the usual font. A larger font widens them.
constexpr int leastPlate = 38;
constexpr int leastPlateHeight = 18;
constexpr int leastTitle = 196;
constexpr int leastReadout = 118;
constexpr int leastState = 160;
constexpr int leastTrack = 96;
constexpr int widestControl = 760;

constexpr int plateGap = 12;
constexpr int platePadding = 16;
constexpr int titlePadding = 12;
constexpr int betweenColumns = 14;  // between columns in one line
constexpr int stackedTitleGap = 6;  // in the other forms
constexpr int stackedReadoutGap = 16;
constexpr int stackedButtonGap = 6;
constexpr int tightPadding = 3;  // above and below two lines of text
constexpr int loosePadding = 5;  // likewise
constexpr int controlPadding = 8;
constexpr int upperTop = 4;  // of the form in two lines
constexpr int lowerGap = 2;
constexpr int lowerBottom = 6;

int bodyHeight() { return QFontMetrics(Metrics::font(Metrics::Type::body)).height(); }
int calloutHeight() { return QFontMetrics(Metrics::font(Metrics::Type::callout)).height(); }
int controlHeight() {
  return Metrics::atLeast(Metrics::rowControlHeight, Metrics::font(Metrics::Type::value));
}

// The height of the upper one of two lines.
int upperLine() {
  return std::max({Metrics::iconButtonSide(), plateSize().height(), bodyHeight(), stateLine()});
}

int titleLeft(const Columns& c) { return c.inset + plateSize().width() + plateGap; }

// What lies right of the control, with the gap before it.
int rightOfControl(const Columns& c) {
  const int end = c.readout + Metrics::iconButtonSide() + c.inset;
  return c.form == Form::oneLine ? end + 2 * betweenColumns + c.state
                                 : end + stackedReadoutGap + stackedButtonGap;
}

int controlLeft(const Columns& c) {
  switch (c.form) {
    case Form::oneLine:
      return titleLeft(c) + c.title + betweenColumns;
    case Form::stacked:
      return titleLeft(c) + c.title + stackedTitleGap;
    case Form::twoLines:
      return titleLeft(c);
  }
  return 0;
}

int rowHeight(Form form) {
  if (form == Form::twoLines) {
    return upperTop + upperLine() + lowerGap + controlHeight() + lowerBottom;
  }
  const int padding = form == Form::oneLine ? tightPadding : loosePadding;
  return std::max({Metrics::tuningRowHeight, controlHeight() + controlPadding,
                   bodyHeight() + calloutHeight() + padding});
}

Columns columnsOf(Form form, const Needs& needs, int inset) {
  const int title = needs.title + titlePadding;
  Columns c{form, inset, title, needs.toggle, needs.readout, needs.state, rowHeight(form)};
  c.readout = std::max(leastReadout, needs.readout);
  c.state = std::max(leastState, needs.state);
  if (form == Form::oneLine) c.title = std::max({leastTitle, title, needs.note});
  if (form == Form::stacked) c.title = std::max(title, needs.state);
  return c;
}

// The room for the part with this height in the middle of another.
QRect centred(const QRect& in, int left, int width, int height) {
  return {left, in.top() + (in.height() - height) / 2, width, height};
}

}  // namespace

QSize plateSize() {
  const QFont font = Metrics::font(Metrics::Type::fixed);
  return {std::max(leastPlate, textWidth(font, QStringLiteral("SEN")) + platePadding),
          std::max(leastPlateHeight, QFontMetrics(font).height() + 3)};
}

int stateLine() {
  const int pill = QFontMetrics(Metrics::font(Metrics::Type::pill)).height() + 2;
  return std::max({Metrics::pillHeight, pill, calloutHeight()});
}

void Needs::include(const Needs& other) {
  title = std::max(title, other.title);
  note = std::max(note, other.note);
  picker = std::max(picker, other.picker);
  toggle = std::max(toggle, other.toggle);
  readout = std::max(readout, other.readout);
  state = std::max(state, other.state);
}

Columns columns(const Needs& needs, int width, int inset) {
  const int room = std::min(width, Metrics::contentWidth);
  const int control = std::max(leastTrack + needs.toggle, needs.picker);
  for (const Form form : {Form::oneLine, Form::stacked}) {
    const Columns c = columnsOf(form, needs, inset);
    if (controlLeft(c) + control + rightOfControl(c) <= room) return c;
  }
  return columnsOf(Form::twoLines, needs, inset);
}

int noteHeight(Form form) { return form == Form::oneLine ? 0 : calloutHeight() + loosePadding; }

Places places(const Columns& c, const QSize& row, const Extras& extras) {
  const int right = std::min(row.width(), Metrics::contentWidth) - c.inset;
  const int note = extras.hasNote ? noteHeight(c.form) : 0;
  const bool isTwoLines = c.form == Form::twoLines;
  const QRect body(0, 0, row.width(), row.height() - note);
  const QRect upper = isTwoLines ? QRect(0, upperTop, row.width(), upperLine()) : body;
  const QRect lower =
      isTwoLines ? body.adjusted(0, upperTop + upperLine() + lowerGap, 0, -lowerBottom) : body;

  Places p;
  const int left = titleLeft(c);
  const int side = Metrics::iconButtonSide();
  const int buttonLeft = right - side;
  p.plate = centred(upper, c.inset, plateSize().width(), plateSize().height());
  p.button = centred(upper, buttonLeft, side, side);
  const int start = controlLeft(c);
  const int end = std::min(row.width(), Metrics::contentWidth) - rightOfControl(c);
  p.control = QRect(start, lower.top(), std::clamp(end - start, 0, widestControl), lower.height());
  const int readoutGap = c.form == Form::oneLine ? betweenColumns : stackedReadoutGap;
  p.readout =
      centred(lower, end + readoutGap, c.readout, std::min(lower.height(), controlHeight()));

  const int line = calloutHeight();
  const int block = bodyHeight() + line;
  const int top = body.top() + (body.height() - block) / 2;
  const bool isSplit =
      c.form == Form::oneLine ? extras.hasNote : c.form == Form::stacked && extras.state > 0;
  p.title = isSplit ? QRect(left, top, c.title, bodyHeight())
                    : QRect(left, upper.top(), c.title, upper.height());
  switch (c.form) {
    case Form::oneLine:
      p.state = QRect(buttonLeft - c.state, 0, c.state, row.height());
      p.note = QRect(left, top + bodyHeight(), c.title + betweenColumns, line);
      break;
    case Form::stacked:
      p.state = QRect(left, top + bodyHeight(), c.title, line);
      p.note = QRect(left, body.bottom() + 1, right - left, line);
      break;
    case Form::twoLines:
      p.state =
          centred(upper, buttonLeft - betweenColumns - extras.state, extras.state, stateLine());
      p.title.setRight((extras.state > 0 ? p.state.left() : buttonLeft) - betweenColumns);
      p.note = QRect(left, body.bottom() + 1, right - left, line);
      break;
  }
  if (!extras.hasNote) p.note = {};
  if (extras.state == 0 && c.form != Form::oneLine) p.state = {};
  return p;
}

}  // namespace quorvane::RowLayout
