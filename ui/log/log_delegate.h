#pragma once

#include <QStyledItemDelegate>

namespace quorvane {

// Draws an entry of the log: the time, a triangle for an error, and the wrapped text.
class LogDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace quorvane
