#include "ui/history/history_choice.h"

#include <QDate>

#include "history/undo_plan.h"
#include "ui/history/history_entry.h"
#include "ui/kit/text.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

// "14:02", "22:10 yesterday", "20:15, Sunday, 16 November 2025".
QString momentOf(const HistoryRecord& record) {
  QString time = shortTimeText(record.time);
  const QDate day = dayOf(record);
  const QDate today = QDate::currentDate();
  if (day == today) return time;
  if (day == today.addDays(-1)) return QStringLiteral("%1 yesterday").arg(time);
  return QStringLiteral("%1, %2").arg(time, historyDay(day, today));
}

}  // namespace

QString historyChoice(const HistoryRecord& record, const std::optional<TuningSnapshot>& menu) {
  QString back = QStringLiteral("Back to before %1").arg(momentOf(record));
  if (!record.menu) return QStringLiteral("The values before this are not known");
  if (!menu || isOfSameSet(record, *menu)) return back;
  return QStringLiteral("%1, with the values of set %2").arg(back, text(record.menu->setName()));
}

TuningPreset presetBefore(const HistoryRecord& record,
                          const std::optional<FanatecProduct>& product) {
  const QString name = QStringLiteral("before %1").arg(momentOf(record));
  return TuningPreset::capture(product, text(name), record.menu.value());
}

StagedValues editsBackTo(const HistoryRecord& record, const std::optional<TuningSnapshot>& menu,
                         const std::optional<FanatecProduct>& product) {
  StagedValues edits;
  for (const ParameterValue& value : presetBefore(record, product).applicable(product)) {
    if (!isCurrentValue(value, menu, product)) edits[value.parameter] = value.value;
  }
  return edits;
}

}  // namespace quorvane
