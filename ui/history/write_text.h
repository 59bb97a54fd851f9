#pragma once

#include <QString>
#include <vector>

#include "app/app_model.h"

// The texts about a write that has ended: those of its bar and of its receipt.
namespace quorvane {

// What became of one value. Texts are empty where there is nothing to say.
struct ReceiptLine {
  enum class Result { taken, notTaken, leftAlone };

  QString code;
  QString title;
  QString was;
  QString wanted;
  QString readBack;
  QString time;  // "262 ms"
  Result result = Result::taken;
  QString reason;  // of a value that was not taken
};

// The values that were tried, in their order, then those that were left alone.
std::vector<ReceiptLine> receiptLines(const AppModel::LastWrite& write);

// "Taken", "Not taken", "Left alone".
QString resultText(ReceiptLine::Result result);

// The line as a sentence: "FF, Force feedback strength, was 65 %, wanted 80 %, ...".
QString spokenLine(const ReceiptLine& line);

// "3 of 3 taken in 0.8 s, 13 were left alone. Kept in the history."
QString receiptSummary(const AppModel::LastWrite& write);

// The whole receipt, for people to paste elsewhere.
QString receiptText(const AppModel::LastWrite& write);

// Whether the base took all values that were tried.
bool allTaken(const AppModel::LastWrite& write);
std::size_t takenCount(const AppModel::LastWrite& write);

// What would take the write back.
UndoDirection directionBack(const AppModel::LastWrite& write);

// "Saved 3 to set C (Custom)", "Undone".
QString writeTitle(const AppModel::LastWrite& write);

// The time, then what the title does not say.
QString writeNote(const AppModel::LastWrite& write);

}  // namespace quorvane
