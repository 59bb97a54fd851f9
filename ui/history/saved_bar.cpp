#include "ui/history/saved_bar.h"

#include <QLabel>
#include <algorithm>

#include "ui/history/write_text.h"
#include "ui/kit/button.h"
#include "ui/kit/theme.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

constexpr int writeNoteGap = 8;

}  // namespace

SavedBar::SavedBar(AppModel& model, QWidget* parent)
    : NoticeBar(model, {.textGap = writeNoteGap}, parent),
      details_(new Button(QStringLiteral("Details"))),
      back_(new Button(QStringLiteral("Undo"))),
      close_(new IconButton(QStringLiteral("xmark"))) {
  setObjectName(QStringLiteral("savedBar"));
  setAccessibleName(QStringLiteral("Last write"));
  strong().setObjectName(QStringLiteral("savedTitle"));
  quiet().setObjectName(QStringLiteral("savedNote"));
  details_->setObjectName(QStringLiteral("savedDetailsButton"));
  back_->setObjectName(QStringLiteral("savedUndoButton"));
  close_->setObjectName(QStringLiteral("savedCloseButton"));
  close_->setAccessibleName(QStringLiteral("Dismiss"));
  addButton(details_);
  addButton(back_);
  addButton(close_);
  connect(details_, &Button::clicked, this, [this] { emit detailsWanted(details_); });
  connect(back_, &Button::clicked, this, &SavedBar::takeBack);
  connect(close_, &IconButton::clicked, this, &SavedBar::dismiss);
  connect(&model, &AppModel::changed, this, &SavedBar::follow);
  follow();
}

// While a write is running, the bar stays as it is.
void SavedBar::follow() {
  const auto& last = model().lastWrite();
  if (!last) shown_.reset();
  if (!last || model().isWriting()) return;
  if (!shown_ || shown_->record.id != last->record.id) {
    shown_ = last;
    staged_ = model().staged();
    isOver_ = last->record.outcome->values.empty() && last->leftAlone.empty();
  }
  isOver_ = isOver_ || hasNewEdit() || !model().tuning() ||
            !isOfSameSet(shown_->record, *model().tuning());
}

bool SavedBar::hasNewEdit() const {
  return std::ranges::any_of(model().staged(), [this](const auto& edit) {
    const auto before = staged_.find(edit.first);
    return before == staged_.end() || before->second != edit.second;
  });
}

void SavedBar::takeBack() {
  if (!shown_) return;
  if (directionBack(*shown_) == UndoDirection::undo) {
    model().undo();
  } else {
    model().redo();
  }
}

void SavedBar::dismiss() {
  isOver_ = true;
  emit wantedChanged();
}

void SavedBar::render() {
  if (!shown_) return;
  setTexts(writeTitle(*shown_), writeNote(*shown_));
  const bool isUndo = directionBack(*shown_) == UndoDirection::undo;
  back_->setText(isUndo ? QStringLiteral("Undo") : QStringLiteral("Redo"));
  back_->setSymbol(isUndo ? QStringLiteral("arrow.uturn.backward") : QString());
  setAvailable(*back_, whyNotReverse(model(), directionBack(*shown_)),
               isUndo ? QStringLiteral("Write the former values back (Ctrl+Z)")
                      : QStringLiteral("Write the values again (Ctrl+Y)"));
  place();
}

NoticeBar::Look SavedBar::look() const {
  const Theme& t = theme();
  const Mark taken{QStringLiteral("checkmark.circle"), t.ok};
  const Mark notTaken{QStringLiteral("exclamationmark.triangle.fill"), t.error};
  const bool isGood = !shown_ || allTaken(*shown_);
  return {t.window, t.line, Qt::TopEdge, isGood ? taken : notTaken};
}

}  // namespace quorvane
