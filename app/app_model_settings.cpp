#include <QPointer>
#include <stdexcept>

#include "app/app_model.h"
#include "app/messages.h"
#include "app/post.h"

namespace quorvane {

std::optional<TuningPreset> AppModel::importedPreset() const {
  const auto& imported = presets_.imported();
  if (!imported || imported->line != log_.statusLine()) return std::nullopt;
  return imported->preset;
}

void AppModel::readSettingsFile(const PresetsRead& whenRead) {
  world_.panels.chooseFile(
      {"Compare settings", "Compare", FilePanels::Content::settings, {}},
      [model = QPointer(this), whenRead](const std::filesystem::path& file) {
        if (!model) return;
        try {
          const auto presets = PresetStore::importPresets(file);
          if (!presets.empty()) {
            whenRead(presets);
          } else {
            model->log_.append(Messages::imported({}, file, model->isConnected()), true);
          }
        } catch (const std::runtime_error& error) {  // FileError, DecodingError
          model->log_.append(Messages::couldNotImport(error.what()), true);
        }
      });
}

std::optional<SettingsInText> AppModel::settingsIn(const std::string& text) {
  SettingsInText settings = settingsInText(text, product());
  if (!settings.values.empty()) return settings;
  log_.append(Messages::couldNotImport("the pasted text: There is no setting in it"), true);
  return std::nullopt;
}

void AppModel::readHistory(const HistoryRead& whenRead) {
  if (!base_) return;
  const auto tell = [this, whenRead](const HistoryContents& contents, const std::string& failure) {
    whenRead(contents, failure);
    emit changed();
  };
  const auto failure = enqueue(work_, [this, tell, history = world_.history, base = base_->info()] {
    HistoryContents contents;
    std::string reason;
    try {
      contents = history.read(base);
    } catch (const std::exception& error) {
      reason = error.what();
    }
    post(this, [tell, contents, reason] { tell(contents, reason); });
  });
  if (failure) tell({}, *failure);
}

}  // namespace quorvane
