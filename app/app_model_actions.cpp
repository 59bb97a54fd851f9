#include <QPointer>
#include <algorithm>
#include <utility>

#include "app/app_model.h"
#include "app/messages.h"
#include "app/publish.h"
#include "protocol/error.h"
#include "session/menu_writer.h"

namespace quorvane {
namespace {

// A file name that every file system accepts and that a file panel does not take for a path.
std::string fileName(std::string name) {
  std::replace(name.begin(), name.end(), '/', '-');
  return name;
}

}  // namespace

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
  staged_[parameter] = value;
  emit changed();
}

void AppModel::revert(TuningParameter parameter) {
  if (staged_.erase(parameter) > 0) emit changed();
}

void AppModel::stagePreset(const TuningPreset& preset) {
  for (const auto& [parameter, value] : preset.applicable(product())) stage(parameter, value);
  append(Messages::loaded(preset, staged_.size()));
}

void AppModel::discardStaged() {
  const std::size_t count = std::exchange(staged_, {}).size();
  if (count > 0) append(Messages::discarded(count));
}

void AppModel::saveStaged() {
  if (!base_ || staged_.empty()) return;
  ++writes_;
  beginExchange();
  append(Messages::saving(staged_.size()));
  const auto failure =
      enqueue([this, base = base_, save = Save{staged_, tuning_, {}, {}}]() mutable {
        write(*base, save);
        post([this, base, save] { saved(base, save); });
      });
  if (!failure) return;
  --writes_;
  performed(base_, Messages::failed("Save", *failure), true);
}

// Runs on the work queue.
void AppModel::write(WheelBase& base, Save& save) {
  Progress progress{{}, 0, save.wanted.size()};
  MenuWriter writer(base, save.menu);
  for (const auto& [parameter, value] : save.wanted) {
    reportProgress(progress);
    try {
      writer.write(parameter, value);
    } catch (const FanatecError& error) {
      save.failed[parameter] = value;
      save.rejections.push_back(Messages::rejection(parameter, error.errorDescription()));
    }
    ++progress.done;
  }
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
  }
  --writes_;
  endExchange();
  if (save.rejections.empty()) {
    append(Messages::saved(save.wanted.size(), Messages::setName(menu)));
  } else {
    append(Messages::partlySaved(save.wanted.size(), save.rejections), true);
  }
}

void AppModel::selectSlot(std::int64_t slot) {
  change("Switch set", [slot](WheelBase& base) {
    return Messages::switchedToSet(base.selectSlot(slot, TuningLayout::inPlace));
  });
}

void AppModel::toggleMode() {
  change("Toggle mode", [](WheelBase& base) { return Messages::nowInMode(base.switchMenuMode()); });
}

void AppModel::apply(const TuningPreset& preset) {
  change("Apply preset", [this, preset](WheelBase& base) {
    Progress progress{preset.id, 0, preset.applicable(base.product()).size()};
    reportProgress(progress);
    const auto results = base.apply(preset, [&](const WheelBase::ApplyResult& /*result*/) {
      ++progress.done;
      reportProgress(progress);
    });
    return Messages::applied(preset, results);
  });
}

void AppModel::factoryReset() {
  change("Factory reset", [](WheelBase& base) {
    base.factoryReset();
    return Messages::factoryReset;
  });
}

void AppModel::usbReset() {
  const auto failure = enqueue([this] {
    try {
      USBReset::reset(Fanatec::vendorID, std::nullopt, world_.usb);
      post([this] { append(Messages::usbReset); });
    } catch (const std::exception& error) {
      post([this, reason = std::string(error.what())] {
        append(Messages::usbResetFailed(reason), true);
      });
    }
  });
  if (failure) append(Messages::usbResetFailed(*failure), true);
}

void AppModel::shareCurrentSettings() {
  if (!base_ || !tuning_) return;
  const std::string base = base_->info().displayName();
  const TuningPreset preset =
      TuningPreset::capture(product(), base + ", set " + Messages::setName(tuning_), *tuning_);
  world_.panels.chooseDestination(
      {"Share settings", "Export", FilePanels::Content::settings,
       fileName(preset.name) + "." + std::string(SettingsShareFile::fileExtension)},
      [model = QPointer(this), preset, base](const std::filesystem::path& file) {
        if (model) model->share(preset, base, file);
      });
}

void AppModel::share(const TuningPreset& preset, const std::string& base,
                     const std::filesystem::path& file) {
  try {
    PresetStore::exportShare(preset, base, file);
    append(Messages::exportedSettings(file));
  } catch (const FileError& error) {
    append(Messages::exportFailed(error.what()), true);
  }
}

void AppModel::exportPresets() {
  world_.panels.chooseDestination(
      {"Export presets", "Export", FilePanels::Content::presets, "quorvane-presets.json"},
      [model = QPointer(this)](const std::filesystem::path& file) {
        if (!model) return;
        try {
          PresetStore::exportPresets(model->userPresets(), file);
          model->append(Messages::exportedPresets(model->userPresets().size(), file));
        } catch (const FileError& error) {
          model->append(Messages::exportFailed(error.what()), true);
        }
      });
}

}  // namespace quorvane
