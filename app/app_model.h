#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/edit_steps.h"
#include "app/examiner.h"
#include "app/file_panels.h"
#include "app/log.h"
#include "app/outcome.h"
#include "app/own_presets.h"
#include "app/pasted_settings.h"
#include "app/staging.h"
#include "hid/device_watcher.h"
#include "hid/platform.h"
#include "history/history.h"
#include "history/not_as_left.h"
#include "history/undo_plan.h"
#include "history/wheel_changes.h"
#include "presets/preset_store.h"
#include "session/wheel_base.h"
#include "support/work_queue.h"

namespace quorvane {

// The state and the actions of the window: the attached bases, the connected one, its menu, the
// staged edits, the user's presets and the log.
//
// Main thread only: every field changes there, and every action is called there and returns at
// once. Exchanges with the base are queued and run one after another on the thread "quorvane.hid";
// each ends with a line in the log, an examination in its field. Presets and files are read and
// written on the main thread. The destructor drops queued exchanges and waits for the running one,
// at most for one of its pauses.
class AppModel final : public QObject {
  Q_OBJECT

 public:
  // Dependencies of the model; all of them must outlive it.
  struct World : Platform {
    FilePanels& panels;
    const PresetStore& store = PresetStore::shared();
    History history{std::nullopt, "quorvane"};  // of what is written to bases
  };

  // The progress of writing several values.
  struct Progress {
    std::optional<UUID> preset;  // being applied; none for a save
    std::size_t done = 0;        // values tried, with or without success
    std::size_t total = 0;

    bool operator==(const Progress&) const = default;
  };

  // A save, the applying of a preset, an undo or a redo that has ended.
  struct LastWrite {
    HistoryRecord record;                     // with its outcome
    std::vector<ValueLeftAlone> leftAlone;    // by an undo or a redo
    std::optional<std::string> notInHistory;  // why it was not recorded; none if it was

    bool operator==(const LastWrite&) const = default;
  };

  // The records that undo() and redo() are about next.
  struct Reversible {
    std::optional<HistoryRecord> byUndo;
    std::optional<HistoryRecord> byRedo;

    bool operator==(const Reversible&) const = default;
  };

  // The state of the session with an attached base.
  enum class Link { none, opening, open };

  static constexpr std::size_t longestLog = Log::longest;

  // Loads the presets, watches for bases and connects to the first one attached. With `which`,
  // connects automatically only to a base of that name (isNamed), and waits for it.
  explicit AppModel(World world, std::string which = {});
  ~AppModel() override;
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  // The model that was created last in this process; null without one. Main thread only.
  static AppModel* shared();

  // The attached bases. The first one that may be is connected automatically.
  const std::vector<HIDDeviceInfo>& devices() const { return devices_; }
  Link linkTo(const HIDDeviceInfo& device) const;
  bool isConnected() const { return base_ != nullptr; }

  // Facts about the connected base; none without a base or before it has reported them.
  std::optional<FanatecProduct> product() const;
  const std::optional<std::string>& connectedName() const { return connectedName_; }
  const std::optional<IdentityReport>& identity() const { return identity_; }
  const std::optional<TuningSnapshot>& tuning() const { return tuning_; }
  std::optional<std::uint16_t> wheelID() const { return wheelID_; }
  std::optional<std::uint16_t> firmwareVersion() const { return firmwareVersion_; }

  // An exchange with a base is queued or running.
  bool busy() const { return exchanges_ > 0 || examiner_.isRunning(); }

  // A save, the applying of a preset or another change of the base is queued or running.
  bool isWriting() const { return writes_ > 0; }

  // Blocks until all queued writes have ended, `longest` at most. Their results arrive through the
  // event loop afterwards. For the end of the desktop session, which does not wait for the event
  // loop.
  void waitForWrites(std::chrono::milliseconds longest);

  // Set while a save or the applying of a preset runs.
  const std::optional<Progress>& progress() const { return progress_; }

  // The file with the connected base's history, which may not be there yet; none without a base.
  std::optional<std::filesystem::path> historyFile() const;

  // The last write of values to the connected base; none before one.
  const std::optional<LastWrite>& lastWrite() const { return lastWrite_; }

  // What the history of the connected base offers to undo() and redo(). It is read on connecting
  // and after each write, which isReadingHistory() tells; undo() and redo() read it anew.
  const Reversible& reversible() const { return reversible_; }
  bool isReadingHistory() const { return historyReads_ > 0; }

  // The values that differed, on connecting, from what the last write to the set left there. None
  // when none did, and after the next write.
  const std::optional<NotAsLeft>& notAsLeft() const { return notAsLeft_; }

  const std::string& statusLine() const { return log_.statusLine(); }

  // Oldest first, at most longestLog.
  const std::vector<LogEntry>& log() const { return log_.entries(); }
  const std::vector<TuningPreset>& userPresets() const { return presets_.all(); }

  // The preset that undoPresets() would bring back; none if the last change was no deletion.
  const std::optional<TuningPreset>& deletedPreset() const { return presets_.deleted(); }

  // The user's preset that was added or brought back last by the window, of several the first.
  const std::optional<UUID>& addedPreset() const { return presets_.added(); }

  // The preset that an import has just added, while the status line says so; none after an import
  // of several.
  std::optional<TuningPreset> importedPreset() const;
  const StagedValues& staged() const { return staged_; }

  // What the last save, or the applying of a preset, meant for values. `taken` holds until the next
  // of them, the others until the value is edited, reverted, discarded or taken. Empty without a
  // base.
  const Outcomes& outcomes() const { return outcomes_; }

  // Whether an examination could help: no base is connected or being opened, the connected one did
  // not answer the last time its menu was read, or an examination is there or running.
  bool needsExamination() const;

  // The last examination of the current fault, if any; and whether one is queued or running.
  const std::optional<Examination>& examination() const { return examiner_.last(); }
  bool isExamining() const { return examiner_.isRunning(); }

  // The title of the section that the window should show next; none once it has.
  const std::optional<std::string>& requestedSection() const { return requestedSection_; }
  void setRequestedSection(std::optional<std::string> title);

  // Handles a new list of attached devices: ends the session of a base that was removed and,
  // without a session, connects to the first base that may be connected automatically.
  void devicesChanged(const std::vector<HIDDeviceInfo>& attached);

  // Opens a session, in place of the one that is open, and reads identity and menu.
  void connect(const HIDDeviceInfo& device);
  void disconnect();

  // Both read menu and identity again; they differ in the name of the action in the log.
  void refresh();
  void readEverything();

  // Staging an edit that equals the menu's current value removes the edit instead.
  void stage(TuningParameter parameter, std::int64_t value);
  void revert(TuningParameter parameter);

  // Takes the last edit back: a value, with all its steps in a row, or a whole preset. After a save
  // the order of what is still staged is not known; then the last value of the menu.
  void takeBackEdit();
  void stagePreset(const TuningPreset& preset);
  void discardStaged();

  // Writes the staged edits, each verified by a read-back; edits that failed stay staged.
  void saveStaged();

  // Writes one staged edit, like a save of this value alone. Does nothing if it is not staged.
  void trySaving(TuningParameter parameter);

  // Writes the values before the last write back, or those of the last undo again, each verified.
  // Values that were changed meanwhile are left alone and named in the log. Nothing is sent when
  // the base is in another set or mode than that of the write. Undoing again goes further back.
  void undo() { reverse(UndoDirection::undo); }
  void redo() { reverse(UndoDirection::redo); }

  void selectSlot(std::int64_t slot);
  void toggleMode();
  void apply(const TuningPreset& preset);
  void factoryReset();
  void usbReset();

  // Runs the doctor on the base that is connected, else was tried last, else would be connected.
  // Queued behind running exchanges. Does nothing if one is already queued or running.
  void examine() { examiner_.examine(baseToExamine()); }

  // The examination and the end of the log as text for a bug report, personal data masked.
  // saveReport() asks for a file first. Precondition: examination() is set.
  std::string report() const { return examiner_.report(); }
  void saveReport() { examiner_.saveReport(world_.panels); }

  void saveCurrentAsPreset(const std::string& name);
  void deletePreset(const TuningPreset& preset) { presets_.remove(preset); }

  // Changes of the user's presets. The record keeps its id, and its place unless it is moved.
  // editPreset() writes all fields of `after`; replacePreset() replaces the values by those of the
  // menu, and does nothing without one.
  void editPreset(const TuningPreset& before, const TuningPreset& after) {
    presets_.edit(before, after);
  }
  void replacePreset(const TuningPreset& preset);
  void movePreset(const TuningPreset& preset, const PresetChange::Destination& destination) {
    presets_.move(preset, destination);
  }

  // Adds a copy, after the preset if that is the user's.
  void duplicatePreset(const TuningPreset& preset) { presets_.duplicate(preset); }

  // Takes back the last deletion, edit, replacement, move or copy; does nothing without one.
  void undoPresets() { presets_.undo(); }
  void shareCurrentSettings();
  void importSettingsFile();
  void importSettings(const std::filesystem::path& file);

  // Imports the files in this order, each with its own line in the log. After several files another
  // line says how many could be imported.
  void importAll(const std::vector<std::filesystem::path>& files);
  void exportPresets() { presets_.exportAll(); }

  // Settings to look at: nothing is staged or added to the user's presets. What cannot be read is
  // an error in the log.
  //
  // Asks for a settings file, and calls `whenRead` with the presets in it, at least one.
  using PresetsRead = std::function<void(const std::vector<TuningPreset>& presets)>;
  void readSettingsFile(const PresetsRead& whenRead);

  // The settings in a text that people pass on, as one preset without a name; or the presets in the
  // content of a settings file. None without a single one.
  std::optional<PastedSettings> settingsIn(const std::string& text);

  // Reads the connected base's history on the work queue, behind the running exchanges. Then calls
  // `whenRead` on the main thread, with an error message if the file could not be read, and emits
  // changed(). Does nothing without a base.
  using HistoryRead =
      std::function<void(const HistoryContents& contents, const std::string& failure)>;
  void readHistory(const HistoryRead& whenRead);

 signals:
  // Any of the above has changed. Emitted often: views coalesce several into one update.
  void changed();

  // The base reported a changed menu while no exchange was queued or running: the user changed it
  // with the wheel's buttons. Emitted after changed().
  void menuChangedAtBase(const quorvane::TuningSnapshot& before);

  // The connected base has taken a value of a save that may still be running.
  void valueTaken(quorvane::TuningParameter parameter);

 private:
  using Session = std::shared_ptr<WheelBase>;

  // Runs on the work queue. The returned text or the exception's message is logged.
  using DeviceAction = std::function<std::optional<std::string>(WheelBase&)>;
  struct Opening;
  struct Save;

  template <typename Field, typename Value>
  void publish(Field& field, Value&& value);

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
  std::optional<HIDDeviceInfo> baseToExamine() const;

  // Exchanges.
  void read(const std::string& title, DeviceAction action);
  void change(const std::string& title, const HistoryIntent& intent, const DeviceAction& action);
  void perform(const std::string& title, DeviceAction action, bool isWrite);
  void performed(const Session& base, const std::string& text, bool isError);
  std::optional<std::string> readMenuAndIdentity(WheelBase& base);
  void menuReported(const TuningSnapshot& menu);
  void reportProgress(Progress progress);
  void beginExchange();
  void endExchange();
  void beginWrite();
  void endWrite();
  void startSave(const StagedValues& wanted);
  void write(WheelBase& base, Save& save);
  void saved(const Session& base, const Save& save);
  void keepOutcomes(const Save& save);
  void noteLeftUnsaved(const WheelBase* base);

  // The history. Those with a base run on the work queue.
  void reverse(UndoDirection direction);
  std::string reverseOn(WheelBase& base, UndoDirection direction);
  std::vector<ValueReceipt> writeRecorded(WheelBase& base, const HistoryIntent& intent,
                                          const std::optional<TuningSnapshot>& menu,
                                          const std::function<void(const ValueReceipt&)>& whenTried,
                                          const std::vector<ValueLeftAlone>& leftAlone = {});
  std::vector<HistoryRecord> recordsOf(const HIDDeviceInfo& info) const;
  void readHistory();
  static Reversible reversibleIn(const std::vector<HistoryRecord>& records);
  void gatherWheelChange(const TuningSnapshot& before, const TuningSnapshot& after);
  void recordWheelChanges();
  WorkQueue::Job recordingOf(const WheelChanges::Gathered& gathered) const;

  const World world_;
  const std::string deviceSelector_;  // the base to connect to automatically; empty: the first

  std::vector<HIDDeviceInfo> devices_;
  std::optional<std::string> connectedName_;
  std::optional<IdentityReport> identity_;
  std::optional<TuningSnapshot> tuning_;
  std::optional<std::uint16_t> wheelID_;
  std::optional<std::uint16_t> firmwareVersion_;
  int exchanges_ = 0;
  int writes_ = 0;  // of the exchanges, those that change the base
  std::optional<Progress> progress_;
  std::optional<LastWrite> lastWrite_;
  Reversible reversible_;
  std::optional<NotAsLeft> notAsLeft_;
  int historyReads_ = 0;  // queued or running
  WheelChanges wheelChanges_;
  QTimer gathering_;  // single shot, until the changes on the wheel are recorded
  StagedValues staged_;
  EditSteps steps_;  // that led to them
  Outcomes outcomes_;
  std::optional<std::string> requestedSection_;
  std::optional<HIDDeviceInfo> tried_;  // the base that was connected to last
  std::string waiting_;  // last log line about the awaited base; empty after a connect

  Session base_;
  Session opening_;               // being opened; becomes base_
  std::vector<Session> retired_;  // disconnected, until their threads have ended

  Log log_;
  WorkQueue work_;
  Examiner examiner_;
  OwnPresets presets_;
  std::unique_ptr<HIDDeviceWatcher> watcher_;
};

}  // namespace quorvane
