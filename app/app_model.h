#pragma once

#include <QObject>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/file_panels.h"
#include "app/log_entry.h"
#include "app/shared_presets.h"
#include "app/staging.h"
#include "doctor/doctor.h"
#include "hid/device_watcher.h"
#include "hid/usb_reset.h"
#include "presets/preset_store.h"
#include "session/wheel_base.h"
#include "support/stoppable_clock.h"
#include "support/work_queue.h"

namespace quorvane {

// What the window shows and does: the attached bases, the one that is connected, its menu, the
// staged edits, the user's presets and the log.
//
// Lives on the main thread, where every field changes and every action is called; actions return at
// once. Exchanges with the base run on the thread "quorvane.hid" one after another, in the order
// asked for, and end as a line of the log or, for an examination, in its field. Presets and files
// are read and written on the main thread. Destruction drops what has not begun, and waits for the
// exchange that has: at most for one of its pauses.
class AppModel final : public QObject {
  Q_OBJECT

 public:
  // What the model works with; all of it outlives the model.
  struct World {
    FilePanels& panels;
    HIDBackend& backend = HIDBackend::system();
    USBBus& usb = USBBus::system();
    Clock& clock = Clock::system();
    const PresetStore& store = PresetStore::shared();
    HIDSurvey& survey = HIDSurvey::system();
  };

  // What the doctor found, and when.
  struct Examination {
    Diagnosis diagnosis;
    WallClock::time_point time;
  };

  // How far the writing of several values is.
  struct Progress {
    std::optional<UUID> preset;  // that is applied; none for a save
    std::size_t done = 0;        // values, whether the base took them or not
    std::size_t total = 0;

    bool operator==(const Progress&) const = default;
  };

  // How far the way to an attached base is.
  enum class Link { none, opening, open };

  static constexpr std::size_t longestLog = 500;

  // Loads the presets, watches for bases, and connects to the first that is there. With `which`,
  // only a base that this names (isNamed) gets connected unasked, and is waited for.
  explicit AppModel(const World& world, std::string which = {});
  ~AppModel() override;
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  // The model of this process, if it has one: the one that was made last. Main thread only.
  static AppModel* shared();

  // The attached bases. The first that may be is the one that gets connected.
  const std::vector<HIDDeviceInfo>& devices() const { return devices_; }
  Link linkTo(const HIDDeviceInfo& device) const;
  bool isConnected() const { return base_ != nullptr; }

  // Of the connected base; absent without one, or before it told.
  std::optional<FanatecProduct> product() const;
  const std::optional<std::string>& connectedName() const { return connectedName_; }
  const std::optional<IdentityReport>& identity() const { return identity_; }
  const std::optional<TuningSnapshot>& tuning() const { return tuning_; }
  std::optional<std::uint16_t> wheelID() const { return wheelID_; }
  std::optional<std::uint16_t> firmwareVersion() const { return firmwareVersion_; }

  // An exchange with a base is running or waiting for its turn.
  bool busy() const { return exchanges_ > 0; }

  // A save, the applying of a preset or another change of the base is running or waiting for its
  // turn.
  bool isWriting() const { return writes_ > 0; }

  // Blocks until those that were asked for have ended, or for so long; what came of them is told by
  // the event loop. For the end of the desktop's session, which waits for nothing else.
  void waitForWrites(std::chrono::milliseconds longest);

  // While a save or the applying of a preset runs.
  const std::optional<Progress>& progress() const { return progress_; }

  const std::string& statusLine() const { return statusLine_; }
  const std::vector<LogEntry>& log() const { return log_; }  // oldest first, at most longestLog
  const std::vector<TuningPreset>& userPresets() const { return presets_.presets(); }

  // The preset that was deleted last and can be brought back; none before a deletion and after
  // undoDelete().
  const std::optional<TuningPreset>& deletedPreset() const { return deletedPreset_; }
  const StagedValues& staged() const { return staged_; }

  // No base is connected, or the connected one did not answer the last time its menu was read.
  bool needsExamination() const;

  // Since the trouble began, if it was asked for; and whether another one is under way.
  const std::optional<Examination>& examination() const { return examination_; }
  bool isExamining() const { return examinationClock_ != nullptr; }

  // The title of a section that the window should show, until it has.
  const std::optional<std::string>& requestedSection() const { return requestedSection_; }
  void setRequestedSection(std::optional<std::string> title);

  // The devices that are attached now: connects to the first base that may be connected unasked
  // when there is no session, and ends the session whose base has left.
  void devicesChanged(const std::vector<HIDDeviceInfo>& attached);

  // Opens a session, in place of the one that is open, and reads identity and menu.
  void connect(const HIDDeviceInfo& device);
  void disconnect();

  // Reads menu and identity again. The two differ in how the log calls it.
  void refresh();
  void readEverything();

  // Edits become staged while they differ from the menu.
  void stage(TuningParameter parameter, std::int64_t value);
  void revert(TuningParameter parameter);
  void stagePreset(const TuningPreset& preset);
  void discardStaged();

  // Writes the staged edits, each read back; those that the base did not take stay staged.
  void saveStaged();

  void selectSlot(std::int64_t slot);
  void toggleMode();
  void apply(const TuningPreset& preset);
  void factoryReset();
  void usbReset();

  // Looks for what is wrong: at the base that is connected, was tried last or would be connected.
  // Asks an exchange's turn; while one is under way it is that one.
  void examine();

  // The examination and the end of the log as a text for a bug report, without what tells who asks;
  // saving asks for a place first. Only with an examination.
  std::string report() const;
  void saveReport();

  void saveCurrentAsPreset(const std::string& name);
  void deletePreset(const TuningPreset& preset);

  // Puts deletedPreset() back to its old place, with its old id. Does nothing without one.
  void undoDelete();
  void shareCurrentSettings();
  void importSettingsFile();
  void importSettings(const std::filesystem::path& file);
  void exportPresets();

 signals:
  // Some of the above is different now. Comes often; whoever draws gathers several.
  void changed();

  // The base told of another menu than the one before, and nobody here had asked: somebody uses
  // the wheel's own buttons. Comes after `changed`.
  void menuChangedAtBase(const quorvane::TuningSnapshot& before);

 private:
  using Session = std::shared_ptr<WheelBase>;

  // Runs on the work queue; the text is logged, the exception as well.
  using DeviceAction = std::function<std::optional<std::string>(WheelBase&)>;
  struct Opening;
  struct Save;

  template <typename Field, typename Value>
  void publish(Field& field, Value&& value);

  // Runs on the main thread by and by, unless the model is gone by then. Any thread may call.
  void post(std::function<void()> what);

  // Puts a job on the work queue. Gives the reason, for people, when it cannot be run.
  std::optional<std::string> enqueue(WorkQueue::Job job);
  void watchDevices();

  // Sessions.
  bool isGone(const WheelBase& base) const;
  void connectToFirst();
  void waitForNamed();
  void open(const Session& base);
  void followReports(const Session& base);
  void opened(const Session& base, const Opening& opening);
  void openFailed(const Session& base, const std::string& reason);
  void baseGone(const WheelBase* base);
  void retire(const Session& base);
  void stageDemo(const std::string& text);
  void menuAnswered(bool answered);

  // Examinations.
  std::optional<HIDDeviceInfo> baseToExamine() const;
  void examined(const Examination& examination);
  void writeReport(const std::string& report, const std::filesystem::path& file);

  // Exchanges.
  void read(const std::string& title, DeviceAction action);
  void change(const std::string& title, DeviceAction action);
  void perform(const std::string& title, DeviceAction action, bool isWrite);
  void performed(const Session& base, const std::string& text, bool isError);
  std::optional<std::string> readMenuAndIdentity(WheelBase& base);
  void menuReported(const TuningSnapshot& menu);
  void reportProgress(Progress progress);
  void beginExchange();
  void endExchange();
  void write(WheelBase& base, Save& save);
  void saved(const Session& base, const Save& save);

  void append(std::string text, bool isError = false);
  void setStatus(std::string text);
  void followPresets();
  void share(const TuningPreset& preset, const std::string& base,
             const std::filesystem::path& file);

  const World world_;
  const std::string deviceSelector_;  // the base to connect to unasked; empty: the first

  std::vector<HIDDeviceInfo> devices_;
  std::optional<std::string> connectedName_;
  std::optional<IdentityReport> identity_;
  std::optional<TuningSnapshot> tuning_;
  std::optional<std::uint16_t> wheelID_;
  std::optional<std::uint16_t> firmwareVersion_;
  int exchanges_ = 0;
  int writes_ = 0;  // of the exchanges, those that change the base
  std::optional<Progress> progress_;
  std::string statusLine_;
  std::vector<LogEntry> log_;
  SharedPresets presets_;
  std::optional<TuningPreset> deletedPreset_;
  PresetChange::Place deletedPlace_;
  StagedValues staged_;
  std::optional<std::string> requestedSection_;
  bool menuUnanswered_ = false;  // by the connected base, the last time
  std::optional<Examination> examination_;
  std::shared_ptr<StoppableClock> examinationClock_;  // while one is under way
  std::optional<HIDDeviceInfo> tried_;                // the base that was connected to last
  std::string waiting_;  // the last line about the base that is waited for, until one is connected

  Session base_;
  Session opening_;               // on the way to become base_
  std::vector<Session> retired_;  // let go, until their threads have ended

  WorkQueue work_;
  std::unique_ptr<HIDDeviceWatcher> watcher_;
};

}  // namespace quorvane
