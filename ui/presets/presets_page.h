#pragma once

#include <QPointer>
#include <vector>

#include "ui/model/view.h"

class QLabel;

namespace quorvane {

class Card;
class CodesBar;
class ConfirmDialog;
class FormPage;
class PresetList;
class PresetRow;
class SavePresetBar;

// The section "Presets": the built-in presets and the user's own. Asks before one is applied.
class PresetsPage final : public View {
  Q_OBJECT

 public:
  explicit PresetsPage(AppModel& model, QWidget* parent = nullptr);

  // Puts the focus into the field for the name of a new preset.
  void focusNewName();

 protected:
  void render() override;

 private:
  void renderRows();
  void renderQuestion();
  void buildBuiltIn();
  void showMine();
  void makeRows();
  void orderControls();
  void orderRows(const std::vector<PresetRow*>& rows, PresetRow* before);
  PresetRow* newRow(const TuningPreset& preset);
  void renderRow(PresetRow& row);
  void alignCodes();
  void ask(const TuningPreset& preset);

  FormPage* page_;
  CodesBar* codes_;
  Card* builtIn_;
  Card* mine_;
  QLabel* hint_;
  PresetList* own_;
  SavePresetBar* saveBar_;
  std::vector<PresetRow*> builtInRows_;
  std::optional<FanatecProduct> product_;  // of the current rows
  bool isBuilt_ = false;
  QPointer<ConfirmDialog> question_;  // while it is open
};

}  // namespace quorvane
