#pragma once

#include <QAbstractListModel>
#include <optional>
#include <vector>

#include "history/history_record.h"
#include "session/menu_place.h"

namespace quorvane {

// The records of a history, the newest first: each day's under a caption that cannot be chosen.
// Texts are made for the rows that are shown only. Rows that stay keep their selection.
class HistoryListModel final : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  // Shows the records, the oldest first; with a place only those of its set and mode.
  void show(const std::vector<HistoryRecord>& records, const std::optional<MenuPlace>& ofSet = {});

  // The record of a row; null for a caption.
  const HistoryRecord* record(const QModelIndex& index) const;

  // The row of the record, else the newest one; invalid without records.
  QModelIndex rowOf(const std::optional<UUID>& record) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  // A record or a caption.
  struct Row {
    std::optional<HistoryRecord> record;
    QString caption;

    bool isOf(const Row& other) const;
  };

  static std::vector<Row> rowsOf(const std::vector<HistoryRecord>& records,
                                 const std::optional<MenuPlace>& ofSet);

  std::vector<Row> rows_;
};

}  // namespace quorvane
