#include "history/history_coding.h"

#include <gtest/gtest.h>

#include "tests/history/history_samples.h"

namespace quorvane {
namespace {

using P = TuningParameter;

std::string textOf(const HistoryRecord& record) {
  std::string text = recordLine(record);
  if (record.outcome) text += outcomeLine(record.id, *record.outcome);
  return text;
}

TEST(HistoryCoding, ARecordIsOneLineAndItsOutcomeTheNext) {
  HistoryRecord record = sampleRecord(65, 80);
  record.id = UUID::parse("01234567-89AB-CDEF-0123-456789ABCDEF").value();
  record.detail = "GT7";
  record.outcome->error = "gone";
  record.outcome->menu.reset();
  EXPECT_EQ(
      textOf(record),
      R"({"id":"01234567-89AB-CDEF-0123-456789ABCDEF","time":"1970-01-01T00:00:00Z",)"
      R"("program":"quorvanectl","base":"CSL DD","productID":32,"action":"set","detail":"GT7",)"
      R"("set":2,"mode":"standard","menu":")" +
          record.menu->hexDump() +
          R"(","values":{"SEN":900,"FF":65,"SHO":100,"BLI":101,"FFS":1,"FOR":100,"SPR":100,)"
          R"("DPR":50,"NDP":25,"NFR":10,"brF":50,"FEI":100,"ACP":1,"INT":11,"NIN":5,"FUL":0},)"
          R"("wanted":{"FF":80}})"
          "\n"
          R"({"record":"01234567-89AB-CDEF-0123-456789ABCDEF","results":[{"parameter":"FF",)"
          R"("was":65,"wanted":80,"readBack":80,"milliseconds":250}],"error":"gone"})"
          "\n");
}

TEST(HistoryCoding, WhatWasWrittenIsReadAgain) {
  std::vector<HistoryRecord> records;
  std::string text;
  const auto add = [&](const HistoryRecord& record) {
    records.push_back(record);
    text += textOf(record);
  };
  add(sampleRecord(65, 80));
  add(sampleReversal(HistoryAction::undo, records.front()));
  HistoryRecord bare;
  bare.id = UUID::random();
  bare.action = HistoryAction::raw;
  bare.detail = "ff \"\n\x01\u00e9";
  add(bare);
  HistoryRecord failed = sampleRecord(65, 80);
  failed.outcome->values = {{P::forceFeedback, {}, 80, {}, 0, "timed out"}};
  failed.outcome->menu.reset();
  add(failed);
  EXPECT_EQ(decodeHistory(text), (HistoryContents{records, 0}));
}

TEST(HistoryCoding, EveryActionHasItsWord) {
  for (int i = 0; i <= static_cast<int>(HistoryAction::wheel); ++i) {
    const auto action = static_cast<HistoryAction>(i);
    EXPECT_EQ(historyAction(rawValue(action)), action);
  }
  EXPECT_EQ(historyAction("Save"), std::nullopt);
}

TEST(HistoryCoding, LinesThatCannotBeReadAreSkippedAndCounted) {
  const HistoryRecord record = sampleRecord(65, 80);
  const std::string line = recordLine(record);
  const std::string outcome = outcomeLine(record.id, *record.outcome);
  HistoryRecord begun = record;
  begun.outcome.reset();
  struct Case {
    std::string text;
    std::vector<HistoryRecord> records;
    std::size_t skipped;
  };
  const std::vector<Case> cases{
      {"", {}, 0},
      {"\n\n", {}, 0},
      {line.substr(0, line.size() - 1), {begun}, 0},
      {line.substr(0, 100), {}, 1},
      {line.substr(0, 100) + "\n" + line + outcome, {record}, 1},
      {line + outcome.substr(0, 60), {begun}, 1},
      {line + outcome.substr(0, 60) + "\n" + outcome, {record}, 1},
      {outcome, {}, 0},  // of a record that was removed
      {"[]\n{}\n7\n\xff\n{\"id\":1}\n", {}, 5},
      {R"({"record":"x","results":[]})", {}, 1},
  };
  for (const auto& [text, records, skipped] : cases) {
    EXPECT_EQ(decodeHistory(text), (HistoryContents{records, skipped})) << text;
  }
}

}  // namespace
}  // namespace quorvane
