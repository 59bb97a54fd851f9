#include "ui/history/history_entry.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>
#include <algorithm>

#include "protocol/menu_text.h"
#include "support/text.h"
#include "ui/kit/text.h"
#include "ui/model/menu_text.h"

namespace quorvane {
namespace {

QString entryAmount(std::size_t count) { return text(counted(count, "value")); }

// "set C (Custom)"; empty for a menu that is not known.
QString entryPlace(const std::optional<TuningSnapshot>& menu) {
  return menu ? QStringLiteral("set %1").arg(text(menu->setName())) : QString();
}

// "3 values to set C (Custom)", for the preposition "to".
QString entryWithPlace(const QString& what, const char* preposition, const HistoryRecord& record) {
  const QString place = entryPlace(record.menu);
  if (place.isEmpty()) return what;
  return QStringLiteral("%1 %2 %3").arg(what, QLatin1String(preposition), place);
}

std::size_t entryTaken(const HistoryRecord& record) {
  if (!record.outcome) return record.wanted.size();
  const auto& values = record.outcome->values;
  return static_cast<std::size_t>(std::count_if(
      values.begin(), values.end(), [](const ValueReceipt& value) { return !value.error; }));
}

// "2 of 3 values to set C (Custom)".
QString entryWriteTitle(const HistoryRecord& record) {
  const std::size_t taken = entryTaken(record);
  const QString all = entryAmount(record.wanted.size());
  return entryWithPlace(
      taken == record.wanted.size() ? all : QStringLiteral("%1 of %2").arg(taken).arg(all), "to",
      record);
}

// "Switched to set 3".
QString entrySelectionTitle(const HistoryRecord& record) {
  return QStringLiteral("Switched to set %1").arg(text(oneLine(record.detail)));
}

QString entryModeTitle(const HistoryRecord& record) {
  if (!record.menu) return QStringLiteral("Switched the menu's mode");
  return QStringLiteral("Switched to the %1 menu")
      .arg(record.menu->isAdvancedMode() ? QStringLiteral("standard") : QStringLiteral("advanced"));
}

QString entryTitle(const HistoryRecord& record) {
  switch (record.action) {
    case HistoryAction::save:
    case HistoryAction::set:
      return entryWriteTitle(record);
    case HistoryAction::apply:
      return entryWithPlace(QStringLiteral("Applied \"%1\"").arg(text(oneLine(record.detail))),
                            "to", record);
    case HistoryAction::select:
      return entrySelectionTitle(record);
    case HistoryAction::mode:
      return entryModeTitle(record);
    case HistoryAction::factoryReset:
      return QStringLiteral("Factory reset, every set");
    case HistoryAction::rotation:
      return QStringLiteral("Steering angle of %1 deg").arg(text(oneLine(record.detail)));
    case HistoryAction::raw:
      return QStringLiteral("Packet %1").arg(text(oneLine(record.detail)));
    case HistoryAction::undo:
      return entryWithPlace(QStringLiteral("Undid %1").arg(entryAmount(entryTaken(record))), "in",
                            record);
    case HistoryAction::redo:
      return entryWithPlace(QStringLiteral("Redid %1").arg(entryAmount(entryTaken(record))), "in",
                            record);
    case HistoryAction::wheel:
      return record.menu ? QStringLiteral("Turned on the wheel, %1").arg(entryPlace(record.menu))
                         : QStringLiteral("Turned on the wheel");
  }
  Q_UNREACHABLE();
}

// The command of quorvanectl for the action.
QString entryCommand(HistoryAction action) {
  if (action == HistoryAction::apply) return QStringLiteral("presets apply");
  if (action == HistoryAction::factoryReset) return QStringLiteral("factory-reset");
  return text(rawValue(action));
}

QString entryWho(const HistoryRecord& record) {
  if (record.action == HistoryAction::wheel) return QStringLiteral("the base");
  if (record.program == "quorvane") return QStringLiteral("this window");
  QString program = text(oneLine(record.program));
  if (record.program != "quorvanectl") return program;
  return QStringLiteral("%1 %2").arg(program, entryCommand(record.action));
}

QString entryValue(TuningParameter parameter, std::int64_t value, const HistoryRecord& record) {
  return text(MenuText::presetText(parameter, value, record.product()));
}

// "65 → 80"; "→ 80" when the value before is not known.
QString entryChange(TuningParameter parameter, std::optional<std::int64_t> was, std::int64_t wanted,
                    const HistoryRecord& record) {
  const QString then = QStringLiteral("→ ") + entryValue(parameter, wanted, record);
  return was ? entryValue(parameter, *was, record) + QLatin1Char(' ') + then : then;
}

std::vector<HistoryEntry::Value> entryValues(const HistoryRecord& record) {
  std::vector<HistoryEntry::Value> values;
  if (!record.outcome) {
    values.reserve(record.wanted.size());
    for (const auto& [parameter, value] : record.wanted) {
      values.push_back(
          {text(parameter.code()), entryChange(parameter, std::nullopt, value, record), true});
    }
    return values;
  }
  values.reserve(record.outcome->values.size());
  for (const ValueReceipt& value : record.outcome->values) {
    if (!value.error && value.was == value.wanted) continue;
    values.push_back({text(value.parameter.code()),
                      value.error ? QStringLiteral("not taken")
                                  : entryChange(value.parameter, value.was, value.wanted, record),
                      !value.error});
  }
  return values;
}

// "16 values of set C kept here".
QString entryNote(const HistoryRecord& record) {
  if (!record.menu) return {};
  return QStringLiteral("%1 of %2 kept here")
      .arg(entryAmount(TuningParameter::adjustable(record.product()).size()),
           shortSetName(*record.menu));
}

QString entryTrouble(const HistoryRecord& record) {
  if (!record.outcome) return QStringLiteral("Cut short: what became of it is not known");
  return record.outcome->error ? text(oneLine(*record.outcome->error)) : QString();
}

}  // namespace

HistoryEntry historyEntry(const HistoryRecord& record) {
  HistoryEntry entry{
      entryTitle(record), entryWho(record), entryValues(record), {}, entryTrouble(record)};
  if (entry.values.empty()) entry.note = entryNote(record);
  return entry;
}

QString historyLine(const HistoryEntry& entry) {
  QStringList parts{entry.title};
  for (const HistoryEntry::Value& value : entry.values) {
    parts += value.code + QLatin1Char(' ') + value.change;
  }
  for (const QString& rest : {entry.note, entry.trouble, entry.who}) {
    if (!rest.isEmpty()) parts += rest;
  }
  return parts.join(QStringLiteral(", "));
}

QString historyDay(QDate day, QDate today) {
  if (day == today) return QStringLiteral("Today");
  if (day == today.addDays(-1)) return QStringLiteral("Yesterday");
  return QLocale().toString(day, QLocale::LongFormat);
}

QDate dayOf(const HistoryRecord& record) {
  return QDateTime::fromSecsSinceEpoch(record.time.time_since_epoch().count()).date();
}

}  // namespace quorvane
