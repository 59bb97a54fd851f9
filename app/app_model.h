#pragma once

#include <QObject>
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
#include "app/staging.h"
#include "hid/device_watcher.h"
#include "hid/usb_reset.h"
#include "presets/preset_store.h"
#include "session/wheel_base.h"
#include "support/work_queue.h"

namespace quorvane {

// What the window shows and does: the attached bases, the one that is connected, its menu, the
// staged edits, the user's presets and the log.
//
// Lives on the main thread, where every field changes and every action is called; actions return at
// once. Exchanges with the base run on the thread "quorvane.hid" one after another, in the order
// asked for, and end as a line of the log. Presets and files are read and written on the main
// thread. Destruction drops what has not begun, and waits for the exchange that has: at most for
// one of its pauses.
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
  };

  // How far the writing of several values is.
  struct Progress {
    std::optional<UUID> preset;  // that is applied; none for a save
    std::size_t done = 0;        // values, whether the base took them or not
    std::size_t total = 0;

    bool operator==(const Progress&) const = default;
  };

  static constexpr std::size_t longestLog = 500;

  // Loads the presets, watches for bases, and connects to the first that is there.
  explicit AppModel(const World& world);
  ~AppModel() override;
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  // The model of this process, if it has one: the one that was made last. Main thread only.
  static AppModel* shared();

  // The attached bases. The first is the one that gets connected.
  const std::vector<HIDDeviceInfo>& devices() const { return devices_; }
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

  // While a save or the applying of a preset runs.
  const std::optional<Progress>& progress() const { return progress_; }

  const std::string& statusLine() const { return statusLine_; }
  const std::vector<LogEntry>& log() const { return log_; }  // oldest first, at most longestLog
  const std::vector<TuningPreset>& userPresets() const { return userPresets_; }
  const StagedValues& staged() const { return staged_; }

  // The title of a section that the window should show, until it has.
  const std::optional<std::string>& requestedSection() const { return requestedSection_; }
  void setRequestedSection(std::optional<std::string> title);

  // The devices that are attached now: connects to the first base when there is no session, and
  // ends the session whose base has left.
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

  void saveCurrentAsPreset(const std::string& name);
  void deletePreset(const TuningPreset& preset);
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

  // Sessions.
  bool isGone(const WheelBase& base) const;
  void connectToFirst();
  void open(const Session& base);
  void followReports(const Session& base);
  void opened(const Session& base, const Opening& opening);
  void openFailed(const Session& base, const std::string& reason);
  void baseGone(const WheelBase* base);
  void retire(const Session& base);
  void stageDemo(const std::string& text);

  // Exchanges.
  void perform(std::string title, DeviceAction action);
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
  void persistPresets();
  void share(const TuningPreset& preset, const std::string& base,
             const std::filesystem::path& file);

  const World world_;

  std::vector<HIDDeviceInfo> devices_;
  std::optional<std::string> connectedName_;
  std::optional<IdentityReport> identity_;
  std::optional<TuningSnapshot> tuning_;
  std::optional<std::uint16_t> wheelID_;
  std::optional<std::uint16_t> firmwareVersion_;
  int exchanges_ = 0;
  std::optional<Progress> progress_;
  std::string statusLine_;
  std::vector<LogEntry> log_;
  std::vector<TuningPreset> userPresets_;
  StagedValues staged_;
  std::optional<std::string> requestedSection_;

  Session base_;
  Session opening_;               // on the way to become base_
  std::vector<Session> retired_;  // let go, until their threads have ended

  WorkQueue work_;
  std::unique_ptr<HIDDeviceWatcher> watcher_;
};

}  // namespace quorvane
