// The time from a request for the tuning menu until its answer is stored as a snapshot, against the
// lower bound set by threads and kernel.

#include <benchmark/benchmark.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <utility>

#include "bench/samples.h"
#include "bench/session_exchange.h"
#include "bench/wires.h"
#include "support/mutex.h"
#include "support/thread.h"
#include "support/unique_fd.h"

namespace quorvane {
namespace {

// The lower bound: the caller writes the request, the responder answers, and one reader thread,
// blocked in a plain read, receives the answer and wakes the caller through a mutex and a
// condition. Same packets, same kind of sockets, same number of threads; but nothing is parsed,
// copied or stored, and the reader cannot be stopped.
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

constexpr int warmUp = 1000;
constexpr int exchanges = 10000;

// Runs two exchanges alternately, so that other load on the machine affects both equally.
template <typename A, typename B>
std::pair<Samples, Samples> insideWriteLock(benchmark::State& state, A& a, B& b) {
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
  auto [ofFloor, ofSession] = insideWriteLock(state, floor, session);
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
  auto [ofQuiet, ofStreaming] = insideWriteLock(state, quiet, streaming);
  state.counters["quiet_p50_ns"] = ofQuiet.quantile(0.5);
  state.counters["stream_p50_ns"] = ofStreaming.quantile(0.5);
  state.counters["stream_p50_ratio"] = ofStreaming.quantile(0.5) / ofQuiet.quantile(0.5);
}
BENCHMARK(fetchDuringStream)->Iterations(exchanges);

}  // namespace
}  // namespace quorvane
