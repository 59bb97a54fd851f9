#pragma once

#include <QSpinBox>
#include <cstdint>

namespace quorvane {

// A value as text between a minus and a plus. It can be typed over: Enter or leaving commits what
// was typed, rounded to the step and within the range; Esc brings the value back.
class Readout final : public QSpinBox {
  Q_OBJECT
  Q_PROPERTY(bool changed READ isChanged)  // the style reads it

 public:
  explicit Readout(QWidget* parent = nullptr);

  void setScale(int lowest, int highest, int step, const QString& unit);

  // What is in force. A word stands for a value off the scale. Does nothing while a person types.
  void show(int value, const QString& word, bool changed);

  bool isChanged() const { return changed_; }
  bool isEditing() const;

  // Takes what has been typed, as Enter does.
  void commit();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void chosen(int value);

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

  QString unit_;
  QString word_;
  bool changed_ = false;
};

}  // namespace quorvane
