#include <QPointer>
#include <stdexcept>
#include <string>
#include <utility>

#include "app/app_model.h"
#include "app/messages.h"
#include "app/post.h"
#include "presets/decoding_error.h"
#include "presets/settings_text.h"

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

std::optional<PastedSettings> AppModel::settingsIn(const std::string& text) {
  constexpr const char* pasted = "the pasted text";
  try {
    PastedSettings settings;
    if (isSettingsDocument(text)) {
      settings.presets = PresetStore::importPresets(pasted, text);
    } else {
      SettingsInText read = settingsInText(text, product());
      settings.notUnderstood = std::move(read.notUnderstood);
      if (!read.values.empty()) settings.presets.emplace_back().values = std::move(read.values);
    }
    if (!settings.presets.empty()) return settings;
    throw DecodingError(std::string(pasted) + ": There is no setting in it");
  } catch (const DecodingError& error) {
    log_.append(Messages::couldNotImport(error.what()), true);
    return std::nullopt;
  }
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
