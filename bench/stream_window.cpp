// The window on a base that sends a status report every millisecond, for measurement by another
// program. With the argument "bare", only a loop that reads each report as it arrives; with
// "gathering", a loop that reads them in batches: the lower bounds of both ways to read.
//
// The base runs in its own process and ends with this one. The wire between them preserves packet
// boundaries like a device node, and the window reads it through the port class of real nodes: the
// cost of a report in this process is its cost with a real base.

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QApplication>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "bench/wired_device.h"
#include "hid/reading_pace.h"
#include "simulator/simulated_base.h"
#include "support/semaphore.h"
#include "support/unique_fd.h"
#include "tests/app/no_panels.h"
#include "ui/kit/style.h"
#include "ui/shell/main_window.h"

namespace quorvane {
namespace {

constexpr const char* baseRole = "base";
constexpr const char* bareRole = "bare";
constexpr const char* gatheringRole = "gathering";

std::system_error failure(const char* what) { return {errno, std::generic_category(), what}; }

// A monitor without events: no device is plugged or unplugged.
class QuietMonitor final : public HIDMonitor {
 public:
  bool waitForEvent() override {
    stopped_.wait();
    return false;
  }
  void interrupt() override { stopped_.signal(); }

 private:
  Semaphore stopped_;
};

class WiredBackend final : public HIDBackend {
 public:
  explicit WiredBackend(UniqueFd fd) : device_(std::make_shared<WiredDevice>(std::move(fd))) {}

  std::vector<std::shared_ptr<HIDDeviceHandle>> devices(
      std::optional<std::int64_t> /*vendorID*/) override {
    return {device_};
  }
  std::unique_ptr<HIDMonitor> monitor(std::optional<std::int64_t> /*vendorID*/) override {
    return std::make_unique<QuietMonitor>();
  }

 private:
  std::shared_ptr<HIDDeviceHandle> device_;
};

class NoBus final : public USBBus {
 public:
  std::vector<std::unique_ptr<USBDevice>> devices() override { return {}; }
};

// Starts the base's process on one end of a wire and returns the other end.
UniqueFd startBase(char* program) {
  std::array<int, 2> ends{-1, -1};
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    throw failure("socketpair");
  }
  UniqueFd near(ends[0]);
  const UniqueFd far(ends[1]);
  if (::fcntl(near.get(), F_SETFL, O_NONBLOCK) != 0) throw failure("fcntl");
  if (::fcntl(far.get(), F_SETFD, 0) != 0) throw failure("fcntl");
  std::string end = std::to_string(far.get());
  std::string role = baseRole;
  std::array<char*, 4> words{program, role.data(), end.data(), nullptr};
  const int error =
      ::posix_spawn(nullptr, "/proc/self/exe", nullptr, nullptr, words.data(), environ);
  if (error != 0) throw std::system_error(error, std::generic_category(), "posix_spawn");
  return near;
}

int runWindow(int argc, char** argv) {
  UniqueFd wire = startBase(argv[0]);
  const QApplication application(argc, argv);
  QApplication::setStyle(new Style);
  NoPanels panels;
  WiredBackend backend(std::move(wire));
  NoBus usb;
  AppModel model({{backend, usb}, panels});
  MainWindow window(model);
  window.show();
  return QApplication::exec();
}

int runBare(char* program) {
  const UniqueFd wire = startBase(program);
  std::array<std::uint8_t, 256> report{};
  pollfd ready{wire.get(), POLLIN, 0};
  while (::poll(&ready, 1, -1) > 0) {
    if (::read(wire.get(), report.data(), report.size()) <= 0) break;
  }
  return 0;
}

int runGathering(char* program) {
  const UniqueFd wire = startBase(program);
  std::array<std::uint8_t, 256> report{};
  for (;;) {
    ssize_t length = 0;
    do {
      length = ::read(wire.get(), report.data(), report.size());
    } while (length > 0);
    if (length == 0 || errno != EAGAIN) return 0;
    ::poll(nullptr, 0, static_cast<int>(ReadingPace::gatherPause.count()));
  }
}

// Waits for a packet until the base's next report is due, then handles the packet and sends all due
// reports. False when the other end is closed.
bool serve(int wire, SimulatedBase& base) {
  const auto now = Monotonic::now();
  timespec pause{};
  const auto due = base.nextDue(now);
  if (due && *due > now) pause.tv_nsec = std::min<long>((*due - now).count(), 999'999'999L);
  pollfd ready{wire, POLLIN, 0};
  if (::ppoll(&ready, 1, due ? &pause : nullptr, nullptr) > 0) {
    std::array<std::uint8_t, 256> packet{};
    const ssize_t length = ::read(wire, packet.data(), packet.size());
    if (length <= 0) return false;
    base.receive(ByteView(packet.data(), static_cast<std::size_t>(length)), Monotonic::now());
  }
  while (const auto report = base.takeDue(Monotonic::now())) {
    if (::send(wire, report->data(), report->size(), MSG_NOSIGNAL) < 0) return false;
  }
  return true;
}

int runBase(const char* end) {
  int wire = -1;
  std::from_chars(end, end + std::strlen(end), wire);
  SimulatedBase base(*FanatecProduct::lookup(defaultSimulatedProduct));
  base.behaviour().streamWheelStatus = true;
  while (serve(wire, base)) {
  }
  return 0;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  using namespace quorvane;  // NOLINT(google-build-using-namespace): this program's own
  const std::string_view role = argc > 1 ? argv[1] : "";
  if (role == baseRole && argc > 2) return runBase(argv[2]);
  if (role == bareRole) return runBare(argv[0]);
  if (role == gatheringRole) return runGathering(argv[0]);
  return runWindow(argc, argv);
}
