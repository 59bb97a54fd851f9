#pragma once

#include <QAbstractListModel>
#include <vector>

#include "app/log_entry.h"

namespace quorvane {

// The log as a list model: appends new entries and removes the oldest ones. Rows that stay keep
// their selection.
class LogModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { timeRole = Qt::UserRole, isErrorRole };

  using QAbstractListModel::QAbstractListModel;

  void show(const std::vector<LogEntry>& log);

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

  // "14:04:54  Saved 2 of 3; …".
  QString copyText(const QModelIndex& index) const;

 private:
  std::vector<LogEntry> entries_;
};

}  // namespace quorvane
