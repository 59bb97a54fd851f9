#include "ui/log/log_model.h"

#include <algorithm>

#include "support/text.h"
#include "ui/kit/text.h"
#include "ui/model/time_text.h"

namespace quorvane {

void LogModel::show(const std::vector<LogEntry>& log) {
  const auto firstKept =
      log.empty() ? entries_.end()
                  : std::find_if(entries_.begin(), entries_.end(),
                                 [&](const LogEntry& entry) { return entry.id == log.front().id; });
  const auto dropped = static_cast<int>(firstKept - entries_.begin());
  if (dropped > 0) {
    beginRemoveRows({}, 0, dropped - 1);
    entries_.erase(entries_.begin(), firstKept);
    endRemoveRows();
  }
  if (entries_.size() == log.size()) return;
  const auto before = static_cast<int>(entries_.size());
  beginInsertRows({}, before, static_cast<int>(log.size()) - 1);
  entries_.insert(entries_.end(), log.begin() + before, log.end());
  endInsertRows();
}

int LogModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant LogModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const LogEntry& entry = entries_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return text(oneLine(entry.text));
    case timeRole:
      return timeText(entry.time);
    case isErrorRole:
      return entry.isError;
    case copyRole:
      return QStringLiteral("%1  %2").arg(timeText(entry.time), text(oneLine(entry.text)));
    case Qt::AccessibleTextRole:
      return QStringLiteral("%1, %2%3")
          .arg(timeText(entry.time), entry.isError ? QStringLiteral("error, ") : QString(),
               text(oneLine(entry.text)));
    default:
      return {};
  }
}

LogFilter::LogFilter(LogModel* lines) : QSortFilterProxyModel(lines) { setSourceModel(lines); }

void LogFilter::setErrorsOnly(bool errorsOnly) {
  errorsOnly_ = errorsOnly;
  invalidateFilter();
}

bool LogFilter::filterAcceptsRow(int row, const QModelIndex& parent) const {
  return !errorsOnly_ || sourceModel()->index(row, 0, parent).data(LogModel::isErrorRole).toBool();
}

}  // namespace quorvane
