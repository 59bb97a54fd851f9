#include "ui/history/history_list_model.h"

#include <QDate>
#include <algorithm>
#include <iterator>
#include <utility>

#include "ui/history/history_entry.h"
#include "ui/kit/plain_text.h"
#include "ui/model/time_text.h"

namespace quorvane {

bool HistoryListModel::Row::isOf(const Row& other) const {
  if (record.has_value() != other.record.has_value()) return false;
  return record ? record->id == other.record->id : caption == other.caption;
}

std::vector<HistoryListModel::Row> HistoryListModel::rowsOf(
    const std::vector<HistoryRecord>& records, const std::optional<MenuPlace>& ofSet) {
  std::vector<Row> rows;
  rows.reserve(records.size());
  const QDate today = QDate::currentDate();
  QDate day;
  std::for_each(records.rbegin(), records.rend(), [&](const HistoryRecord& record) {
    if (ofSet && !(record.menu && MenuPlace(*record.menu) == *ofSet)) return;
    if (const QDate its = dayOf(record); its != day) {
      day = its;
      rows.push_back({std::nullopt, historyDay(day, today)});
    }
    rows.push_back({record, {}});
  });
  return rows;
}

// New records are at the top and old ones leave at the end: what both lists end with stays, unless
// the oldest rows are gone.
void HistoryListModel::show(const std::vector<HistoryRecord>& records,
                            const std::optional<MenuPlace>& ofSet) {
  std::vector<Row> rows = rowsOf(records, ofSet);
  const auto [newEnd, oldEnd] =
      std::mismatch(rows.rbegin(), rows.rend(), rows_.rbegin(), rows_.rend(),
                    [](const Row& a, const Row& b) { return a.isOf(b); });
  const auto removed = static_cast<int>(std::distance(oldEnd, rows_.rend()));
  const auto added = static_cast<int>(std::distance(newEnd, rows.rend()));
  if (removed > 0) {
    beginRemoveRows({}, 0, removed - 1);
    rows_.erase(rows_.begin(), rows_.begin() + removed);
    endRemoveRows();
  }
  if (added > 0) {
    beginInsertRows({}, 0, added - 1);
    rows_ = std::move(rows);
    endInsertRows();
    return;
  }
  if (rows.empty()) return;
  rows_ = std::move(rows);
  emit dataChanged(index(0), index(static_cast<int>(rows_.size()) - 1));
}

const HistoryRecord* HistoryListModel::record(const QModelIndex& index) const {
  if (!index.isValid()) return nullptr;
  const auto& record = rows_[static_cast<std::size_t>(index.row())].record;
  return record ? &*record : nullptr;
}

QModelIndex HistoryListModel::rowOf(const std::optional<UUID>& record) const {
  const auto wanted = std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) {
    return row.record && record && row.record->id == *record;
  });
  const auto row =
      wanted != rows_.end() ? wanted : std::find_if(rows_.begin(), rows_.end(), [](const Row& any) {
        return any.record.has_value();
      });
  return row == rows_.end() ? QModelIndex() : index(static_cast<int>(row - rows_.begin()));
}

int HistoryListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant HistoryListModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const HistoryRecord* const its = record(index);
  const QString& caption = rows_[static_cast<std::size_t>(index.row())].caption;
  switch (role) {
    case Qt::DisplayRole:
      return its == nullptr ? caption : historyEntry(*its).title;
    case Qt::ToolTipRole:
      return its == nullptr ? QVariant() : PlainText::toolTip(historyLine(historyEntry(*its)));
    case Qt::AccessibleTextRole:
      if (its == nullptr) return caption;
      return QStringLiteral("%1, %2").arg(shortTimeText(its->time),
                                          historyLine(historyEntry(*its)));
    default:
      return {};
  }
}

Qt::ItemFlags HistoryListModel::flags(const QModelIndex& index) const {
  return record(index) == nullptr ? Qt::ItemNeverHasChildren : QAbstractListModel::flags(index);
}

}  // namespace quorvane
