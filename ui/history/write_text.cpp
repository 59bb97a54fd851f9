#include "ui/history/write_text.h"

#include <QLocale>
#include <QStringList>
#include <algorithm>

#include "app/messages.h"
#include "protocol/menu_text.h"
#include "support/text.h"
#include "ui/kit/text.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

const std::vector<ValueReceipt>& writtenValues(const AppModel::LastWrite& write) {
  static const std::vector<ValueReceipt> none;
  return write.record.outcome ? write.record.outcome->values : none;
}

QString writeValue(TuningParameter parameter, std::optional<std::int64_t> value,
                   const HistoryRecord& record) {
  return value ? text(MenuText::shortText(parameter, *value, record.product())) : QString();
}

ReceiptLine receiptLineOf(const ValueReceipt& receipt, const HistoryRecord& record) {
  const TuningParameter parameter = receipt.parameter;
  return {text(parameter.code()),
          text(parameter.title()),
          writeValue(parameter, receipt.was, record),
          writeValue(parameter, receipt.wanted, record),
          writeValue(parameter, receipt.readBack, record),
          QStringLiteral("%1 ms").arg(receipt.milliseconds),
          receipt.error ? ReceiptLine::Result::notTaken : ReceiptLine::Result::taken,
          receipt.error ? text(oneLine(*receipt.error)) : QString()};
}

ReceiptLine receiptLineOf(const ValueLeftAlone& left, const HistoryRecord& record) {
  return {text(left.parameter.code()),
          text(left.parameter.title()),
          writeValue(left.parameter, left.written, record),
          {},
          writeValue(left.parameter, left.present, record),
          {},
          ReceiptLine::Result::leftAlone,
          QStringLiteral("It was changed since.")};
}

// "set C (Custom)", where the values are now.
QString setOfWrite(const HistoryRecord& record) {
  const auto& after = record.outcome ? record.outcome->menu : std::nullopt;
  return QStringLiteral("set %1").arg(text(Messages::setName(after ? after : record.menu)));
}

// "3", or "2 of 3" if not all were taken.
QString takenText(const AppModel::LastWrite& write) {
  QString taken = QString::number(takenCount(write));
  if (allTaken(write)) return taken;
  return QStringLiteral("%1 of %2").arg(taken).arg(writtenValues(write).size());
}

QString historyNote(const AppModel::LastWrite& write) {
  if (!write.notInHistory) return QStringLiteral("Kept in the history.");
  return QStringLiteral("Not in the history: %1").arg(text(oneLine(*write.notInHistory)));
}

// "Undone" or "Redone", or how much of it.
QString reversalTitle(const AppModel::LastWrite& write, const QString& done) {
  if (writtenValues(write).empty()) return QStringLiteral("Nothing %1").arg(done.toLower());
  if (allTaken(write)) return done;
  return QStringLiteral("%1 %2").arg(takenText(write), done.toLower());
}

}  // namespace

std::vector<ReceiptLine> receiptLines(const AppModel::LastWrite& write) {
  std::vector<ReceiptLine> lines;
  lines.reserve(writtenValues(write).size() + write.leftAlone.size());
  for (const ValueReceipt& receipt : writtenValues(write)) {
    lines.push_back(receiptLineOf(receipt, write.record));
  }
  for (const ValueLeftAlone& left : write.leftAlone)
    lines.push_back(receiptLineOf(left, write.record));
  return lines;
}

QString resultText(ReceiptLine::Result result) {
  switch (result) {
    case ReceiptLine::Result::taken:
      return QStringLiteral("Taken");
    case ReceiptLine::Result::notTaken:
      return QStringLiteral("Not taken");
    case ReceiptLine::Result::leftAlone:
      return QStringLiteral("Left alone");
  }
  return {};
}

QString spokenLine(const ReceiptLine& line) {
  QStringList parts{line.code, line.title};
  if (!line.was.isEmpty()) parts += QStringLiteral("was %1").arg(line.was);
  if (!line.wanted.isEmpty()) parts += QStringLiteral("wanted %1").arg(line.wanted);
  if (!line.readBack.isEmpty()) parts += QStringLiteral("read back %1").arg(line.readBack);
  if (!line.time.isEmpty()) parts += line.time;
  parts += resultText(line.result).toLower();
  const QString sentence = parts.join(QStringLiteral(", "));
  return line.reason.isEmpty() ? sentence : QStringLiteral("%1: %2").arg(sentence, line.reason);
}

QString receiptSummary(const AppModel::LastWrite& write) {
  const auto& receipts = writtenValues(write);
  double milliseconds = 0;
  for (const ValueReceipt& receipt : receipts) {
    milliseconds += static_cast<double>(receipt.milliseconds);
  }
  QString told = QStringLiteral("%1 of %2 taken in %3 s")
                     .arg(takenCount(write))
                     .arg(receipts.size())
                     .arg(QLocale::c().toString(milliseconds / 1000, 'f', 1));
  const std::size_t all = TuningParameter::adjustable(write.record.product()).size();
  if (all > receipts.size()) {
    const std::size_t others = all - receipts.size();
    told += others == 1 ? QStringLiteral(", 1 was left alone")
                        : QStringLiteral(", %1 were left alone").arg(others);
  }
  return QStringLiteral("%1. %2").arg(told, historyNote(write));
}

QString receiptText(const AppModel::LastWrite& write) {
  QStringList lines{QStringLiteral("%1, %2, %3")
                        .arg(writeTitle(write), text(oneLine(write.record.base)),
                             text(localTimeText(write.record.time)))};
  for (const ReceiptLine& line : receiptLines(write)) lines += spokenLine(line);
  lines += receiptSummary(write);
  return lines.join(u'\n');
}

std::size_t takenCount(const AppModel::LastWrite& write) {
  return static_cast<std::size_t>(std::ranges::count_if(
      writtenValues(write),
      [](const ValueReceipt& receipt) { return !receipt.error.has_value(); }));
}

bool allTaken(const AppModel::LastWrite& write) {
  return takenCount(write) == writtenValues(write).size();
}

UndoDirection directionBack(const AppModel::LastWrite& write) {
  const bool wasUndone = write.record.action == HistoryAction::undo;
  const bool wasRedone = write.record.action == HistoryAction::redo;
  const bool leadsToRedo = allTaken(write) ? wasUndone : wasRedone;
  return leadsToRedo ? UndoDirection::redo : UndoDirection::undo;
}

QString writeTitle(const AppModel::LastWrite& write) {
  const HistoryRecord& record = write.record;
  if (record.action == HistoryAction::undo) return reversalTitle(write, QStringLiteral("Undone"));
  if (record.action == HistoryAction::redo) return reversalTitle(write, QStringLiteral("Redone"));
  const QString done =
      record.action == HistoryAction::apply ? QStringLiteral("Applied") : QStringLiteral("Saved");
  return QStringLiteral("%1 %2 to %3").arg(done, takenText(write), setOfWrite(record));
}

QString writeNote(const AppModel::LastWrite& write) {
  const HistoryRecord& record = write.record;
  QString note = shortTimeText(record.time);
  const bool isReversal = record.reverses.has_value();
  if (isReversal) {
    note = QStringLiteral("%1 in %2, %3")
               .arg(text(counted(takenCount(write), "value")), setOfWrite(record), note);
  }
  if (record.action == HistoryAction::apply) {
    note += QStringLiteral(" · \"%1\"").arg(text(oneLine(record.detail)));
  }
  if (!write.leftAlone.empty()) {
    QStringList left;
    for (const ValueLeftAlone& value : write.leftAlone) {
      left += QStringLiteral("%1 %2").arg(text(value.parameter.code()),
                                          writeValue(value.parameter, value.present, record));
    }
    note += QStringLiteral(" · left alone, changed since: %1").arg(left.join(QStringLiteral(", ")));
  }
  if (write.notInHistory) note += QStringLiteral(" · ") + historyNote(write);
  return note;
}

}  // namespace quorvane
