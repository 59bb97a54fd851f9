#pragma once

#include <QPushButton>

#include "ui/kit/mark.h"

namespace quorvane {

// A button with a text, and optionally a symbol before it or a menu after it.
class Button final : public QPushButton {
  Q_OBJECT

 public:
  enum class Kind { plain, prominent, destructive };

  explicit Button(const QString& text, Kind kind = Kind::plain, QWidget* parent = nullptr);

  Kind kind() const { return kind_; }

  // The symbol is shown before the text.
  void setSymbol(const QString& name);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QFont labelFont() const;

  const Kind kind_;
  QString symbol_;
};

// A flat square button with only a symbol.
class IconButton final : public QAbstractButton {
  Q_OBJECT

 public:
  // With `destructive`, it has the error colour on hover.
  explicit IconButton(QString symbol, bool destructive = false, QWidget* parent = nullptr);

  bool isDestructive() const { return destructive_; }
  void setMark(Mark mark);  // draws the symbol in the colour of texts about marked values

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QString symbol_;
  const bool destructive_;
  Mark mark_ = Mark::none;
};

// Whether the widget is a button for a destructive action.
bool isDestructive(const QWidget& widget);

}  // namespace quorvane
