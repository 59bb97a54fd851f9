#include "ui/base/check_list.h"

#include <QAccessible>
#include <QLabel>

#include "app/app_model.h"
#include "ui/base/check_row.h"
#include "ui/base/check_text.h"
#include "ui/kit/button.h"
#include "ui/kit/text.h"
#include "ui/model/availability.h"
#include "ui/model/time_text.h"

namespace quorvane {
namespace {

QString summaryText(const AppModel& model) {
  if (model.isExamining()) return QStringLiteral("Checking…");
  const auto& examination = model.examination();
  if (!examination) return {};
  return QStringLiteral("%1, at %2")
      .arg(text(checksSummary(examination->diagnosis.checks)), timeText(examination->time));
}

Button* newButton(const char* word, const char* objectName) {
  auto* const button = new Button(QString::fromUtf8(word));
  button->setObjectName(QString::fromLatin1(objectName));
  return button;
}

}  // namespace

CheckList::CheckList(QWidget* parent)
    : Card(QStringLiteral("Checks"), parent),
      summary_(messageRow({}, QStringLiteral("checksSummary"))),
      again_(newButton("Check again", "checkAgainButton")),
      copy_(newButton("Copy report", "copyReportButton")),
      save_(newButton("Save report…", "saveReportButton")) {
  setObjectName(QStringLiteral("checkList"));
  connect(again_, &Button::clicked, this, &CheckList::checkAgain);
  connect(copy_, &Button::clicked, this, &CheckList::copyReport);
  connect(save_, &Button::clicked, this, &CheckList::saveReport);
  add(summary_);
  add(buttonsRow({again_, copy_, save_},
                 QStringLiteral("The report is for a bug report: the checks, the devices and the "
                                "end of the log, without serial numbers and your name.")));
}

void CheckList::show(const AppModel& model) {
  const auto& examination = model.examination();
  showSummary(model);
  if (examination) {
    const auto& checks = examination->diagnosis.checks;
    build(checks.size());
    for (std::size_t i = 0; i < checks.size(); ++i) rows_[i]->show(checks[i]);
  }
  setAvailable(*again_, whyWait(model));
  const QString noReport =
      examination ? QString() : QStringLiteral("Wait until the checks have ended");
  setAvailable(*copy_, noReport);
  setAvailable(*save_, noReport);
  setVisible(model.needsExamination() && (examination || model.isExamining()));
}

void CheckList::showSummary(const AppModel& model) {
  const QString summary = summaryText(model);
  if (summary == summary_->text()) return;
  summary_->setText(summary);
  summary_->setAccessibleName(summary);
  QAccessibleEvent change(summary_, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&change);
}

// Row 0 is the summary, so the checks start at row 1.
void CheckList::build(std::size_t count) {
  if (rows_.size() == count) return;
  for (; rows_.size() > count; rows_.pop_back()) delete rows_.back();
  while (rows_.size() < count) {
    rows_.push_back(new CheckRow);
    insert(static_cast<int>(rows_.size()), rows_.back());
  }
  emit rebuilt();
}

}  // namespace quorvane
