#pragma once

#include <QStyledItemDelegate>

namespace quorvane {

// Draws an entry of the log: the time in a column of its own, a triangle for an error, and the
// wrapped text.
class LogDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit LogDelegate(QObject* parent = nullptr);

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  QRect textBox(const QStyleOptionViewItem& option) const;

  const QString longestTime_;
};

}  // namespace quorvane
