#include "ui/tuning/save_bar.h"

#include <QLabel>
#include <QPainter>

#include "app/messages.h"
#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/text_link.h"
#include "ui/kit/theme.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int failureGap = 14;
constexpr int progressLine = 2;

}  // namespace

SaveBar::SaveBar(AppModel& model, QWidget* parent)
    : NoticeBar(model, {.textGap = failureGap}, parent),
      discard_(new Button(QStringLiteral("Discard"))),
      save_(new Button({}, Button::Kind::prominent)),
      details_(new TextLink(QStringLiteral("Details"))) {
  setObjectName(QStringLiteral("saveBar"));
  setAccessibleName(QStringLiteral("Unsaved changes"));
  strong().setObjectName(QStringLiteral("unsavedCount"));
  quiet().setObjectName(QStringLiteral("saveFailure"));
  discard_->setObjectName(QStringLiteral("discardButton"));
  save_->setObjectName(QStringLiteral("saveButton"));
  details_->setObjectName(QStringLiteral("failureDetailsLink"));
  details_->setAccessibleName(QStringLiteral("Details of the last save"));
  setLink(details_);
  addButton(discard_);
  addButton(save_);
  connect(details_, &TextLink::clicked, this, [this] { emit detailsWanted(details_); });
  connect(discard_, &Button::clicked, this, [this] { this->model().discardStaged(); });
  connect(save_, &Button::clicked, this, [this] { this->model().saveStaged(); });
}

void SaveBar::focusDiscard() { discard_->setFocus(Qt::ShortcutFocusReason); }

bool SaveBar::isSaving() const {
  const auto& progress = model().progress();
  return progress && !progress->preset;
}

bool SaveBar::hasFailed() const {
  return !isSaving() && count(model().outcomes(), Outcome::notTaken) > 0;
}

// The number of unsaved edits or, during a save, of those written.
QString SaveBar::countText() const {
  if (isSaving()) {
    const auto& progress = model().progress();
    return QStringLiteral("Saving %1 of %2…").arg(progress->done).arg(progress->total);
  }
  return text(counted(model().staged().size(), "unsaved change"));
}

// What became of the last save, if the base did not take all of it.
QString SaveBar::failureText() const {
  if (!hasFailed()) return {};
  const std::size_t taken = count(model().outcomes(), Outcome::taken);
  const std::size_t notTaken = count(model().outcomes(), Outcome::notTaken);
  const QString told = taken == 0 ? QString() : QStringLiteral("%1 saved, ").arg(taken);
  return told + QStringLiteral("%1 not taken").arg(notTaken);
}

void SaveBar::render() {
  setTexts(countText(), failureText());
  save_->setText(QStringLiteral("Save to set %1").arg(text(Messages::setName(model().tuning()))));
  setAvailable(*discard_, whyWait(model()),
               QStringLiteral("Discard all unsaved changes (Ctrl+Shift+Z)"));
  setAvailable(*save_, whyWait(model()), QStringLiteral("Write the changes to the base (Ctrl+S)"));
  place();
}

NoticeBar::Look SaveBar::look() const {
  const Theme& t = theme();
  const Mark unsaved{{}, t.signal};
  const Mark failed{QStringLiteral("exclamationmark.triangle.fill"), t.error};
  return {t.tint, t.tintLine, Qt::TopEdge, hasFailed() ? failed : unsaved};
}

void SaveBar::paintEvent(QPaintEvent* event) {
  NoticeBar::paintEvent(event);
  if (!isSaving() || model().progress()->total == 0) return;
  const auto& progress = model().progress();
  const qreal part = static_cast<qreal>(progress->done) / static_cast<qreal>(progress->total);
  QPainter painter(this);
  drawEdge(painter, visualRect(*this, QRectF(0, 0, width() * part, height())), Qt::TopEdge,
           theme().signal, progressLine);
}

}  // namespace quorvane
