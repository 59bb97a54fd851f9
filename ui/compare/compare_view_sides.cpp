// The sides of CompareView, and what is done with them.

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>
#include <algorithm>
#include <iterator>

#include "presets/settings_text.h"
#include "ui/compare/compare_model.h"
#include "ui/compare/compare_view.h"
#include "ui/compare/pasted_sides.h"
#include "ui/kit/text.h"
#include "ui/model/section.h"

namespace quorvane {
namespace {

constexpr std::size_t historyShown = 10;  // of the last writes

const TuningPreset* presetWith(const std::vector<TuningPreset>& presets, const UUID& id) {
  const auto found = std::find_if(presets.begin(), presets.end(),
                                  [&](const TuningPreset& preset) { return preset.id == id; });
  return found == presets.end() ? nullptr : &*found;
}

}  // namespace

// Reads the history again after each write and for each base.
void CompareView::followHistory() {
  const auto& last = model().lastWrite();
  const std::pair now(model().isConnected(), last ? std::optional(last->record.id) : std::nullopt);
  if (historyRead_ == now) return;
  historyRead_ = now;
  history_.clear();
  model().readHistory(
      [view = QPointer(this)](const HistoryContents& contents, const std::string& /*failure*/) {
        if (!view) return;
        view->history_.clear();
        for (auto record = contents.records.rbegin();
             record != contents.records.rend() && view->history_.size() < historyShown; ++record) {
          if (auto side = CompareSide::before(*record)) view->history_.push_back(std::move(*side));
        }
      });
}

// Takes the present values of a side. A preset that was deleted keeps its last ones.
void CompareView::refresh(CompareSide& side) const {
  if (side.kind == CompareSide::Kind::base) {
    side.name = lastMenu_.name();
    side.values = lastMenu_.values();
  } else if (side.kind == CompareSide::Kind::preset) {
    const TuningPreset* preset = presetWith(model().userPresets(), *side.id);
    if (preset == nullptr) preset = presetWith(TuningPreset::builtIn(), *side.id);
    if (preset != nullptr) side = CompareSide::ofPreset(*preset);
  }
}

// All sides to choose from: the base, presets, what was pasted or read from a file, the history.
std::vector<CompareSide> CompareView::sides() const {
  std::vector<CompareSide> sides{CompareSide::base()};
  refresh(sides.front());
  const auto addPresets = [&](const std::vector<TuningPreset>& presets) {
    std::transform(presets.begin(), presets.end(), std::back_inserter(sides),
                   &CompareSide::ofPreset);
  };
  addPresets(model().userPresets());
  addPresets(TuningPreset::builtIn());
  sides.insert(sides.end(), given_.begin(), given_.end());
  sides.insert(sides.end(), history_.begin(), history_.end());
  for (const CompareSide* const shown : {&left_, &right_}) {
    const bool isThere = std::any_of(
        sides.begin(), sides.end(), [&](const CompareSide& side) { return side.isSideOf(*shown); });
    if (!isThere) sides.push_back(*shown);
  }
  return sides;
}

void CompareView::choose(CompareSide& side, const CompareSide& chosen) {
  side = chosen;
  if (chosen.kind == CompareSide::Kind::fixed) {
    const auto found = std::find_if(given_.begin(), given_.end(), [&](const CompareSide& given) {
      return given.isSideOf(chosen);
    });
    if (found == given_.end()) {
      if (!chosen.id) side.name = freshName(chosen.name);
      given_.push_back(side);
    } else {
      side = *found;
    }
  }
  rows_->resetTicks();
  render();
}

// A text's name, with a number if another one that was given has it.
QString CompareView::freshName(const QString& name) const {
  const auto isTaken = [&](const QString& wanted) {
    return std::any_of(given_.begin(), given_.end(),
                       [&](const CompareSide& given) { return given.name == wanted; });
  };
  QString fresh = name;
  for (int number = 2; isTaken(fresh); ++number) {
    fresh = QStringLiteral("%1 %2").arg(name).arg(number);
  }
  return fresh;
}

// Offers all that was pasted, and takes the first.
void CompareView::choosePasted(CompareSide& side) {
  const auto pasted = pastedSides(model());
  std::for_each(pasted.rbegin(), pasted.rend(),
                [&](const CompareSide& given) { choose(side, given); });
}

// Offers all presets of the file, and takes the first.
void CompareView::chooseFile(CompareSide& side) {
  model().readSettingsFile(
      [view = QPointer(this), &side](const std::vector<TuningPreset>& presets) {
        if (!view) return;
        std::for_each(presets.rbegin(), presets.rend(), [&](const TuningPreset& preset) {
          view->choose(side, CompareSide::ofFile(preset));
        });
      });
}

void CompareView::swapSides() {
  std::swap(left_, right_);
  render();
}

void CompareView::copy() const {
  TuningPreset preset;
  preset.values = right_.values;
  QGuiApplication::clipboard()->setText(text(settingsText(preset, lastMenu_.product())));
}

void CompareView::fillIn() {
  TuningPreset chosen;
  chosen.name = text(right_.name);
  for (const QString& code : rows_->ticked()) {
    const auto value = right_.values.find(text(code));
    if (value != right_.values.end()) chosen.values.insert(*value);
  }
  model().stagePreset(chosen);
  model().setRequestedSection(std::string(rawValue(Section::tuning)));
  emit done();
}

}  // namespace quorvane
