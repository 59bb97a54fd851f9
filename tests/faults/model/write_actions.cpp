#include <fmt/format.h>
#include <fmt/ranges.h>

#include "tests/faults/model/action_lists.h"
#include "tests/faults/model/action_texts.h"

namespace quorvane {
namespace {

using P = TuningParameter;

constexpr const char* threeEdits = "SEN=800 FF=80 NIN=9";

Dialogue threeWrites() {
  return {meantWrite("SEN", "900"), meantWrite("FF", "65"), meantWrite("NIN", "5")};
}

// "FF: ERROR" for each value that failed.
Lines rejections(const Action::Errors& errors) {
  Lines texts;
  const Dialogue writes = threeWrites();
  for (std::size_t part = 0; part < errors.size(); ++part) {
    if (errors[part]) texts.push_back(fmt::format("{}: {}", writes[part].code, *errors[part]));
  }
  return texts;
}

Action saving() {
  Action save;
  save.name = "saveStaged";
  save.run = [](World& world) { world.model().saveStaged(); };
  save.dialogue = threeWrites();
  save.lines = [](const Action::Errors& errors) {
    const Lines texts = rejections(errors);
    const std::string outcome = texts.empty()
                                    ? "[log] Saved 3 changes to set C (Custom)"
                                    : fmt::format("[error] Saved {} of 3; the base rejected {}",
                                                  3 - texts.size(), fmt::join(texts, "; "));
    return Lines{"[log] Saving 3 changes\u2026", outcome};
  };
  save.withoutBase = absentStatus;
  save.staged = threeEdits;
  save.stagedAfter = [](const Action::Errors& errors) {
    const Lines edits{"SEN=800", "FF=80", "NIN=9"};
    Lines failed;
    for (std::size_t part = 0; part < errors.size(); ++part) {
      if (errors[part]) failed.push_back(edits[part]);
    }
    return fmt::format("{}", fmt::join(failed, " "));
  };
  return save;
}

Action savingOne() {
  Action save = saving();
  save.name = "trySaving";
  save.run = [](World& world) { world.model().trySaving(P::forceFeedback); };
  save.dialogue = {meantWrite("FF", "65")};
  save.lines = [](const Action::Errors& errors) {
    const std::string outcome =
        errors.front() ? "[error] Saved 0 of 1; the base rejected FF: " + *errors.front()
                       : "[log] Saved 1 change to set C (Custom)";
    return Lines{"[log] Saving 1 change\u2026", outcome};
  };
  save.staged = "FF=80";
  save.stagedAfter = [](const Action::Errors& errors) { return errors.front() ? "FF=80" : ""; };
  return save;
}

Action applying() {
  Action apply;
  apply.name = "apply";
  apply.run = [](World& world) {
    world.model().apply(
        testPreset({{P::sensitivity, 800}, {P::forceFeedback, 80}, {P::naturalInertia, 9}}));
  };
  apply.dialogue = threeWrites();
  apply.lines = [](const Action::Errors& errors) {
    const Lines texts = rejections(errors);
    if (texts.empty()) return Lines{"[log] Applied \"Test\" (3 values)"};
    return Lines{fmt::format("[log] Applied \"Test\" with {} failures: {}", texts.size(),
                             fmt::join(texts, "; "))};
  };
  apply.withoutBase = notConnectedLine;
  return apply;
}

}  // namespace

std::vector<Action> writeActions() { return {saving(), savingOne(), applying()}; }

}  // namespace quorvane
