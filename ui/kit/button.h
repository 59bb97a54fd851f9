#pragma once

#include <QPushButton>

namespace quorvane {

// A button with a word on it, and perhaps a symbol before or a menu behind it.
class Button final : public QPushButton {
  Q_OBJECT

 public:
  enum class Kind { plain, prominent, destructive };

  explicit Button(const QString& text, Kind kind = Kind::plain, QWidget* parent = nullptr);

  Kind kind() const { return kind_; }

  // Shown before the word, or alone.
  void setSymbol(const QString& name);
  void setSymbolOnly(bool alone);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  QFont labelFont() const;

  const Kind kind_;
  QString symbol_;
  bool symbolOnly_ = false;
};

// A flat square button that is only a symbol.
class IconButton final : public QAbstractButton {
  Q_OBJECT

 public:
  // With `destructive` it takes the colour of errors under the pointer.
  explicit IconButton(QString symbol, bool destructive = false, QWidget* parent = nullptr);

  bool isDestructive() const { return destructive_; }
  void setProminent(bool prominent);  // in the brand's colour

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const QString symbol_;
  const bool destructive_;
  bool prominent_ = false;
};

// Whether the widget is a button that destroys something.
bool isDestructive(const QWidget& widget);

}  // namespace quorvane
