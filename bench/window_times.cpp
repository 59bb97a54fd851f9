// window_times ROUNDS -- PROGRAM [ARGUMENT...] [-- PROGRAM [ARGUMENT...]]...
//
// Runs the programs in turn, ROUNDS times each, with their output thrown away, and watches from a
// connection of its own what they do to the X server. Prints a line for every run: the number of
// the program, then in microseconds from its start until its window was mapped, until the window
// showed more than one colour, and until the last thing was drawn before a pause.

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>
#include <stdexcept>
#include <vector>

#include "bench/program_words.h"

namespace {

using Steady = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds patience{20'000};
constexpr milliseconds pause{300};        // after which nothing more is expected to be drawn
constexpr std::uint16_t leastSide = 200;  // smaller windows are helpers, never seen

[[noreturn]] void fail(const char* message) {
  std::fprintf(stderr, "window_times: %s\n", message);
  std::exit(2);
}

struct Free {
  void operator()(void* what) const { std::free(what); }
};
template <typename What>
using Owned = std::unique_ptr<What, Free>;

using Program = quorvane::ProgramWords;

// A program between its start and its end.
class Process {
 public:
  explicit Process(const Program& program) {
    posix_spawn_file_actions_t silence;
    ::posix_spawn_file_actions_init(&silence);
    ::posix_spawn_file_actions_addopen(&silence, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&silence, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int error = ::posix_spawnp(&id_, program[0], &silence, nullptr, program.data(), environ);
    ::posix_spawn_file_actions_destroy(&silence);
    if (error != 0) fail("a program does not start");
  }

  ~Process() {
    ::kill(id_, SIGTERM);
    ::waitpid(id_, nullptr, 0);
  }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

 private:
  pid_t id_ = -1;
};

class Display {
 public:
  Display() : connection_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(connection_) != 0) fail("no display");
    const auto* const damage = xcb_get_extension_data(connection_, &xcb_damage_id);
    if (damage == nullptr || damage->present == 0) fail("the display has no damage extension");
    damageNotify_ = damage->first_event + XCB_DAMAGE_NOTIFY;
    const Owned<xcb_damage_query_version_reply_t> version(xcb_damage_query_version_reply(
        connection_, xcb_damage_query_version(connection_, 1, 1), nullptr));
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root, XCB_CW_EVENT_MASK, &events);
    sync();
  }

  ~Display() { xcb_disconnect(connection_); }
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  // The next event by the deadline.
  Owned<xcb_generic_event_t> next(Steady::time_point deadline) {
    for (;;) {
      Owned<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
      if (event) return event;
      if (xcb_connection_has_error(connection_) != 0) fail("the display is gone");
      const auto left = std::chrono::ceil<milliseconds>(deadline - Steady::now()).count();
      if (left <= 0) return nullptr;
      pollfd wire{xcb_get_file_descriptor(connection_), POLLIN, 0};
      ::poll(&wire, 1, static_cast<int>(left));
    }
  }

  bool isDamage(const xcb_generic_event_t& event) const {
    return (event.response_type & 0x7F) == damageNotify_;
  }

  void reportDamage(xcb_window_t window) {
    xcb_damage_create(connection_, xcb_generate_id(connection_), window,
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    xcb_flush(connection_);
  }

  bool showsColours(xcb_window_t window) {
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    if (!size) return false;
    const Owned<xcb_get_image_reply_t> image(
        xcb_get_image_reply(connection_,
                            xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
                                          size->width, size->height, ~0U),
                            nullptr));
    if (!image) return false;
    const std::uint8_t* const bytes = xcb_get_image_data(image.get());
    const auto length = static_cast<std::size_t>(xcb_get_image_data_length(image.get()));
    constexpr std::size_t pixel = 4;
    return length > pixel && std::memcmp(bytes, bytes + pixel, length - pixel) != 0;
  }

  // Forgets all that happened so far.
  void sync() {
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    }
  }

 private:
  xcb_connection_t* connection_;
  int damageNotify_ = 0;
};

struct Times {
  std::optional<Steady::time_point> mapped;
  std::optional<Steady::time_point> painted;
  Steady::time_point drawn;
};

class Watch {
 public:
  explicit Watch(Display& display) : display_(display) {}

  // Follows the program's window until it stays as it is.
  Times follow(Steady::time_point begin) {
    for (;;) {
      const auto deadline = times_.painted ? times_.drawn + pause : begin + patience;
      const auto event = display_.next(deadline);
      if (!event && times_.painted) return times_;
      if (!event) fail("a program shows no window");
      take(*event);
    }
  }

  void waitUntilGone() {
    while (!isGone_) {
      const auto event = display_.next(Steady::now() + patience);
      if (!event) fail("a window stays");
      take(*event);
    }
  }

 private:
  void take(const xcb_generic_event_t& event) {
    const auto now = Steady::now();
    if (display_.isDamage(event)) {
      damaged(reinterpret_cast<const xcb_damage_notify_event_t&>(event).drawable, now);
      return;
    }
    switch (event.response_type & 0x7F) {
      case XCB_CREATE_NOTIFY: {
        const auto& made = reinterpret_cast<const xcb_create_notify_event_t&>(event);
        if (made.width >= leastSide && made.height >= leastSide) display_.reportDamage(made.window);
        break;
      }
      case XCB_MAP_NOTIFY:
        if (window_ == XCB_WINDOW_NONE) {
          window_ = reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
          times_.mapped = now;
        }
        break;
      case XCB_DESTROY_NOTIFY:
        isGone_ = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == window_;
        break;
      default:
        break;
    }
  }

  void damaged(xcb_drawable_t drawable, Steady::time_point now) {
    if (drawable != window_) return;
    times_.drawn = now;
    if (!times_.painted && display_.showsColours(window_)) times_.painted = now;
  }

  Display& display_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  bool isGone_ = false;
  Times times_;
};

void measure(Display& display, const Program& program, std::size_t number, bool counts) {
  display.sync();
  Watch watch(display);
  Times times;
  const auto begin = Steady::now();
  {
    const Process process(program);
    times = watch.follow(begin);
  }
  watch.waitUntilGone();
  if (!counts) return;
  const auto microseconds = [&](Steady::time_point moment) {
    return std::chrono::duration<double, std::micro>(moment - begin).count();
  };
  std::printf("%zu %.0f %.0f %.0f\n", number, microseconds(*times.mapped),
              microseconds(*times.painted), microseconds(times.drawn));
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 2 ? std::atoi(argv[1]) : 0;
  if (rounds < 1) fail("usage: window_times ROUNDS -- PROGRAM [ARGUMENT...]...");
  std::vector<Program> programs;
  try {
    programs = quorvane::programsOf(argv + 2);
  } catch (const std::invalid_argument& error) {
    fail(error.what());
  }
  Display display;
  // The first run of each fills the caches and does not count.
  for (int round = 0; round <= rounds; ++round) {
    for (std::size_t i = 0; i < programs.size(); ++i) {
      measure(display, programs[i], i + 1, round > 0);
    }
  }
  return 0;
}
