#pragma once

#include <QBasicTimer>
#include <QWidget>
#include <optional>
#include <vector>

#include "ui/tuning/row_text.h"

namespace quorvane {

class ElidedLabel;
class IconButton;
class Picker;
class Readout;
class Segments;
class Toggle;
class ValueSlider;

// One parameter of the menu: its name, control and value, and the old value if it is changed.
class ParameterRow final : public QWidget {
  Q_OBJECT

 public:
  explicit ParameterRow(const RowState& state, QWidget* parent = nullptr);

  TuningParameter parameter() const { return state_.parameter; }

  // `whyNot` is the reason why the row cannot be edited now; empty: it can.
  void show(const RowState& state, const QString& whyNot);
  using QWidget::show;

  // Shows for a few seconds that the value was changed at the base.
  void noteChangeAtBase();

  // Whether the keyboard focus is in the row. The page tells.
  void setCurrent(bool current);

  // Whether a panel beside the list explains the current row: the row marks itself and has no
  // button for the explanation.
  void setExplainedBeside(bool beside);

  // Whether the row is taller, for windows with room to spare.
  void setRoomy(bool roomy);

  // The layout for narrow windows: smaller columns, and the state in two lines.
  void setNarrow(bool narrow);

  QSize sizeHint() const override;

 signals:
  void staged(quorvane::TuningParameter parameter, std::int64_t value);
  void reverted(quorvane::TuningParameter parameter);

  // The user wants to read what the setting does.
  void helpWanted(quorvane::TuningParameter parameter);

  // The pointer has come over the row, or has left it.
  void pointed(bool isOver);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void build();
  void buildSlider();
  void buildSegments();
  void buildList();
  void place();
  void render();
  void renderControl(bool enabled);
  void renderSlider(bool enabled);
  void buildButtons();
  void renderHelp();
  void describe();
  void explain();
  void paintName(QPainter& painter) const;
  void paintState(QPainter& painter) const;
  QRect stateRect() const;
  std::vector<QWidget*> controls() const;
  void stage(std::int64_t value);
  void toggle(bool on);
  void previewDrag(int value);
  QWidget* mainControl() const;
  bool isChanged() const { return state_.staged.has_value(); }

  RowState state_;
  QString whyNot_;
  QBasicTimer notice_;  // runs while the row shows a change at the base
  bool isNarrow_ = false;
  bool isCurrent_ = false;
  bool isExplainedBeside_ = false;
  bool isRoomy_ = false;
  bool isTouched_ = false;  // a control was moved and may differ from the state
  std::optional<std::int64_t> lastOrdinary_;

  ElidedLabel* title_ = nullptr;
  ValueSlider* slider_ = nullptr;
  Toggle* toggle_ = nullptr;
  Segments* segments_ = nullptr;
  Picker* picker_ = nullptr;
  Readout* readout_ = nullptr;
  IconButton* revert_ = nullptr;
  IconButton* help_ = nullptr;  // in the place of revert_ while the value is not changed
};

}  // namespace quorvane
