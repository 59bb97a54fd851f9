#include "app/preset_list.h"

#include <exception>
#include <utility>

namespace quorvane {
namespace {

constexpr std::chrono::milliseconds retryInterval(20);

}  // namespace

PresetList::PresetList(const PresetStore& store, std::chrono::milliseconds timeout)
    : store_(store), timeout_(timeout), watch_(store.fileURL()) {
  connect(&watch_, &FileWatch::touched, this, &PresetList::lookAgain);
  connect(&retry_, &QTimer::timeout, this, &PresetList::write);
  retry_.setInterval(retryInterval);
  try {
    adopt(store_.contents());
  } catch (const std::exception&) {
    return;  // the first change says what is wrong
  }
}

void PresetList::change(const PresetChange& change) {
  change.apply(shown_);
  pending_.push_back(change);
  deadline_ = std::chrono::steady_clock::now() + timeout_;
  write();
}

PresetStore::Change PresetList::pendingChanges() const {
  return [this](std::vector<TuningPreset>& presets) {
    for (const PresetChange& change : pending_) change.apply(presets);
  };
}

// A damaged file costs nothing of what was read before: it is replaced by the whole list.
void PresetList::write() {
  try {
    if (auto contents = store_.tryChange(pendingChanges(), stored_)) {
      retry_.stop();
      pending_.clear();
      adopt(*std::move(contents));
    } else if (std::chrono::steady_clock::now() < deadline_) {
      retry_.start();
    } else {
      throw store_.timeoutError();
    }
  } catch (const std::runtime_error& error) {  // FileError, DecodingError
    retry_.stop();
    emit saveFailed(error.what());
  }
}

void PresetList::finish() {
  if (!retry_.isActive()) return;
  retry_.stop();
  try {
    store_.change(pendingChanges(), stored_);
  } catch (const std::runtime_error& error) {
    emit saveFailed(error.what());
  }
}

// What was written here has the version that is known already. A file that cannot be read now is
// perhaps being rewritten, which is told again.
void PresetList::lookAgain() {
  try {
    if (store_.version() != version_) adopt(store_.contents());
  } catch (const std::exception&) {
    return;
  }
}

void PresetList::adopt(PresetStore::Contents contents) {
  stored_ = std::move(contents.presets);
  version_ = contents.version;
  std::vector<TuningPreset> shown = stored_;
  pendingChanges()(shown);
  if (shown == shown_) return;
  shown_ = std::move(shown);
  emit changed();
}

}  // namespace quorvane
