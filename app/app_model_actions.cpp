#include <QPointer>
#include <iterator>
#include <utility>

#include "app/app_model.h"
#include "app/messages.h"
#include "app/post.h"
#include "protocol/error.h"

namespace quorvane {

// A save in the work queue.
struct AppModel::Save {
  StagedValues wanted;
  std::optional<TuningSnapshot> menu;  // the menu that the user saw
  StagedValues failed;
  std::vector<std::string> rejections;
};

void AppModel::stage(TuningParameter parameter, std::int64_t value) {
  if (isCurrentValue({parameter, value}, tuning_, product())) {
    revert(parameter);
    return;
  }
  const auto before = staged_.find(parameter);
  if (before == staged_.end() || before->second != value) {
    eraseUnsaved(outcomes_, parameter);
    steps_.note(staged_, parameter);
  }
  staged_[parameter] = value;
  emit changed();
}

void AppModel::revert(TuningParameter parameter) {
  eraseUnsaved(outcomes_, parameter);
  if (!staged_.contains(parameter)) return;
  steps_.note(staged_, parameter);
  staged_.erase(parameter);
  if (staged_.empty()) steps_.clear();
  emit changed();
}

void AppModel::takeBackEdit() {
  if (staged_.empty()) return;
  const StagedValues edited = staged_;
  auto before = steps_.take();
  if (!before) {
    before = staged_;
    before->erase(std::prev(before->end()));
  }
  std::erase_if(*before, [&](const auto& edit) {
    return isCurrentValue({edit.first, edit.second}, tuning_, product());
  });
  for (const auto& [parameter, value] : edited) {
    const auto kept = before->find(parameter);
    if (kept == before->end() || kept->second != value) eraseUnsaved(outcomes_, parameter);
  }
  staged_ = *std::move(before);
  if (staged_.empty()) steps_.clear();
  emit changed();
}

void AppModel::stagePreset(const TuningPreset& preset) {
  const StagedValues before = staged_;
  EditSteps steps = steps_;
  for (const auto& [parameter, value] : preset.applicable(product())) stage(parameter, value);
  if (staged_ != before) steps.note(before, std::nullopt);
  steps_ = std::move(steps);
  if (staged_.empty()) steps_.clear();
  log_.append(Messages::loaded(preset, staged_.size()));
}

void AppModel::discardStaged() {
  const std::size_t count = std::exchange(staged_, {}).size();
  steps_.clear();
  outcomes_.clear();
  if (count > 0) log_.append(Messages::discarded(count));
}

void AppModel::saveStaged() { startSave(staged_); }

void AppModel::trySaving(TuningParameter parameter) {
  const auto edit = staged_.find(parameter);
  if (edit != staged_.end()) startSave({*edit});
}

void AppModel::startSave(const StagedValues& wanted) {
  if (!base_ || wanted.empty()) return;
  recordWheelChanges();
  beginWrite();
  eraseTaken(outcomes_);
  beginExchange();
  log_.append(Messages::saving(wanted.size()));
  const auto failure =
      enqueue(work_, [this, base = base_, save = Save{wanted, tuning_, {}, {}}]() mutable {
        write(*base, save);
        post(this, [this, base, save] { saved(base, save); });
      });
  if (!failure) return;
  endWrite();
  performed(base_, Messages::failed("Save", *failure), true);
}

// Runs on the work queue.
void AppModel::write(WheelBase& base, Save& save) {
  Progress progress{{}, 0, save.wanted.size()};
  std::vector<ParameterValue> wanted;
  wanted.reserve(save.wanted.size());
  for (const auto& [parameter, value] : save.wanted) wanted.push_back({parameter, value});
  reportProgress(progress);
  writeRecorded(base, {HistoryAction::save, wanted}, save.menu, [&](const ValueReceipt& receipt) {
    if (receipt.error) {
      save.failed[receipt.parameter] = receipt.wanted;
      save.rejections.push_back(Messages::rejection(receipt.parameter, *receipt.error));
    } else {
      post(this, [this, session = &base, taken = receipt.parameter] {
        if (session == base_.get()) emit valueTaken(taken);
      });
    }
    if (++progress.done < progress.total) reportProgress(progress);
  });
}

void AppModel::saved(const Session& base, const Save& save) {
  const auto menu = base->tuning();
  if (base == base_) {
    tuning_ = menu;
    // Edits that were staged during the save stay staged.
    std::erase_if(staged_, [&](const auto& edit) {
      const auto wanted = save.wanted.find(edit.first);
      return wanted != save.wanted.end() && wanted->second == edit.second;
    });
    staged_.insert(save.failed.begin(), save.failed.end());
    steps_.clear();
    keepOutcomes(save);
  }
  endWrite();
  endExchange();
  if (save.rejections.empty()) {
    log_.append(Messages::saved(save.wanted.size(), Messages::setName(menu)));
  } else {
    log_.append(Messages::partlySaved(save.wanted.size(), save.rejections), true);
  }
}

// A value that was edited during the save has no outcome.
void AppModel::keepOutcomes(const Save& save) {
  for (const auto& [parameter, value] : save.wanted) {
    const auto edit = staged_.find(parameter);
    outcomes_.erase(parameter);
    if (!save.failed.contains(parameter)) {
      outcomes_[parameter] = Outcome::taken;
    } else if (edit->second == value) {
      outcomes_[parameter] = Outcome::notTaken;
    }
  }
}

void AppModel::noteLeftUnsaved(const WheelBase* base) {
  if (base != base_.get() || staged_.empty()) return;
  eraseTaken(outcomes_);
  for (const auto& edit : staged_) outcomes_.try_emplace(edit.first, Outcome::leftUnsaved);
  emit changed();
}

void AppModel::selectSlot(std::int64_t slot) {
  change("Switch set", {HistoryAction::select, {}, std::to_string(slot)}, [slot](WheelBase& base) {
    return Messages::switchedToSet(base.selectSlot(slot, TuningLayout::inPlace));
  });
}

void AppModel::toggleMode() {
  change("Toggle mode", {HistoryAction::mode},
         [](WheelBase& base) { return Messages::nowInMode(base.switchMenuMode()); });
}

void AppModel::apply(const TuningPreset& preset) {
  const auto write = [this, preset](WheelBase& base) {
    const HistoryIntent intent{HistoryAction::apply, preset.applicable(base.product()),
                               preset.name};
    Progress progress{preset.id, 0, intent.wanted.size()};
    reportProgress(progress);
    const auto receipts =
        writeRecorded(base, intent, base.tuning(), [&](const ValueReceipt& /*receipt*/) {
          ++progress.done;
          reportProgress(progress);
        });
    post(this, [this, session = &base] { noteLeftUnsaved(session); });
    return Messages::applied(preset, receipts);
  };
  perform("Apply preset", write, true);
}

void AppModel::factoryReset() {
  change("Factory reset", {HistoryAction::factoryReset}, [](WheelBase& base) {
    base.factoryReset();
    return Messages::factoryReset;
  });
}

void AppModel::usbReset() {
  const auto failure = enqueue(work_, [this] {
    try {
      USBReset::reset(Fanatec::vendorID, std::nullopt, world_.usb);
      post(this, [this] { log_.append(Messages::usbReset); });
    } catch (const std::exception& error) {
      post(this, [this, reason = std::string(error.what())] {
        log_.append(Messages::usbResetFailed(reason), true);
      });
    }
  });
  if (failure) log_.append(Messages::usbResetFailed(*failure), true);
}

void AppModel::saveCurrentAsPreset(const std::string& name) {
  if (!tuning_) return;
  TuningPreset preset = TuningPreset::capture(product(), name, *tuning_);
  preset.game = "Custom";
  presets_.add(preset);
}

void AppModel::replacePreset(const TuningPreset& preset) {
  if (!tuning_) return;
  presets_.replaceValues(preset, TuningPreset::capture(product(), preset.name, *tuning_).values);
}

void AppModel::shareCurrentSettings() {
  if (!base_ || !tuning_) return;
  const std::string base = base_->info().displayName();
  const std::string name = base + ", set " + Messages::setName(tuning_);
  presets_.share(TuningPreset::capture(product(), name, *tuning_), base);
}

void AppModel::importSettingsFile() {
  world_.panels.chooseFile({"Import settings", "Import", FilePanels::Content::settings, {}},
                           [model = QPointer(this)](const std::filesystem::path& file) {
                             if (model) model->importSettings(file);
                           });
}

void AppModel::importSettings(const std::filesystem::path& file) { importAll({file}); }

void AppModel::importAll(const std::vector<std::filesystem::path>& files) {
  std::size_t imported = 0;
  for (const std::filesystem::path& file : files) {
    if (presets_.importFrom(file, isConnected())) ++imported;
  }
  if (files.size() > 1) {
    log_.append(Messages::importedFiles(imported, files.size()), imported < files.size());
  }
  if (imported > 0) setRequestedSection("Presets");
}

}  // namespace quorvane
