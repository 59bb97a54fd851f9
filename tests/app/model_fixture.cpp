#include "tests/app/model_fixture.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QThread>
#include <algorithm>
#include <system_error>
#include <utility>

namespace quorvane {
namespace {

std::string_view contentName(FilePanels::Content content) {
  switch (content) {
    case FilePanels::Content::settings:
      return "settings";
    case FilePanels::Content::presets:
      return "presets";
    case FilePanels::Content::report:
      return "report";
  }
  return "";
}

bool onMainThread() { return QThread::currentThread() == QCoreApplication::instance()->thread(); }

}  // namespace

std::string writeOf(std::string_view sensitivity, std::string_view forceFeedback,
                    std::string_view naturalInertia) {
  return fmt::format("> ff 03 00 02 {} {} 0a 65 01 00 00 0a 0a 05 19 0a 00 32 64 00 01 0b {} +41",
                     sensitivity, forceFeedback, naturalInertia);
}

std::uint64_t WatchedBackend::Events::add(Monitor* monitor) {
  MutexLock held(lock);
  monitors.push_back(monitor);
  return count;
}

void WatchedBackend::Events::report() {
  std::function<void()> event;
  {
    MutexLock held(lock);
    ++count;
    changed.notifyAll();
    event.swap(atChange);
  }
  if (event) event();
}

class WatchedBackend::Monitor final : public HIDMonitor {
 public:
  explicit Monitor(std::shared_ptr<Events> events)
      : events_(std::move(events)), seen_(events_->add(this)) {}
  ~Monitor() override {
    MutexLock held(events_->lock);
    std::erase(events_->monitors, this);
    events_->changed.notifyAll();
  }
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;

  bool waitForEvent() override {
    MutexLock held(events_->lock);
    waiting_ = true;
    events_->changed.notifyAll();
    while (!interrupted_ && !hasEvent()) events_->changed.wait(events_->lock);
    if (interrupted_) return false;
    waiting_ = false;
    ++seen_;
    return true;
  }

  void interrupt() override {
    MutexLock held(events_->lock);
    interrupted_ = true;
    events_->changed.notifyAll();
  }

  // Both require the events' lock.
  bool hasEvent() const { return !events_->onHold && events_->count != seen_; }
  bool isQuiet() const { return interrupted_ || (waiting_ && !hasEvent()); }

 private:
  const std::shared_ptr<Events> events_;
  std::uint64_t seen_;
  bool waiting_ = false;
  bool interrupted_ = false;
};

void WatchedBackend::add(const std::shared_ptr<SimulatedDevice>& device) {
  simulated_.add(device);
  device->setOnPlugChange([events = events_] { events->report(); });
  events_->report();
}

std::vector<std::shared_ptr<HIDDeviceHandle>> WatchedBackend::devices(
    std::optional<std::int64_t> vendorID) {
  if (onList_ && onMainThread()) onList_(vendorID);
  return simulated_.devices(vendorID);
}

std::unique_ptr<HIDMonitor> WatchedBackend::monitor(std::optional<std::int64_t> vendorID) {
  if (onMonitor_) onMonitor_(vendorID);
  if (!canWatch_) return nullptr;
  return std::make_unique<Monitor>(events_);
}

void WatchedBackend::setOnMonitor(std::function<void(std::optional<std::int64_t>)> handler) {
  onMonitor_ = std::move(handler);
}

void WatchedBackend::setOnList(std::function<void(std::optional<std::int64_t>)> handler) {
  onList_ = std::move(handler);
}

void WatchedBackend::atPlugChange(std::function<void()> event) {
  MutexLock held(events_->lock);
  events_->atChange = std::move(event);
}

void WatchedBackend::hold(bool held) {
  MutexLock lock(events_->lock);
  events_->onHold = held;
  events_->changed.notifyAll();
}

void WatchedBackend::waitUntilQuiet() {
  MutexLock held(events_->lock);
  while (!std::all_of(events_->monitors.begin(), events_->monitors.end(),
                      [](const Monitor* monitor) { return monitor->isQuiet(); })) {
    events_->changed.wait(events_->lock);
  }
}

void ScriptedPanels::chooseDestination(const Request& request, Chosen chosen) {
  show("save", request, std::move(chosen));
}

void ScriptedPanels::chooseFile(const Request& request, Chosen chosen) {
  show("open", request, std::move(chosen));
}

void ScriptedPanels::show(std::string_view panel, const Request& request, Chosen chosen) {
  requests_.push_back(fmt::format(
      "{}: {} [{}] {}, {}", panel, request.title, request.button, contentName(request.content),
      request.suggestedName.empty() ? "no name" : request.suggestedName));
  if (const auto file = std::exchange(answer_, std::nullopt)) {
    chosen(*file);
  } else {
    open_.push_back(std::move(chosen));
  }
}

void ScriptedPanels::answer(const std::filesystem::path& file) {
  const Chosen chosen = std::move(open_.front());
  open_.pop_front();
  chosen(file);
}

Lines ScriptedPanels::takeRequests() { return std::exchange(requests_, {}); }

class ScriptedUSBBus::Device final : public USBDevice {
 public:
  Device(const ScriptedUSBBus& bus, std::unique_ptr<USBDevice> device)
      : bus_(bus), device_(std::move(device)) {}

  std::optional<std::int64_t> vendorID() const override { return device_->vendorID(); }
  std::optional<std::int64_t> productID() const override { return device_->productID(); }
  std::optional<std::int64_t> locationID() const override { return device_->locationID(); }

  void reset() override {
    if (bus_.error_ != 0) {
      throw std::system_error(bus_.error_, std::generic_category(), "/dev/bus/usb/001/002");
    }
    device_->reset();
    if (bus_.afterReset_) bus_.afterReset_();
  }

 private:
  const ScriptedUSBBus& bus_;
  const std::unique_ptr<USBDevice> device_;
};

std::vector<std::unique_ptr<USBDevice>> ScriptedUSBBus::devices() {
  std::vector<std::unique_ptr<USBDevice>> result;
  if (device_ == nullptr) return result;
  for (auto& device : SimulatedUSBBus(*device_).devices()) {
    result.push_back(std::make_unique<Device>(*this, std::move(device)));
  }
  return result;
}

MachineFacts ScriptedSurvey::take(std::int64_t vendorID) {
  EXPECT_EQ(vendorID, Fanatec::vendorID);
  ++timesTold_;
  if (beforeTelling_) beforeTelling_();
  if (facts_) return *facts_;
  MachineFacts facts;
  facts.isSimulated = true;
  return facts;
}

ModelTest::ModelTest() : store_(directory_ / "presets.json") {}

void ModelTest::TearDown() {
  backend_.hold(false);
  if (model_) {
    settle();
    EXPECT_FALSE(model_->busy());
    end();
  }
  for (const auto& device : devices_) {
    EXPECT_EQ(device->violations(), Lines{});
    EXPECT_EQ(device->openPorts(), 0U) << "a base was left open";
  }
  EXPECT_EQ(changesElsewhere_, 0) << "changes were told on other threads";
}

FaultyDevice& ModelTest::attach(std::int64_t productID) {
  auto device = FaultyDevice::create(FanatecProduct::lookup(productID).value(), time_);
  device->setProperty(HIDPropertyKey::locationID, std::int64_t{std::ssize(devices_) + 1});
  if (devices_.empty()) {
    usb_.put(device.get());
    if (time_ == FaultyDevice::Time::simulated) clock_.follow(&device->clock());
  }
  devices_.push_back(device);
  backend_.add(device);
  return *device;
}

FaultyDevice& ModelTest::base() {
  if (devices_.empty()) attach();
  return *devices_.front();
}

void ModelTest::behave(const std::function<void(SimulatedBehaviour&)>& change) {
  simulate([&](SimulatedBase& simulated) { change(simulated.behaviour()); });
}

void ModelTest::simulate(const std::function<void(SimulatedBase&)>& change) {
  base().withBase(change);
}

std::int64_t ModelTest::valueOnBase(TuningParameter parameter) {
  std::int64_t value = 0;
  simulate([&](SimulatedBase& simulated) {
    const auto menu = TuningSnapshot::fromReport(simulated.menu().report(), {});
    value = menu->value(parameter, simulated.product());
  });
  return value;
}

AppModel& ModelTest::create(const std::string& which) {
  model_ = std::make_unique<AppModel>(
      AppModel::World{{backend_, usb_, clock_, survey_}, panels_, *store_, history_}, which);
  QObject::connect(model_.get(), &AppModel::changed, [this] { heardChange(); });
  logTaken_ = 0;
  return *model_;
}

AppModel& ModelTest::start() {
  base();
  return startWithoutBase();
}

AppModel& ModelTest::startWithoutBase(const std::string& which) {
  create(which);
  settle();
  takeLog();
  for (const auto& device : devices_) device->transcript().clear();
  return *model_;
}

void ModelTest::heardChange() {
  ++changes_;
  if (!onMainThread()) {
    ++changesElsewhere_;
    return;
  }
  if (!states_) return;
  std::string now = state();
  if (states_->empty() || states_->back() != now) states_->push_back(std::move(now));
}

void ModelTest::waitUntil(const std::function<bool()>& holds) {
  if (holds()) return;
  QEventLoop loop;
  QObject::connect(model_.get(), &AppModel::changed, &loop, [&] {
    if (holds()) loop.quit();
  });
  loop.exec();
}

void ModelTest::settle() {
  for (;;) {
    backend_.waitUntilQuiet();
    for (const auto& device : devices_) device->waitUntilQuiet();
    QCoreApplication::sendPostedEvents();
    if (!model_->busy() && !model_->isReadingHistory()) return;
    waitUntil([this] { return !model_->busy() && !model_->isReadingHistory(); });
  }
}

void ModelTest::resetUSBAndReconnect() {
  Gate gate;
  backend_.hold(true);
  usb_.afterReset([&] { gate.pass(); });
  model_->usbReset();
  gate.awaitArrival();
  waitUntil([this] { return model_->statusLine() == connectingStatus; });
  gate.open();
  waitUntil([this] { return model_->isConnected(); });
  usb_.afterReset({});
  backend_.hold(false);
}

Lines ModelTest::takeLog() {
  const auto& log = model_->log();
  Lines lines;
  for (; logTaken_ < log.size(); ++logTaken_) {
    const LogEntry& entry = log[logTaken_];
    lines.push_back((entry.isError ? "[error] " : "[log] ") + entry.text);
  }
  return lines;
}

Lines ModelTest::takeTranscript() {
  Lines lines = base().transcript().lines();
  base().transcript().clear();
  return lines;
}

std::string ModelTest::staged() const { return textOf(model_->staged()); }

std::int64_t ModelTest::valueOf(TuningParameter parameter) const {
  return model_->tuning().value().value(parameter, model_->product());
}

Lines ModelTest::takeStates(std::string_view firstStatus) {
  Lines states = std::move(*states_);
  states_.reset();
  const auto first = std::find_if(states.begin(), states.end(), [&](const std::string& line) {
    return line.ends_with(firstStatus);
  });
  states.erase(states.begin(), first);
  return states;
}

std::string ModelTest::state() const {
  Lines known;
  if (model_->identity()) known.emplace_back("identity");
  if (model_->tuning()) known.emplace_back("menu");
  if (model_->wheelID()) known.emplace_back("wheel");
  if (model_->firmwareVersion()) known.emplace_back("firmware");
  return fmt::format("{}; {}; {}; {}; {}", model_->busy() ? "busy" : "idle",
                     model_->connectedName().value_or("no base"),
                     known.empty() ? "nothing known" : fmt::format("{}", fmt::join(known, "+")),
                     staged().empty() ? "nothing staged" : staged(), model_->statusLine());
}

std::string textOf(const StagedValues& values) {
  Lines words;
  for (const auto& [parameter, value] : values) {
    words.push_back(fmt::format("{}={}", parameter.code(), value));
  }
  return fmt::format("{}", fmt::join(words, " "));
}

TuningPreset presetOf(std::string name, const std::vector<ParameterValue>& values) {
  TuningPreset preset;
  preset.name = std::move(name);
  preset.values = TuningPreset::codeValues(values);
  return preset;
}

}  // namespace quorvane
