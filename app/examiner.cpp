#include "app/examiner.h"

#include <fmt/format.h>

#include <QPointer>
#include <algorithm>
#include <system_error>
#include <vector>

#include "app/post.h"
#include "doctor/report.h"
#include "support/file.h"
#include "support/wall_time.h"

namespace quorvane {
namespace {

constexpr std::size_t longestLogInReport = 100;  // lines

}  // namespace

void Examiner::examine(const std::optional<HIDDeviceInfo>& base) {
  if (isRunning()) return;
  running_.emplace();
  emit changed();
  const auto failure = enqueue(work_, [this, base, stop = running_->get_token()] {
    const Examination examination{quorvane::examine(platform_, presetFile_, base, stop),
                                  WallClock::now()};
    post(this, [this, examination] {
      if (!answered_) last_ = examination;
      end();
    });
  });
  if (!failure) return;
  end();
  log_.append(Messages::failed("Examination", *failure), true);
}

void Examiner::stop() {
  if (running_) running_->request_stop();
}

void Examiner::end() {
  running_.reset();
  emit changed();
}

void Examiner::setAnswered(bool answered) {
  if (answered) last_.reset();
  answered_ = answered;
}

std::string Examiner::report() const {
  std::vector<std::string> lines;
  const auto& log = log_.entries();
  for (std::size_t i = log.size() - std::min(log.size(), longestLogInReport); i < log.size(); ++i) {
    lines.push_back(fmt::format("{} {}{}", iso8601(log[i].time), log[i].isError ? "[error] " : "",
                                log[i].text));
  }
  return reportText(last_.value().diagnosis, lines);
}

void Examiner::saveReport(FilePanels& panels) {
  panels.chooseDestination(
      {"Save the report", "Save", FilePanels::Content::report, "quorvane-report.txt"},
      [examiner = QPointer(this), report = report()](const std::filesystem::path& file) {
        if (examiner) examiner->writeReport(report, file);
      });
}

void Examiner::writeReport(const std::string& report, const std::filesystem::path& file) {
  try {
    replaceFile(file, report);
    log_.append(Messages::reportSaved(file));
  } catch (const FileError& error) {
    log_.append(Messages::couldNotSaveReport(error.what()), true);
  }
}

}  // namespace quorvane
