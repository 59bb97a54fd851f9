// arrival_bench ROUNDS
//
// The latency that batching of reports adds while a base sends a status every millisecond: of a
// menu that the base sends unasked, until the session's handler runs, and of a request, until its
// answer is stored. Prints, in microseconds: the median and maximum of the former, the median and
// maximum of the latter, and the median of requests to a base that sends nothing else.

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include "bench/samples.h"
#include "bench/session_exchange.h"
#include "bench/wires.h"
#include "hid/reading_pace.h"
#include "simulator/simulated_base.h"
#include "support/semaphore.h"

namespace quorvane {
namespace {

using std::chrono::milliseconds;

// After this time the reader batches: a report arrives every millisecond, a few less on a busy
// machine.
constexpr milliseconds untilGathering{ReadingPace::promptReports * 3 / 2};

// Rounds begin at evenly spread phases of a batching pause.
constexpr int parts = 7;

void awaitGathering(int round) {
  std::this_thread::sleep_for(untilGathering + ReadingPace::gatherPause * (round % parts) / parts);
}

double microseconds(Samples& samples, double quantile) { return samples.quantile(quantile) / 1000; }

int run(int rounds) {
  SessionExchange quiet;
  SessionExchange streaming;
  Semaphore arrived;
  const Bytes menu = SimulatedBase(*FanatecProduct::lookup(0x0020)).menu().report();
  const StatusStream stream(streaming.farEnd());
  quiet.exchange();
  streaming.exchange();

  Samples ofUnasked;
  Samples ofAsked;
  Samples ofQuiet;
  for (int round = 0; round < rounds; ++round) {
    awaitGathering(round);
    streaming.base().setOnTuningUpdate([&](const TuningSnapshot&) { arrived.signal(); });
    timed(ofUnasked, [&] {
      put(streaming.farEnd(), menu);
      arrived.wait();
    });
    streaming.base().setOnTuningUpdate({});
    awaitGathering(round);
    timed(ofAsked, [&] { streaming.exchange(); });
    timed(ofQuiet, [&] { quiet.exchange(); });
  }
  std::printf("%.1f %.1f %.1f %.1f %.1f\n", microseconds(ofUnasked, 0.5),
              microseconds(ofUnasked, 1), microseconds(ofAsked, 0.5), microseconds(ofAsked, 1),
              microseconds(ofQuiet, 0.5));
  return EXIT_SUCCESS;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 0;
  if (rounds < 1) {
    std::fputs("usage: arrival_bench ROUNDS\n", stderr);
    return 2;
  }
  return quorvane::run(rounds);
}
