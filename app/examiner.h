#pragma once

#include <QObject>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <string>

#include "app/file_panels.h"
#include "app/log.h"
#include "doctor/doctor.h"
#include "support/work_queue.h"

namespace quorvane {

// The doctor's findings and their time.
struct Examination {
  Diagnosis diagnosis;
  WallClock::time_point time;
};

// Runs the doctor on the work queue. Keeps its findings until a base answers. Main thread only.
class Examiner final : public QObject {
  Q_OBJECT

 public:
  // All references must outlive the examiner. End the queue before the examiner is destroyed.
  Examiner(const Platform& platform, std::filesystem::path presetFile, Log& log, WorkQueue& work)
      : platform_(platform), presetFile_(std::move(presetFile)), log_(log), work_(work) {}

  // The last examination of the current fault, if any.
  const std::optional<Examination>& last() const { return last_; }

  // One is queued or running.
  bool isRunning() const { return running_.has_value(); }

  // Without a base, the doctor examines the first candidate. Does nothing if one is already queued
  // or running.
  void examine(const std::optional<HIDDeviceInfo>& base);

  // Ends the exchange with the base; the examination ends soon. For the end of the program.
  void stop();

  // Whether a base is connected and answered the last time its menu was read. The first answer ends
  // the fault: it drops the last examination, and the result of the one under way. Does not emit
  // changed().
  bool answered() const { return answered_; }
  void setAnswered(bool answered);

  // See AppModel::report().
  std::string report() const;
  void saveReport(FilePanels& panels);

 signals:
  void changed();

 private:
  void end();
  void writeReport(const std::string& report, const std::filesystem::path& file);

  const Platform platform_;
  const std::filesystem::path presetFile_;
  Log& log_;
  WorkQueue& work_;
  std::optional<Examination> last_;
  std::optional<std::stop_source> running_;
  bool answered_ = false;
};

}  // namespace quorvane
