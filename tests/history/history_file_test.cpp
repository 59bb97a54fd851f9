#include "history/history_file.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/error_text.h"
#include "tests/history/history_samples.h"
#include "tests/support/child_process.h"
#include "tests/support/file_calls.h"
#include "tests/support/ordinary_user.h"
#include "tests/support/temporary_directory.h"

namespace quorvane {
namespace {

class HistoryFileTest : public testing::Test {
 protected:
  // A record with its outcome.
  HistoryRecord add(std::int64_t wanted) {
    HistoryRecord record = sampleRecord(65, wanted);
    add(record);
    return record;
  }

  void add(const HistoryRecord& record) {
    file_.append(record);
    file_.append(record.id, *record.outcome);
  }

  std::size_t lines() const {
    const std::string content = contentOf(path_);
    return static_cast<std::size_t>(std::count(content.begin(), content.end(), '\n'));
  }

  TemporaryDirectory directory_;
  const std::filesystem::path path_{directory_ / "history/base.jsonl"};
  const HistoryFile file_{path_};
};

TEST_F(HistoryFileTest, IsEmptyWithoutAFile) { EXPECT_EQ(file_.read(), HistoryContents()); }

TEST_F(HistoryFileTest, KeepsRecordsInTheirOrder) {
  const std::vector<HistoryRecord> records{add(70), add(75), add(80)};
  EXPECT_EQ(file_.read(), (HistoryContents{records, 0}));
}

TEST_F(HistoryFileTest, ARecordIsOneWriteAndIsSynced) {
  add(70);
  const HistoryRecord record = sampleRecord(65, 80);
  FileCalls calls;
  file_.append(record);
  EXPECT_EQ(calls.count("write"), 1U);
  EXPECT_EQ(calls.count("fsync"), 1U);
  EXPECT_EQ(calls.made().back().name, "fstat");
  file_.append(record.id, *record.outcome);
  EXPECT_EQ(calls.count("write"), 2U);
  EXPECT_EQ(calls.count("fsync"), 1U);
}

TEST_F(HistoryFileTest, ATornLastLineIsEndedBeforeTheNextRecord) {
  const HistoryRecord first = add(70);
  const std::string whole = contentOf(path_);
  putFile(path_, whole + R"({"id":"01)");
  EXPECT_EQ(file_.read(), (HistoryContents{{first}, 1}));
  const HistoryRecord second = add(80);
  EXPECT_EQ(file_.read(), (HistoryContents{{first, second}, 1}));
}

TEST_F(HistoryFileTest, BeyondTheMostLinesTheNewestThreeQuartersStay) {
  add(80);
  std::string content;
  for (std::size_t i = 2; i < HistoryFile::mostLines; i += 2) content += contentOf(path_);
  putFile(path_, content);
  add(80);
  EXPECT_EQ(lines(), HistoryFile::mostLines);
  const HistoryRecord last = add(90);
  EXPECT_EQ(lines(), HistoryFile::mostLines / 4 * 3);
  EXPECT_EQ(file_.read().records.back(), last);
  EXPECT_EQ(file_.read().unreadableLines, 0U);
}

TEST_F(HistoryFileTest, BeyondTheMostBytesTheNewestThreeQuartersStay) {
  HistoryRecord record = sampleRecord(65, 80);
  record.detail = std::string(100'000, 'x');
  for (int i = 0; i < 30; ++i) {
    record.id = UUID::random();
    add(record);
    EXPECT_LE(std::filesystem::file_size(path_), HistoryFile::mostBytes);
  }
  EXPECT_GT(std::filesystem::file_size(path_), HistoryFile::mostBytes / 2);
  EXPECT_EQ(file_.read().records.back(), record);
}

TEST_F(HistoryFileTest, AKillAtAnyCallLeavesAReadableHistoryWithTheRecordInIt) {
  const HistoryRecord before = add(70);
  const HistoryRecord record = sampleRecord(65, 80);
  Pipe packets;
  for (std::size_t number = 0;; ++number) {
    std::filesystem::remove(path_);
    add(before);
    const std::string end = inChildProcess([&]() -> std::string {
      const FileCalls calls(FileCalls::dieAt(number));
      file_.append(record);
      if (::write(packets.writing.get(), "p", 1) != 1) return "no packet";
      file_.append(record.id, *record.outcome);
      return "done";
    });
    ASSERT_TRUE(end == "done" || end == "signal 9") << end;
    const HistoryContents contents = file_.read();
    EXPECT_EQ(contents.unreadableLines, 0U) << number;
    EXPECT_EQ(contents.records.front(), before) << number;
    // The bytes in the pipe are the packets that were sent.
    ::fcntl(packets.reading.get(), F_SETFL, O_NONBLOCK);
    char packet = 0;
    if (::read(packets.reading.get(), &packet, 1) == 1) {
      EXPECT_EQ(contents.records.size(), 2U) << number;
    }
    if (end == "done") break;
  }
  EXPECT_EQ(file_.read(), (HistoryContents{{before, record}, 0}));
}

TEST_F(HistoryFileTest, AnErrorIsThrown) {
  add(70);
  const HistoryRecord record = sampleRecord(65, 80);
  for (const char* const call : {"open", "write", "fsync"}) {
    const FileCalls calls(FileCalls::failEach(call, ENOSPC));
    EXPECT_EQ(errorText([&] { file_.append(record); }),
              path_.string() + ": No space left on device")
        << call;
  }
}

TEST_F(HistoryFileTest, TwoProgramsWriteWholeLines) {
  const auto write = [&]() -> std::string {
    for (int i = 0; i < 100; ++i) add(80);
    return "done";
  };
  ChildProcess other(write);
  EXPECT_EQ(write(), "done");
  EXPECT_EQ(other.end(), "done");
  EXPECT_EQ(file_.read().records.size(), 200U);
  EXPECT_EQ(file_.read().unreadableLines, 0U);
}

TEST(HistoryFileName, IsThatOfTheBaseWhereverItIsPluggedIn) {
  struct Case {
    std::string serialNumber;
    std::int64_t location;
    std::string name;
  };
  const std::vector<Case> cases{
      {"", 0x14200000, "0eb7-0020-at-14200000.jsonl"},
      {"A12345", 0x14200000, "0eb7-0020-A12345.jsonl"},
      {"../a b\xe9", 0, "0eb7-0020-%2E%2E%2Fa%20b%E9.jsonl"},
      {std::string(300, 'x'), 0, "0eb7-0020-" + std::string(64, 'x') + ".jsonl"},
  };
  for (const auto& [serialNumber, location, name] : cases) {
    HIDDeviceInfo info;
    info.vendorID = Fanatec::vendorID;
    info.productID = defaultSimulatedProduct;
    info.serialNumber = serialNumber;
    info.locationID = location;
    EXPECT_EQ(historyFileName(info), name);
  }
}

}  // namespace
}  // namespace quorvane
