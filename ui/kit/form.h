#pragma once

#include <QWidget>
#include <vector>

#include "ui/kit/metrics.h"

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace quorvane {

class Button;

// A group of rows under a caption, with a line between them.
class Card : public QWidget {
  Q_OBJECT

 public:
  explicit Card(const QString& caption, QWidget* parent = nullptr);

  // Takes the widget as its next row, or as the one with that number; one that is hidden takes no
  // room.
  void add(QWidget* row);
  void insert(int number, QWidget* row);

  // From the top, the hidden ones as well.
  std::vector<QWidget*> rows() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Body;

  Body* body_;
};

// A text, to be set, that can be selected and copied, also with the keyboard. It wraps.
QLabel* selectableLabel(const QString& objectName);

// "Label   value": the value can be selected and copied.
class FormRow final : public QWidget {
  Q_OBJECT

 public:
  FormRow(const QString& label, const QString& objectName, QWidget* parent = nullptr);

  void setValue(const QString& value);
  QString value() const;

 private:
  QLabel* label_;
  QLabel* value_;
};

// A button, and what it does where that needs saying; or several, beside each other.
QWidget* buttonRow(Button* button, const QString& explanation = {});
QWidget* buttonsRow(const std::vector<Button*>& buttons, const QString& explanation = {});

// One text across the whole row.
QLabel* messageRow(const QString& text, const QString& objectName);

// Bytes in a well of their own.
class HexRow final : public QWidget {
  Q_OBJECT

 public:
  HexRow(const QString& label, const QString& objectName, QWidget* parent = nullptr);

  void setValue(const QString& bytes);

 private:
  QString label_;
  QLabel* bytes_;
};

// A page of cards under a title, which scrolls.
class FormPage final : public QWidget {
  Q_OBJECT

 public:
  // Of cards that grow up to the width, so far apart.
  explicit FormPage(const QString& title, int widestCard = Metrics::cardWidth,
                    int cardGap = Metrics::pageInset, QWidget* parent = nullptr);

  void add(Card* card);

  // The part of a widget on this page that is in view, in the widget's coordinates.
  QRect visiblePart(const QWidget& widget) const;

  // Lays the page out at once, from the widget up, and scrolls by so much.
  void scrollBy(int distance, const QWidget& changed);

 signals:
  // Another part of the page is in view.
  void scrolled();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  const int widestCard_;
  const int cardGap_;
  QVBoxLayout* column_;
  QScrollArea* scroll_;
};

// The bar with a page's title.
class PageHeader final : public QWidget {
  Q_OBJECT

 public:
  explicit PageHeader(const QString& title, QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QLabel* title_;
};

}  // namespace quorvane
