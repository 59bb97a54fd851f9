// The cost of delivering a wheel-status report without a change; a base sends a thousand of them
// per second.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

#include "bench/samples.h"
#include "bench/simulated_description.h"
#include "session/wheel_base.h"
#include "simulator/simulated_base.h"
#include "support/semaphore.h"

namespace quorvane {
namespace {

constexpr int batch = 1000;
constexpr int batches = 500;

// A source of reports: batches of the same report, on demand.
class Source {
 public:
  // Delivers one batch; returns the time from its first read to the read after its last. Blocks.
  std::chrono::steady_clock::duration deliver() {
    demand_.signal();
    delivered_.wait();
    return took_;
  }

  void stop() {
    stopped_ = true;
    demand_.signal();
  }

  // Called by the reader: blocks until a batch is demanded; false after stop().
  bool next() {
    if (left_ == 0) {
      took_ = std::chrono::steady_clock::now() - begin_;
      if (started_) delivered_.signal();
      started_ = true;
      demand_.wait();
      if (stopped_) return false;
      left_ = batch;
      begin_ = std::chrono::steady_clock::now();
    }
    --left_;
    return true;
  }

 private:
  Semaphore demand_;
  Semaphore delivered_;
  int left_ = 0;
  bool started_ = false;
  bool stopped_ = false;  // set before demand_ is signalled, which publishes it
  std::chrono::steady_clock::time_point begin_;
  std::chrono::steady_clock::duration took_{};
};

class SourcePort final : public HIDPort {
 public:
  explicit SourcePort(Source& source) : source_(source) {}

  ReadResult read(std::span<std::uint8_t> buffer) override {
    if (!source_.next()) return {HIDReturnCode::aborted, 0, 0};
    std::copy(report_.begin(), report_.end(), buffer.begin());
    return {HIDReturnCode::success, report_[0], report_.size()};
  }
  void interrupt() override { source_.stop(); }
  HIDReturn write(std::uint8_t /*reportID*/, ByteView /*data*/) override {
    return HIDReturnCode::success;
  }
  HIDReturn getReport(HIDReportKind /*kind*/, std::uint8_t /*reportID*/,
                      std::span<std::uint8_t> /*buffer*/, std::size_t& /*length*/) override {
    return HIDReturnCode::generalError;
  }

 private:
  Source& source_;
  const Bytes report_ = SimulatedBase(*FanatecProduct::lookup(0x0020)).wheelStatusReport();
};

class SourceDevice final : public SimulatedDescription {
 public:
  explicit SourceDevice(Source& source) : source_(source) {}

  HIDOpenResult open(bool /*exclusive*/) override {
    return {HIDReturnCode::success, std::make_unique<SourcePort>(source_)};
  }

 private:
  Source& source_;
};

// Delivers batches to a session, which ignores unchanged reports, and to an empty handler of all
// reports. Both include the reading; the handler also a copy of the report.
void routeUnchangedStatus(benchmark::State& state) {
  Source toSession;
  Source toNothing;
  const auto base =
      WheelBase::create(HIDEnumerator::info(std::make_shared<SourceDevice>(toSession)));
  base->connect();
  HIDConnection plain(HIDEnumerator::info(std::make_shared<SourceDevice>(toNothing)));
  plain.open(false);
  plain.onReport([](const HIDInputReport& report) { benchmark::DoNotOptimize(&report); });

  Samples ofSession;
  Samples ofNothing;
  for ([[maybe_unused]] const auto iteration : state) {
    ofSession.add(toSession.deliver());
    ofNothing.add(toNothing.deliver());
  }
  base->disconnect();
  plain.close();
  state.counters["route_ns"] = ofSession.quantile(0.5) / batch;
  state.counters["copy_ns"] = ofNothing.quantile(0.5) / batch;
  state.counters["routed_reports"] = static_cast<double>(batch) * batches;
}
BENCHMARK(routeUnchangedStatus)->Iterations(batches);

}  // namespace
}  // namespace quorvane
