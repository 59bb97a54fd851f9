// window_times ROUNDS -- [NAME=VALUE...] PROGRAM [ARGUMENT...] [-- ...]...
//
// Runs the programs alternately, ROUNDS times each, with these additions to their environment,
// discards their output and watches their windows through its own X connection. Prints a line for
// every run: the number of the program, then the microseconds from its start until its window was
// mapped, until the window showed more than one colour, and until it was last drawn before a pause.
// Only a window counts that is large enough and whose properties name that process.
//
// For a program without a window, prints one line with its number and "ended" or "windowless", and
// does not run it again.

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
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
#include "support/unique_fd.h"

namespace {

using Steady = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr milliseconds patience{20'000};
constexpr milliseconds pause{300};        // without drawing: the window is complete
constexpr std::uint16_t leastSide = 200;  // smaller windows are invisible helpers

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

// This process's environment plus the NAME=VALUE words before the program's name.
class Environment {
 public:
  explicit Environment(const Program& program) : additions_(program.begin(), nameOf(program)) {
    const auto isReplaced = [&](const char* entry) {
      const std::size_t length = std::strcspn(entry, "=") + 1;
      return std::any_of(additions_.begin(), additions_.end(), [&](const char* addition) {
        return std::strncmp(entry, addition, length) == 0;
      });
    };
    for (char** entry = environ; *entry != nullptr; ++entry) {
      if (!isReplaced(*entry)) entries_.push_back(*entry);
    }
    entries_.insert(entries_.end(), additions_.begin(), additions_.end());
    entries_.push_back(nullptr);
  }

  char* const* data() const { return entries_.data(); }

  // The position of the program's name; of the null pointer if there is none.
  static Program::const_iterator nameOf(const Program& program) {
    return std::find_if(program.begin(), program.end(), [](const char* word) {
      return word == nullptr || std::strchr(word, '=') == nullptr;
    });
  }

 private:
  std::vector<char*> additions_;
  std::vector<char*> entries_;
};

// A running program.
class Process {
 public:
  explicit Process(const Program& program) {
    char* const* const words = &*Environment::nameOf(program);
    if (*words == nullptr) fail("a program has no name");
    const Environment environment(program);
    posix_spawn_file_actions_t silence;
    ::posix_spawn_file_actions_init(&silence);
    ::posix_spawn_file_actions_addopen(&silence, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawn_file_actions_addopen(&silence, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int error = ::posix_spawnp(&id_, words[0], &silence, nullptr, words, environment.data());
    ::posix_spawn_file_actions_destroy(&silence);
    if (error != 0) fail("a program does not start");
    end_ = quorvane::UniqueFd(static_cast<int>(::syscall(SYS_pidfd_open, id_, 0)));
    if (!end_) fail("a program cannot be watched");
  }

  ~Process() { stop(); }
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;

  pid_t id() const { return id_; }

  // A file descriptor that is readable once the process has ended.
  int end() const { return end_.get(); }

  // Terminates the process and blocks until it has ended.
  void stop() {
    if (id_ < 0) return;
    ::kill(id_, SIGTERM);
    if (!hasEndedWithin(patience)) ::kill(id_, SIGKILL);
    ::waitpid(id_, nullptr, 0);
    id_ = -1;
  }

  bool hasEndedWithin(milliseconds time) const {
    pollfd end{end_.get(), POLLIN, 0};
    return ::poll(&end, 1, static_cast<int>(time.count())) > 0;
  }

 private:
  pid_t id_ = -1;
  quorvane::UniqueFd end_;
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
    const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        connection_, xcb_intern_atom(connection_, 0, std::strlen(processAtom), processAtom),
        nullptr));
    if (!atom) fail("the display has no names");
    processProperty_ = atom->atom;
    sync();
  }

  ~Display() { xcb_disconnect(connection_); }
  Display(const Display&) = delete;
  Display& operator=(const Display&) = delete;

  // The next event; none at the deadline, or once `process` has ended and no events are left.
  Owned<xcb_generic_event_t> next(Steady::time_point deadline, const Process* process = nullptr) {
    for (;;) {
      Owned<xcb_generic_event_t> event(xcb_poll_for_event(connection_));
      if (event) return event;
      if (xcb_connection_has_error(connection_) != 0) fail("the display is gone");
      const auto left = std::chrono::ceil<milliseconds>(deadline - Steady::now()).count();
      if (left <= 0) return nullptr;
      std::array<pollfd, 2> sources{{{xcb_get_file_descriptor(connection_), POLLIN, 0},
                                     {process != nullptr ? process->end() : -1, POLLIN, 0}}};
      ::poll(sources.data(), sources.size(), static_cast<int>(left));
      if (sources[0].revents == 0 && sources[1].revents != 0) return nullptr;
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

  // Whether the window's properties name the process and it is large enough not to be a helper.
  bool isOf(const Process& process, xcb_window_t window) {
    const Owned<xcb_get_property_reply_t> owner(xcb_get_property_reply(
        connection_,
        xcb_get_property(connection_, 0, window, processProperty_, XCB_ATOM_CARDINAL, 0, 1),
        nullptr));
    if (!owner || xcb_get_property_value_length(owner.get()) != sizeof(std::uint32_t)) return false;
    std::uint32_t id = 0;
    std::memcpy(&id, xcb_get_property_value(owner.get()), sizeof id);
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window), nullptr));
    return id == static_cast<std::uint32_t>(process.id()) && size && size->width >= leastSide &&
           size->height >= leastSide;
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

  // Discards all events so far.
  void sync() {
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    }
  }

 private:
  static constexpr const char* processAtom = "_NET_WM_PID";

  xcb_connection_t* connection_;
  int damageNotify_ = 0;
  xcb_atom_t processProperty_ = XCB_ATOM_NONE;
};

struct Times {
  Steady::time_point mapped;
  std::optional<Steady::time_point> painted;
  Steady::time_point drawn;
};

// Watches a process's windows on the display.
class Watch {
 public:
  Watch(Display& display, const Process& process) : display_(display), process_(process) {}

  // Follows the process's window until nothing more is drawn. None if no window is painted.
  std::optional<Times> follow(Steady::time_point begin) {
    for (;;) {
      const auto deadline = times_.painted ? times_.drawn + pause : begin + patience;
      const auto event = display_.next(deadline, &process_);
      if (event) {
        take(*event);
      } else if (times_.painted) {
        return times_;
      } else {
        return std::nullopt;
      }
    }
  }

  // Blocks until the followed window is gone.
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
        if (made.width >= leastSide && made.height >= leastSide) watchDamage(made.window);
        break;
      }
      case XCB_MAP_NOTIFY:
        mapped(reinterpret_cast<const xcb_map_notify_event_t&>(event).window, now);
        break;
      case XCB_DESTROY_NOTIFY:
        isGone_ |= reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == window_;
        break;
      default:
        break;
    }
  }

  void watchDamage(xcb_window_t window) {
    display_.reportDamage(window);
    watched_.push_back(window);
  }

  void mapped(xcb_window_t window, Steady::time_point now) {
    if (window_ != XCB_WINDOW_NONE || !display_.isOf(process_, window)) return;
    window_ = window;
    times_.mapped = now;
    // A window that was small at first: its current content is reported at once.
    if (std::find(watched_.begin(), watched_.end(), window) == watched_.end()) watchDamage(window);
  }

  void damaged(xcb_drawable_t drawable, Steady::time_point now) {
    if (drawable != window_) return;
    times_.drawn = now;
    if (!times_.painted && display_.showsColours(window_)) times_.painted = now;
  }

  Display& display_;
  const Process& process_;
  std::vector<xcb_window_t> watched_;
  xcb_window_t window_ = XCB_WINDOW_NONE;
  bool isGone_ = false;
  Times times_;
};

// Runs the program once and prints its line, if it counts. False if the program shows no window.
bool measure(Display& display, const Program& program, std::size_t number, bool counts) {
  display.sync();
  const auto begin = Steady::now();
  Process process(program);
  Watch watch(display, process);
  const std::optional<Times> times = watch.follow(begin);
  if (!times) {
    const bool ended = process.hasEndedWithin(milliseconds(0));
    std::printf("%zu %s\n", number, ended ? "ended" : "windowless");
  } else if (counts) {
    const auto microseconds = [&](Steady::time_point moment) {
      return std::chrono::duration<double, std::micro>(moment - begin).count();
    };
    std::printf("%zu %.0f %.0f %.0f\n", number, microseconds(times->mapped),
                microseconds(*times->painted), microseconds(times->drawn));
  }
  std::fflush(stdout);
  process.stop();
  if (times) watch.waitUntilGone();
  return times.has_value();
}

}  // namespace

int main(int argc, char** argv) {
  const int rounds = argc > 2 ? std::atoi(argv[1]) : 0;
  if (rounds < 1) fail("usage: window_times ROUNDS -- [NAME=VALUE...] PROGRAM [ARGUMENT...]...");
  std::vector<Program> programs;
  try {
    programs = quorvane::programsOf(argv + 2);
  } catch (const std::invalid_argument& error) {
    fail(error.what());
  }
  Display display;
  std::vector<bool> shows(programs.size(), true);
  // The first run of each warms the caches and is not counted.
  for (int round = 0; round <= rounds; ++round) {
    for (std::size_t i = 0; i < programs.size(); ++i) {
      shows[i] = shows[i] && measure(display, programs[i], i + 1, round > 0);
    }
  }
  return 0;
}
