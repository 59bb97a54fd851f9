#include "ui/base/check_row.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/base/check_text.h"
#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int markSize = 14;
constexpr int markGap = 6;
constexpr int textGap = 2;

QVBoxLayout* column(QWidget* first, QWidget* second) {
  auto* const column = new QVBoxLayout;
  column->setSpacing(textGap);
  column->addWidget(first);
  column->addWidget(second);
  column->addStretch();
  return column;
}

}  // namespace

// The outcome as a word after a coloured mark.
class OutcomeMark final : public QLabel {
 public:
  OutcomeMark() {
    setTextFormat(Qt::PlainText);
    setObjectName(QStringLiteral("checkOutcome"));
    setFont(Metrics::font(Metrics::Type::callout));
    setIndent(markSize + markGap);
  }

  void show(CheckOutcome outcome) {
    outcome_ = outcome;
    setText(QString::fromLatin1(outcomeWord(outcome)));
    update();
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLabel::paintEvent(event);
    const Theme& t = theme();
    QPainter painter(this);
    if (outcome_ == CheckOutcome::failed) {
      drawSymbol(painter, QPointF(0, (height() - markSize) / 2.0),
                 QStringLiteral("exclamationmark.triangle.fill"), markSize, t.error);
      return;
    }
    drawDot(painter,
            QRectF((markSize - Metrics::dotSize) / 2.0, (height() - Metrics::dotSize) / 2.0,
                   Metrics::dotSize, Metrics::dotSize),
            outcome_ == CheckOutcome::passed ? t.ok : t.idle);
  }

 private:
  CheckOutcome outcome_ = CheckOutcome::notChecked;
};

CheckRow::CheckRow(QWidget* parent)
    : QWidget(parent),
      title_(PlainText::label()),
      outcome_(new OutcomeMark),
      finding_(selectableLabel(QStringLiteral("checkFinding"))),
      nextStep_(selectableLabel(QStringLiteral("checkNextStep"))) {
  title_->setObjectName(QStringLiteral("checkTitle"));
  title_->setForegroundRole(QPalette::Dark);
  title_->setWordWrap(true);
  title_->setFixedWidth(Metrics::labelColumn);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(Metrics::cardInset, Metrics::cardLinePadding, Metrics::cardInset,
                          Metrics::cardLinePadding);
  row->setSpacing(Metrics::gap);
  row->addLayout(column(title_, outcome_));
  row->addLayout(column(finding_, nextStep_), 1);
}

void CheckRow::show(const DoctorCheck& check) {
  setObjectName(QStringLiteral("check ") + text(check.id));
  setAccessibleName(text(spokenCheck(check)));
  title_->setText(text(check.title));
  outcome_->show(check.outcome);
  finding_->setText(text(check.finding));
  finding_->setAccessibleName(text(spokenCheck(check)));
  nextStep_->setText(text(nextStepText(check)));
  nextStep_->setAccessibleName(nextStep_->text());
  nextStep_->setVisible(!check.nextStep.empty());
}

}  // namespace quorvane
