#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>

#include "cli/base_access.h"
#include "cli/commands.h"
#include "cli/json_output.h"
#include "cli/output_file.h"
#include "doctor/report.h"
#include "support/file.h"
#include "support/printing.h"
#include "support/text.h"

namespace quorvane {
namespace {

// Refuses an option in place of a forgotten file name: a file such as "--json" is hard to delete.
void requireFileName(const std::string& report) {
  if (!report.starts_with('-') || report == standardOutput) return;
  throw UsageError(fmt::format(
      "--report takes a file name, not \"{0}\"; a file of that name is ./{0}", oneLine(report)));
}

std::optional<std::filesystem::path> presetFile(const World& world) {
  try {
    return world.presets().fileURL();
  } catch (const FileError&) {  // the user has no place for one
    return std::nullopt;
  }
}

// An examination takes seconds if the base does not answer.
void sayWhatTakesTime(std::FILE* terminal) {
  if (::isatty(::fileno(terminal)) == 0) return;
  printTo(terminal, "Examining the base; this takes 5 s at most\n");
  flush(terminal);
}

Diagnosis diagnose(const CommandContext& context) {
  const World& world = context.world;
  sayWhatTakesTime(world.err);
  std::optional<HIDDeviceInfo> base;
  if (!context.options.device.empty()) base = chosenBase(context);
  return examine(world, presetFile(world), base);
}

Json documentOf(const Diagnosis& diagnosis, const std::string& report) {
  Json checks = Json::array();
  for (const DoctorCheck& check : diagnosis.checks) {
    checks.push_back({{"id", check.id},
                      {"title", check.title},
                      {"outcome", rawValue(check.outcome)},
                      {"finding", check.finding},
                      {"nextStep", check.nextStep}});
  }
  Json document{{"checks", std::move(checks)}, {"passed", diagnosis.passed()}};
  if (!report.empty()) document["file"] = report;
  return document;
}

void print(const CommandContext& context, const Diagnosis& diagnosis, const std::string& report) {
  const World& world = context.world;
  if (context.options.json) {
    printJson(world, documentOf(diagnosis, report));
    return;
  }
  printTo(world.out, "{}", checksText(diagnosis.checks));
  if (report.empty()) return;
  printTo(world.out, "Report written to {}; look it over before you send it\n", oneLine(report));
}

}  // namespace

ExitStatus doctorCommand(const CommandContext& context, const std::string& report, bool replace) {
  requireFileName(report);
  if (!report.empty() && report != standardOutput) requireFreeName(report, replace);
  const Diagnosis diagnosis = diagnose(context);
  if (report == standardOutput) {
    printTo(context.world.out, "{}", reportText(diagnosis));
  } else {
    if (!report.empty()) replaceFile(report, reportText(diagnosis));
    print(context, diagnosis, report);
  }
  return diagnosis.passed() ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace quorvane
