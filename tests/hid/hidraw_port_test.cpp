#include "hid/linux/hidraw_port.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hid/connection.h"
#include "support/semaphore.h"
#include "support/thread.h"
#include "tests/error_text.h"
#include "tests/support/file_calls.h"
#include "tests/support/temporary_directory.h"

namespace quorvane::hidraw_port_test {
namespace {

constexpr HIDReturn badDescriptor = 0x0000C009;
constexpr HIDReturn tryAgain = 0x0000C00B;
constexpr HIDReturn noSuchRequest = 0x0000C019;

// A socket pair that preserves report boundaries, as a node does.
std::pair<UniqueFd, UniqueFd> connectedEnds() {
  std::array<int, 2> ends{-1, -1};
  EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()),
            0);
  return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

void sendTo(const UniqueFd& end, const Bytes& report) {
  EXPECT_EQ(::write(end.get(), report.data(), report.size()), static_cast<ssize_t>(report.size()));
}

// The next report at this end; empty if there is none or the other end is closed.
Bytes arrivedAt(const UniqueFd& end) {
  Bytes report(256);
  const ssize_t length = ::read(end.get(), report.data(), report.size());
  report.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  return report;
}

class HidrawPortTest : public testing::Test {
 protected:
  void SetUp() override { reopen(true); }

  void reopen(bool numbered) {
    auto [node, other] = connectedEnds();
    port_ = std::make_unique<HidrawPort>(std::move(node), numbered);
    device_ = std::move(other);
  }

  HIDPort::ReadResult read() {
    HIDPort::ReadResult result = port_->read(buffer_);
    received_.assign(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(result.length));
    return result;
  }

  std::unique_ptr<HidrawPort> port_;
  UniqueFd device_;
  Bytes buffer_ = Bytes(16);
  Bytes received_;
};

TEST_F(HidrawPortTest, ReadsOneReportAtATime) {
  sendTo(device_, {1, 2, 3});
  sendTo(device_, {0xFF, 4});
  auto result = read();
  EXPECT_EQ(result.code, HIDReturnCode::success);
  EXPECT_EQ(result.reportID, 1);
  EXPECT_EQ(received_, (Bytes{1, 2, 3}));
  result = read();
  EXPECT_EQ(result.code, HIDReturnCode::success);
  EXPECT_EQ(result.reportID, 0xFF);
  EXPECT_EQ(received_, (Bytes{0xFF, 4}));
}

TEST_F(HidrawPortTest, ReportsWithoutIDsHaveTheID0) {
  reopen(false);
  sendTo(device_, {1, 2, 3});
  EXPECT_EQ(read().reportID, 0);
  EXPECT_EQ(received_, (Bytes{1, 2, 3}));
}

TEST_F(HidrawPortTest, AReportLongerThanTheBufferIsCut) {
  buffer_.resize(4);
  sendTo(device_, {1, 2, 3, 4, 5, 6});
  sendTo(device_, {7});
  EXPECT_EQ(read().length, 4U);
  EXPECT_EQ(received_, (Bytes{1, 2, 3, 4}));
  read();
  EXPECT_EQ(received_, (Bytes{7}));
}

TEST_F(HidrawPortTest, AReadWaitsForAReport) {
  Semaphore started;
  Thread sender("sender", [&] {
    started.wait();
    sendTo(device_, {1, 2});
  });
  started.signal();
  EXPECT_EQ(read().code, HIDReturnCode::success);
  EXPECT_EQ(received_, (Bytes{1, 2}));
}

TEST_F(HidrawPortTest, AnInterruptEndsReadingForEver) {
  sendTo(device_, {1, 2});
  port_->interrupt();
  for (int i = 0; i < 3; ++i) {
    const auto result = read();
    EXPECT_EQ(result.code, HIDReturnCode::aborted);
    EXPECT_EQ(result.length, 0U);
  }
}

TEST_F(HidrawPortTest, AnInterruptWakesAReadThatWaits) {
  Semaphore started;
  HIDReturn code = HIDReturnCode::success;
  Thread reader("reader", [&] {
    started.signal();
    code = read().code;
  });
  started.wait();
  port_->interrupt();
  reader.join();
  EXPECT_EQ(code, HIDReturnCode::aborted);
}

TEST_F(HidrawPortTest, ADeviceThatLeftFailsEveryReadBehindItsLastReport) {
  sendTo(device_, {1, 2});
  device_.reset();
  EXPECT_EQ(read().code, HIDReturnCode::success);
  EXPECT_EQ(received_, (Bytes{1, 2}));
  EXPECT_EQ(read().code, HIDReturnCode::noDevice);
  EXPECT_EQ(read().code, HIDReturnCode::noDevice);
  port_->interrupt();
  EXPECT_EQ(read().code, HIDReturnCode::aborted);
}

TEST_F(HidrawPortTest, AFailedReadTellsWhy) {
  HidrawPort unreadable(UniqueFd(::open("/dev/null", O_WRONLY | O_CLOEXEC)), true);
  EXPECT_EQ(unreadable.read(buffer_).code, badDescriptor);
  EXPECT_EQ(unreadable.read(buffer_).code, badDescriptor);
}

TEST_F(HidrawPortTest, WritesTheReportAsItIs) {
  EXPECT_EQ(port_->write(0x1F, Bytes{0x1F, 1, 2}), HIDReturnCode::success);
  EXPECT_EQ(port_->write(0xFF, Bytes{0xFF, 3}), HIDReturnCode::success);
  EXPECT_EQ(arrivedAt(device_), (Bytes{0x1F, 1, 2}));
  EXPECT_EQ(arrivedAt(device_), (Bytes{0xFF, 3}));
}

TEST_F(HidrawPortTest, WritesA0InPlaceOfAMissingReportID) {
  reopen(false);
  EXPECT_EQ(port_->write(0, Bytes{1, 2}), HIDReturnCode::success);
  EXPECT_EQ(port_->write(0, Bytes{}), HIDReturnCode::success);
  EXPECT_EQ(arrivedAt(device_), (Bytes{0, 1, 2}));
  EXPECT_EQ(arrivedAt(device_), (Bytes{0}));
}

TEST_F(HidrawPortTest, AFailedWriteTellsWhy) {
  HidrawPort unwritable(UniqueFd(::open("/dev/null", O_RDONLY | O_CLOEXEC)), true);
  EXPECT_EQ(unwritable.write(1, Bytes{1, 2}), badDescriptor);
}

TEST_F(HidrawPortTest, AWriteToADeviceThatTakesNothingMoreFails) {
  const Bytes report(64, 1);
  HIDReturn code = HIDReturnCode::success;
  while (code == HIDReturnCode::success) code = port_->write(1, report);
  EXPECT_EQ(code, tryAgain);
}

TEST_F(HidrawPortTest, AWriteThatIsTakenInPartFails) {
  std::array<int, 2> ends{-1, -1};
  ASSERT_EQ(::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC), 0);
  const UniqueFd drain(ends[0]);
  HidrawPort narrow(UniqueFd(ends[1]), true);
  const int capacity = ::fcntl(drain.get(), F_GETPIPE_SZ);
  ASSERT_GT(capacity, 0);
  const Bytes tooMuch(static_cast<std::size_t>(capacity) + 1, 1);
  EXPECT_EQ(narrow.write(1, tooMuch), HIDReturnCode::generalError);
}

TEST_F(HidrawPortTest, AFailedRequestForAReportTellsWhyAndNamesTheReportInTheBuffer) {
  for (const auto kind : {HIDReportKind::input, HIDReportKind::feature}) {
    Bytes answer(8);
    std::size_t length = answer.size();
    EXPECT_EQ(port_->getReport(kind, 0x1F, answer, length), noSuchRequest);
    EXPECT_EQ(length, answer.size());
    EXPECT_EQ(answer, (Bytes{0x1F, 0, 0, 0, 0, 0, 0, 0}));
  }
}

TEST_F(HidrawPortTest, DestructionClosesTheNode) {
  port_.reset();
  std::uint8_t byte = 0;
  EXPECT_EQ(::read(device_.get(), &byte, 1), 0);
}

TEST_F(HidrawPortTest, WritesAndReadsGoOnAtOnce) {
  constexpr int packets = 50;
  ASSERT_EQ(::fcntl(device_.get(), F_SETFL, 0), 0);  // blocking, for the echo
  const auto write = [&](std::uint8_t reportID) {
    for (int i = 0; i < packets; ++i) {
      EXPECT_EQ(port_->write(reportID, Bytes{reportID, 7}), HIDReturnCode::success);
    }
  };
  const Thread first("first writer", [&] { write(1); });
  const Thread second("second writer", [&] { write(2); });
  const Thread echo("echo", [&] {
    for (int i = 0; i < 2 * packets; ++i) sendTo(device_, arrivedAt(device_));
  });
  std::array<int, 3> counts{};
  for (int i = 0; i < 2 * packets; ++i) {
    const auto result = read();
    EXPECT_EQ(result.code, HIDReturnCode::success);
    ++counts.at(result.reportID);
  }
  EXPECT_EQ(counts, (std::array<int, 3>{0, packets, packets}));
}

// The write lock and othersMayHaveWritten(), step by step.
TEST_F(HidrawPortTest, PortsOfOneNodeTakeTurnsAndNoticeEachOther) {
  const TemporaryDirectory directory;
  const std::string node = directory / "node";
  const auto open = [&] {
    return std::make_unique<HidrawPort>(
        UniqueFd(::open(node.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)), true);
  };
  const auto first = open();
  first->watchForOthers();
  EXPECT_TRUE(first->tryWriteLock());
  EXPECT_FALSE(first->othersMayHaveWritten());

  auto second = open();
  second->watchForOthers();
  EXPECT_FALSE(second->tryWriteLock());
  EXPECT_TRUE(first->othersMayHaveWritten());
  EXPECT_TRUE(first->othersMayHaveWritten());
  first->endWriteLock();
  EXPECT_TRUE(second->tryWriteLock());
  EXPECT_FALSE(first->tryWriteLock());

  // A port that has closed the node may open it again, so it still counts.
  second.reset();
  EXPECT_TRUE(first->tryWriteLock());
  EXPECT_TRUE(first->othersMayHaveWritten());
  EXPECT_TRUE(first->othersMayHaveWritten());
}

TEST_F(HidrawPortTest, WhoWasThereBeforeTheWatchBeganIsNoticedAllTheSame) {
  const TemporaryDirectory directory;
  const std::string node = directory / "node";
  const auto open = [&] {
    return UniqueFd(::open(node.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  };
  const HidrawPort before(open(), true);
  HidrawPort port(open(), true);
  port.watchForOthers();
  EXPECT_TRUE(port.othersMayHaveWritten());
}

// A pseudo-terminal whose other end closes behaves like a node whose device left.
TEST_F(HidrawPortTest, TheTurnAtADeviceThatLeftIsEverybodys) {
  UniqueFd device(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
  ASSERT_EQ(::grantpt(device.get()), 0);
  ASSERT_EQ(::unlockpt(device.get()), 0);
  const std::string node = ::ptsname(device.get());
  const auto open = [&] {
    return UniqueFd(::open(node.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  };
  HidrawPort first(open(), true);
  HidrawPort second(open(), true);
  EXPECT_TRUE(first.tryWriteLock());
  EXPECT_FALSE(second.tryWriteLock());
  device.reset();
  EXPECT_TRUE(second.tryWriteLock());
  EXPECT_NE(second.write(1, Bytes{1}), HIDReturnCode::success);
}

TEST_F(HidrawPortTest, WithoutAWatchOthersMayAlwaysHaveWritten) {
  EXPECT_TRUE(port_->othersMayHaveWritten());
  port_->watchForOthers();
  EXPECT_FALSE(port_->othersMayHaveWritten());
  port_->watchForOthers();
  EXPECT_FALSE(port_->othersMayHaveWritten());
}

// Batched reads whose pauses take no time. In each pause the device sends the next reports of
// sentInPauses_. Counts the pauses.
class RelaxedHidrawPortTest : public testing::Test {
 protected:
  RelaxedHidrawPortTest() : RelaxedHidrawPortTest(connectedEnds()) {}

  HIDReturn readAll(std::size_t reports) {
    for (std::size_t i = 0; i < reports; ++i) {
      const auto result = port_.readBatched(buffer_);
      if (result.code != HIDReturnCode::success) return result.code;
      received_.emplace_back(buffer_.begin(),
                             buffer_.begin() + static_cast<std::ptrdiff_t>(result.length));
    }
    return HIDReturnCode::success;
  }

  UniqueFd device_;
  std::vector<std::vector<Bytes>> sentInPauses_;  // in reverse order
  int pauses_ = 0;
  HidrawPort port_;
  Bytes buffer_ = Bytes(16);
  std::vector<Bytes> received_;

 private:
  explicit RelaxedHidrawPortTest(std::pair<UniqueFd, UniqueFd> ends)
      : device_(std::move(ends.second)),
        port_(std::move(ends.first), true, [this](int signal) { return pause(signal); }) {}

  bool pause(int signal) {
    ++pauses_;
    if (!sentInPauses_.empty()) {
      for (const Bytes& report : sentInPauses_.back()) sendTo(device_, report);
      sentInPauses_.pop_back();
    }
    return waitReadable(signal, std::chrono::milliseconds(0));
  }
};

TEST_F(RelaxedHidrawPortTest, TheFirstReportComesWithoutAPause) {
  sendTo(device_, {1, 1});
  EXPECT_EQ(readAll(1), HIDReturnCode::success);
  EXPECT_EQ(received_, (std::vector<Bytes>{{1, 1}}));
  EXPECT_EQ(pauses_, 0);
}

TEST_F(RelaxedHidrawPortTest, OnePauseGathersAllThatArrivesInIt) {
  sendTo(device_, {1, 1});
  sentInPauses_ = {{{1, 4}}, {{1, 2}, {0xFF, 3}}};
  EXPECT_EQ(readAll(3), HIDReturnCode::success);
  EXPECT_EQ(received_, (std::vector<Bytes>{{1, 1}, {1, 2}, {0xFF, 3}}));
  EXPECT_EQ(pauses_, 1);
  EXPECT_EQ(readAll(1), HIDReturnCode::success);
  EXPECT_EQ(received_.back(), (Bytes{1, 4}));
  EXPECT_EQ(pauses_, 2);
}

TEST_F(RelaxedHidrawPortTest, AfterAPauseWithoutReportsTheNextOneComesAtOnce) {
  sendTo(device_, {1, 1});
  EXPECT_EQ(readAll(1), HIDReturnCode::success);
  Semaphore started;
  const Thread sender("sender", [&] {
    started.wait();
    sendTo(device_, {1, 2});
  });
  sentInPauses_ = {{}};
  started.signal();
  EXPECT_EQ(readAll(1), HIDReturnCode::success);
  EXPECT_EQ(received_.back(), (Bytes{1, 2}));
  EXPECT_LE(pauses_, 1);
}

TEST_F(RelaxedHidrawPortTest, AHurryBeforeAPauseOrAWaitIsUsedUpByIt) {
  port_.hurry();
  sendTo(device_, {1, 1});
  EXPECT_EQ(readAll(1), HIDReturnCode::success);
  sentInPauses_ = {{{1, 3}}, {{1, 2}}};
  EXPECT_EQ(readAll(2), HIDReturnCode::success);
  EXPECT_EQ(pauses_, 2);
  EXPECT_EQ(received_, (std::vector<Bytes>{{1, 1}, {1, 2}, {1, 3}}));
  // A prompt read ignores hurry().
  port_.hurry();
  sendTo(device_, {1, 4});
  EXPECT_EQ(port_.read(buffer_).code, HIDReturnCode::success);
}

TEST_F(RelaxedHidrawPortTest, AnInterruptEndsReadingForEver) {
  sendTo(device_, {1, 1});
  port_.interrupt();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(readAll(1), HIDReturnCode::aborted);
    EXPECT_EQ(port_.read(buffer_).code, HIDReturnCode::aborted);
  }
}

TEST_F(RelaxedHidrawPortTest, ADeviceThatLeftFailsTheReadBehindItsLastReport) {
  sendTo(device_, {1, 1});
  EXPECT_EQ(readAll(1), HIDReturnCode::success);
  sendTo(device_, {1, 2});
  device_.reset();
  EXPECT_EQ(readAll(2), HIDReturnCode::noDevice);
  EXPECT_EQ(received_, (std::vector<Bytes>{{1, 1}, {1, 2}}));
  EXPECT_EQ(readAll(1), HIDReturnCode::noDevice);
}

// How many possible losses batched reads count when their batches have these numbers of reports.
std::uint64_t lossesAfter(const std::vector<int>& queues) {
  auto [node, device] = connectedEnds();
  auto fill = [end = &device, next = queues.begin()]() mutable {
    for (int i = *next++; i > 0; --i) sendTo(*end, {1, 1});
  };
  HidrawPort port(std::move(node), true, [&fill](int /*signal*/) mutable {
    fill();
    return false;
  });
  fill();
  Bytes buffer(16);
  for (const int length : queues) {
    for (int i = 0; i < length; ++i) port.readBatched(buffer);
  }
  return port.possibleLosses();
}

TEST(RelaxedHidrawPort, AsManyReportsAsTheKernelKeepsMayBeAllThatItKept) {
  EXPECT_EQ(lossesAfter({1, 1}), 0U);
  EXPECT_EQ(lossesAfter({20, 20, 20, 20}), 0U);
  EXPECT_EQ(lossesAfter({62, 62}), 0U);
  EXPECT_EQ(lossesAfter({63, 1}), 1U);
  EXPECT_EQ(lossesAfter({64, 20, 63}), 2U);
  EXPECT_EQ(lossesAfter({126}), 2U);
}

TEST_F(HidrawPortTest, AsManyReportsAsTheKernelKeepsMayBeAllThatItKept) {
  const auto readAsMany = [this](int reports) {
    for (int i = 0; i < reports; ++i) sendTo(device_, {1, 1});
    for (int i = 0; i < reports; ++i) read();
  };
  readAsMany(62);
  {
    // The first read finds the queue empty.
    const FileCalls calls([isFirst = true](const FileCall& call, std::size_t) mutable {
      return call.name == "read" && std::exchange(isFirst, false) ? EAGAIN : 0;
    });
    readAsMany(1);
  }
  readAsMany(61);
  EXPECT_EQ(port_->possibleLosses(), 0U);
  readAsMany(1);
  EXPECT_EQ(port_->possibleLosses(), 1U);
}

// Pauses that only a signal ends. `begun` is signalled when one begins.
class EndlessPauses {
 public:
  HidrawPort::Pause pause() {
    return [this](int signal) {
      begun.signal();
      return waitReadable(signal, std::chrono::hours(24));
    };
  }

  Semaphore begun;
};

TEST(RelaxedHidrawPort, AHurryOrAnInterruptEndsAPause) {
  for (const bool interrupts : {false, true}) {
    auto [node, device] = connectedEnds();
    EndlessPauses pauses;
    HidrawPort port(std::move(node), true, pauses.pause());
    HIDPort::ReadResult result;
    Thread reader("reader", [&] {
      Bytes buffer(16);
      port.readBatched(buffer);
      result = port.readBatched(buffer);
    });
    sendTo(device, {1, 1});
    pauses.begun.wait();
    sendTo(device, {0xFF, 2});
    if (interrupts) {
      port.interrupt();
    } else {
      port.hurry();
    }
    reader.join();
    EXPECT_EQ(result.code, interrupts ? HIDReturnCode::aborted : HIDReturnCode::success);
    EXPECT_EQ(result.reportID, interrupts ? 0 : 0xFF);
  }
}

TEST(RelaxedHidrawPort, AnInterruptWakesARelaxedReadThatWaitsForTheFirstReport) {
  auto [node, device] = connectedEnds();
  HidrawPort port(std::move(node), true);
  Semaphore started;
  HIDReturn code = HIDReturnCode::success;
  Thread reader("reader", [&] {
    Bytes buffer(16);
    started.signal();
    code = port.readBatched(buffer).code;
  });
  started.wait();
  port.hurry();
  port.interrupt();
  reader.join();
  EXPECT_EQ(code, HIDReturnCode::aborted);
}

TEST(RelaxedHidrawPort, ThePauseOfItsOwnEnds) {
  auto [node, device] = connectedEnds();
  HidrawPort port(std::move(node), true);
  Bytes buffer(16);
  sendTo(device, {1, 1});
  EXPECT_EQ(port.readBatched(buffer).code, HIDReturnCode::success);
  const Thread sender("sender", [&, end = device.get()] {
    const Bytes report{0xFF, 2};
    EXPECT_EQ(::write(end, report.data(), report.size()), 2);
  });
  EXPECT_EQ(port.readBatched(buffer).reportID, 0xFF);
}

// A device whose ports are one end of a socket pair. `device` is the other end.
class SocketDevice final : public HIDDeviceHandle {
 public:
  std::optional<HIDProperty> property(std::string_view /*key*/) const override {
    return std::nullopt;
  }
  std::vector<HIDElement> elements() const override { return {}; }
  std::string node() const override { return {}; }
  bool accessible() const override { return true; }

  HIDOpenResult open(bool /*exclusive*/) override {
    if (failure != HIDReturnCode::success) return {failure, nullptr};
    auto [node, other] = connectedEnds();
    device = std::move(other);
    return {HIDReturnCode::success, std::make_unique<HidrawPort>(std::move(node), true)};
  }

  UniqueFd device;  // of the latest open()
  HIDReturn failure = HIDReturnCode::success;
};

std::ptrdiff_t entries(const char* folder) {
  return std::distance(std::filesystem::directory_iterator(folder), {});
}

std::ptrdiff_t openDescriptors() { return entries("/proc/self/fd"); }
std::ptrdiff_t threads() { return entries("/proc/self/task"); }

// The kernel lists a thread for a moment after it was joined. A leak would leave one per cycle.
constexpr std::ptrdiff_t stillEnding = 20;

class HidrawConnectionTest : public testing::Test {
 protected:
  const std::shared_ptr<SocketDevice> device_ = std::make_shared<SocketDevice>();
  Semaphore delivered_;
  HIDConnection connection_{HIDEnumerator::info(device_)};
};

TEST_F(HidrawConnectionTest, CarriesReportsBothWays) {
  std::string text;
  connection_.onReport([&](const HIDInputReport& report) {
    text = std::to_string(report.reportID) + ": " + report.hexDump();
    delivered_.signal();
  });
  connection_.open(false);
  sendTo(device_->device, {0xFF, 3, 2});
  delivered_.wait();
  EXPECT_EQ(text, "255: ff 03 02");
  connection_.send({0x1F, {1, 2, 3, 4, 5, 6, 7}});
  EXPECT_EQ(arrivedAt(device_->device), (Bytes{0x1F, 1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(HidrawConnectionTest, AThousandOpeningsLeaveNoDescriptorAndNoThreadBehind) {
  const auto descriptorsBefore = openDescriptors();
  const auto threadsBefore = threads();
  for (int i = 0; i < 1000; ++i) {
    HIDConnection other(HIDEnumerator::info(device_));
    other.onReport([&](const HIDInputReport&) { delivered_.signal(); });
    other.open(i % 2 == 0);
    sendTo(device_->device, {1, 2});
    if (i % 3 != 0) delivered_.wait();
    if (i % 5 != 0) other.close();
  }
  device_->device.reset();
  EXPECT_EQ(openDescriptors(), descriptorsBefore);
  EXPECT_LE(threads(), threadsBefore + stillEnding);
}

TEST_F(HidrawConnectionTest, AThousandReopeningsLeaveNoDescriptorAndNoThreadBehind) {
  const auto descriptorsBefore = openDescriptors();
  const auto threadsBefore = threads();
  for (int i = 0; i < 1000; ++i) {
    connection_.open(false);
    connection_.close();
  }
  connection_.open(false);
  EXPECT_LE(threads(), threadsBefore + 1 + stillEnding);
  // The node, the other end and the reader's eventfd.
  EXPECT_EQ(openDescriptors(), descriptorsBefore + 3);
}

TEST_F(HidrawConnectionTest, AThousandFailedOpeningsLeaveNoDescriptorAndNoThreadBehind) {
  const auto descriptorsBefore = openDescriptors();
  const auto threadsBefore = threads();
  device_->failure = HIDReturnCode::notPermitted;
  for (int i = 0; i < 1000; ++i) {
    EXPECT_NE(errorText([&] { connection_.open(false); }), "no error");
  }
  EXPECT_EQ(openDescriptors(), descriptorsBefore);
  EXPECT_LE(threads(), threadsBefore + stillEnding);
}

TEST_F(HidrawConnectionTest, ADeviceThatLeftIsClosedWithTheConnection) {
  const auto descriptorsBefore = openDescriptors();
  connection_.open(false);
  device_->device.reset();
  connection_.close();
  connection_.open(false);
  device_->device.reset();
  connection_.close();
  device_->failure = HIDReturnCode::noDevice;
  EXPECT_EQ(errorText([&] { connection_.open(false); }), "HID I/O failed: device not found");
  EXPECT_EQ(openDescriptors(), descriptorsBefore);
}

// The first call of this name fails with EINTR.
FileCalls::Verdict interruptFirst(std::string_view name) {
  return [name, isFirst = true](const FileCall& call, std::size_t) mutable {
    return call.name == name && std::exchange(isFirst, false) ? EINTR : 0;
  };
}

TEST_F(HidrawPortTest, CallsThatASignalInterruptsAreMadeAgain) {
  {
    const FileCalls calls(interruptFirst("write"));
    EXPECT_EQ(port_->write(1, Bytes{1, 2}), HIDReturnCode::success);
    EXPECT_EQ(calls.count("write"), 2U);
  }
  EXPECT_EQ(arrivedAt(device_), (Bytes{1, 2}));
  EXPECT_EQ(arrivedAt(device_), Bytes{});
  {
    const FileCalls calls(interruptFirst("ioctl"));
    std::size_t length = buffer_.size();
    EXPECT_EQ(port_->getReport(HIDReportKind::feature, 1, buffer_, length), noSuchRequest);
    EXPECT_EQ(calls.count("ioctl"), 2U);
  }
  sendTo(device_, {1, 2});
  const FileCalls calls(interruptFirst("read"));
  EXPECT_EQ(read().code, HIDReturnCode::success);
  EXPECT_EQ(calls.count("read"), 2U);
}

}  // namespace
}  // namespace quorvane::hidraw_port_test
