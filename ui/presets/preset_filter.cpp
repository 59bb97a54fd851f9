#include "ui/presets/preset_filter.h"

#include <utility>

#include "support/text.h"
#include "ui/kit/text.h"

namespace quorvane {

PresetFilter::PresetFilter(const QString& search, std::optional<std::string> game)
    : search_(text(search)), game_(std::move(game)), parameters_(search_.parameters()) {
  for (const std::u32string& word : search_.words()) words_ += QString::fromStdU32String(word);
}

bool PresetFilter::matches(const TuningPreset& preset) const {
  return (!game_ || isForGame(preset, *game_)) && search_.matches(preset);
}

QStringList gamesOf(const std::vector<TuningPreset>& presets) {
  QStringList games;
  for (const TuningPreset& preset : presets) {
    const QString game = text(oneLine(preset.game)).trimmed();
    const bool isKnown = game.isEmpty() || game == QStringLiteral("Any") ||
                         games.contains(game, Qt::CaseInsensitive);
    if (!isKnown) games += game;
  }
  games.sort(Qt::CaseInsensitive);
  return games;
}

}  // namespace quorvane
