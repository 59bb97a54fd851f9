#pragma once

#include <QWidget>
#include <vector>

#include "ui/kit/metrics.h"

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace quorvane {

class Button;

// A group of rows under a caption, separated by lines.
class Card : public QWidget {
  Q_OBJECT

 public:
  explicit Card(const QString& caption, QWidget* parent = nullptr);

  // Adds the widget as the last row, or inserts it at an index. A hidden row takes no room.
  void add(QWidget* row);
  void insert(int number, QWidget* row);

  // All rows from the top, including hidden ones.
  std::vector<QWidget*> rows() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Body;

  Body* body_;
};

// An empty label that wraps; its text can be selected and copied, also with the keyboard.
QLabel* selectableLabel(const QString& objectName);

// The label, in a fixed font, in a sunken box.
QWidget* sunken(QLabel* label);

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

// A row with a button, or several side by side, and an explanation if needed.
QWidget* buttonRow(Button* button, const QString& explanation = {});
QWidget* buttonsRow(const std::vector<Button*>& buttons, const QString& explanation = {});

// A row with only a text.
QLabel* messageRow(const QString& text, const QString& objectName);

// A row with a hex dump in a sunken box.
class HexRow final : public QWidget {
  Q_OBJECT

 public:
  HexRow(const QString& label, const QString& objectName, QWidget* parent = nullptr);

  void setValue(const QString& bytes);

 private:
  QString label_;
  QLabel* bytes_;
};

// A scrollable page of cards under a title.
class FormPage final : public QWidget {
  Q_OBJECT

 public:
  // Cards grow up to the width `widestCard`, `cardGap` apart.
  explicit FormPage(const QString& title, int widestCard = Metrics::cardWidth,
                    int cardGap = Metrics::pageInset, QWidget* parent = nullptr);

  void add(Card* card);

  // Has the cards in the middle of the page where the window is wide. Call it before the first
  // show.
  void centreInWideWindows();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  const int widestCard_;
  const int cardGap_;
  bool centresCards_ = false;
  QVBoxLayout* column_;
  QScrollArea* scroll_;
};

// The bar with a page's title, and controls at its right end.
class PageHeader final : public QWidget {
  Q_OBJECT

 public:
  explicit PageHeader(const QString& title, QWidget* parent = nullptr);

  // Adds a control to the right of those that are there.
  void add(QWidget* control);

  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QLabel* title_;
  std::vector<QWidget*> controls_;
};

}  // namespace quorvane
