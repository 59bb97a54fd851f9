#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "app/file_watch.h"
#include "tests/faults/company.h"
#include "tests/faults/fault.h"
#include "tests/faults/fault_table.h"
#include "tests/faults/leftovers.h"
#include "tests/faults/model/action.h"
#include "tests/faults/public_members.h"
#include "tests/support/file_calls.h"

namespace quorvane {
namespace {

using Moment = EventfulClock::Moment;

constexpr const char* tableName = "model";
constexpr std::int64_t otherProduct = 0x0006;
constexpr const char* otherName = "Podium Wheel Base DD1";
constexpr const char* filesBefore = "presets.json shared.quorvane";

// How many packets the base has received from the model before the action.
int receivedBefore(const Action& action) {
  constexpr int packetsOfConnecting = 3;
  return action.before == Action::Before::connected ? packetsOfConnecting : 0;
}

// The expected state at the end.
struct Outcome {
  Lines lines;
  Seconds time{0};
  std::string staged;
  std::string presets;
  std::string presetsInFile;
  std::string files = filesBefore;
};

Outcome outcomeOf(const Action& action, const Disturbance& disturbance) {
  Outcome outcome{action.linesFor(disturbance), predict(action.dialogue, disturbance).time,
                  action.stagedFor(disturbance), action.presets, action.presetsInFile};
  if (action.writesFile) outcome.files += std::string(" ") + writtenFile;
  return outcome;
}

// One action with one fault. No thread or descriptor may be left behind.
class Cell {
 public:
  Cell(const Action& action, std::string fault, std::size_t n = 0)
      : trace_(__FILE__, __LINE__, fmt::format("{}, {}, {}", action.name, fault, n)),
        action_(action),
        fault_(std::move(fault)),
        n_(n) {
    prepare();
  }

  World& world() { return world_; }

  void begin() {
    began_ = world_.clock_.now();
    action_.run(world_);
  }

  void expect(const Outcome& outcome) {
    const Seconds time = world_.clock_.now() - began_;
    Lines seen = world_.takeSeen();
    // The watcher may report a base again that was there already; one whose opening failed is then
    // tried again, and logs the same line.
    if (action_.isOpening) seen.erase(std::unique(seen.begin(), seen.end()), seen.end());
    EXPECT_EQ(seen, outcome.lines);
    EXPECT_NEAR(time.count(), outcome.time.count(), 1e-6);
    EXPECT_EQ(world_.staged(), outcome.staged);
    EXPECT_EQ(world_.presets(), outcome.presets);
    EXPECT_EQ(world_.presetsInFile(), outcome.presetsInFile);
    EXPECT_EQ(world_.files(), outcome.files);
    EXPECT_FALSE(world_.model().busy());
    EXPECT_FALSE(world_.model().progress());
    FaultTable::add({tableName, action_.name, fault_, n_, seen, time, remains()});
  }

  void run(const Outcome& outcome) {
    begin();
    world_.settle();
    expect(outcome);
  }

  // Ends the fault and lets late answers arrive. Then the model must be able to read the menu, and
  // show it.
  void expectRecovery() {
    world_.behave([](SimulatedBehaviour& behaviour) { behaviour = {}; });
    world_.clock_.sleepFor(Seconds(10));
    world_.settle();
    if (!world_.model().isConnected()) return;
    world_.takeSeen();
    world_.model().refresh();
    world_.settle();
    Bytes menu;
    world_.simulate([&](SimulatedBase& base) { menu = base.menu().report(); });
    ASSERT_TRUE(world_.model().tuning());
    EXPECT_EQ(world_.model().tuning()->raw(), menu);
    EXPECT_TRUE(world_.takeSeen().front().starts_with("[status]")) << "the refresh failed";
  }

 private:
  void prepare() {
    if (action_.before == Action::Before::nothing) return;
    if (action_.before == Action::Before::refused) {
      world_.base().failOpenWith(HIDReturnCode::notPermitted);
    }
    world_.start();
    world_.base().failOpenWith(HIDReturnCode::success);
    std::string edits = action_.staged;
    std::replace(edits.begin(), edits.end(), ' ', ',');
    for (const auto& [parameter, value] : parseDemoStage(edits)) {
      world_.model().stage(parameter, value);
    }
    if (action_.prepare) action_.prepare(world_);
  }

  std::string remains() {
    std::string text = world_.staged().empty() ? "nothing staged" : world_.staged() + " staged";
    if (action_.unwritten) {
      text += fmt::format("; presets: {}; in the file: {}", nameOrNone(world_.presets()),
                          nameOrNone(world_.presetsInFile()));
    }
    return text;
  }

  static std::string nameOrNone(const std::string& names) { return names.empty() ? "none" : names; }

  const testing::ScopedTrace trace_;
  const FileWatch firstWatch_{"/"};  // the first one opens a descriptor for the whole process
  const NoLeftovers noLeftovers_;
  const Action& action_;
  const std::string fault_;
  const std::size_t n_;
  World world_;
  Monotonic::time_point began_;
};

// Files can be read but not written.
FileCalls::Verdict verdictOf(const DiskFault& fault) {
  if (!fault.isReadOnly) return FileCalls::failEach("write", ENOSPC);
  return [](const FileCall& call, std::size_t) {
    const bool creates = call.name == "open" && call.file.ends_with(".tmp");
    const bool changes = call.name == "access" || call.name == "mkdir" || call.name == "rename" ||
                         call.name == "link" || call.name == "unlink" || call.name == "fchmod";
    return creates || changes ? EROFS : 0;
  };
}

// When a base leaves, the model disconnects its session, which ends every wait. A session of the
// action's own waits until the time-out.
Disturbance modelDisturbance(const Action& action) {
  Disturbance disturbance;
  if (action.waitsInVain) {
    disturbance.whenGone = [](const Step& step) {
      return step.isPacket() ? refusalText(step, "device not found") : timeoutText(step);
    };
    disturbance.goneWait = WheelBase::readTimeout;
  } else {
    disturbance.whenGone = [](const Step&) { return std::string("Device is not open"); };
  }
  return disturbance;
}

void addNotApplicable(const Action& action, const std::string& fault, Need need) {
  FaultTable::addNotApplicable(tableName, action.name, fault, reasonWithout(need));
}

// A base leaves at one step of an action, and `back` is attached afterwards. The gate holds the
// exchange until the model has noticed.
class DepartureCell {
 public:
  DepartureCell(const Action& action, const Departure& departure, Return back, std::size_t n)
      : action_(action),
        departure_(departure),
        back_(back),
        n_(n),
        cell_(action, nameOf(departure, back), n) {}

  void run() {
    arrange();
    cell_.begin();
    gate_.awaitArrival();
    loseBase();
    bringBack();
    gate_.open();
    cell_.world().settle();
    cell_.expect(outcome());
  }

 private:
  void arrange() {
    World& world = cell_.world();
    const int number = static_cast<int>(n_);
    const auto stop = [this] { gate_.pass(); };
    world.behave([&](SimulatedBehaviour& base) {
      base.answerDelay = departure_.answerDelay();
      if (departure_.need == Need::packet) base.unplugAfter = receivedBefore(action_) + number;
    });
    if (departure_.need == Need::packet) {
      world.backend_.atPlugChange(stop);
    } else {
      const bool isAnswer = departure_.need == Need::answer;
      world.clock_.at(isAnswer ? Moment::request : Moment::pause, number - 1, stop);
    }
    if (departure_.need == Need::writeLock) {
      EXPECT_TRUE(other_.emplace(world.info(0)).askForWriteLock());
    }
  }

  void loseBase() {
    World& world = cell_.world();
    if (departure_.need != Need::packet) world.base().unplug();
    world.waitUntil([&] { return world.model().devices().empty(); });
  }

  void bringBack() {
    if (back_ == Return::none) return;
    World& world = cell_.world();
    world.behave([](SimulatedBehaviour& base) { base = {}; });
    if (back_ == Return::same) {
      world.base().plug();
    } else {
      world.base().plugAs(FanatecProduct::lookup(otherProduct).value());
    }
    world.waitUntil([&] {
      const auto& devices = world.model().devices();
      return !devices.empty() && world.model().linkTo(devices.front()) != AppModel::Link::none;
    });
  }

  Outcome outcome() const {
    Disturbance disturbance = modelDisturbance(action_);
    departure_.disturb(disturbance, action_.dialogue, n_);
    Outcome outcome = outcomeOf(action_, disturbance);
    outcome.staged = "";
    const bool isBack = back_ != Return::none;
    if (!action_.isOpening) {
      outcome.lines.insert(disconnectionPlace(outcome.lines), disconnectedLine);
    } else if (isBack || !action_.waitsInVain) {
      outcome.lines = {};
    }
    std::erase_if(outcome.lines, [](const auto& line) { return line.starts_with("[status]"); });
    if (isBack) {
      outcome.lines.push_back(
          fmt::format("[log] Connected to {}", back_ == Return::same ? baseName : otherName));
    }
    if (outcome.lines.empty()) outcome.lines = {std::string("[status] ") + noBaseStatus};
    return outcome;
  }

  // After the line that announces a save.
  static Lines::iterator disconnectionPlace(Lines& lines) {
    return std::find_if(lines.begin(), lines.end(),
                        [](const std::string& line) { return !line.starts_with("[log] Saving "); });
  }

  const Action& action_;
  const Departure& departure_;
  const Return back_;
  const std::size_t n_;
  Gate gate_;
  Cell cell_;
  std::optional<OtherProgram> other_;
};

TEST(ModelFaults, EverythingThatAWindowCanAskOfTheModelHasItsRow) {
  // Excluded: access to the model itself, a field for views only, and what the departures call.
  std::set<std::string> covered{"shared", "setRequestedSection", "devicesChanged", "waitForWrites"};
  for (const Action& action : actions()) {
    if (action.before != Action::Before::nothing) covered.insert(action.name);
  }
  EXPECT_EQ(covered, changingMembers("app/app_model.h", "AppModel"));
}

// Whether a line of the transcript is a packet that may change the base.
bool isChange(const std::string& line) {
  return line.starts_with("> ") && !line.starts_with("> ff 03 02") && !line.starts_with("> ff 08");
}

TEST(ModelFaults, EveryActionThatChangesABaseLeavesARecord) {
  std::set<std::string> changing;
  for (const Action& action : actions()) {
    Cell cell(action, nothingWrong);
    World& world = cell.world();
    const std::size_t before = world.history_.read(world.info(0)).records.size();
    world.takeTranscript();
    cell.begin();
    world.settle();
    const Lines sent = world.takeTranscript();
    const bool changes = std::any_of(sent.begin(), sent.end(), isChange);
    const std::size_t after = world.history_.read(world.info(0)).records.size();
    EXPECT_EQ(after - before, changes ? 1U : 0U) << action.name;
    if (changes) changing.insert(action.name);
  }
  EXPECT_EQ(changing, (std::set<std::string>{"selectSlot", "toggleMode", "factoryReset",
                                             "saveStaged", "trySaving", "apply", "undo", "redo"}));
}

TEST(ModelFaults, WithoutAFaultEveryActionSucceedsInItsOwnTime) {
  for (const Action& action : actions()) {
    Cell cell(action, nothingWrong);
    cell.run(outcomeOf(action, modelDisturbance(action)));
    cell.expectRecovery();
  }
}

TEST(ModelFaults, EveryActionMeetsABaseThatMisbehaves) {
  for (const Action& action : actions()) {
    for (const Misbehaviour& fault : misbehaviours()) {
      const std::size_t cells = fault.cellsIn(action.dialogue);
      if (cells == 0) addNotApplicable(action, fault.name, fault.need);
      for (std::size_t n = 1; n <= cells; ++n) {
        Disturbance disturbance = modelDisturbance(action);
        fault.disturb(disturbance, n);
        Cell cell(action, fault.name, fault.isCounted ? n : 0);
        cell.world().behave(
            [&](SimulatedBehaviour& base) { fault.make(base, receivedBefore(action), n); });
        cell.run(outcomeOf(action, disturbance));
        cell.expectRecovery();
      }
    }
  }
}

TEST(ModelFaults, EveryActionMeetsABaseThatLeavesAtEachStep) {
  for (const Action& action : actions()) {
    for (const Departure& departure : departures()) {
      const std::size_t cells = countOf(departure.need, action.dialogue);
      for (const Return back : returns()) {
        if (cells == 0) addNotApplicable(action, nameOf(departure, back), departure.need);
        for (std::size_t n = 1; n <= cells; ++n) {
          DepartureCell(action, departure, back, n).run();
        }
      }
    }
  }
}

TEST(ModelFaults, EveryActionMeetsABaseThatHasLeftBefore) {
  for (const Action& action : actions()) {
    Cell cell(action, leftBefore);
    cell.world().base().unplug();
    if (action.before != Action::Before::nothing) {
      cell.world().settle();
      cell.world().takeSeen();
    }
    const bool keepsPresets = action.withoutBase.front().starts_with("[status]");
    const std::string presets = keepsPresets ? ownPreset : action.presets;
    const bool writes = action.writesFile && !keepsPresets;
    cell.run({action.withoutBase, Seconds(0), action.stagedWithoutBase, presets, presets,
              writes ? std::string(filesBefore) + " " + writtenFile : filesBefore});
  }
}

// One action beside other programs. If all its parts fail, it must have written nothing.
void meet(const Action& action, const Company& company) {
  Action beside = action;
  beside.dialogue = company.change(action.dialogue);
  if (company.switchesSet && !action.inOtherSet.empty()) {
    beside.dialogue.resize(1);
    beside.lines = [lines = action.inOtherSet](const Action::Errors&) { return lines; };
  }
  Disturbance disturbance = modelDisturbance(beside);
  company.disturb(disturbance);
  Cell cell(beside, company.name);
  World& world = cell.world();
  Scene scene(world.base(), world.clock_, world.model().tuning().value());
  company.make(scene);
  const Bytes before = scene.menuOnBase();
  scene.takePackets();
  cell.run(outcomeOf(beside, disturbance));
  const Prediction prediction = predict(beside.dialogue, disturbance);
  EXPECT_EQ(scene.takePackets() - company.packetsOfOther, prediction.packets);
  if (prediction.failsWholly()) {
    EXPECT_EQ(scene.menuOnBase(), before);
  }
  if (company.writes && valuesIn(action.dialogue) > 0) {
    EXPECT_EQ(scene.valueOnBase(othersValue.parameter), othersValue.value);
  }
  scene.end();
  cell.expectRecovery();
}

TEST(ModelFaults, EveryActionMeetsOthersAtTheSameBase) {
  for (const Action& action : actions()) {
    for (const Company& company : companies()) {
      if (countOf(company.need, action.dialogue) > 0) {
        meet(action, company);
      } else {
        addNotApplicable(action, company.name, company.need);
      }
    }
  }
}

TEST(ModelFaults, EveryActionMeetsANodeThatIsRefused) {
  for (const Action& action : actions()) {
    for (const Refusal& refusal : refusals()) {
      if (!action.refused) {
        addNotApplicable(action, refusal.name, Need::node);
        continue;
      }
      Cell cell(action, refusal.name);
      cell.world().base().failOpenWith(refusal.code);
      cell.world().refuseUSBWith(refusal.error);
      Outcome outcome = outcomeOf(action, modelDisturbance(action));
      outcome.lines = {action.refused(refusal)};
      if (action.dialogue.empty()) outcome.staged = action.staged;
      cell.run(outcome);
    }
  }
}

TEST(ModelFaults, EveryActionMeetsADiskThatTakesNothing) {
  for (const Action& action : actions()) {
    for (const DiskFault& fault : diskFaults()) {
      if (!action.unwritten) {
        addNotApplicable(action, fault.name, Need::file);
        continue;
      }
      Cell cell(action, fault.name);
      Outcome outcome = outcomeOf(action, modelDisturbance(action));
      outcome.lines = action.unwritten(fault.text);
      outcome.presetsInFile = action.presetsInFileBefore;
      outcome.files = filesBefore;
      {
        const FileCalls calls(verdictOf(fault));
        cell.begin();
        cell.world().settle();
      }
      cell.expect(outcome);
    }
  }
}

// The presets are not shown. The first change that is written brings them back.
TEST(ModelFaults, PresetsThatCouldNotBeReadAtTheStartAreNotLost) {
  const std::string fault = "the preset file could not be read at the start";
  for (const Action& action : actions()) {
    const bool addsPreset = action.presets.starts_with(std::string(ownPreset) + " ");
    if (!addsPreset) {
      FaultTable::addNotApplicable(tableName, action.name, fault, "adds no preset");
      continue;
    }
    Cell cell(action, fault);
    cell.world().end();
    {
      const FileCalls calls(FileCalls::failEach("fstat", EIO));
      cell.world().create();
    }
    cell.world().settle();
    cell.world().takeSeen();
    EXPECT_EQ(cell.world().presets(), "");
    Outcome outcome = outcomeOf(action, modelDisturbance(action));
    outcome.staged = "";
    cell.run(outcome);
  }
}

TEST(ModelFaults, AnActionOfWhichTheTableSaysThatItWritesNothingWritesNothing) {
  for (const Action& action : actions()) {
    if (action.unwritten) continue;
    SCOPED_TRACE(action.name);
    Cell cell(action, "none is written");
    const FileCalls calls;
    cell.begin();
    cell.world().settle();
    const std::string history = cell.world().state_.path();
    for (const FileCall& call : calls.made()) {
      const bool writes = call.name == "rename" || call.name == "write" || call.name == "unlink";
      EXPECT_TRUE(!writes || call.file.starts_with(history)) << call.name << " " << call.file;
    }
  }
}

}  // namespace
}  // namespace quorvane
