#include "app/app_model.h"

#include <QPointer>
#include <algorithm>
#include <utility>

#include "app/environment.h"
#include "app/messages.h"
#include "app/post.h"
#include "protocol/error.h"
#include "session/candidates.h"
#include "support/semaphore.h"

namespace quorvane {
namespace {

QPointer<AppModel>& latestModel() {
  static QPointer<AppModel> model;
  return model;
}

template <typename Read>
auto ifAnswered(Read read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const FanatecError&) {
    return std::nullopt;
  }
}

}  // namespace

// The results of a session's first reads.
struct AppModel::Opening {
  std::optional<IdentityReport> identity;
  bool menuAnswered = false;
  std::string demoStage;
  Reversible reversible;
  std::optional<NotAsLeft> notAsLeft;
};

AppModel::AppModel(World world, std::string which)
    : world_(std::move(world)),
      deviceSelector_(std::move(which)),
      work_("quorvane.hid"),
      examiner_(world_, world_.store.fileURL(), log_, work_),
      presets_(world_.store, world_.panels, log_),
      watcher_(std::make_unique<HIDDeviceWatcher>(Fanatec::vendorID, world_.backend)) {
  latestModel() = this;
  gathering_.setSingleShot(true);
  QObject::connect(&gathering_, &QTimer::timeout, this, &AppModel::recordWheelChanges);
  QObject::connect(&log_, &Log::changed, this, &AppModel::changed);
  QObject::connect(&examiner_, &Examiner::changed, this, &AppModel::changed);
  QObject::connect(&presets_, &OwnPresets::changed, this, &AppModel::changed);
  watchDevices();
  devicesChanged(watcher_->currentDevices());
}

// Ends every thread that posts before the fields are destroyed.
AppModel::~AppModel() {
  const auto gathered = base_ ? wheelChanges_.take() : std::nullopt;
  const auto recording = gathered ? recordingOf(*gathered) : nullptr;  // ends after those queued
  watcher_.reset();
  examiner_.stop();
  if (opening_) retire(std::exchange(opening_, nullptr));
  if (base_) retire(std::exchange(base_, nullptr));
  work_.stop();
  for (const Session& base : retired_) base->connection().join();
  presets_.finish();
}

// Sets a field and emits changed(); does nothing if the value is equal.
template <typename Field, typename Value>
void AppModel::publish(Field& field, Value&& value) {
  if (field == value) return;
  field = std::forward<Value>(value);
  emit changed();
}

AppModel* AppModel::shared() { return latestModel(); }

std::optional<FanatecProduct> AppModel::product() const {
  return base_ ? base_->product() : std::nullopt;
}

void AppModel::setRequestedSection(std::optional<std::string> title) {
  publish(requestedSection_, std::move(title));
}

void AppModel::watchDevices() {
  watcher_->setOnChange([this](const std::vector<HIDDeviceInfo>& attached) {
    post(this, [this, attached] { devicesChanged(attached); });
  });
  try {
    watcher_->start();
  } catch (const FanatecError& error) {
    log_.append(Messages::cannotWatch(error.errorDescription()), true);
  }
}

void AppModel::devicesChanged(const std::vector<HIDDeviceInfo>& attached) {
  devices_ = wheelBaseCandidates(attached);
  emit changed();
  if (opening_ && isGone(*opening_)) disconnect();
  if (base_ && isGone(*base_)) {
    log_.append(Messages::disconnected);
    disconnect();
  }
  connectToFirst();
}

AppModel::Link AppModel::linkTo(const HIDDeviceInfo& device) const {
  if (base_ && isSameDevice(base_->info(), device)) return Link::open;
  if (opening_ && isSameDevice(opening_->info(), device)) return Link::opening;
  return Link::none;
}

bool AppModel::isGone(const WheelBase& base) const {
  return std::none_of(devices_.begin(), devices_.end(),
                      [&](const HIDDeviceInfo& device) { return device.id == base.info().id; });
}

void AppModel::connectToFirst() {
  if (devices_.empty()) {
    log_.setStatus(Messages::noBaseFound);
    return;
  }
  if (base_ || opening_) return;
  const std::vector<HIDDeviceInfo> candidates = wheelBaseCandidates(devices_, deviceSelector_);
  if (candidates.empty()) {
    waitForNamed();
  } else {
    connect(candidates.front());
  }
}

// Device lists arrive often: logs the line only if it differs from the last one.
void AppModel::waitForNamed() {
  std::string line = Messages::waitingFor(deviceSelector_, devices_);
  if (line == waiting_) {
    log_.setStatus(std::move(line));
  } else {
    waiting_ = line;
    log_.append(std::move(line));
  }
}

void AppModel::connect(const HIDDeviceInfo& device) {
  if (base_ || opening_) disconnect();
  waiting_.clear();
  tried_ = device;
  const Session base = WheelBase::create(device, world_.clock);
  opening_ = base;
  beginExchange();
  log_.setStatus(Messages::connecting(device.displayName()));
  const auto failure = enqueue(work_, [this, base] { open(base); });
  if (failure) openFailed(base, *failure);
}

void AppModel::open(const Session& base) {
  followReports(base);  // before connect(): a base may be unplugged right after
  try {
    base->connect();
  } catch (const FanatecError& error) {
    post(this, [this, base, reason = error.errorDescription()] { openFailed(base, reason); });
    return;
  }
  Opening opening;
  opening.demoStage = Environment::demoStage();
  opening.identity = ifAnswered([&] { return base->fetchIdentity(WheelBase::readTimeout); });
  opening.menuAnswered =
      ifAnswered([&] { return base->fetchTuning(WheelBase::readTimeout); }).has_value();
  const auto records = recordsOf(base->info());
  opening.reversible = reversibleIn(records);
  if (const auto menu = base->tuning()) opening.notAsLeft = quorvane::notAsLeft(records, *menu);
  post(this, [this, base, opening] { opened(base, opening); });
}

// The handlers must not own the session, since it owns them (reference cycle).
void AppModel::followReports(const Session& base) {
  const WheelBase* const session = base.get();
  const auto isCurrent = [this, session] {
    return session == base_.get() || session == opening_.get();
  };
  base->setOnTuningUpdate([this, isCurrent](const TuningSnapshot& menu) {
    post(this, [this, isCurrent, menu] {
      if (isCurrent()) menuReported(menu);
    });
  });
  base->setOnStatusUpdate([this, isCurrent](WheelBase& reporting) {
    post(this,
         [this, isCurrent, wheel = reporting.wheelID(), version = reporting.firmwareVersion()] {
           if (!isCurrent()) return;
           publish(wheelID_, wheel);
           publish(firmwareVersion_, version);
         });
  });
  base->connection().setOnGone(
      [this, session] { post(this, [this, session] { baseGone(session); }); });
}

void AppModel::opened(const Session& base, const Opening& opening) {
  if (opening_ != base) {
    endExchange();
    return;
  }
  const std::string name =
      opening.identity ? opening.identity->baseName() : base->info().displayName();
  base_ = std::exchange(opening_, nullptr);
  connectedName_ = name;
  identity_ = opening.identity;
  tuning_ = base->tuning();
  reversible_ = opening.reversible;
  notAsLeft_ = opening.notAsLeft;
  examiner_.setAnswered(tuning_.has_value());
  endExchange();
  log_.append(Messages::connected(name));
  if (!opening.menuAnswered) log_.append(Messages::noTuningAnswer, true);
  stageDemo(opening.demoStage);
}

void AppModel::openFailed(const Session& base, const std::string& reason) {
  endExchange();
  if (opening_ != base) return;
  opening_.reset();
  log_.append(Messages::couldNotOpen(base->info().displayName(), reason), true);
}

void AppModel::stageDemo(const std::string& text) {
  for (const auto& [parameter, value] : parseDemoStage(text)) stage(parameter, value);
}

void AppModel::baseGone(const WheelBase* base) {
  if (base != base_.get() && base != opening_.get()) return;
  const std::vector<HIDDeviceInfo> attached = watcher_->currentDevices();
  if (base_) log_.append(Messages::disconnected);
  disconnect();
  devicesChanged(attached);
}

void AppModel::disconnect() {
  recordWheelChanges();
  if (opening_) retire(std::exchange(opening_, nullptr));
  if (base_) retire(std::exchange(base_, nullptr));
  staged_.clear();
  steps_.clear();
  outcomes_.clear();
  lastWrite_.reset();
  reversible_ = {};
  notAsLeft_.reset();
  connectedName_.reset();
  identity_.reset();
  tuning_.reset();
  wheelID_.reset();
  firmwareVersion_.reset();
  examiner_.setAnswered(false);
  log_.setStatus(Messages::notConnected);
  emit changed();
}

// Disconnects a session. Its threads are joined on the work queue, or else in the destructor.
void AppModel::retire(const Session& base) {
  base->disconnect();
  retired_.push_back(base);
  enqueue(work_, [this, base] {
    base->connection().join();
    post(this, [this, base] { std::erase(retired_, base); });
  });
}

void AppModel::menuReported(const TuningSnapshot& menu) {
  const std::optional<TuningSnapshot> before = tuning_;
  if (base_) examiner_.setAnswered(true);
  tuning_ = menu;
  emit changed();
  if (busy() || !before || before->raw() == menu.raw()) return;
  gatherWheelChange(*before, menu);
  emit menuChangedAtBase(*before);
}

void AppModel::refresh() {
  read("Read the tuning menu", [this](WheelBase& base) { return readMenuAndIdentity(base); });
}

void AppModel::readEverything() {
  read("Read", [this](WheelBase& base) { return readMenuAndIdentity(base); });
}

// Runs on the work queue. Returns no text to log on success.
std::optional<std::string> AppModel::readMenuAndIdentity(WheelBase& base) {
  try {
    base.fetchTuning(WheelBase::readTimeout);
  } catch (const FanatecError&) {
    post(this, [this, session = &base] {
      if (session != base_.get()) return;
      examiner_.setAnswered(false);
      emit changed();
    });
    throw;
  }
  const auto identity = ifAnswered([&] { return base.fetchIdentity(WheelBase::readTimeout); });
  if (identity) {
    post(this, [this, session = &base, identity] {
      if (session == base_.get()) publish(identity_, identity);
    });
  }
  return std::nullopt;
}

void AppModel::read(const std::string& title, DeviceAction action) {
  perform(title, std::move(action), false);
}

void AppModel::change(const std::string& title, const HistoryIntent& intent,
                      const DeviceAction& action) {
  const auto recorded = [this, intent, action](WheelBase& base) {
    return world_.history.during(
        base, intent, [&] { return action(base); }, [](const HistoryBatch& /*batch*/) {});
  };
  perform(title, recorded, true);
}

void AppModel::perform(const std::string& title, DeviceAction action, bool isWrite) {
  if (!base_) {
    log_.append(Messages::notConnected, true);
    return;
  }
  recordWheelChanges();
  if (isWrite) beginWrite();
  beginExchange();
  const auto failure =
      enqueue(work_, [this, base = base_, title, action = std::move(action), isWrite] {
        std::string text;
        bool isError = false;
        try {
          text = action(*base).value_or("");
        } catch (const std::exception& error) {
          text = Messages::failed(title, error.what());
          isError = true;
        }
        post(this, [this, base, text, isError, isWrite] {
          if (isWrite) endWrite();
          performed(base, text, isError);
        });
      });
  if (!failure) return;
  if (isWrite) endWrite();
  performed(base_, Messages::failed(title, *failure), true);
}

void AppModel::performed(const Session& base, const std::string& text, bool isError) {
  if (base == base_) publish(tuning_, base->tuning());
  endExchange();
  if (!text.empty()) log_.append(text, isError);
}

void AppModel::waitForWrites(std::chrono::milliseconds longest) {
  if (!isWriting()) return;
  const auto deadline = std::chrono::steady_clock::now() + longest;
  const auto ended = std::make_shared<Semaphore>();
  work_.add([ended] { ended->signal(); });
  ended->waitUntil(deadline);
}

void AppModel::beginExchange() {
  ++exchanges_;
  emit changed();
}

// Publishes the progress; endExchange() resets it.
void AppModel::reportProgress(Progress progress) {
  post(this, [this, progress] { publish(progress_, progress); });
}

void AppModel::endExchange() {
  --exchanges_;
  progress_.reset();
  emit changed();
}

bool AppModel::needsExamination() const {
  if (base_) return !examiner_.answered();
  return !opening_ || isExamining() || examination();
}

std::optional<HIDDeviceInfo> AppModel::baseToExamine() const {
  if (base_) return base_->info();
  if (tried_ && findDevice(devices_, *tried_)) return tried_;
  const std::vector<HIDDeviceInfo> candidates = wheelBaseCandidates(devices_, deviceSelector_);
  return candidates.empty() ? std::nullopt : std::optional(candidates.front());
}

}  // namespace quorvane
