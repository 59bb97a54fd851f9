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

// The section "Tuning": the menu of the connected base, one row a parameter.
class TuningPage final : public View {
  Q_OBJECT

 public:
  explicit TuningPage(AppModel& model, QWidget* parent = nullptr);

  // Whether Esc has something to go to here: it brings the focus to "Discard".
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
  std::optional<FanatecProduct> product_;  // that the rows were built for
  QPointer<QWidget> lastEdited_;           // the control of the list that had the focus last
  bool isNarrow_ = false;
};

}  // namespace quorvane
