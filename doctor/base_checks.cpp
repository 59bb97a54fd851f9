#include "doctor/base_checks.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

#include "doctor/device_checks.h"

namespace quorvane {
namespace {

using Opening = BaseAnswers::Opening;
using Kind = HIDReportSummary::Kind;

constexpr std::int64_t tuningPayload = TuningSnapshot::length - 1;  // without the report ID
constexpr const char* notOpenReason = "the base is not open to ask it";

const HIDReportSummary* report(const HIDDeviceInfo& base, Kind kind, std::int64_t reportID) {
  const auto found =
      std::find_if(base.reports.begin(), base.reports.end(), [&](const HIDReportSummary& report) {
        return report.kind == kind && report.reportID == reportID;
      });
  return found == base.reports.end() ? nullptr : &*found;
}

bool hasTuningReport(const HIDDeviceInfo& base, Kind kind) {
  const HIDReportSummary* const found = report(base, kind, TuningSnapshot::reportID);
  return found != nullptr && found->byteLength == tuningPayload;
}

bool hasCommandReport(const HIDDeviceInfo& base) {
  const auto reportID = base.commandReportID();
  if (!reportID) return false;
  const HIDReportSummary* const found = report(base, Kind::output, *reportID);
  return found != nullptr && (found->byteLength == 7 || found->byteLength == 8);
}

std::string missingReports(const HIDDeviceInfo& base) {
  std::vector<std::string> missing;
  if (!hasTuningReport(base, Kind::input)) missing.emplace_back("64-byte input report 0xff");
  if (!hasTuningReport(base, Kind::output)) missing.emplace_back("64-byte output report 0xff");
  if (!hasCommandReport(base)) missing.emplace_back("output report for short commands");
  return fmt::format("{}", fmt::join(missing, ", "));
}

constexpr const char* pcMode =
    "Set the base to PC mode with its mode button, and switch it off and on.";

std::string plus(const char* sentence, const char* next) {
  return fmt::format("{} {}", sentence, next);
}

// The verdict if the base could not be opened, so that no request was sent; else none.
std::optional<Verdict> judgeOpening(const BaseAnswers& answers) {
  switch (answers.opening) {
    case Opening::opened:
      return std::nullopt;
    case Opening::heldByAnother:
      return Verdict::skip("another program keeps the base to itself");
    case Opening::failed:
      return Verdict::fail(
          fmt::format("the base could not be opened: {}", answers.openFailure),
          "Unplug the base and plug it in again. If it stays so, restart the computer.");
    case Opening::notPermitted:
      return Verdict::skip(notOpenReason);
    case Opening::notTried:
      break;
  }
  if (!answers.outOfTime) return Verdict::skip(notOpenReason);
  return Verdict::fail("the base could not be opened in time",
                       "Unplug the base and plug it in again, straight to the computer.");
}

Verdict judgeSilence(const BaseAnswers& answers, const std::string& failure,
                     const char* afterwards) {
  if (failure.empty()) {
    return Verdict::fail("the base did not take the question in time",
                         "Switch the base off and on, and connect it straight to the computer, "
                         "without a hub.");
  }
  const bool isDeaf = !answers.identity && !answers.tuning;
  return Verdict::fail(failure, isDeaf ? plus(pcMode, "If it stays silent, update its firmware.")
                                       : plus(pcMode, afterwards));
}

bool isAsked(const BaseAnswers& answers) { return answers.opening == Opening::opened; }

std::string namesOf(const std::vector<NodeHolder>& holders) {
  std::string names;
  for (const NodeHolder& holder : holders) {
    names += (names.empty() ? "" : ", ") + nameOf(holder);
  }
  return names;
}

Verdict judgeExclusive(const NodeFacts& node) {
  for (const NodeHolder& holder : node.holders) {
    if (!holder.isExclusive) continue;
    return Verdict::fail(fmt::format("{} keeps {} to itself", nameOf(holder), node.path),
                         fmt::format("Close that program: {}", nameOf(holder)));
  }
  return Verdict::fail(
      fmt::format("a program that you may not look into keeps {} to itself", node.path),
      CommandStep{"Find out which one, and close it", "sudo fuser -v " + node.path});
}

// A stopped process that holds the write lock blocks all other writers.
std::optional<Verdict> judgeStopped(const NodeFacts& node) {
  for (const NodeHolder& holder : node.holders) {
    if (!holder.hasWriteLock || !holder.isStopped) continue;
    return Verdict::fail(
        fmt::format("{} is stopped while it is writing to the base, and keeps others from writing",
                    nameOf(holder)),
        CommandStep{"Continue it, or end it", fmt::format("kill -CONT {}", holder.process)});
  }
  return std::nullopt;
}

Verdict judgeOpenings(const NodeFacts& node, const BaseAnswers& answers) {
  const bool isExclusive = std::any_of(node.holders.begin(), node.holders.end(),
                                       [](const auto& holder) { return holder.isExclusive; });
  if (isExclusive || answers.opening == Opening::heldByAnother) return judgeExclusive(node);
  const std::string rest =
      node.areAllHoldersKnown ? "" : "; programs of other users cannot be looked into";
  if (node.holders.empty()) {
    return Verdict::pass(fmt::format("no other program has {} open{}", node.path, rest));
  }
  if (auto verdict = judgeStopped(node)) return *std::move(verdict);
  const std::string names = namesOf(node.holders);
  if (isAsked(answers) && !answers.tuning) {
    return Verdict::fail(
        fmt::format("also open in {}, and the base does not answer{}", names, rest),
        "Close what else has the base open, then run the doctor again.");
  }
  return Verdict::pass(fmt::format("also open in {}, which does no harm{}", names, rest));
}

}  // namespace

Verdict judgeReports(const DoctorFacts& /*facts*/, const DevicePath& path) {
  if (path.isEmpty()) return Verdict::skip(noBaseReason);
  if (path.base == nullptr) return Verdict::skip("there is no node to describe the base");
  const std::string missing = missingReports(*path.base);
  if (missing.empty()) {
    return Verdict::pass(fmt::format("the 64-byte reports, and short commands on report 0x{:02x}",
                                     *path.base->commandReportID()));
  }
  return Verdict::fail(fmt::format("the base does not offer: {}", missing),
                       plus(pcMode, "If it offers no more then, update its firmware."));
}

Verdict judgeIdentity(const DoctorFacts& facts, const DevicePath& path) {
  if (path.isEmpty()) return Verdict::skip(noBaseReason);
  const BaseAnswers& answers = facts.answers;
  if (auto verdict = judgeOpening(answers)) return *verdict;
  if (answers.identity) {
    return Verdict::pass(fmt::format("{}, {}, {}", answers.identity->baseName(),
                                     answers.identity->wheelName(),
                                     answers.identity->moduleName()));
  }
  return judgeSilence(answers, answers.identityFailure,
                      "Its menu works without; a firmware update may bring the answer.");
}

Verdict judgeTuning(const DoctorFacts& facts, const DevicePath& path) {
  if (path.isEmpty()) return Verdict::skip(noBaseReason);
  const BaseAnswers& answers = facts.answers;
  if (!isAsked(answers)) return Verdict::skip(notOpenReason);
  if (answers.tuning) {
    const std::string firmware =
        answers.firmwareVersion ? fmt::format(", firmware 0x{:04X}", *answers.firmwareVersion) : "";
    return Verdict::pass(fmt::format("{} menu, set {}{}", answers.tuning->modeName(),
                                     answers.tuning->setName(), firmware));
  }
  const auto product = path.base != nullptr ? path.base->knownProduct() : std::nullopt;
  if (product && !product->hasTuningMenu()) {
    return Verdict::skip(fmt::format("{} has no tuning menu", product->name));
  }
  return judgeSilence(answers, answers.tuningFailure,
                      "If the menu stays silent, update the base's firmware.");
}

Verdict judgeHolders(const DoctorFacts& facts, const DevicePath& path) {
  if (path.isEmpty()) return Verdict::skip(noBaseReason);
  const bool isHeld = facts.answers.opening == Opening::heldByAnother;
  if (facts.machine.isSimulated && isHeld) {
    return Verdict::fail("another session keeps the simulated base to itself", "End it.");
  }
  if (facts.machine.isSimulated) return Verdict::skip(simulatedReason);
  if (path.node == nullptr) return Verdict::skip("there is no node to have open");
  return judgeOpenings(*path.node, facts.answers);
}

}  // namespace quorvane
