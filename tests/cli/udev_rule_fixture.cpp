#include "tests/cli/udev_rule_fixture.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "cli/command_line.h"
#include "platform/system_survey.h"

namespace quorvane {
namespace {

constexpr const char* shell = "/bin/sh";
constexpr const char* notes = "/udevadm-was-told";

}  // namespace

UdevRuleTest::UdevRuleTest() {
  addProgram("udevadm", "/bin/echo");
  addProgram("sudo");
}

void UdevRuleTest::addProgram(const std::string& name, const std::string& program) const {
  tree_.remove("/usr/bin/" + name);
  tree_.link("/usr/bin/" + name, program);
}

FaultyDevice& UdevRuleTest::attachNode(bool opens) {
  tree_.addClosedBase();
  FaultyDevice& device = nodes_.add(0x0020, "QV-4711", SystemTree::node);
  if (!opens) device.failOpenWith(HIDReturnCode::notPermitted);
  return device;
}

int UdevRuleTest::runAsThisUser(const Lines& words) {
  ran_.push_back(words);
  Lines command{shell, "-c", R"(notes=$1; shift; exec "$@" >>"$notes")", "test",
                tree_.place(notes)};
  command.insert(command.end(), std::find(words.begin(), words.end(), shell), words.end());
  const int status = endsWith_ ? *endsWith_ : runProgram(command);
  afterwards_();
  return status;
}

Outcome UdevRuleTest::runOnTree(const std::string& line) {
  CapturedStream out;
  CapturedStream err;
  SystemSurvey survey(tree_.root(), 1);
  const World machine = world(out.file(), err.file());
  const World here{{nodes_, machine.usb, machine.clock, survey},
                   machine.out,
                   machine.err,
                   machine.interruption,
                   machine.presets,
                   machine.simulatedPresets,
                   {tree_.root(), [this](const Lines& words) { return runAsThisUser(words); },
                    [this] { return caller_; }}};
  const ExitStatus status = runCommandLine(wordsOf(line), here);
  return {status, out.text(), err.text()};
}

std::string UdevRuleTest::asker() const {
  if (ran_.empty() || ran_.back().front() == shell) return {};
  return std::filesystem::path(ran_.back().front()).filename();
}

Lines UdevRuleTest::udevadmLines() const {
  std::istringstream stream(contentAt(notes));
  Lines lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string UdevRuleTest::contentAt(const std::string& path) const {
  return SystemFiles(tree_.root()).content(path);
}

bool UdevRuleTest::isThere(const std::string& path) const {
  return isTaken(SystemFiles(tree_.root()), path);
}

}  // namespace quorvane
