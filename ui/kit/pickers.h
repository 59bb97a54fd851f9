#pragma once

#include <QComboBox>
#include <QRadioButton>
#include <QWidget>
#include <vector>

#include "ui/kit/mark.h"

namespace quorvane {

// One of a few values to choose from.
struct Choice {
  int value = 0;
  QString title;

  bool operator==(const Choice&) const = default;
};

// A drop-down list of choices. The mouse wheel changes it only while it has the keyboard focus.
class Picker final : public QComboBox {
  Q_OBJECT
  Q_PROPERTY(int mark READ mark)  // the style reads it

 public:
  explicit Picker(QWidget* parent = nullptr);

  // Does nothing if the choices are the same.
  void setChoices(const std::vector<Choice>& choices);

  // Shows no choice if `value` is none of them.
  void show(int value, Mark mark);
  int mark() const { return static_cast<int>(mark_); }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void chosen(int value);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  std::vector<Choice> choices_;
  Mark mark_ = Mark::none;
};

// Two or three choices as joined buttons, all visible.
class Segments final : public QWidget {
  Q_OBJECT

 public:
  explicit Segments(std::vector<Choice> choices, QWidget* parent = nullptr);

  void show(int value, Mark mark);
  Mark mark() const { return mark_; }

  const std::vector<QRadioButton*>& buttons() const { return buttons_; }

 signals:
  void chosen(int value);

 private:
  std::vector<Choice> choices_;
  std::vector<QRadioButton*> buttons_;
  Mark mark_ = Mark::none;
};

}  // namespace quorvane
