#include <fmt/format.h>
#include <poll.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "protocol/error.h"
#include "simulator/simbase/event_log.h"
#include "simulator/simbase/uhid_host.h"
#include "simulator/simbase/usbip_host.h"
#include "support/printing.h"
#include "support/standard_streams.h"
#include "support/text.h"

namespace quorvane {
namespace {

struct Options {
  std::string product = fmt::format("0x{:04x}", defaultSimulatedProduct);
  std::string transport = "uhid";
  std::string shownProduct;
  std::string serialNumber;
  std::string layout = "sdk";
  std::string mode = "standard";
  int set = 2;
  std::vector<std::string> ignored;
  std::vector<std::string> most;
  double answerDelayMilliseconds = 0;
  double switchDelayMilliseconds = 0;
  bool silent = false;
  bool noTuning = false;
  int unplugAfter = 0;
  bool stream = false;
  bool foreign = false;
  bool stale = false;
  std::string transcript;
};

void addOptions(CLI::App& app, Options& options) {
  app.add_option("--product", options.product, "Hexadecimal product ID or a part of a name");
  app.add_option("--transport", options.transport, "How the kernel gets it")
      ->check(CLI::IsMember({"uhid", "usb"}));
  app.add_option("--show-as", options.shownProduct,
                 "Show another hexadecimal product ID, of pedals for example")
      ->type_name("ID");
  app.add_option("--serial", options.serialNumber, "Serial number");
  app.add_option("--layout", options.layout, "Layout of menu writes that its firmware expects")
      ->check(CLI::IsMember({"sdk", "linux"}));
  app.add_option("--mode", options.mode, "Menu mode to start with")
      ->check(CLI::IsMember({"standard", "advanced"}));
  app.add_option("--set", options.set, "Active set to start with")->check(CLI::Range(1, 5));
  app.add_option("--ignore", options.ignored, "Ignore writes of this setting; may be repeated")
      ->type_name("CODE");
  app.add_option("--most", options.most, "Keep no more than this; may be repeated")
      ->type_name("CODE=VALUE");
  app.add_option("--answer-delay", options.answerDelayMilliseconds, "Answer late")->type_name("MS");
  app.add_option("--switch-delay", options.switchDelayMilliseconds, "Switch the set late")
      ->type_name("MS");
  app.add_flag("--silent", options.silent, "Answer nothing");
  app.add_flag("--no-tuning", options.noTuning, "Answer identity requests only");
  app.add_option("--unplug-after", options.unplugAfter, "Leave after this many packets")
      ->type_name("N");
  app.add_flag("--stream", options.stream, "Send a wheel-status report every millisecond");
  app.add_flag("--foreign", options.foreign, "Mix reports of other kinds into the answers");
  app.add_flag("--stale", options.stale, "Send the menu as it was before each answer");
  app.add_option("--transcript", options.transcript, "Write what the kernel does to this file");
  app.footer(
      "Reads commands from standard input, one a line: unplug, off (loses power), plug,\n"
      "turn CODE VALUE, quit.\n"
      "Ends with its standard input.");
}

TuningParameter parameterNamed(const std::string& code) {
  const auto parameter = TuningParameter::named(code);
  if (!parameter) throw std::runtime_error(fmt::format("there is no setting \"{}\"", code));
  return *parameter;
}

std::pair<TuningParameter, std::int64_t> parameterAndValue(const std::string& text) {
  const std::size_t end = text.find('=');
  const auto value = end == std::string::npos ? std::nullopt : parseInteger(text.substr(end + 1));
  if (!value) throw std::runtime_error(fmt::format("\"{}\" is not CODE=VALUE", text));
  return {parameterNamed(text.substr(0, end)), *value};
}

std::int64_t productID(const std::string& text) {
  const auto id = parseHexNumber(text);
  if (!id || *id > 0xFFFF) throw std::runtime_error(fmt::format("\"{}\" is no product ID", text));
  return *id;
}

SimulatedBase makeBase(const Options& options) {
  const auto product = simulatableProduct(options.product);
  if (!product) {
    throw std::runtime_error(
        fmt::format("\"{}\" names no product with a tuning menu", options.product));
  }
  SimulatedBase base(*product);
  base.serialNumber = options.serialNumber;
  if (!options.shownProduct.empty()) base.shownProductID = productID(options.shownProduct);
  base.menu().select(options.set);
  if (options.mode == "advanced") base.menu().toggleMode();
  SimulatedBehaviour& behaviour = base.behaviour();
  behaviour.layout = *tuningLayout(options.layout);
  for (const std::string& code : options.ignored) behaviour.ignored.insert(parameterNamed(code));
  for (const std::string& limit : options.most) behaviour.most.insert(parameterAndValue(limit));
  behaviour.answerDelay =
      std::chrono::duration<double, std::milli>(options.answerDelayMilliseconds);
  behaviour.switchDelay =
      std::chrono::duration<double, std::milli>(options.switchDelayMilliseconds);
  behaviour.silent = options.silent;
  behaviour.tuningSilent = options.noTuning;
  if (options.unplugAfter > 0) behaviour.unplugAfter = options.unplugAfter;
  behaviour.streamWheelStatus = options.stream;
  behaviour.foreignReports = options.foreign;
  behaviour.staleAnswers = options.stale;
  return base;
}

// Reads lines from standard input with read(2): poll() does not see lines in a stdio buffer.
class LineReader {
 public:
  // The lines that one read(2) completes; none at the end of the input.
  std::optional<std::vector<std::string>> read() {
    std::array<char, 4096> chunk{};
    const ssize_t got = ::read(STDIN_FILENO, chunk.data(), chunk.size());
    if (got <= 0) return std::nullopt;
    rest_.append(chunk.data(), static_cast<std::size_t>(got));
    std::vector<std::string> lines;
    for (std::size_t end = rest_.find('\n'); end != std::string::npos; end = rest_.find('\n')) {
      lines.push_back(rest_.substr(0, end));
      rest_.erase(0, end + 1);
    }
    return lines;
  }

 private:
  std::string rest_;
};

class Program {
 public:
  Program(SimulatedBase& base, KernelHost& host, EventLog& log)
      : base_(base), host_(host), log_(log) {}

  void run() {
    plug();
    while (running_) step();
    if (plugged_) unplug();
  }

 private:
  void step() {
    std::array<pollfd, 2> watched{{{STDIN_FILENO, POLLIN, 0}, {host_.fd(), POLLIN, 0}}};
    ::poll(watched.data(), watched.size(), timeout());
    if (watched[1].revents != 0) host_.service();
    if (watched[0].revents != 0) readCommands();
    if (plugged_ && (!base_.isPlugged() || host_.fd() < 0)) unplug();
    deliver();
  }

  // Milliseconds until the next report is due; -1 (no timeout) if none is queued or the kernel
  // accepts none now.
  int timeout() {
    const auto now = Monotonic::now();
    const auto due = base_.nextDue(now);
    if (!due || !host_.canSend()) return -1;
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*due - now).count();
    return static_cast<int>(std::clamp<std::int64_t>(wait, 0, 60'000));
  }

  // Sends due reports, a few per call, so that the kernel's requests are handled in between.
  void deliver() {
    constexpr int most = 16;
    for (int i = 0; i < most && host_.canSend(); ++i) {
      const auto report = base_.takeDue(Monotonic::now());
      if (!report) return;
      host_.send(*report);
    }
  }

  void readCommands() {
    const auto lines = input_.read();
    if (!lines) running_ = false;
    for (const std::string& line : lines.value_or(std::vector<std::string>{})) obey(line);
  }

  void obey(const std::string& line) {
    std::istringstream words(line);
    std::string command;
    words >> command;
    if (command == "quit") {
      running_ = false;
    } else if (command == "unplug") {
      if (plugged_) unplug();
    } else if (command == "off") {
      if (plugged_) unplug();
      base_.menu().boot();
    } else if (command == "plug") {
      if (!plugged_) plug();
    } else if (command == "turn") {
      turn(words);
    } else {
      printTo(stderr, "unknown command: {}\n", oneLine(line));
    }
  }

  void turn(std::istringstream& words) {
    std::string code;
    std::int64_t value = 0;
    words >> code >> value;
    try {
      base_.turn(parameterNamed(code), value, Monotonic::now());
    } catch (const std::exception& error) {
      printTo(stderr, "{}\n", error.what());
    }
  }

  void plug() {
    base_.plug();
    host_.plug();
    plugged_ = true;
    announce("plugged");
  }

  void unplug() {
    base_.unplug();
    host_.unplug();
    plugged_ = false;
    announce("unplugged");
  }

  void announce(const char* event) {
    log_.add(event);
    printTo(stdout, "{}\n", event);
    flush(stdout);
  }

  SimulatedBase& base_;
  KernelHost& host_;
  EventLog& log_;
  LineReader input_;
  bool running_ = true;
  bool plugged_ = false;
};

void serve(const Options& options) {
  SimulatedBase base = makeBase(options);
  EventLog log(options.transcript);
  std::unique_ptr<KernelHost> host;
  if (options.transport == "usb") {
    host = std::make_unique<UsbipHost>(base, log);
  } else {
    host = std::make_unique<UhidHost>(base, log);
  }
  Program(base, *host, log).run();
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  quorvane::prepareStandardStreams();
  CLI::App app("A simulated wheel base that the kernel takes for a real one", "quorvane-simbase");
  quorvane::Options options;
  quorvane::addOptions(app, options);
  CLI11_PARSE(app, argc, argv);
  try {
    quorvane::serve(options);
  } catch (const std::exception& error) {
    quorvane::printTo(stderr, "quorvane-simbase: {}\n", error.what());
    return 1;
  }
  return 0;
}
