#pragma once

#include <QSpinBox>
#include <cstdint>

#include "ui/kit/mark.h"

namespace quorvane {

// A spin box for a value with its unit, between minus and plus buttons, which change sides in a
// layout from right to left; the number and its unit do not. Enter or losing the focus
// commits what was typed, rounded to the step and clamped to the range; Esc restores the value. It
// takes no Tab focus: a key in its row or a click begins the typing.
class Readout final : public QSpinBox {
  Q_OBJECT
  Q_PROPERTY(int mark READ mark)  // the style reads it

 public:
  explicit Readout(QWidget* parent = nullptr);

  void setScale(int lowest, int highest, int step, const QString& unit);

  // Shows the value, or a word for a special value. Does nothing while the user is typing.
  void show(int value, const QString& word, Mark mark);

  int mark() const { return static_cast<int>(mark_); }
  bool isEditing() const;

  // Takes the focus to type: after `begun`, or over the value.
  void startTyping(const QString& begun = {});

  // Commits what was typed, like Enter.
  void commit();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void chosen(int value);

  // Enter or Esc has ended the typing.
  void finished();

 protected:
  QString textFromValue(int value) const override;
  int valueFromText(const QString& text) const override;
  QValidator::State validate(QString& text, int& position) const override;
  void stepBy(int steps) override;
  StepEnabled stepEnabled() const override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  class Edit;

  void take(int value);
  void restoreTo(int value);
  int rounded(std::int64_t value) const;
  QString number(int value) const;  // with the unit

  QString unit_;
  QString word_;
  Mark mark_ = Mark::none;
};

}  // namespace quorvane
