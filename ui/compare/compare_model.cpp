#include "ui/compare/compare_model.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "ui/kit/plain_text.h"

namespace quorvane {

void CompareModel::show(std::vector<CompareLine> lines) {
  all_ = std::move(lines);
  list();
}

void CompareModel::setOnlyDifferent(bool isOnly) {
  isOnlyDifferent_ = isOnly;
  list();
}

void CompareModel::resetTicks() {
  unticked_.clear();
  list();
}

void CompareModel::tickAll(bool isTicked) {
  for (const CompareLine& line : all_) {
    if (!line.isTickable) continue;
    if (isTicked) {
      unticked_.remove(line.code);
    } else {
      unticked_.insert(line.code);
    }
  }
  list();
  emit ticksChanged();
}

bool CompareModel::isTickable() const {
  return std::any_of(all_.begin(), all_.end(),
                     [](const CompareLine& line) { return line.isTickable; });
}

Qt::CheckState CompareModel::allTicked() const {
  const auto tickable = std::count_if(all_.begin(), all_.end(),
                                      [](const CompareLine& line) { return line.isTickable; });
  const auto count = ticked().size();
  if (count == 0) return Qt::Unchecked;
  return count == tickable ? Qt::Checked : Qt::PartiallyChecked;
}

QStringList CompareModel::ticked() const {
  QStringList codes;
  for (const CompareLine& line : all_) {
    if (line.isTicked) codes += line.code;
  }
  return codes;
}

// Keeps the rows, and with them the current one, if the same settings are shown.
void CompareModel::list() {
  for (CompareLine& line : all_) {
    line.isTicked = line.isTickable && !unticked_.contains(line.code);
  }
  std::vector<CompareLine> next;
  next.reserve(all_.size());
  std::copy_if(all_.begin(), all_.end(), std::back_inserter(next), [this](const CompareLine& line) {
    return !isOnlyDifferent_ || line.isTickable || line.isDifferent;
  });
  if (next == shown_) return;
  const bool hasSameRows =
      std::equal(next.begin(), next.end(), shown_.begin(), shown_.end(),
                 [](const CompareLine& a, const CompareLine& b) { return a.code == b.code; });
  if (!hasSameRows) beginResetModel();
  shown_ = std::move(next);
  if (!hasSameRows) {
    endResetModel();
  } else {
    emit dataChanged(index(0, 0), index(static_cast<int>(shown_.size()) - 1, 0));
  }
}

const CompareLine& CompareModel::line(const QModelIndex& index) const {
  return shown_[static_cast<std::size_t>(index.row())];
}

int CompareModel::rowOf(const QString& code) const {
  const auto found = std::find_if(shown_.begin(), shown_.end(),
                                  [&](const CompareLine& line) { return line.code == code; });
  return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

int CompareModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant CompareModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
  const CompareLine& shown = line(index);
  switch (role) {
    case Qt::DisplayRole:
      return shown.code;
    case Qt::AccessibleTextRole:
      return shown.spoken();
    case Qt::ToolTipRole:
      return PlainText::toolTip(shown.spoken());
    case Qt::CheckStateRole:
      if (!shown.isTickable) return {};
      return shown.isTicked ? Qt::Checked : Qt::Unchecked;
    default:
      return {};
  }
}

bool CompareModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return false;
  }
  const QString code = line(index).code;
  if (!line(index).isTickable) return false;
  if (value.toInt() == Qt::Checked) {
    unticked_.remove(code);
  } else {
    unticked_.insert(code);
  }
  list();
  emit ticksChanged();
  return true;
}

Qt::ItemFlags CompareModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (index.isValid() && line(index).isTickable) flags |= Qt::ItemIsUserCheckable;
  return flags;
}

}  // namespace quorvane
