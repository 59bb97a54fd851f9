#pragma once

#include <QAbstractListModel>
#include <QSet>
#include <vector>

#include "ui/compare/compare_line.h"

namespace quorvane {

// The rows of a comparison as a list model. A row whose right value can be filled in has a tick, at
// first set; it keeps its state while the values change, also while the row is hidden.
class CompareModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  // The lines in their order; their ticks are ignored.
  void show(std::vector<CompareLine> lines);

  // Hides the rows that are the same on both sides, or that only the left one has.
  void setOnlyDifferent(bool isOnly);

  // Ticks every row again, also those to come. For another pair of sides.
  void resetTicks();
  void tickAll(bool isTicked);

  // Whether there is a row with a tick.
  bool isTickable() const;

  // Whether all rows with a tick have it set. Unchecked without such rows.
  Qt::CheckState allTicked() const;

  // The codes of the ticked rows, also of hidden ones.
  QStringList ticked() const;

  const CompareLine& line(const QModelIndex& index) const;

  // The row of the setting with this code; -1 if it is hidden or there is none.
  int rowOf(const QString& code) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
  // The user has set or cleared ticks.
  void ticksChanged();

 private:
  void list();

  std::vector<CompareLine> all_;
  std::vector<CompareLine> shown_;
  QSet<QString> unticked_;  // codes
  bool isOnlyDifferent_ = false;
};

}  // namespace quorvane
