#pragma once

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "protocol/commands.h"
#include "simulator/simulated_base.h"
#include "support/bytes.h"
#include "support/thread.h"
#include "support/unique_fd.h"

namespace quorvane {

// A pair of connected sockets that preserve packet boundaries, like a device node.
inline std::pair<UniqueFd, UniqueFd> wire() {
  std::array<int, 2> ends{-1, -1};
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw std::system_error(errno, std::generic_category(), "socketpair");
  }
  return {UniqueFd(ends[0]), UniqueFd(ends[1])};
}

// A wire whose first end is non-blocking, like an open node.
inline std::pair<UniqueFd, UniqueFd> nodeLikeWire() {
  auto ends = wire();
  if (::fcntl(ends.first.get(), F_SETFL, O_NONBLOCK) != 0) {
    throw std::system_error(errno, std::generic_category(), "fcntl");
  }
  return ends;
}

inline void put(int fd, ByteView bytes) {
  if (::write(fd, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
}

// The far end of a wire: a thread that answers each menu request with the same report.
class Responder {
 public:
  explicit Responder(UniqueFd fd)
      : fd_(std::move(fd)), thread_("responder", [this] { answer(); }) {}

  int fd() const { return fd_.get(); }

  // Blocks until the thread ends, which it does once the near end is closed.
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

// A thread that sends a wheel-status report every millisecond, until destruction.
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

}  // namespace quorvane
