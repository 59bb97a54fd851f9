#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "app/app_model.h"
#include "app/messages.h"
#include "app/post.h"
#include "session/receipt_writer.h"

namespace quorvane {

// Runs on the work queue, like the four below.
std::vector<ValueReceipt> AppModel::writeRecorded(
    WheelBase& base, const HistoryIntent& intent, const std::optional<TuningSnapshot>& menu,
    const std::function<void(const ValueReceipt&)>& whenTried,
    const std::vector<ValueLeftAlone>& leftAlone) {
  HistoryBatch batch = world_.history.begin(base, intent);
  ReceiptWriter writer(base, menu, world_.clock);
  std::vector<ValueReceipt> receipts;
  receipts.reserve(intent.wanted.size());
  for (const auto& [parameter, value] : intent.wanted) {
    receipts.push_back(writer.write(parameter, value));
    whenTried(receipts.back());
  }
  batch.end(receipts);
  post(this, [this, session = &base, last = LastWrite{batch.record(), leftAlone, batch.failure()}] {
    if (session != base_.get()) return;
    lastWrite_ = last;
    emit changed();
  });
  return receipts;
}

std::optional<std::filesystem::path> AppModel::historyFile() const {
  return base_ ? world_.history.fileOf(base_->info()) : std::nullopt;
}

// A history that cannot be read offers nothing.
std::vector<HistoryRecord> AppModel::recordsOf(const HIDDeviceInfo& info) const {
  try {
    return world_.history.read(info).records;
  } catch (const std::exception&) {
    return {};
  }
}

AppModel::Reversible AppModel::reversibleIn(const std::vector<HistoryRecord>& records) {
  return {nextToReverse(records, UndoDirection::undo), nextToReverse(records, UndoDirection::redo)};
}

void AppModel::readHistory() {
  if (!base_) return;
  ++historyReads_;
  const auto failure = enqueue(work_, [this, base = base_] {
    const Reversible found = reversibleIn(recordsOf(base->info()));
    post(this, [this, base, found] {
      --historyReads_;
      if (base == base_) reversible_ = found;
      emit changed();
    });
  });
  if (failure) --historyReads_;
}

void AppModel::beginWrite() {
  ++writes_;
  notAsLeft_.reset();
}

void AppModel::endWrite() {
  --writes_;
  readHistory();
}

void AppModel::reverse(UndoDirection direction) {
  perform(
      direction == UndoDirection::undo ? "Undo" : "Redo",
      [this, direction](WheelBase& base) { return reverseOn(base, direction); }, true);
}

std::string AppModel::reverseOn(WheelBase& base, UndoDirection direction) {
  const auto record = nextToReverse(world_.history.read(base.info()).records, direction);
  if (!record) return Messages::nothingToReverse(direction);
  const TuningSnapshot menu = base.fetchTuning(WheelBase::readTimeout);
  if (!isOfSameSet(*record, menu)) throw std::runtime_error(Messages::inAnotherSet(*record));
  const UndoPlan plan = undoPlan(*record, direction, menu);
  const bool isUndo = direction == UndoDirection::undo;
  Progress progress{{}, 0, plan.writes.size()};
  const auto receipts = writeRecorded(
      base, {isUndo ? HistoryAction::undo : HistoryAction::redo, plan.writes, {}, record->id}, menu,
      [&](const ValueReceipt& /*receipt*/) {
        ++progress.done;
        reportProgress(progress);
      },
      plan.leftAlone);
  const std::string rejected = Messages::rejections(receipts);
  if (!rejected.empty()) throw std::runtime_error("the base rejected " + rejected);
  return Messages::reversed(direction, plan, menu);
}

void AppModel::gatherWheelChange(const TuningSnapshot& before, const TuningSnapshot& after) {
  if (!base_) return;
  const auto ended = wheelChanges_.add(before, after, world_.clock.now());
  if (ended) {
    enqueue(work_, recordingOf(*ended));
    gathering_.stop();
  }
  if (!gathering_.isActive()) {
    gathering_.start(std::chrono::duration_cast<std::chrono::milliseconds>(WheelChanges::period));
  }
}

void AppModel::recordWheelChanges() {
  gathering_.stop();
  if (!base_) return;
  const auto gathered = wheelChanges_.take();
  if (!gathered) return;
  enqueue(work_, recordingOf(*gathered));
  readHistory();
}

// The job records when its last copy is destroyed: after its run, or when the queue drops it
// because the model ends. Nobody waits for these records, so a failure is not reported.
WorkQueue::Job AppModel::recordingOf(const WheelChanges::Gathered& gathered) const {
  const auto record = [history = world_.history, info = base_->info(), gathered](const void*) {
    try {
      history.addWheelChanges(info, gathered.before, gathered.after);
    } catch (const std::exception&) {
      return;
    }
  };
  return [whenDone = std::shared_ptr<const void>(nullptr, record)] {};
}

}  // namespace quorvane
