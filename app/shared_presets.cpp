#include "app/shared_presets.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace quorvane {
namespace {

constexpr std::chrono::milliseconds retryInterval(20);

constexpr std::chrono::milliseconds longestReadingPause(60'000);

}  // namespace

SharedPresets::SharedPresets(const PresetStore& store, std::chrono::milliseconds timeout)
    : store_(store), timeout_(timeout), watch_(store.fileURL()) {
  connect(&watch_, &FileWatch::touched, this, &SharedPresets::lookAgain);
  connect(&retry_, &QTimer::timeout, this, &SharedPresets::write);
  connect(&reading_, &QTimer::timeout, this, &SharedPresets::lookAgain);
  retry_.setInterval(retryInterval);
  reading_.setSingleShot(true);
  lookAgain();
}

void SharedPresets::change(const PresetChange& change) {
  change.apply(shown_);
  pending_.push_back(change);
  deadline_ = std::chrono::steady_clock::now() + timeout_;
  write();
}

// Returns the presets whose removal was refused.
std::vector<TuningPreset> SharedPresets::applyPending(std::vector<TuningPreset>& presets) const {
  std::vector<TuningPreset> refused;
  for (const PresetChange& change : pending_) {
    if (!change.apply(presets)) refused.push_back(*change.removed());
  }
  return refused;
}

// A damaged file is replaced by the whole list, so presets that were read before are not lost.
void SharedPresets::write() {
  try {
    std::vector<TuningPreset> refused;
    const auto change = [&](std::vector<TuningPreset>& list) { refused = applyPending(list); };
    if (auto contents = store_.tryChange(change, place_, stored_)) {
      stopWaiting();
      pending_.clear();
      const std::string versionFailure = contents->versionFailure;
      adopt(*std::move(contents));
      if (!versionFailure.empty()) emit versionNotKept(versionFailure);
      for (const TuningPreset& preset : refused) emit removalRefused(preset);
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
    store_.change([this](std::vector<TuningPreset>& presets) { applyPending(presets); }, stored_);
  } catch (const std::runtime_error& error) {
    emit saveFailed(error.what());
  }
}

// Skips the version that is known, such as one written here. Reports no error for a file that
// cannot be read: it may be being rewritten, and the next change reports the error.
void SharedPresets::lookAgain() {
  try {
    if (store_.version() != version_) adopt(store_.contents());
    reading_.stop();
    readingPause_ = firstReadingPause;
  } catch (const DecodingError&) {
    return;  // no retry: the watch reports the next version
  } catch (const std::exception&) {
    readLater();
  }
}

void SharedPresets::readLater() {
  reading_.start(readingPause_);
  readingPause_ = std::min(2 * readingPause_, longestReadingPause);
}

void SharedPresets::adopt(PresetStore::Contents contents) {
  stored_ = std::move(contents.presets);
  version_ = contents.version;
  std::vector<TuningPreset> shown = stored_;
  applyPending(shown);
  if (shown == shown_) return;
  shown_ = std::move(shown);
  emit changed();
}

}  // namespace quorvane
