#pragma once

#include <QColor>
#include <QString>
#include <vector>

#include "ui/kit/metrics.h"
#include "ui/model/bar.h"

class QLabel;

namespace quorvane {

class TextLink;

// A bar with a mark, a strong text and a quiet one that may end with a link, and buttons at its
// right end. The texts stand side by side, else one below the other, else above the buttons, which
// stay in one line.
class NoticeBar : public Bar {
  Q_OBJECT

 public:
  QSize sizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  // The sizes of a kind of bar.
  struct Form {
    int height = Metrics::saveBarHeight;  // at least
    int textGap = 0;                      // between the texts, side by side
    Metrics::Type quietFont = Metrics::Type::callout;
  };

  // A symbol, or a small square without a name of one; no mark without a colour.
  struct Mark {
    QString symbol;
    QColor colour;
  };

  // The colours at present. The line is at the edge where the rows are.
  struct Look {
    QColor ground;
    QColor line;
    Qt::Edge edge = Qt::TopEdge;
    Mark mark;
    int indent = 0;  // of the mark, or else of the text
  };

  NoticeBar(AppModel& model, const Form& form, QWidget* parent);

  virtual Look look() const = 0;

  QLabel& strong() { return *strong_; }
  QLabel& quiet() { return *quiet_; }

  // Both announce a new text to assistive programs. An empty quiet text is hidden.
  void setTexts(const QString& strong, const QString& quiet);

  // The link after the quiet text; at most one. Hidden with an empty quiet text.
  void setLink(TextLink* link);

  // From left to right.
  void addButton(QWidget* button);

  // To be called when a text, a button or the mark has changed.
  void place();

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Layout;

  Layout layoutFor(int width) const;
  int markSize() const;
  int linkWidth() const;
  void placeLink(const QRect& quiet);
  void announce(QLabel* label, const QString& text);
  void paintMark(QPainter& painter);

  const Form form_;
  QLabel* strong_;
  QLabel* quiet_;
  TextLink* link_ = nullptr;
  std::vector<QWidget*> buttons_;
};

}  // namespace quorvane
