#include "ui/kit/warning_bar.h"

#include <QLabel>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>

#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int warningSymbol = 20;
constexpr int leastMargin = 9;  // above and below the text
constexpr int leastHeight = 50;
constexpr int runInGap = 6;  // between the heading and the text

QFont headingFont() { return Metrics::font(Metrics::Type::caption); }

}  // namespace

// A text whose first line begins after the heading.
class WarningBar::Body final : public QLabel {
 public:
  explicit Body(const QString& body) {
    setTextFormat(Qt::PlainText);
    setText(body);
    setFont(Metrics::font(Metrics::Type::callout));
    setForegroundRole(QPalette::Dark);
  }

  void setFirstIndent(int indent) {
    indent_ = indent;
    update();
  }

  // The height of the text with such a first line.
  int heightFor(int width, int indent) const {
    QTextLayout layout(text(), font());
    return lay(layout, width, indent) * fontMetrics().height();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QTextLayout layout(text(), font());
    lay(layout, width(), indent_);
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    layout.draw(&painter, QPointF());
  }

 private:
  // Returns the number of lines.
  int lay(QTextLayout& layout, int width, int indent) const {
    int lines = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
      const int beside = lines == 0 ? indent : 0;
      line.setLineWidth(width - beside);
      line.setPosition(QPointF(isRightToLeft() ? 0 : beside, lines * fontMetrics().height()));
      ++lines;
    }
    layout.endLayout();
    return lines;
  }

  int indent_ = 0;
};

WarningBar::WarningBar(const QString& heading, const QString& body, QWidget* parent)
    : QWidget(parent), heading_(PlainText::label(heading, this)), body_(new Body(body)) {
  setObjectName(QStringLiteral("warningBar"));
  setAccessibleName(QStringLiteral("Warning: ") + heading);
  setAccessibleDescription(body);
  body_->setParent(this);
  body_->setObjectName(QStringLiteral("warningBody"));
  heading_->setObjectName(QStringLiteral("warningHeading"));
  heading_->setFont(headingFont());
  heading_->setWordWrap(true);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

int WarningBar::textWidth(int width) const {
  const int inset = Metrics::inset(*this);
  return std::max(1, std::min(width, Metrics::contentWidth) - 2 * inset - textIndent);
}

// Whether the heading leaves room for text in its line.
bool WarningBar::isRunIn(int width) const {
  return 2 * heading_->fontMetrics().horizontalAdvance(heading_->text()) < textWidth(width);
}

int WarningBar::heightForWidth(int width) const {
  const int room = textWidth(width);
  const int heading = heading_->fontMetrics().horizontalAdvance(heading_->text());
  const int text = isRunIn(width) ? body_->heightFor(room, heading + runInGap)
                                  : heading_->heightForWidth(room) + body_->heightFor(room, 0);
  return std::max(leastHeight, text + 2 * leastMargin);
}

void WarningBar::setContinued(bool isContinued) {
  isContinued_ = isContinued;
  update();
}

QSize WarningBar::sizeHint() const { return {0, heightForWidth(width())}; }

void WarningBar::place() {
  const int left = Metrics::inset(*this) + textIndent;
  const int room = textWidth(width());
  const int heading = heading_->fontMetrics().horizontalAdvance(heading_->text());
  const bool runsIn = isRunIn(width());
  const int indent = runsIn ? heading + runInGap : 0;
  const int headingHeight =
      runsIn ? heading_->fontMetrics().height() : heading_->heightForWidth(room);
  const int bodyHeight = body_->heightFor(room, indent);
  const int above = runsIn ? 0 : headingHeight;
  const int top = (height() - above - bodyHeight) / 2;
  heading_->setGeometry(
      visualRect(*this, QRect(left, top, runsIn ? heading + 1 : room, headingHeight)));
  body_->setGeometry(visualRect(*this, QRect(left, top + above, room, bodyHeight)));
  body_->setFirstIndent(indent);
  heading_->raise();
}

void WarningBar::resizeEvent(QResizeEvent* /*event*/) { place(); }

void WarningBar::paintEvent(QPaintEvent* /*event*/) {
  const Theme& t = theme();
  QPainter painter(this);
  painter.fillRect(rect(), t.warningGround);
  const QRect beside(Metrics::inset(*this) + textIndent, 0, textWidth(width()), height());
  drawEdge(painter, isContinued_ ? visualRect(*this, beside) : rect(), Qt::BottomEdge,
           t.warningLine);
  const int middle = heading_->y() + heading_->fontMetrics().height() / 2;
  const QRect symbol(Metrics::inset(*this), middle - warningSymbol / 2, warningSymbol,
                     warningSymbol);
  drawSymbol(painter, visualRect(*this, symbol).topLeft(),
             QStringLiteral("exclamationmark.triangle.fill"), warningSymbol, t.warningIcon);
}

}  // namespace quorvane
