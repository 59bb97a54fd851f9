#include <fmt/format.h>

#include <QPointer>
#include <algorithm>
#include <utility>

#include "app/app_model.h"
#include "app/messages.h"
#include "app/publish.h"
#include "doctor/report.h"
#include "session/candidates.h"
#include "support/file.h"
#include "support/mutex.h"
#include "support/wall_time.h"

namespace quorvane {
namespace {

constexpr std::size_t longestLogInReport = 100;  // lines

// Keeps the clock until the process ends: an examination that timed out has left a thread behind
// that still uses it.
void keep(std::shared_ptr<StoppableClock> clock) {
  static Mutex lock;
  static std::vector<std::shared_ptr<StoppableClock>> kept;
  const MutexLock held(lock);
  kept.push_back(std::move(clock));
}

}  // namespace

bool AppModel::needsExamination() const {
  if (base_) return menuUnanswered_;
  return !opening_ || isExamining() || examination_;
}

// The first answer ends the fault: drops the old findings.
void AppModel::menuAnswered(bool answered) {
  if (answered) examination_.reset();
  publish(menuUnanswered_, !answered);
}

std::optional<HIDDeviceInfo> AppModel::baseToExamine() const {
  if (base_) return base_->info();
  if (tried_ && findDevice(devices_, *tried_)) return tried_;
  const std::vector<HIDDeviceInfo> candidates = wheelBaseCandidates(devices_, deviceSelector_);
  return candidates.empty() ? std::nullopt : std::optional(candidates.front());
}

void AppModel::examine() {
  if (isExamining()) return;
  const auto clock = std::make_shared<StoppableClock>(world_.clock);
  examinationClock_ = clock;
  beginExchange();
  const auto failure = enqueue([this, clock, base = baseToExamine()] {
    const Platform platform{world_.backend, world_.usb, *clock, world_.survey};
    const Examination examination{quorvane::examine(platform, world_.store.fileURL(), base),
                                  WallClock::now()};
    if (examination.diagnosis.facts.answers.outOfTime) keep(clock);
    post([this, examination] { examined(examination); });
  });
  if (!failure) return;
  examinationClock_.reset();
  endExchange();
  append(Messages::failed("Examination", *failure), true);
}

void AppModel::examined(const Examination& examination) {
  examinationClock_.reset();
  if (!base_ || menuUnanswered_) examination_ = examination;
  endExchange();
}

std::string AppModel::report() const {
  std::vector<std::string> lines;
  const std::size_t skipped = log_.size() - std::min(log_.size(), longestLogInReport);
  for (std::size_t i = skipped; i < log_.size(); ++i) {
    const LogEntry& entry = log_[i];
    lines.push_back(
        fmt::format("{} {}{}", iso8601(entry.time), entry.isError ? "[error] " : "", entry.text));
  }
  return reportText(examination_.value().diagnosis, lines);
}

void AppModel::saveReport() {
  world_.panels.chooseDestination(
      {"Save the report", "Save", FilePanels::Content::report, "quorvane-report.txt"},
      [model = QPointer(this), report = report()](const std::filesystem::path& file) {
        if (model) model->writeReport(report, file);
      });
}

void AppModel::writeReport(const std::string& report, const std::filesystem::path& file) {
  try {
    replaceFile(file, report);
    append(Messages::reportSaved(file));
  } catch (const FileError& error) {
    append(Messages::couldNotSaveReport(error.what()), true);
  }
}

}  // namespace quorvane
