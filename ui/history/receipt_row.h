#pragma once

#include <QWidget>
#include <vector>

#include "ui/history/write_text.h"

namespace quorvane {

// The widths of a receipt's columns, for the widest texts of its lines and its headings.
struct ReceiptColumns {
  int code = 0;
  int title = 0;
  int was = 0;
  int wanted = 0;
  int readBack = 0;
  int time = 0;
  int result = 0;

  static ReceiptColumns fitting(const std::vector<ReceiptLine>& lines);

  // Of all columns with the gaps and margins of a row.
  int width() const;
};

// One line of a receipt, or the headings of its columns.
class ReceiptRow final : public QWidget {
  Q_OBJECT

 public:
  // Without a line, a row of headings.
  explicit ReceiptRow(const ReceiptLine* line, QWidget* parent = nullptr);

  // In a narrower row the title is elided.
  void setColumns(const ReceiptColumns& columns);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintHeadings(QPainter& painter);
  void paintLine(QPainter& painter);
  void paintResult(QPainter& painter, const QRect& rect);

  const bool isHeading_;
  const ReceiptLine line_;
  ReceiptColumns columns_;
};

}  // namespace quorvane
