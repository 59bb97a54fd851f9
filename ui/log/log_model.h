#pragma once

#include <QAbstractListModel>
#include <QSortFilterProxyModel>
#include <vector>

#include "app/log.h"

namespace quorvane {

// The log as a list model: appends new entries and removes the oldest ones. Rows that stay keep
// their selection.
class LogModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  // A line to copy is "14:04:54  Saved 2 of 3; …".
  enum Role { timeRole = Qt::UserRole, isErrorRole, copyRole };

  using QAbstractListModel::QAbstractListModel;

  void show(const std::vector<LogEntry>& log);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::vector<LogEntry> entries_;
};

// The lines of a LogModel, or its errors only.
class LogFilter final : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  explicit LogFilter(LogModel* lines);

  void setErrorsOnly(bool errorsOnly);

 protected:
  bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

 private:
  bool errorsOnly_ = false;
};

}  // namespace quorvane
