#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <memory>
#include <utility>
#include <vector>

#include "hid/linux/hidraw_port.h"
#include "hid/reading_pace.h"
#include "session/wheel_base.h"
#include "simulator/simulated_base.h"
#include "support/semaphore.h"
#include "support/thread.h"
#include "tests/error_text.h"
#include "tests/session/simulated_session.h"

namespace quorvane {
namespace {

// A base behind a HidrawPort, on a socket pair that preserves packet boundaries. The pauses of
// batched reads only end by hurry() or interrupt(): a session that does not call hurry() hangs.
class SocketBase final : public HIDDeviceHandle {
 public:
  ~SocketBase() override { stop(); }
  SocketBase() = default;
  SocketBase(const SocketBase&) = delete;
  SocketBase& operator=(const SocketBase&) = delete;

  std::optional<HIDProperty> property(std::string_view key) const override {
    const HIDProperties all = SimulatedBase(product()).properties();
    const auto found = all.find(key);
    if (found == all.end()) return std::nullopt;
    return found->second;
  }
  std::vector<HIDElement> elements() const override { return {}; }
  std::string node() const override { return {}; }
  bool accessible() const override { return true; }

  HIDOpenResult open(bool /*exclusive*/) override {
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()), 0);
    UniqueFd node(ends[0]);
    EXPECT_EQ(::fcntl(node.get(), F_SETFL, O_NONBLOCK), 0);
    end_ = UniqueFd(ends[1]);
    answering_ = Thread("base", [this] { answer(); });
    return {HIDReturnCode::success,
            std::make_unique<HidrawPort>(std::move(node), true, [this](int signal) {
              gathering.signal();
              return waitReadable(signal, std::chrono::hours(24));
            })};
  }

  // Sends the same status report until the reader reads in batches. Only the very first one changes
  // something.
  void sayNothingNew() {
    while (gathering.tryWait()) {
    }
    for (int i = 0; i < ReadingPace::promptReports + 2; ++i) send(status_);
    gathering.wait();
  }

  const Bytes& nothingNew() const { return status_; }

  // Returns false when the other end is closed.
  bool send(const Bytes& report) const {
    return ::send(end_.get(), report.data(), report.size(), MSG_NOSIGNAL) > 0;
  }

  // Disconnects the base.
  void stop() {
    if (end_) ::shutdown(end_.get(), SHUT_RDWR);
    answering_.join();
  }

  Semaphore gathering;  // signalled when the reader begins a pause

 private:
  static FanatecProduct product() { return *FanatecProduct::lookup(defaultSimulatedProduct); }

  void answer() const {
    SimulatedBase base(product());
    const Monotonic::time_point always{};
    std::array<std::uint8_t, 256> packet{};
    for (;;) {
      const ssize_t length = ::read(end_.get(), packet.data(), packet.size());
      if (length <= 0) return;
      base.receive(ByteView(packet.data(), static_cast<std::size_t>(length)), always);
      while (const auto report = base.takeDue(always)) send(*report);
    }
  }

  const Bytes status_ = SimulatedBase(product()).wheelStatusReport();
  UniqueFd end_;
  Thread answering_;
};

class WheelBasePace : public testing::Test {
 protected:
  const HIDReportPacket request_ = FanatecCommands::requestTuningSnapshot();

  void SetUp() override { base_->connect(); }
  void TearDown() override {
    base_->disconnect();
    base_->connection().join();
  }

  Semaphore updated_;
  const std::shared_ptr<SocketBase> device_ = std::make_shared<SocketBase>();
  const std::shared_ptr<WheelBase> base_ = WheelBase::create(HIDEnumerator::info(device_));
};

TEST_F(WheelBasePace, ARelaxedReaderHurriesForEveryRead) {
  for (int i = 0; i < 20; ++i) {
    device_->sayNothingNew();
    EXPECT_EQ(base_->fetchTuning(never).slot(), 2);
  }
  device_->sayNothingNew();
  EXPECT_EQ(base_->fetchIdentity(never).raw().size(), IdentityReport::length);
}

TEST_F(WheelBasePace, ARelaxedReaderHurriesForASendWhoseAnswerNobodyAwaits) {
  base_->setOnTuningUpdate([&](const TuningSnapshot&) { updated_.signal(); });
  device_->sayNothingNew();
  base_->sendRaw(request_);
  updated_.wait();
  EXPECT_TRUE(base_->tuning());
}

TEST_F(WheelBasePace, ARelaxedReaderHurriesForOneWhoComesToWantReportsSoon) {
  base_->setOnTuningUpdate([&](const TuningSnapshot&) { updated_.signal(); });
  device_->sayNothingNew();
  device_->send(SimulatedBase(*FanatecProduct::lookup(defaultSimulatedProduct)).menu().report());
  const HIDConnection::LowLatencyScope scope = base_->connection().lowLatencyScope();
  updated_.wait();
}

TEST_F(WheelBasePace, ARelaxedReaderEndsWithItsSession) {
  device_->sayNothingNew();
  base_->disconnect();
  base_->connection().join();
  EXPECT_FALSE(device_->send(device_->nothingNew()));
}

TEST_F(WheelBasePace, StandsReadsSendsAttentionsAndADisconnectionThatAllFindItRelaxed) {
  constexpr int sessions = 20;
  for (int i = 0; i < sessions; ++i) {
    const auto device = std::make_shared<SocketBase>();
    const auto session = WheelBase::create(HIDEnumerator::info(device));
    session->connect();
    device->sayNothingNew();
    std::vector<Thread> threads;
    threads.reserve(4);
    for (int n = 0; n < 2; ++n) {
      threads.emplace_back("reads", [&] {
        // Until the session ends, or the base has no room for one more request.
        while (errorText([&] { session->fetchTuning(never); }) == "no error") {
        }
      });
    }
    threads.emplace_back("sends", [&] {
      for (int n = 0; n < 50; ++n) {
        const HIDConnection::LowLatencyScope scope = session->connection().lowLatencyScope();
        errorText([&] { session->sendRaw(request_); });
      }
    });
    threads.emplace_back("reports", [&] {
      for (int n = 0; n < 2000 && device->send(device->nothingNew()); ++n) {
      }
    });
    if (i % 2 == 0) errorText([&] { session->fetchTuning(never); });
    session->disconnect();
  }
}

}  // namespace
}  // namespace quorvane
