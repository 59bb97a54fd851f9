#pragma once

#include <QStyledItemDelegate>

namespace quorvane {

// Draws a row of a HistoryListModel: the caption of a day; or a record with its time in a column of
// its own, what and where, who, and below it the values, in as many lines as they need.
class HistoryDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace quorvane
