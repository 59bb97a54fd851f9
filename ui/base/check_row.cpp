#include "ui/base/check_row.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/base/check_text.h"
#include "ui/kit/button.h"
#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/symbols.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"

namespace quorvane {
namespace {

constexpr int failureMark = 16;
constexpr int failurePadding = 12;  // above and below
constexpr int failureIndent = Metrics::cardInset + failureMark + 14;
constexpr int findingGap = 2;
constexpr int stepGap = 6;

}  // namespace

CheckRow::CheckRow(QWidget* parent)
    : QWidget(parent),
      title_(PlainText::label()),
      finding_(selectableLabel(QStringLiteral("checkFinding"))),
      nextStep_(selectableLabel(QStringLiteral("checkNextStep"))),
      command_(selectableLabel(QStringLiteral("checkCommand"))),
      copy_(new Button(QStringLiteral("Copy"))),
      block_(commandBlock()),
      afterwards_(selectableLabel(QStringLiteral("checkAfterwards"))) {
  title_->setObjectName(QStringLiteral("checkTitle"));
  title_->setFont(Metrics::font(Metrics::Type::value));
  finding_->setForegroundRole(QPalette::Dark);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(
      visualMargins(*this, {failureIndent, failurePadding, Metrics::cardInset, failurePadding}));
  column->setSpacing(0);
  column->addWidget(title_);
  column->addSpacing(findingGap);
  column->addWidget(finding_);
  column->addSpacing(stepGap);
  for (QWidget* const part :
       {static_cast<QWidget*>(nextStep_), block_, static_cast<QWidget*>(afterwards_)}) {
    column->addWidget(part);
  }
}

QWidget* CheckRow::commandBlock() {
  copy_->setObjectName(QStringLiteral("copyCommandButton"));
  copy_->setSymbol(QStringLiteral("doc.on.doc"));
  PlainText::setToolTip(*copy_, QStringLiteral("Copy the command"));
  connect(copy_, &Button::clicked, this, &CheckRow::copy);
  auto* const block = new QWidget;
  auto* const row = new QHBoxLayout(block);
  row->setContentsMargins(0, stepGap, 0, 0);
  row->setSpacing(Metrics::gap);
  row->addWidget(sunken(command_), 1);
  row->addWidget(copy_);
  return block;
}

void CheckRow::show(const DoctorCheck& check) {
  setObjectName(QStringLiteral("check ") + text(check.id));
  setAccessibleName(text(spokenCheck(check)));
  title_->setText(text(check.title));
  finding_->setText(text(check.finding));
  finding_->setAccessibleName(text(spokenCheck(check)));
  nextStep_->setText(text(nextStepText(check)));
  nextStep_->setAccessibleName(nextStep_->text());
  command_->setText(text(check.command));
  command_->setAccessibleName(QStringLiteral("Command, %1").arg(command_->text()));
  copy_->setAccessibleName(QStringLiteral("Copy the command, %1").arg(title_->text()));
  block_->setVisible(!check.command.empty());
  afterwards_->setText(text(afterCommandText(check)));
  afterwards_->setAccessibleName(afterwards_->text());
  afterwards_->setVisible(!afterwards_->text().isEmpty());
}

void CheckRow::copy() const { QGuiApplication::clipboard()->setText(command_->text()); }

void CheckRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const int middle = title_->geometry().center().y() + 1;
  const QRectF mark(Metrics::cardInset, middle - failureMark / 2.0, failureMark, failureMark);
  drawSymbol(painter, visualRect(*this, mark).topLeft(),
             QStringLiteral("exclamationmark.triangle.fill"), failureMark, theme().error);
}

}  // namespace quorvane
