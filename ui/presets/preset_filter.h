#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "presets/preset_search.h"

namespace quorvane {

// The presets that the page shows: those that match a typed search (PresetSearch), and those for
// one game.
class PresetFilter {
 public:
  // Everything.
  PresetFilter() : PresetFilter(QString(), std::nullopt) {}

  PresetFilter(const QString& search, std::optional<std::string> game);

  bool isActive() const { return game_ || !words_.isEmpty() || !parameters_.empty(); }
  bool matches(const TuningPreset& preset) const;

  // What the search looks for: words in the texts, and settings by their value.
  const QStringList& words() const { return words_; }
  const std::vector<TuningParameter>& parameters() const { return parameters_; }

 private:
  PresetSearch search_;
  std::optional<std::string> game_;
  QStringList words_;
  std::vector<TuningParameter> parameters_;
};

// The games of these presets, sorted, each once whatever its case; "Any" and no game are left out.
QStringList gamesOf(const std::vector<TuningPreset>& presets);

}  // namespace quorvane
