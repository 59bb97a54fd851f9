#pragma once

#include <QStyledItemDelegate>

namespace quorvane {

struct CompareColumns;
struct CompareLine;
struct CompareValue;

// Draws a row of a CompareModel. A click on its box, or Space, ticks it.
class CompareDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  // The property of the list that shows the ring around the row with the focus.
  static constexpr const char* showsFocus = "showsFocus";

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 protected:
  bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

}  // namespace quorvane
