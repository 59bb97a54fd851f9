// Soak test of the application model: a simulated base is plugged in and out repeatedly, and then
// sends unsolicited menu reports. The process must not use more memory, threads and descriptors at
// the end than after the first tenth.
//
//   quorvane-soak [ROUNDS REPORTS]     without numbers: 100000 rounds, 1000000 reports
//
// Prints both figures. Exit status: 1 if a figure grew or a report was lost, 2 for wrong usage.

#include <fmt/format.h>
#include <malloc.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "app/app_model.h"
#include "simulator/simulated_machine.h"
#include "support/text.h"
#include "tests/app/no_panels.h"
#include "tests/support/process_facts.h"

namespace quorvane {
namespace {

constexpr std::int64_t defaultRounds = 100'000;
constexpr std::int64_t defaultReports = 1'000'000;
constexpr std::chrono::seconds patience{60};  // the time-out of one round

// Fewer than a base keeps for a reader that does not read.
constexpr std::int64_t reportsAtOnce = 1'000;

constexpr std::int64_t kibibyte = 1024;

// What the process uses.
struct Figures {
  std::int64_t heap = 0;      // allocated, KiB
  std::int64_t resident = 0;  // KiB
  std::int64_t threads = 0;
  std::int64_t descriptors = 0;

  static Figures now() {
    std::int64_t total = 0;
    std::int64_t pages = 0;
    std::ifstream("/proc/self/statm") >> total >> pages;
    return {static_cast<std::int64_t>(::mallinfo2().uordblks) / kibibyte,
            pages * ::sysconf(_SC_PAGESIZE) / kibibyte, static_cast<std::int64_t>(threadCount()),
            static_cast<std::int64_t>(descriptorCount())};
  }
};

struct Row {
  const char* name;
  std::int64_t Figures::*figure;
  // Tolerated: what the allocator and the kernel keep for later, and the thread of the work queue,
  // which ends by itself when the queue is empty.
  std::int64_t growth;
};

const std::vector<Row>& rows() {
  static const std::vector<Row> all{{"allocated, KiB", &Figures::heap, 32},
                                    {"resident, KiB", &Figures::resident, 2048},
                                    {"threads", &Figures::threads, 1},
                                    {"descriptors", &Figures::descriptors, 0}};
  return all;
}

// Prints the figures. Returns whether none grew.
bool report(const Figures& early, const Figures& late) {
  bool isFlat = true;
  fmt::print("  {:<16}{:>12}{:>12}{:>12}\n", "", "after 10 %", "at the end", "may grow");
  for (const auto& [name, figure, growth] : rows()) {
    const bool grew = late.*figure - early.*figure > growth;
    fmt::print("  {:<16}{:>12}{:>12}{:>12}{}\n", name, early.*figure, late.*figure, growth,
               grew ? "  GREW" : "");
    isFlat = isFlat && !grew;
  }
  return isFlat;
}

class Soak {
 public:
  Soak() : machine_(FanatecProduct::lookup(defaultSimulatedProduct).value()) {
    QObject::connect(&model_, &AppModel::menuChangedAtBase, [this] { ++heard_; });
    waitUntil([this] { return isReady(); });
  }

  // Return whether no figure grew; hearReports() also whether no report was lost.
  bool plugAndUnplug(std::int64_t rounds) {
    return watched(fmt::format("{} rounds of plugging in and pulling out", rounds), rounds,
                   [this](std::int64_t count) {
                     for (std::int64_t i = 0; i < count; ++i) round();
                   });
  }

  bool hearReports(std::int64_t reports) {
    const std::int64_t before = heard_;
    const bool isFlat = watched(fmt::format("{} reports that nobody asked for", reports), reports,
                                [this](std::int64_t count) { sendReports(count); });
    fmt::print("  {} of them reached the model\n", heard_ - before);
    return isFlat && heard_ - before == reports;
  }

 private:
  // Does `count` units of work, and compares the figures at the end with those after the first
  // tenth.
  static bool watched(const std::string& what, std::int64_t count,
                      const std::function<void(std::int64_t)>& work) {
    const auto begin = Monotonic::now();
    work(count / 10);
    const Figures early = Figures::now();
    work(count - count / 10);
    const Figures late = Figures::now();
    fmt::print("{}, {:.1f} s\n", what, Seconds(Monotonic::now() - begin).count());
    return report(early, late);
  }

  void round() {
    machine_.device().unplug();
    waitUntil([this] { return model_.devices().empty() && !model_.isConnected(); });
    machine_.device().plug();
    waitUntil([this] { return isReady(); });
    machine_.device().transcript().clear();
  }

  // Each report differs from the one before.
  void sendReports(std::int64_t count) {
    for (std::int64_t sent = 0; sent < count; ++sent) {
      value_ = (value_ + 1) % 100;
      machine_.device().turn(TuningParameter::forceFeedback, value_);
      if (sent % reportsAtOnce == 0 || sent + 1 == count) hear();
    }
  }

  void hear() {
    machine_.device().waitUntilQuiet();
    QCoreApplication::sendPostedEvents();
  }

  bool isReady() const { return model_.isConnected() && model_.tuning() && !model_.busy(); }

  void waitUntil(const std::function<bool()>& holds) {
    QCoreApplication::sendPostedEvents();
    if (holds()) return;
    QEventLoop loop;
    QTimer overdue;
    bool isOverdue = false;
    QObject::connect(&overdue, &QTimer::timeout, [&] {
      isOverdue = true;
      loop.quit();
    });
    const auto listening = QObject::connect(&model_, &AppModel::changed, [&] {
      if (holds()) loop.quit();
    });
    overdue.start(patience);
    loop.exec();
    QObject::disconnect(listening);
    if (isOverdue) throw std::runtime_error("hangs: " + model_.statusLine());
  }

  SimulatedMachine machine_;
  NoPanels panels_;
  const PresetStore store_{std::filesystem::temp_directory_path() / "quorvane-soak" /
                           "presets.json"};  // never written
  AppModel model_{{machine_.platform(), panels_, store_}};
  std::int64_t heard_ = 0;
  std::int64_t value_ = 0;
};

bool run(std::int64_t rounds, std::int64_t reports) {
  Soak soak;
  const bool plugged = soak.plugAndUnplug(rounds);
  const bool heard = soak.hearReports(reports);
  fmt::print("soak: {}\n", plugged && heard ? "passed" : "FAILED");
  return plugged && heard;
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  std::int64_t rounds = quorvane::defaultRounds;
  std::int64_t reports = quorvane::defaultReports;
  if (argc > 1) {
    const auto givenRounds = quorvane::parseInteger(argv[1]);
    const auto givenReports = argc == 3 ? quorvane::parseInteger(argv[2]) : std::nullopt;
    if (givenRounds.value_or(0) < 10 || givenReports.value_or(0) < 10) {
      fmt::print(stderr, "usage: quorvane-soak [ROUNDS REPORTS], each at least 10\n");
      return 2;
    }
    rounds = *givenRounds;
    reports = *givenReports;
  }
  try {
    return quorvane::run(rounds, reports) ? 0 : 1;
  } catch (const std::exception& error) {
    fmt::print(stderr, "soak: {}\n", error.what());
    return 1;
  }
}
