#include "ui/presets/preset_row.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "support/text.h"
#include "ui/kit/button.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/text.h"
#include "ui/kit/text_link.h"
#include "ui/kit/text_width.h"
#include "ui/kit/theme.h"
#include "ui/model/availability.h"
#include "ui/presets/badge_label.h"
#include "ui/presets/preset_filter.h"
#include "ui/presets/preset_notes.h"
#include "ui/presets/preset_strip.h"
#include "ui/presets/preset_text.h"

namespace quorvane {
namespace {

constexpr int presetMarkWidth = 3;
constexpr int detailGap = 4;
constexpr int compactGameGap = 10;

QString separator() { return QStringLiteral("·"); }

ElidedLabel* line(const QString& words, Metrics::Type type, QPalette::ColorRole role,
                  const char* objectName, QWidget* parent) {
  auto* const label = new ElidedLabel(Qt::ElideRight, parent);
  label->setText(words);
  label->setFont(Metrics::font(type));
  label->setForegroundRole(role);
  label->setObjectName(QString::fromLatin1(objectName));
  return label;
}

int wordsWidth(const ElidedLabel& label) { return textWidth(label.font(), label.text()) + 1; }

// Cuts this much off the left end of a rectangle and returns it.
QRect takeLeft(QRect& room, int width) {
  const QRect taken(room.topLeft(),
                    QSize(std::clamp(width, 0, std::max(0, room.width())), room.height()));
  room.setLeft(room.left() + taken.width());
  return taken;
}

}  // namespace

PresetRow::PresetRow(ListedPreset preset, const PresetForm& form,
                     const std::shared_ptr<ValueTexts>& values, QWidget* parent)
    : QWidget(parent),
      preset_(std::move(preset)),
      form_(form),
      strip_(new PresetStrip(*preset_, form, values, this)),
      badge_(new BadgeLabel(this)),
      narrowBadge_(new BadgeLabel(this)),
      load_(new Button(QStringLiteral("Load"), Button::Kind::plain, this)),
      apply_(new Button(QStringLiteral("Apply now"), Button::Kind::plain, this)),
      menu_(new IconButton(QStringLiteral("ellipsis"), false, this)) {
  setObjectName(QStringLiteral("preset-") + text(preset_->id.text()));
  setFocusPolicy(Qt::StrongFocus);
  strip_->setObjectName(QStringLiteral("presetValues"));
  badge_->setObjectName(QStringLiteral("presetBadge"));
  narrowBadge_->setObjectName(QStringLiteral("narrowPresetBadge"));
  buildTexts();
  buildButtons();
}

void PresetRow::buildTexts() {
  name_ = line(text(oneLine(preset_->name)), Metrics::Type::value, QPalette::WindowText,
               "presetName", this);
  if (!preset_->game.empty() && preset_->game != "Any") {
    game_ = line(text(oneLine(preset_->game)), Metrics::Type::callout,
                 form_.isCompact ? QPalette::Dark : QPalette::WindowText, "presetGame", this);
  }
  const QString source =
      preset_->source.empty() ? QStringLiteral("none") : text(oneLine(preset_->source));
  source_ = line(QStringLiteral("Source: ") + source, Metrics::Type::callout, QPalette::Dark,
                 "presetSource", this);
  setAccessibleName(name_->text());
  const QString notes = text(oneLine(preset_->notes));
  const QString values = text(presetSummary(*preset_, form_.product));
  setAccessibleDescription(notes.isEmpty() ? values : notes + QLatin1Char('\n') + values);
  if (preset_->notes.empty()) return;
  if (form_.isCompact) {
    PlainText::setToolTip(*this, text(safeLines(preset_->notes)));
    return;
  }
  notes_ = new PresetNotes(*preset_, this);
  notes_->setObjectName(QStringLiteral("presetNotes"));
  connect(notes_, &PresetNotes::toggled, this, &PresetRow::grown);
  notes_->link().installEventFilter(this);
}

void PresetRow::buildButtons() {
  addButton(load_, "loadButton", QStringLiteral("Load"));
  connect(load_, &Button::clicked, this, [this] { emit asked(PresetAction::load); });
  addButton(apply_, "applyButton", QStringLiteral("Apply now"));
  connect(apply_, &Button::clicked, this, [this] { emit asked(PresetAction::apply); });
  addButton(menu_, "presetMenuButton", QStringLiteral("More actions"));
  connect(menu_, &IconButton::clicked, this, &PresetRow::openMenu);
  PlainText::setToolTip(*menu_, QStringLiteral("More actions"));
  if (preset_->isBuiltIn) return;
  trash_ = new IconButton(QStringLiteral("trash"), true, this);
  addButton(trash_, "trashButton", QStringLiteral("Delete preset"));
  connect(trash_, &IconButton::clicked, this, [this] { emit asked(PresetAction::remove); });
}

void PresetRow::addButton(QAbstractButton* button, const char* objectName, const QString& word) {
  button->setObjectName(QString::fromLatin1(objectName));
  button->setAccessibleName(QStringLiteral("%1, %2").arg(word, name_->text()));
  button->setFocusPolicy(Qt::ClickFocus);
  button->installEventFilter(this);
}

bool PresetRow::isUnfolded() const { return notes_ != nullptr && notes_->isUnfolded(); }

int PresetRow::notesHeight(int width) const {
  if (notes_ == nullptr) return 0;
  return notes_->heightForWidth(PresetRowLayout::of(width, form_, 0).notes.width());
}

int PresetRow::heightForWidth(int width) const {
  return PresetRowLayout::of(width, form_, notesHeight(width)).height;
}

void PresetRow::show(const QString& whyNotApply, const QString& whyNotDelete,
                     const QString& progress) {
  setAvailable(*load_, whyNotApply, QStringLiteral("Fill its values in as unsaved changes"));
  setAvailable(*apply_, whyNotApply);
  const QString word = progress.isEmpty() ? QStringLiteral("Apply now") : progress;
  if (apply_->text() != word) apply_->setText(word);
  if (trash_ != nullptr) {
    setAvailable(*trash_, whyNotDelete, QStringLiteral("Delete this preset"));
  }
  if (unfocused_ && unfocused_->isEnabled() && window()->focusWidget() == this) {
    unfocused_->setFocus(Qt::OtherFocusReason);
  }
}

void PresetRow::compare(const std::optional<TuningSnapshot>& menu) {
  strip_->compare(menu);
  const PresetBadge badge = presetBadge(*preset_, menu, form_.product);
  badge_->show(badge);
  narrowBadge_->show(badge);
  QStringList parts{name_->text()};
  if (game_ != nullptr) parts += game_->text();
  if (!badge.text.empty()) parts += text(badge.text);
  setAccessibleName(parts.join(QStringLiteral(", ")));
  if (narrowBadge_->isVisibleTo(this)) {
    placeDetails(PresetRowLayout::of(width(), form_, notesHeight(width())).details);
  }
}

void PresetRow::highlight(const PresetFilter& filter) {
  for (ElidedLabel* const label : {name_, game_, source_}) {
    if (label != nullptr) label->highlight(filter.words());
  }
  if (notes_ != nullptr) notes_->highlight(filter.words());
  strip_->highlight(filter.parameters());
}

void PresetRow::setMarked(bool isMarked) {
  if (isMarked == isMarked_) return;
  isMarked_ = isMarked;
  update();
}

void PresetRow::putAt(QWidget* part, const QRect& rect) {
  part->setGeometry(visualRect(*this, rect));
}

void PresetRow::resizeEvent(QResizeEvent* /*event*/) {
  const PresetRowLayout layout = PresetRowLayout::of(width(), form_, notesHeight(width()));
  QRect name = layout.name;
  if (form_.isCompact && game_ != nullptr) {
    putAt(name_, takeLeft(name, wordsWidth(*name_)));
    takeLeft(name, compactGameGap);
    putAt(game_, takeLeft(name, wordsWidth(*game_)));
  } else {
    putAt(name_, name);
  }
  putAt(badge_, layout.badge);
  badge_->setVisible(layout.badge.width() > 0);
  narrowBadge_->setVisible(!badge_->isVisibleTo(this));
  placeDetails(layout.details);
  if (notes_ != nullptr) putAt(notes_, layout.notes);
  putAt(strip_, layout.strip);
  strip_->setVisible(layout.strip.width() > 0);
  putAt(load_, layout.load);
  putAt(apply_, layout.apply);
  putAt(menu_, layout.menu);
  if (trash_ != nullptr) putAt(trash_, layout.trash);
}

// "Gran Turismo 7 · Source: ...", after the badge in narrow windows. The source is elided first.
void PresetRow::placeDetails(QRect room) {
  if (narrowBadge_->isVisibleTo(this)) {
    putAt(narrowBadge_, takeLeft(room, narrowBadge_->sizeHint().width()));
    takeLeft(room, narrowBadge_->sizeHint().width() > 0 ? 2 * detailGap : 0);
  }
  dot_ = QRect();
  if (game_ != nullptr && !form_.isCompact) {
    putAt(game_, takeLeft(room, wordsWidth(*game_)));
    takeLeft(room, detailGap);
    dot_ = takeLeft(room, source_->fontMetrics().horizontalAdvance(separator()));
    takeLeft(room, detailGap);
  }
  putAt(source_, room);
  update();
}

void PresetRow::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const Theme& t = theme();
  if (isMarked_) {
    painter.fillRect(rect(), t.soft);
    const QRect mark(0, 0, presetMarkWidth, height());
    painter.fillRect(visualRect(*this, mark), t.brandEdge);
  }
  if (dot_.isEmpty()) return;
  painter.setFont(source_->font());
  painter.setPen(t.ink2);
  painter.drawText(visualRect(*this, dot_), Qt::AlignCenter, separator());
}

std::vector<QWidget*> PresetRow::stops() const {
  std::vector<QWidget*> stops;
  const std::array<QWidget*, 5> all{load_, apply_, notes_ == nullptr ? nullptr : &notes_->link(),
                                    menu_, trash_};
  std::copy_if(all.begin(), all.end(), std::back_inserter(stops), [](const QWidget* stop) {
    return stop != nullptr && stop->isVisible() && stop->isEnabled();
  });
  return stops;
}

// From the row to its first button and so on; back to the row from there.
void PresetRow::walk(bool forward) {
  const std::vector<QWidget*> all = stops();
  const auto now = std::find(all.begin(), all.end(), QApplication::focusWidget());
  if (forward) {
    const auto next = now == all.end() ? all.begin() : std::next(now);
    if (next != all.end()) (*next)->setFocus(Qt::TabFocusReason);
  } else if (now != all.end()) {
    (now == all.begin() ? this : *std::prev(now))->setFocus(Qt::BacktabFocusReason);
  }
}

void PresetRow::openMenu() {
  const QPoint below(layoutDirection() == Qt::RightToLeft ? menu_->width() : 0, menu_->height());
  emit menuAsked(menu_->mapToGlobal(below));
}

bool PresetRow::handleReorder(const QKeyEvent& event) {
  const bool isUp = event.key() == Qt::Key_Up;
  if (event.modifiers() != Qt::AltModifier || (!isUp && event.key() != Qt::Key_Down)) return false;
  if (!preset_->isBuiltIn) emit asked(isUp ? PresetAction::moveUp : PresetAction::moveDown);
  return true;
}

bool PresetRow::handle(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
  const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  if (isReturn && modifiers == Qt::ControlModifier) {
    apply_->click();
  } else if (event.key() == Qt::Key_C && modifiers == Qt::ControlModifier) {
    emit asked(PresetAction::copyText);
  } else if (event.key() == Qt::Key_Menu ||
             (event.key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier)) {
    openMenu();
  } else if (modifiers != Qt::NoModifier) {
    return handleReorder(event);
  } else if (isReturn) {
    load_->click();
  } else if (event.key() == Qt::Key_F2 && !preset_->isBuiltIn) {
    emit asked(PresetAction::edit);
  } else if (event.key() == Qt::Key_Delete && trash_ != nullptr) {
    trash_->click();
  } else if (event.key() == Qt::Key_Left || event.key() == Qt::Key_Right) {
    walk((event.key() == Qt::Key_Right) == (layoutDirection() == Qt::LeftToRight));
  } else if (event.key() == Qt::Key_Up || event.key() == Qt::Key_Down) {
    emit stepped(event.key() == Qt::Key_Up ? PresetStep::up : PresetStep::down);
  } else if (event.key() == Qt::Key_Home || event.key() == Qt::Key_End) {
    emit stepped(event.key() == Qt::Key_Home ? PresetStep::first : PresetStep::last);
  } else if (event.key() == Qt::Key_Escape && isDragging_) {
    isDragging_ = false;
    dragStart_.reset();
    emit dropped(true);
  } else {
    return false;
  }
  return true;
}

void PresetRow::keyPressEvent(QKeyEvent* event) {
  if (!handle(*event)) QWidget::keyPressEvent(event);
}

// A button of the row has the focus: Return presses it, and the other keys are those of the row.
bool PresetRow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::FocusIn) emit entered();
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
  if (!isReturn || key.modifiers().testFlag(Qt::ControlModifier)) return handle(key);
  static_cast<QAbstractButton*>(watched)->click();
  return true;
}

// Qt calls this also when the button with the focus is disabled or hidden.
bool PresetRow::focusNextPrevChild(bool next) {
  QWidget* const focused = window()->focusWidget();
  if (isVisible() && focused != nullptr && focused != this && isAncestorOf(focused) &&
      !(focused->isVisible() && focused->isEnabled())) {
    setFocus(Qt::OtherFocusReason);
    unfocused_ = focused;
    return true;
  }
  // From a button Tab goes on from the row, which is the stop.
  if (focused != nullptr && focused != this && isAncestorOf(focused)) {
    setFocus(Qt::OtherFocusReason);
  }
  return QWidget::focusNextPrevChild(next);
}

void PresetRow::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  const bool isByUser = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                        reason == Qt::MouseFocusReason;
  if (isByUser) unfocused_.clear();
  emit entered();
  QWidget::focusInEvent(event);
}

bool PresetRow::event(QEvent* event) {
  if (event->type() == QEvent::FocusOut && QApplication::activePopupWidget() == nullptr &&
      window()->focusWidget() != this) {
    unfocused_.clear();
  }
  return QWidget::event(event);
}

void PresetRow::contextMenuEvent(QContextMenuEvent* event) {
  if (event->reason() == QContextMenuEvent::Mouse) {
    emit menuAsked(event->globalPos());
  } else {
    openMenu();
  }
}

void PresetRow::mousePressEvent(QMouseEvent* event) {
  const bool mayDrag = event->button() == Qt::LeftButton && !preset_->isBuiltIn;
  dragStart_ = mayDrag ? std::optional(event->globalPosition().toPoint()) : std::nullopt;
}

void PresetRow::mouseMoveEvent(QMouseEvent* event) {
  if (!dragStart_) return;
  const QPoint now = event->globalPosition().toPoint();
  isDragging_ =
      isDragging_ || (now - *dragStart_).manhattanLength() >= QApplication::startDragDistance();
  if (isDragging_) emit dragged(now);
}

void PresetRow::mouseReleaseEvent(QMouseEvent* /*event*/) {
  dragStart_.reset();
  if (!isDragging_) return;
  isDragging_ = false;
  emit dropped(false);
}

}  // namespace quorvane
