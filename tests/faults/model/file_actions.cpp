#include "tests/faults/model/action_lists.h"
#include "tests/faults/model/action_texts.h"

namespace quorvane {
namespace {

Action exporting(std::string name, void (AppModel::*write)(), const std::string& success,
                 const std::string& failure) {
  Action action;
  action.name = std::move(name);
  action.run = [write](World& world) {
    world.panels_.answerAtOnce(world.directory_ / writtenFile);
    (world.model().*write)();
  };
  action.lines = always({success});
  action.withoutBase = {success};
  action.unwritten = [failure](const std::string& reason) {
    return Lines{failure + "written: " + reason};
  };
  action.writesFile = true;
  return action;
}

}  // namespace

std::vector<Action> fileActions() {
  const std::string failed = "[error] Export failed: ";
  Action share = exporting("shareCurrentSettings", &AppModel::shareCurrentSettings,
                           "[log] Exported settings to written", failed);
  share.withoutBase = absentStatus;
  Action report = exporting("saveReport", &AppModel::saveReport,
                            "[log] Saved the report to written. Look it over before you send it.",
                            "[error] Could not save the report: ");
  report.before = Action::Before::refused;
  report.staged = "";
  report.prepare = [](World& world) {
    world.model().examine();
    world.settle();
  };
  return {share,
          exporting("exportPresets", &AppModel::exportPresets, "[log] Exported 1 preset to written",
                    failed),
          report};
}

}  // namespace quorvane
