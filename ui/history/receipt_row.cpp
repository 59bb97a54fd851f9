#include "ui/history/receipt_row.h"

#include <QPainter>
#include <algorithm>
#include <array>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int receiptGap = 16;
constexpr int receiptMargin = 20;
constexpr int receiptRowHeight = 32;
constexpr int receiptHeadHeight = 28;
constexpr int receiptPlatePadding = 8;
constexpr int leastReceiptPlate = 38;
constexpr int receiptPlateHeight = 18;
constexpr int resultSymbol = 14;
constexpr int resultSymbolGap = 5;

const std::array<QString, 7>& receiptHeadings() {
  static const std::array<QString, 7> all{QStringLiteral("Code"),      QStringLiteral("Setting"),
                                          QStringLiteral("Was"),       QStringLiteral("Wanted"),
                                          QStringLiteral("Read back"), QStringLiteral("Time"),
                                          QStringLiteral("Result")};
  return all;
}

int receiptAdvance(Metrics::Type type, const QString& words) {
  return QFontMetrics(Metrics::font(type)).horizontalAdvance(words) + 1;
}

// The places of the columns in a row of this width. The title has what the others leave.
std::array<QRect, 7> receiptCells(const ReceiptColumns& columns, int width, int height) {
  const int title = columns.title + width - columns.width();
  const std::array<int, 7> widths{columns.code,     title,        columns.was,   columns.wanted,
                                  columns.readBack, columns.time, columns.result};
  std::array<QRect, 7> cells;
  int left = receiptMargin;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    cells[i] = QRect(left, 0, widths[i], height);
    left += widths[i] + receiptGap;
  }
  return cells;
}

void writeReceiptCell(QPainter& painter, const QRect& rect, const QString& words,
                      Metrics::Type type, const QColor& ink) {
  const QFont font = Metrics::font(type);
  painter.setFont(font);
  painter.setPen(ink);
  painter.drawText(rect, Qt::AlignVCenter | Qt::TextSingleLine,
                   QFontMetrics(font).elidedText(words, Qt::ElideRight, rect.width()));
}

}  // namespace

ReceiptColumns ReceiptColumns::fitting(const std::vector<ReceiptLine>& lines) {
  const auto heading = [](std::size_t column) {
    return receiptAdvance(Metrics::Type::caption, receiptHeadings()[column]);
  };
  ReceiptColumns columns{std::max(leastReceiptPlate, heading(0)),
                         heading(1),
                         heading(2),
                         heading(3),
                         heading(4),
                         heading(5),
                         heading(6)};
  const auto widen = [](int& column, int width) { column = std::max(column, width); };
  for (const ReceiptLine& line : lines) {
    widen(columns.code, receiptAdvance(Metrics::Type::fixed, line.code) + 2 * receiptPlatePadding);
    widen(columns.title, receiptAdvance(Metrics::Type::body, line.title));
    widen(columns.was, receiptAdvance(Metrics::Type::body, line.was));
    widen(columns.wanted, receiptAdvance(Metrics::Type::value, line.wanted));
    widen(columns.readBack, receiptAdvance(Metrics::Type::value, line.readBack));
    widen(columns.time, receiptAdvance(Metrics::Type::body, line.time));
    widen(columns.result, resultSymbol + resultSymbolGap +
                              receiptAdvance(Metrics::Type::body, resultText(line.result)));
  }
  return columns;
}

int ReceiptColumns::width() const {
  return code + title + was + wanted + readBack + time + result + 6 * receiptGap +
         2 * receiptMargin;
}

ReceiptRow::ReceiptRow(const ReceiptLine* line, QWidget* parent)
    : QWidget(parent), isHeading_(line == nullptr), line_(line != nullptr ? *line : ReceiptLine()) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  if (isHeading_) return;
  setObjectName(line_.code + QStringLiteral("Receipt"));
  setAccessibleName(spokenLine(line_));
  PlainText::setToolTip(*this, line_.reason);
}

void ReceiptRow::setColumns(const ReceiptColumns& columns) {
  columns_ = columns;
  update();
}

QSize ReceiptRow::sizeHint() const {
  const int height = isHeading_ ? receiptHeadHeight : receiptRowHeight;
  return {0, Metrics::atLeast(height, Metrics::font(Metrics::Type::body))};
}

void ReceiptRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (isHeading_) {
    paintHeadings(painter);
  } else {
    paintLine(painter);
  }
}

void ReceiptRow::paintHeadings(QPainter& painter) {
  const auto cells = receiptCells(columns_, width(), height());
  for (std::size_t i = 0; i < cells.size(); ++i) {
    writeReceiptCell(painter, visualRect(*this, cells[i]), receiptHeadings()[i],
                     Metrics::Type::caption, theme().ink2);
  }
  drawEdge(painter, rect(), Qt::BottomEdge, theme().line);
}

void ReceiptRow::paintLine(QPainter& painter) {
  const Theme& t = theme();
  const bool isTaken = line_.result != ReceiptLine::Result::notTaken;
  if (!isTaken) painter.fillRect(rect(), t.errorGround);
  drawEdge(painter, rect(), Qt::BottomEdge, t.hairline);
  auto cells = receiptCells(columns_, width(), height());
  for (QRect& cell : cells) cell = visualRect(*this, cell);
  const int high = Metrics::atLeast(receiptPlateHeight, Metrics::font(Metrics::Type::fixed));
  const QRect plate(cells[0].left(), (height() - high) / 2, cells[0].width(), high);
  drawBox(painter, plate, Metrics::plateRadius, isTaken ? t.well : t.errorPlate, QColor());
  painter.setFont(Metrics::font(Metrics::Type::fixed));
  painter.setPen(isTaken ? t.ink2 : t.error);
  painter.drawText(plate, Qt::AlignCenter, line_.code);
  writeReceiptCell(painter, cells[1], line_.title, Metrics::Type::body, t.ink);
  writeReceiptCell(painter, cells[2], line_.was, Metrics::Type::body, t.ink2);
  writeReceiptCell(painter, cells[3], line_.wanted, Metrics::Type::value, t.ink);
  writeReceiptCell(painter, cells[4], line_.readBack, Metrics::Type::value, t.ink);
  writeReceiptCell(painter, cells[5], line_.time, Metrics::Type::body, t.ink2);
  paintResult(painter, cells[6]);
}

void ReceiptRow::paintResult(QPainter& painter, const QRect& rect) {
  const Theme& t = theme();
  const bool isLeft = line_.result == ReceiptLine::Result::leftAlone;
  const bool isTaken = line_.result == ReceiptLine::Result::taken;
  const QColor ink = isTaken ? t.okText : t.error;
  if (isLeft) {
    writeReceiptCell(painter, rect, resultText(line_.result), Metrics::Type::body, t.ink2);
    return;
  }
  const int beside = resultSymbol + resultSymbolGap;
  const bool isMirrored = isRightToLeft();
  const int left = isMirrored ? rect.right() + 1 - resultSymbol : rect.left();
  drawSymbol(
      painter, QPointF(left, rect.top() + (rect.height() - resultSymbol) / 2.0),
      isTaken ? QStringLiteral("checkmark") : QStringLiteral("exclamationmark.triangle.fill"),
      resultSymbol, ink);
  writeReceiptCell(painter, rect.adjusted(isMirrored ? 0 : beside, 0, isMirrored ? -beside : 0, 0),
                   resultText(line_.result), Metrics::Type::body, ink);
}

}  // namespace quorvane
