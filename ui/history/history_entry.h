#pragma once

#include <QDate>
#include <QString>
#include <vector>

#include "history/history_record.h"

namespace quorvane {

// What the window shows of a record of the history, besides its time.
struct HistoryEntry {
  struct Value {
    QString code;    // "FF"
    QString change;  // "65 → 80", or "not taken"
    bool isTaken = true;
  };

  QString title;              // what and where: "3 values to set C (Custom)"
  QString who;                // "this window", "quorvanectl set", "the base"
  std::vector<Value> values;  // that were tried and changed something, or were not taken
  QString note;               // without values: what else the record holds
  QString trouble;            // why it ended early; empty if it did not
};

HistoryEntry historyEntry(const HistoryRecord& record);

// The entry in one line, for screen readers and tooltips.
QString historyLine(const HistoryEntry& entry);

// "Today", "Yesterday", or the date as the locale writes it.
QString historyDay(QDate day, QDate today);

// The local date of a record.
QDate dayOf(const HistoryRecord& record);

}  // namespace quorvane
