#include "ui/base/check_list.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <algorithm>
#include <iterator>

#include "app/app_model.h"
#include "ui/base/check_fold.h"
#include "ui/base/check_row.h"
#include "ui/base/check_text.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

constexpr const char* reportHelp =
    "The report is for a bug report: the checks, the devices and the end of the log, without "
    "serial numbers and your name.";

QString summaryText(const AppModel& model) {
  if (model.isExamining()) return QStringLiteral("Checking…");
  const auto& examination = model.examination();
  return examination ? text(checksSummary(examination->diagnosis.checks)) : QString();
}

QString summaryTime(const AppModel& model) {
  const auto& examination = model.examination();
  if (model.isExamining() || !examination) return {};
  return QStringLiteral("at %1").arg(timeText(examination->time));
}

Button* newButton(const char* word, const char* objectName) {
  auto* const button = new Button(QString::fromUtf8(word));
  button->setObjectName(QString::fromLatin1(objectName));
  return button;
}

std::vector<DoctorCheck> checksThat(CheckOutcome outcome, const std::vector<DoctorCheck>& checks) {
  std::vector<DoctorCheck> found;
  std::copy_if(checks.begin(), checks.end(), std::back_inserter(found),
               [&](const DoctorCheck& check) { return check.outcome == outcome; });
  return found;
}

}  // namespace

CheckList::CheckList(QWidget* parent)
    : Card(QStringLiteral("Checks"), parent),
      summary_(PlainText::label()),
      time_(PlainText::label()),
      again_(newButton("Check again", "checkAgainButton")),
      copy_(newButton("Copy report", "copyReportButton")),
      save_(newButton("Save report…", "saveReportButton")),
      passed_(new CheckFold(CheckOutcome::passed, QStringLiteral("passedChecks"))),
      notChecked_(new CheckFold(CheckOutcome::notChecked, QStringLiteral("uncheckedChecks"))) {
  setObjectName(QStringLiteral("checkList"));
  connect(again_, &Button::clicked, this, &CheckList::checkAgain);
  connect(copy_, &Button::clicked, this, &CheckList::copyReport);
  connect(save_, &Button::clicked, this, &CheckList::saveReport);
  for (QWidget* const row :
       {summaryRow(), static_cast<QWidget*>(passed_), static_cast<QWidget*>(notChecked_)}) {
    add(row);
  }
}

QWidget* CheckList::summaryRow() {
  again_->setSymbol(QStringLiteral("arrow.clockwise"));
  summary_->setObjectName(QStringLiteral("checksSummary"));
  summary_->setFont(Metrics::font(Metrics::Type::value));
  summary_->setWordWrap(true);
  time_->setObjectName(QStringLiteral("checksTime"));
  time_->setForegroundRole(QPalette::Dark);
  auto* const texts = new QHBoxLayout;
  texts->setSpacing(Metrics::gap);
  texts->addWidget(summary_);
  texts->addWidget(time_, 1);
  auto* const row = new QWidget;
  auto* const line = new QHBoxLayout(row);
  line->setContentsMargins(Metrics::cardInset, Metrics::cardLinePadding, Metrics::cardInset,
                           Metrics::cardLinePadding);
  line->setSpacing(Metrics::gap);
  line->addLayout(texts, 1);
  for (Button* const button : {again_, copy_, save_}) line->addWidget(button);
  return row;
}

void CheckList::show(const AppModel& model) {
  const auto& examination = model.examination();
  showSummary(model);
  if (examination) showChecks(examination->diagnosis.checks);
  setAvailable(*again_, whyWait(model));
  const QString noReport =
      examination ? QString() : QStringLiteral("Wait until the checks have ended");
  setAvailable(*copy_, noReport, QString::fromLatin1(reportHelp));
  setAvailable(*save_, noReport, QString::fromLatin1(reportHelp));
  setVisible(model.needsExamination() && (examination || model.isExamining()));
}

void CheckList::showSummary(const AppModel& model) {
  const QString summary = summaryText(model);
  const QString time = summaryTime(model);
  if (summary == summary_->text() && time == time_->text()) return;
  summary_->setText(summary);
  time_->setText(time);
  summary_->setAccessibleName(time.isEmpty() ? summary
                                             : QStringLiteral("%1, %2").arg(summary, time));
  QAccessibleEvent change(summary_, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&change);
}

void CheckList::showChecks(const std::vector<DoctorCheck>& checks) {
  if (checks == checks_) return;
  checks_ = checks;
  const auto failed = checksThat(CheckOutcome::failed, checks);
  build(failed.size());
  for (std::size_t i = 0; i < failed.size(); ++i) rows_[i]->show(failed[i]);
  passed_->show(checksThat(CheckOutcome::passed, checks));
  notChecked_->show(checksThat(CheckOutcome::notChecked, checks));
  emit rebuilt();
}

// Row 0 is the summary, so the failures start at row 1.
void CheckList::build(std::size_t count) {
  for (; rows_.size() > count; rows_.pop_back()) delete rows_.back();
  while (rows_.size() < count) {
    rows_.push_back(new CheckRow);
    insert(static_cast<int>(rows_.size()), rows_.back());
  }
}

}  // namespace quorvane
