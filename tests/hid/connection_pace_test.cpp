#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "hid/connection.h"
#include "hid/reading_pace.h"
#include "protocol/error.h"
#include "tests/hid/fake_port.h"

namespace quorvane {
namespace {

using Lines = std::vector<std::string>;

// Reports whose first byte is `news` are of interest, all others are not.
constexpr std::uint8_t news = 2;
constexpr std::uint8_t noNews = 1;

class HIDConnectionPace : public testing::Test {
 protected:
  void TearDown() override {
    connection_.reset();
    EXPECT_EQ(device_->openPorts(), 0);
  }

  HIDConnection::HandlerID keepNews() {
    return connection_->onReport([this](ByteView report) {
      const bool isNews = report[0] == news;
      if (isNews) kept_.push_back(hexDump(report));
      return isNews;
    });
  }

  HIDConnection::HandlerID keepAll() { return connection_->onReport(keep()); }

  HIDConnection::ReportHandler keep() {
    return [this](const HIDInputReport& report) { kept_.push_back(report.hexDump()); };
  }

  void deliver(int reports) {
    for (int i = 0; i < reports; ++i) device_->deliver(noNews, {noNews, 7});
  }

  // Opens the connection and delivers reports of no interest until it reads in batches.
  void relax() {
    connection_->open(false);
    deliver(ReadingPace::promptReports);
    ASSERT_TRUE(device_->relaxed());
  }

  // How many reports of no interest it takes until the connection reads in batches.
  int reportsUntilRelaxed() {
    int reports = 0;
    do {
      deliver(1);
      ++reports;
    } while (!device_->relaxed() && reports < 10 * ReadingPace::promptReports);
    return reports;
  }

  const std::shared_ptr<FakeDevice> device_ = std::make_shared<FakeDevice>();
  std::unique_ptr<HIDConnection> connection_ =
      std::make_unique<HIDConnection>(HIDEnumerator::info(device_));
  Lines kept_;  // written by the reader thread, read while it is idle
};

TEST_F(HIDConnectionPace, ABytesHandlerPicksTheReportsOfItsInterest) {
  keepNews();
  connection_->open(false);
  device_->deliver(noNews, {noNews, 7});
  device_->deliver(news, {news, 8});
  device_->deliver(noNews, {noNews, 9});
  EXPECT_EQ(kept_, (Lines{"02 08"}));
}

TEST_F(HIDConnectionPace, ABytesHandlerLeavesOtherHandlersTheirReports) {
  keepNews();
  keepAll();
  int values = 0;
  connection_->onValue([&](const HIDElementValue&) { ++values; });
  connection_->open(false);
  device_->deliver(noNews, {noNews, 7});
  device_->deliver(news, {news, 8});
  EXPECT_EQ(kept_, (Lines{"01 07", "02 08", "02 08"}));
}

TEST_F(HIDConnectionPace, ABytesHandlerSeesTheReportBehindItsReportID) {
  Lines seen;
  connection_->onReport([&](ByteView report) {
    seen.push_back(hexDump(report));
    return false;
  });
  connection_->open(false);
  device_->deliver(news, {news, 8});
  device_->deliver(news, {8});
  device_->deliver(0, {8});
  EXPECT_EQ(seen, (Lines{"02 08", "02 08", "08"}));
}

TEST_F(HIDConnectionPace, ABytesHandlerIsRemovedAsAnyOther) {
  const auto first = keepNews();
  connection_->open(false);
  device_->deliver(news, {news, 8});
  connection_->removeHandler(first);
  device_->deliver(news, {news, 9});
  EXPECT_EQ(kept_, (Lines{"02 08"}));
}

TEST_F(HIDConnectionPace, IsRelaxedOnceNothingOfInterestComes) {
  keepNews();
  connection_->open(false);
  EXPECT_EQ(reportsUntilRelaxed(), ReadingPace::promptReports);
}

TEST_F(HIDConnectionPace, IsPromptAgainAfterAReportOfInterest) {
  keepNews();
  relax();
  device_->deliver(news, {news, 8});
  EXPECT_FALSE(device_->relaxed());
  EXPECT_EQ(reportsUntilRelaxed(), ReadingPace::promptReports);
}

TEST_F(HIDConnectionPace, AnOpeningBeginsPrompt) {
  keepNews();
  relax();
  connection_->close();
  connection_->open(false);
  EXPECT_EQ(reportsUntilRelaxed(), ReadingPace::promptReports);
}

TEST_F(HIDConnectionPace, WhatIsSentOrAskedForHurriesTheReaderAndKeepsItPromptForAWhile) {
  device_->answerGetReport(HIDReturnCode::success, {1, 2}, 2);
  keepNews();
  relax();
  connection_->send({1, {2}});
  EXPECT_EQ(device_->hurries(), 1);
  // One more: the fake's hurry() does not end the batched read that is already running.
  EXPECT_EQ(reportsUntilRelaxed(), ReadingPace::promptReports + 1);
  connection_->getFeature(1, 2);
  EXPECT_EQ(device_->hurries(), 2);
  EXPECT_EQ(reportsUntilRelaxed(), ReadingPace::promptReports + 1);
}

TEST_F(HIDConnectionPace, AFailedSendLeavesNobodyInAHurry) {
  keepNews();
  relax();
  device_->failWritesWith(HIDReturnCode::generalError);
  EXPECT_THROW(connection_->send({1, {2}}), FanatecError);
  EXPECT_EQ(reportsUntilRelaxed(), ReadingPace::promptReports + 1);
}

TEST_F(HIDConnectionPace, IsPromptWhileAnAttentionIsHeld) {
  keepNews();
  relax();
  std::optional<HIDConnection::LowLatencyScope> first = connection_->lowLatencyScope();
  EXPECT_EQ(device_->hurries(), 1);
  deliver(2 * ReadingPace::promptReports);
  EXPECT_FALSE(device_->relaxed());

  HIDConnection::LowLatencyScope second = connection_->lowLatencyScope();
  first.reset();
  deliver(2 * ReadingPace::promptReports);
  EXPECT_FALSE(device_->relaxed());

  // Moving transfers the scope. Move assignment ends the replaced one.
  first = std::move(second);
  second = connection_->lowLatencyScope();
  second = std::move(*first);
  deliver(2 * ReadingPace::promptReports);
  EXPECT_FALSE(device_->relaxed());
  { const HIDConnection::LowLatencyScope last = std::move(second); }
  first.reset();
  EXPECT_LE(reportsUntilRelaxed(), ReadingPace::promptReports);
  EXPECT_EQ(device_->hurries(), 1);
}

TEST_F(HIDConnectionPace, AnAttentionOutlivesTheConnection) {
  keepNews();
  connection_->open(false);
  const HIDConnection::LowLatencyScope scope = connection_->lowLatencyScope();
  connection_.reset();
  EXPECT_EQ(device_->openPorts(), 0);
}

TEST_F(HIDConnectionPace, IsPromptForAHandlerOfEveryReport) {
  keepNews();
  relax();
  const auto all = keepAll();
  EXPECT_EQ(device_->hurries(), 1);
  deliver(2 * ReadingPace::promptReports);
  EXPECT_FALSE(device_->relaxed());
  connection_->removeHandler(all);
  connection_->removeHandler(all);
  EXPECT_EQ(reportsUntilRelaxed(), ReadingPace::promptReports);
  keepNews();
  deliver(1);
  EXPECT_TRUE(device_->relaxed());
}

TEST_F(HIDConnectionPace, IsPromptForAHandlerOfValues) {
  keepNews();
  relax();
  const auto values = connection_->onValue([](const HIDElementValue&) {});
  EXPECT_EQ(device_->hurries(), 1);
  deliver(2 * ReadingPace::promptReports);
  EXPECT_FALSE(device_->relaxed());
  connection_->removeHandler(values);
  EXPECT_LE(reportsUntilRelaxed(), ReadingPace::promptReports);
}

TEST_F(HIDConnectionPace, LetsGoOfARemovedHandlerWithTheNextReportOrItsEnd) {
  const auto held = std::make_shared<int>(0);
  const auto handler = [held](const HIDInputReport&) {};
  const auto idle = held.use_count();
  auto id = connection_->onReport(handler);
  connection_->open(false);
  deliver(1);
  connection_->removeHandler(id);
  deliver(1);
  EXPECT_EQ(held.use_count(), idle);
  id = connection_->onReport(handler);
  deliver(1);
  connection_->removeHandler(id);
  connection_->close();
  connection_->join();
  EXPECT_EQ(held.use_count(), idle);
}

}  // namespace
}  // namespace quorvane
