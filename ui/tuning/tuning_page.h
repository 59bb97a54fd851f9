#pragma once

#include <QBasicTimer>
#include <QPointer>
#include <vector>

#include "ui/model/view.h"
#include "ui/tuning/row_layout.h"

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace quorvane {

class BarPlace;
class ParameterRow;
class SettingHelpPanel;
class TuningHeader;

// The section "Tuning": the menu of the connected base, one row per parameter.
class TuningPage final : public View {
  Q_OBJECT

 public:
  explicit TuningPage(AppModel& model, QWidget* parent = nullptr);
  ~TuningPage() override;
  TuningPage(const TuningPage&) = delete;
  TuningPage& operator=(const TuningPage&) = delete;

  // The places of the window's bars, above and below the rows. They are hidden while there is no
  // menu.
  BarPlace& barsAbove() { return *barsAbove_; }
  BarPlace& barsBelow() { return *barsBelow_; }

  // Whether the panel "What it does" stands beside the list in wide windows. At first it does.
  void setShowsHelp(bool shows);

  // The page's message while there is no menu: the place of its text, in the page's coordinates.
  QRect messageRect() const;

 protected:
  const QWidget& mainPart() const override;
  void render() override;
  void resizeEvent(QResizeEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void renderRows(const TuningSnapshot& menu);
  void returnToRow();
  void noteChanges(const TuningSnapshot& before);
  void noteTaken(TuningParameter parameter);
  std::optional<std::int64_t> unsaved(TuningParameter parameter) const;
  std::optional<Outcome> outcomeOf(TuningParameter parameter) const;
  void buildRows(const std::vector<TuningParameter>& parameters);
  void connectRow(ParameterRow* row);
  void focusMoved(QWidget* now);
  void focusNeighbour(const ParameterRow* row, bool next);
  void rowPointed(ParameterRow* row, bool isOver);
  void explain(TuningParameter parameter);
  void renderHelp();
  void fitRows();
  void measureRows();

  QLabel* message_;
  QWidget* content_;
  TuningHeader* header_;
  BarPlace* barsAbove_;
  QScrollArea* list_;
  QVBoxLayout* column_;
  BarPlace* barsBelow_;
  SettingHelpPanel* help_ = nullptr;  // until it is shown for the first time
  std::vector<ParameterRow*> rows_;
  std::optional<FanatecProduct> product_;  // of the current rows
  QPointer<QWidget> lastEdited_;           // the last control of the list with the focus
  RowLayout::Needs needs_;                 // of the rows

  bool showsHelp_ = true;
  std::optional<TuningParameter> explained_;  // by the panel
  QPointer<ParameterRow> focusedRow_;
  QPointer<ParameterRow> pointedRow_;  // the pointer has come over it and not left it
  QBasicTimer pointing_;               // runs until pointedRow_ counts as pointed at
};

}  // namespace quorvane
