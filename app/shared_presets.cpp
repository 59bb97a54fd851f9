#include "app/shared_presets.h"

#include <exception>
#include <utility>

namespace quorvane {
namespace {

constexpr std::chrono::milliseconds retryInterval(20);

}  // namespace

SharedPresets::SharedPresets(const PresetStore& store, std::chrono::milliseconds timeout)
    : store_(store), timeout_(timeout), watch_(store.fileURL()) {
  connect(&watch_, &FileWatch::touched, this, &SharedPresets::lookAgain);
  connect(&retry_, &QTimer::timeout, this, &SharedPresets::write);
  retry_.setInterval(retryInterval);
  try {
    adopt(store_.contents());
  } catch (const std::exception&) {
    return;  // the first change says what is wrong
  }
}

void SharedPresets::change(const PresetChange& change) {
  change.apply(shown_);
  pending_.push_back(change);
  deadline_ = std::chrono::steady_clock::now() + timeout_;
  write();
}

PresetStore::Change SharedPresets::pendingChanges() const {
  return [this](std::vector<TuningPreset>& presets) {
    for (const PresetChange& change : pending_) change.apply(presets);
  };
}

// A damaged file costs nothing of what was read before: it is replaced by the whole list.
void SharedPresets::write() {
  try {
    if (auto contents = store_.tryChange(pendingChanges(), place_, stored_)) {
      stopWaiting();
      pending_.clear();
      adopt(*std::move(contents));
    } else if (std::chrono::steady_clock::now() < deadline_) {
      retry_.start();
    } else {
      throw store_.timeoutError();
    }
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    stopWaiting();
    emit saveFailed(error.what());
  }
}

void SharedPresets::stopWaiting() {
  retry_.stop();
  place_.leave();
}

void SharedPresets::finish() {
  if (!retry_.isActive()) return;
  stopWaiting();
  try {
    store_.change(pendingChanges(), stored_);
  } catch (const std::runtime_error& error) {
    emit saveFailed(error.what());
  }
}

// What was written here has the version that is known already. A file that cannot be read now is
// perhaps being rewritten, which is told again.
void SharedPresets::lookAgain() {
  try {
    if (store_.version() != version_) adopt(store_.contents());
  } catch (const std::exception&) {
    return;
  }
}

void SharedPresets::adopt(PresetStore::Contents contents) {
  stored_ = std::move(contents.presets);
  version_ = contents.version;
  std::vector<TuningPreset> shown = stored_;
  pendingChanges()(shown);
  if (shown == shown_) return;
  shown_ = std::move(shown);
  emit changed();
}

}  // namespace quorvane
