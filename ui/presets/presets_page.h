#pragma once

#include <memory>
#include <optional>

#include "ui/model/view.h"
#include "ui/presets/listed_presets.h"
#include "ui/presets/preset_action.h"
#include "ui/presets/preset_filter.h"
#include "ui/presets/preset_mover.h"
#include "ui/presets/preset_row_layout.h"

class QHBoxLayout;
class QMenu;

namespace quorvane {

class CodesBar;
class PageHeader;
class Picker;
class PresetActions;
class PresetGroup;
class PresetList;
class PresetPanel;
class PresetRow;
class PresetScroll;
class SavePresetBar;
class SearchField;
class ValueTexts;

// The section "Presets": the built-in presets and the user's own, with a search and a filter by
// game.
//
// In wide windows a panel shows what the preset whose row was entered last would change.
//
// Up, Down, Home and End move the focus from row to row. A preset that is added is scrolled to and
// marked until another one is entered.
class PresetsPage final : public View {
  Q_OBJECT

 public:
  explicit PresetsPage(AppModel& model, QWidget* parent = nullptr);

  // Puts the focus into the field for the name of a new preset.
  void focusNewName();

  // Compact rows are half as high and have no notes. The window remembers it. The page switches it
  // on by itself when there are 40 presets of the user's for the first time.
  void setCompact(bool isCompact);
  static bool isCompactRemembered();

  // The preset whose row has the keyboard focus, if the page is visible.
  std::optional<TuningPreset> focusedPreset() const;

 signals:
  void compactChanged(bool isCompact);

  // The menu of a preset's row is about to open: entries may be added.
  void menuOpened(QMenu& menu, const quorvane::TuningPreset& preset);

  // The preset is to be compared with the base.
  void compareAsked(const quorvane::TuningPreset& preset);

 protected:
  void render() override;
  const QWidget& mainPart() const override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void buildHeader();
  void addKeys();
  void connectList(PresetList& list, PresetGroup& group);
  void startRows();
  void renderGames();
  void list();
  void listMatching();
  void search();
  void leaveSearch();
  void makeRows();
  void alignCodes();
  void orderRows(const PresetGroup& group, const std::vector<PresetRow*>& rows, PresetRow* before);
  PresetRow* newRow(const ListedPreset& preset);
  void renderRow(PresetRow& row);
  void renderRows();
  void compactIfMany();
  void revealAdded();
  void mark(const std::optional<UUID>& preset);
  void choose(const UUID& preset);
  void renderPanel();
  void placePanel();
  void goTo(PresetRow* row);
  void step(PresetRow& row, PresetStep step);
  void act(const TuningPreset& preset, PresetAction action);
  PresetList& listOf(const PresetRow& row) const;

  PageHeader* header_;
  Picker* games_;
  SearchField* search_;
  CodesBar* codes_;
  PresetList* builtIn_;
  PresetList* own_;
  PresetGroup* builtInGroup_;
  PresetGroup* ownGroup_;
  PresetScroll* scroll_;
  QHBoxLayout* body_;
  PresetPanel* panel_ = nullptr;  // created when the window is wide
  SavePresetBar* saveBar_;
  PresetActions* actions_;
  PresetMover mover_;
  QStringList gameNames_;
  ListedPresets allBuiltIn_;
  ListedPresets allOwn_;
  PresetFilter filter_;
  std::optional<PresetForm> form_;      // of the current rows; none before the first
  std::shared_ptr<ValueTexts> values_;  // likewise
  bool isCompact_;
  std::optional<UUID> added_;   // the last added preset that was revealed
  std::optional<UUID> chosen_;  // the preset that the panel shows
  std::optional<UUID> marked_;  // the preset whose row is marked
};

}  // namespace quorvane
