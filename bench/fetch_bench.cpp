// How long a request for the tuning menu takes until its answer is kept as a snapshot, against the
// floor that the threads and the kernel set.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <system_error>
#include <utility>

#include "bench/samples.h"
#include "bench/wired_device.h"
#include "session/wheel_base.h"
#include "simulator/simulated_base.h"
#include "support/mutex.h"
#include "support/thread.h"
#include "support/unique_fd.h"

namespace quorvane {
namespace {

// A pair of connected sockets that keep the borders of packets, as a node does.
std::pair<UniqueFd, UniqueFd> wire() {
  std::array<int, 2> ends{-1, -1};
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw std::system_error(errno, std::generic_category(), "socketpair");
  }
  return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

// The near end does not block, as an open node.
std::pair<UniqueFd, UniqueFd> nodeLikeWire() {
  auto ends = wire();
  if (::fcntl(ends.first.get(), F_SETFL, O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "fcntl");
  }
  return ends;
}

void put(int fd, ByteView bytes) {
  if (::write(fd, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
}

// The far end of a wire: a thread that answers each request for the menu with the same report.
class Responder {
 public:
  explicit Responder(UniqueFd fd)
      : fd_(std::move(fd)), thread_("responder", [this] { answer(); }) {}

  int fd() const { return fd_.get(); }

  // The thread ends when the near end is closed; call after that.
  void join() { thread_.join(); }

 private:
  void answer() {
    const Bytes report = SimulatedBase(*FanatecProduct::lookup(0x0020)).menu().report();
    const Bytes request = FanatecCommands::requestTuningSnapshot().wireBytes();
    Bytes packet(request.size());
    while (::read(fd_.get(), packet.data(), packet.size()) > 0) {
      if (packet == request && ::write(fd_.get(), report.data(), report.size()) < 0) return;
    }
  }

  UniqueFd fd_;
  Thread thread_;
};

// The least that can be done: the caller writes the request, the responder answers, and one reader
// thread, blocked in a plain read, takes the answer and wakes the caller through a mutex and a
// condition. The same packets cross the same kind of sockets between the same number of threads;
// nothing looks at them, nothing is copied or kept, and nobody could stop the reader.
class BareExchange {
 public:
  BareExchange() : BareExchange(wire()) {}

  ~BareExchange() {
    ::shutdown(fd_.get(), SHUT_RDWR);
    responder_.join();
    reader_.join();
  }
  BareExchange(const BareExchange&) = delete;
  BareExchange& operator=(const BareExchange&) = delete;

  void exchange() {
    put(fd_.get(), request_);
    MutexLock held(lock_);
    while (!answered_) condition_.wait(lock_);
    answered_ = false;
  }

 private:
  explicit BareExchange(std::pair<UniqueFd, UniqueFd> ends)
      : fd_(std::move(ends.first)),
        responder_(std::move(ends.second)),
        reader_("reader", [this] { read(); }) {}

  void read() {
    std::array<std::uint8_t, TuningSnapshot::length + 1> buffer{};
    while (::read(fd_.get(), buffer.data(), buffer.size()) > 0) {
      {
        MutexLock held(lock_);
        answered_ = true;
      }
      condition_.notifyOne();
    }
  }

  const Bytes request_ = FanatecCommands::requestTuningSnapshot().wireBytes();
  UniqueFd fd_;
  Mutex lock_;
  Condition condition_;
  bool answered_ QUORVANE_GUARDED_BY(lock_) = false;
  Responder responder_;
  Thread reader_;
};

// The same exchange as a session does it, over the port that real nodes get.
class SessionExchange {
 public:
  SessionExchange() : SessionExchange(nodeLikeWire()) {}

  ~SessionExchange() {
    base_->disconnect();
    base_.reset();
    responder_.join();
  }
  SessionExchange(const SessionExchange&) = delete;
  SessionExchange& operator=(const SessionExchange&) = delete;

  void exchange() { benchmark::DoNotOptimize(base_->fetchTuning(WheelBase::readTimeout)); }

  int farEnd() const { return responder_.fd(); }

 private:
  explicit SessionExchange(std::pair<UniqueFd, UniqueFd> ends)
      : base_(WheelBase::create(
            HIDEnumerator::info(std::make_shared<WiredDevice>(std::move(ends.first))))),
        responder_(std::move(ends.second)) {
    base_->connect();
  }

  std::shared_ptr<WheelBase> base_;
  Responder responder_;
};

// Sends a wheel-status report every millisecond.
class StatusStream {
 public:
  explicit StatusStream(int fd) : fd_(fd), thread_("stream", [this] { stream(); }) {}

  ~StatusStream() {
    stopped_ = true;
    thread_.join();
  }
  StatusStream(const StatusStream&) = delete;
  StatusStream& operator=(const StatusStream&) = delete;

 private:
  void stream() {
    const Bytes report = SimulatedBase(*FanatecProduct::lookup(0x0020)).wheelStatusReport();
    const UniqueFd timer(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC));
    constexpr timespec millisecond{0, 1'000'000};
    const itimerspec period{millisecond, millisecond};
    ::timerfd_settime(timer.get(), 0, &period, nullptr);
    std::uint64_t ticks = 0;
    while (!stopped_ && ::read(timer.get(), &ticks, sizeof ticks) > 0) {
      for (; ticks > 0; --ticks) put(fd_, report);
    }
  }

  int fd_;
  std::atomic<bool> stopped_ = false;
  Thread thread_;
};

constexpr int warmUp = 1000;
constexpr int exchanges = 10000;

// Two things in turn, so that whatever else the machine does hits both alike.
template <typename A, typename B>
std::pair<Samples, Samples> inTurn(benchmark::State& state, A& a, B& b) {
  for (int i = 0; i < warmUp; ++i) {
    a.exchange();
    b.exchange();
  }
  Samples ofA;
  Samples ofB;
  for ([[maybe_unused]] const auto iteration : state) {
    timed(ofA, [&] { a.exchange(); });
    timed(ofB, [&] { b.exchange(); });
  }
  return {std::move(ofA), std::move(ofB)};
}

void fetchAgainstFloor(benchmark::State& state) {
  BareExchange floor;
  SessionExchange session;
  auto [ofFloor, ofSession] = inTurn(state, floor, session);
  state.counters["floor_p50_ns"] = ofFloor.quantile(0.5);
  state.counters["floor_p99_ns"] = ofFloor.quantile(0.99);
  state.counters["fetch_p50_ns"] = ofSession.quantile(0.5);
  state.counters["fetch_p99_ns"] = ofSession.quantile(0.99);
  state.counters["fetch_p50_ratio"] = ofSession.quantile(0.5) / ofFloor.quantile(0.5);
  state.counters["fetch_p99_ratio"] = ofSession.quantile(0.99) / ofFloor.quantile(0.99);
}
BENCHMARK(fetchAgainstFloor)->Iterations(exchanges);

void fetchDuringStream(benchmark::State& state) {
  SessionExchange quiet;
  SessionExchange streaming;
  const StatusStream stream(streaming.farEnd());
  auto [ofQuiet, ofStreaming] = inTurn(state, quiet, streaming);
  state.counters["quiet_p50_ns"] = ofQuiet.quantile(0.5);
  state.counters["stream_p50_ns"] = ofStreaming.quantile(0.5);
  state.counters["stream_p50_ratio"] = ofStreaming.quantile(0.5) / ofQuiet.quantile(0.5);
}
BENCHMARK(fetchDuringStream)->Iterations(exchanges);

}  // namespace
}  // namespace quorvane
