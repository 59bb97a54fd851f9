#pragma once

#include <QWidget>
#include <optional>

#include "ui/row_text.h"

namespace quorvane {

class ElidedLabel;
class IconButton;
class Picker;
class Readout;
class Segments;
class Toggle;
class ValueSlider;

// One parameter of the menu: its name, its control, its value, and what it was when it is changed.
class ParameterRow final : public QWidget {
  Q_OBJECT

 public:
  explicit ParameterRow(const RowState& state, QWidget* parent = nullptr);

  TuningParameter parameter() const { return state_.parameter; }

  void show(const RowState& state, bool enabled);
  using QWidget::show;

  // The layout for narrow windows: less room, and the state in two lines.
  void setNarrow(bool narrow);

  QSize sizeHint() const override;

 signals:
  void staged(quorvane::TuningParameter parameter, std::int64_t value);
  void reverted(quorvane::TuningParameter parameter);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void build();
  void buildSlider();
  void buildPicker();
  void place();
  void render(bool enabled);
  void renderControl(bool enabled);
  void describe();
  void stage(std::int64_t value);
  void toggle(bool on);
  void previewDrag(int value);
  QWidget* mainControl() const;
  bool isChanged() const { return state_.staged.has_value(); }

  RowState state_;
  bool isNarrow_ = false;
  std::optional<std::int64_t> lastOrdinary_;

  ElidedLabel* title_ = nullptr;
  ValueSlider* slider_ = nullptr;
  Toggle* toggle_ = nullptr;
  Segments* segments_ = nullptr;
  Picker* picker_ = nullptr;
  Readout* readout_ = nullptr;
  IconButton* revert_ = nullptr;
};

}  // namespace quorvane
