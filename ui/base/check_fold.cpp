#include "ui/base/check_fold.h"

#include <QAbstractButton>
#include <QPainter>
#include <QVBoxLayout>
#include <utility>

#include "ui/base/check_text.h"
#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int foldChevron = 16;
constexpr int foldDot = Metrics::cardInset + foldChevron + 11;
constexpr int foldText = foldDot + Metrics::dotSize + 11;
constexpr int foldPadding = 5;  // above and below

}  // namespace

// The line, which is a button that is checked while it is unfolded.
class FoldButton final : public QAbstractButton {
 public:
  explicit FoldButton(CheckOutcome outcome) : outcome_(outcome) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  }

  void show(const QString& count, const QString& titles) {
    titles_ = titles;
    setText(count);
    setAccessibleName(QStringLiteral("%1, %2").arg(count, titles));
    PlainText::setToolTip(*this, titles);
    update();
  }

  QSize sizeHint() const override {
    return {foldText, Metrics::atLeast(Metrics::buttonHeight, Metrics::font(Metrics::Type::body)) +
                          2 * foldPadding};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    const Theme& t = theme();
    QPainter painter(this);
    if (underMouse()) drawBox(painter, rect(), Metrics::cardRadius, t.hover, QColor());
    const QRectF chevron(Metrics::cardInset, 0, foldChevron, height());
    drawFoldChevron(painter, *this, visualRect(*this, chevron).center(), isChecked());
    drawDot(painter,
            visualRect(*this, QRectF(foldDot, (height() - Metrics::dotSize) / 2.0, Metrics::dotSize,
                                     Metrics::dotSize)),
            outcome_ == CheckOutcome::passed ? t.ok : t.idle);
    painter.setFont(Metrics::font(Metrics::Type::body));
    painter.setPen(t.ink);
    const QFontMetrics metrics(painter.font());
    const QRect line = rect().adjusted(foldText, 0, -Metrics::cardInset, 0);
    painter.drawText(visualRect(*this, line), Qt::AlignLeft | Qt::AlignVCenter, text());
    const QRect rest = line.adjusted(metrics.horizontalAdvance(text()) + Metrics::gap, 0, 0, 0);
    painter.setPen(t.ink2);
    painter.drawText(visualRect(*this, rest), Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(titles_, Qt::ElideRight, rest.width()));
  }

 private:
  const CheckOutcome outcome_;
  QString titles_;
};

CheckFold::CheckFold(CheckOutcome outcome, const QString& objectName, QWidget* parent)
    : QWidget(parent),
      outcome_(outcome),
      line_(new FoldButton(outcome)),
      body_(new QWidget),
      column_(new QVBoxLayout(body_)) {
  setObjectName(objectName);
  line_->setObjectName(objectName + QStringLiteral("Line"));
  column_->setContentsMargins(0, 0, 0, foldPadding);
  column_->setSpacing(0);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(line_);
  column->addWidget(body_);
  body_->hide();
  connect(line_, &QAbstractButton::toggled, body_, &QWidget::setVisible);
}

void CheckFold::show(const std::vector<DoctorCheck>& checks) {
  setVisible(!checks.empty());
  if (checks == checks_) return;
  checks_ = checks;
  line_->show(text(countOf(outcome_, checks.size())), text(titlesOf(checks)));
  build();
}

void CheckFold::build() {
  while (QLayoutItem* const item = column_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  for (const DoctorCheck& check : checks_) {
    auto* const row = new FormRow(text(check.title), QStringLiteral("checkFinding"));
    row->setObjectName(QStringLiteral("check ") + text(check.id));
    row->setValue(text(check.finding));
    column_->addWidget(row);
  }
}

}  // namespace quorvane
