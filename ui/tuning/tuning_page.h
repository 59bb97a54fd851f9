#pragma once

#include <QPointer>
#include <vector>

#include "ui/model/view.h"

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace quorvane {

class ParameterRow;
class SaveBar;
class TuningHeader;
class WarningBox;

// The section "Tuning": the menu of the connected base, one row per parameter.
class TuningPage final : public View {
  Q_OBJECT

 public:
  explicit TuningPage(AppModel& model, QWidget* parent = nullptr);

  // For Esc: moves the focus to "Discard". False if there is nothing to discard.
  bool focusDiscard();

 protected:
  void render() override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void renderRows(const TuningSnapshot& menu);
  void showSaveBar(bool shows);
  void noteChanges(const TuningSnapshot& before);
  std::optional<std::int64_t> unsaved(TuningParameter parameter) const;
  void buildRows(const std::vector<TuningParameter>& parameters);
  void setNarrow(bool narrow);

  QLabel* message_;
  QWidget* content_;
  TuningHeader* header_;
  QWidget* warningFrame_;
  QScrollArea* list_;
  QVBoxLayout* column_;
  SaveBar* saveBar_;
  std::vector<ParameterRow*> rows_;
  std::optional<FanatecProduct> product_;  // of the current rows
  QPointer<QWidget> lastEdited_;           // the last control of the list with the focus
  bool isNarrow_ = false;
};

}  // namespace quorvane
