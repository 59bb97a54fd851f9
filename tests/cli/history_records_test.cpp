#include "cli/history_records.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvane {
namespace {

constexpr const char* oneRecord = "11111111-2222-4333-8444-AAAAAAAAAAAA";
constexpr const char* anotherRecord = "11111122-2222-4333-8444-AAAAAAAAAAAA";

HistoryContents twoRecords() {
  HistoryContents contents;
  for (const char* const id : {oneRecord, anotherRecord}) {
    HistoryRecord record;
    record.id = UUID::parse(id).value();
    contents.records.push_back(record);
  }
  return contents;
}

// The text of the error, up to the times.
std::string refusalOf(const std::string& id) {
  try {
    recordWithID(twoRecords(), id);
  } catch (const UsageError& error) {
    return error.what();
  }
  return "found";
}

TEST(HistoryRecords, AnIDOrItsBeginningNamesARecord) {
  EXPECT_EQ(recordWithID(twoRecords(), oneRecord).id.text(), oneRecord);
  EXPECT_EQ(recordWithID(twoRecords(), "1111112").id.text(), anotherRecord);
  EXPECT_EQ(recordWithID(twoRecords(), "11111111-2222-4333-8444-aaaaaaaaaaaa").id.text(),
            oneRecord);
}

TEST(HistoryRecords, AnUnknownIDIsRefused) {
  for (const char* const id : {"", "2", "11111111-2222-4333-8444-AAAAAAAAAAAAA"}) {
    EXPECT_EQ(refusalOf(id), "No write in the history of this base has the ID \"" +
                                 std::string(id) + "\" (see quorvanectl history)");
  }
}

TEST(HistoryRecords, AnAmbiguousBeginningIsRefusedWithTheIDs) {
  const std::string refusal = refusalOf("111111");
  EXPECT_TRUE(
      refusal.starts_with("2 writes in the history have an ID that begins with "
                          "\"111111\". Name one of them:\n"
                          "  11111111-2222-4333-8444-aaaaaaaaaaaa  "))
      << refusal;
  EXPECT_NE(refusal.find("\n  11111122-2222-4333-8444-aaaaaaaaaaaa  "), std::string::npos)
      << refusal;
}

}  // namespace
}  // namespace quorvane
