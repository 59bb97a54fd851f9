#pragma once

#include <QBasicTimer>
#include <QPointer>
#include <QWidget>
#include <optional>
#include <vector>

#include "ui/kit/mark.h"
#include "ui/tuning/row_layout.h"
#include "ui/tuning/row_text.h"

namespace quorvane {

class ElidedLabel;
class IconButton;
class Picker;
class Readout;
class Segments;
class TextLink;
class Toggle;
class ValueSlider;

// One parameter of the menu: its name, control and value, the old value if it is changed, and what
// became of the change.
//
// It is one Tab stop: its slider or picker, or its switch while that is all that can be used. While
// a control with the focus cannot have it, the row keeps it. Digits, Return and F2 begin typing a
// value; Space presses the switch.
class ParameterRow final : public QWidget {
  Q_OBJECT

 public:
  explicit ParameterRow(const RowState& state, QWidget* parent = nullptr);

  TuningParameter parameter() const { return state_.parameter; }

  // `whyNot` is the reason why the row cannot be edited now; empty: it can.
  void show(const RowState& state, const QString& whyNot);
  using QWidget::show;

  // The places of its parts, in its coordinates: mirrored in a layout from right to left.
  const RowLayout::Places& places() const { return places_; }

  // Puts the focus on the row's Tab stop.
  void takeFocus();

  // Shows for a few seconds that the value was changed at the base.
  void noteChangeAtBase();

  // Shows for a moment that the base took the value.
  void noteTaken();

  // Whether the keyboard focus is in the row. The page tells.
  void setCurrent(bool current);

  // Whether a panel beside the list explains the current row: the row marks itself and has no
  // button for the explanation.
  void setExplainedBeside(bool beside);

  // Whether the row is taller, for windows with room to spare.
  void setRoomy(bool roomy);

  // The widths that its texts and controls need.
  RowLayout::Needs needs() const;

  // The columns that it shares with the other rows.
  void setColumns(const RowLayout::Columns& columns);

  QSize sizeHint() const override;

 signals:
  void staged(quorvane::TuningParameter parameter, std::int64_t value);
  void reverted(quorvane::TuningParameter parameter);

  // The user wants to write the value that was not taken once more.
  void triedAgain(quorvane::TuningParameter parameter);

  // The user wants to go to the next row, or the previous one.
  void neighbourWanted(bool next);

  // The user wants to read what the setting does.
  void helpWanted(quorvane::TuningParameter parameter);

  // The pointer has come over the row, or has left it.
  void pointed(bool isOver);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  // What happened a moment ago, shown in the place of the state or below it.
  enum class Notice { none, changedAtBase, taken };

  void build();
  void buildSlider();
  void buildSegments();
  void buildList();
  void watchKeys();
  bool takesKey(const QKeyEvent& event);
  bool takesEditingKey(const QKeyEvent& event);
  void keepFocusOf(QWidget* control);
  void passFocusOn();
  void place();
  RowLayout::Places mirrored(RowLayout::Places places) const;
  void render();
  void renderControl(bool enabled);
  void renderSlider(bool enabled);
  void buildButtons();
  void renderHelp();
  void describe();
  void explain();
  void renderRetry(bool enabled);
  void notify(Notice notice, int time);
  void endNotice();
  QString noticeText() const;
  void paintName(QPainter& painter) const;
  void paintState(QPainter& painter) const;
  void paintChange(QPainter& painter) const;
  void paintNotice(QPainter& painter, const QRect& rect) const;
  void paintNote(QPainter& painter) const;
  RowLayout::Extras extras() const;
  int stateWidth() const;
  QString oldValue() const;
  std::vector<QWidget*> controls() const;
  void stage(std::int64_t value);
  void toggle(bool on);
  void previewDrag(int value);
  QWidget* mainControl() const;
  bool isChanged() const { return state_.staged.has_value(); }
  Mark mark() const;

  RowState state_;
  QString whyNot_;
  QString note_;
  Notice notice_ = Notice::none;
  QBasicTimer noticeEnd_;
  RowLayout::Columns columns_;
  RowLayout::Places places_;
  bool isCurrent_ = false;
  bool isExplainedBeside_ = false;
  bool isRoomy_ = false;
  bool isTouched_ = false;  // a control was moved and may differ from the state
  std::optional<std::int64_t> lastOrdinary_;
  QPointer<QWidget> unfocused_;  // the control that gets the focus back from the row

  ElidedLabel* title_ = nullptr;
  ValueSlider* slider_ = nullptr;
  Toggle* toggle_ = nullptr;
  Segments* segments_ = nullptr;
  Picker* picker_ = nullptr;
  Readout* readout_ = nullptr;
  IconButton* revert_ = nullptr;
  TextLink* retry_ = nullptr;   // until a value was not taken for the first time
  IconButton* help_ = nullptr;  // in the place of revert_ while the value is not changed
};

}  // namespace quorvane
