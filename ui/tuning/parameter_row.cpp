#include "ui/tuning/parameter_row.h"

#include <QKeyEvent>
#include <algorithm>

#include "protocol/menu_text.h"
#include "protocol/setting.h"
#include "ui/kit/button.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/metrics.h"
#include "ui/kit/pickers.h"
#include "ui/kit/plain_text.h"
#include "ui/kit/readout.h"
#include "ui/kit/text.h"
#include "ui/kit/text_link.h"
#include "ui/kit/toggle.h"
#include "ui/kit/value_slider.h"
#include "ui/model/availability.h"
#include "ui/tuning/row_layout.h"

namespace quorvane {
namespace {

constexpr int noticeTime = 4000;  // milliseconds
constexpr int takenTime = 2500;

QString partName(TuningParameter parameter, const char* part) {
  return text(parameter.code()) + QString::fromLatin1(part);
}

std::vector<Choice> choices(const SettingInfo& setting) {
  std::vector<Choice> result;
  int value = static_cast<int>(setting.range.lower);
  for (const ValueLabel& label : setting.valueLabels.labels) {
    result.push_back({value, text(label.choice)});
    ++value;
  }
  return result;
}

}  // namespace

ParameterRow::ParameterRow(const RowState& state, QWidget* parent)
    : QWidget(parent), state_(state) {
  setObjectName(partName(state_.parameter, "Row"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  build();
  render();
}

void ParameterRow::build() {
  title_ = new ElidedLabel(Qt::ElideRight, this);
  title_->setText(text(state_.parameter.title()));
  title_->setObjectName(partName(state_.parameter, "Title"));
  switch (settingOf(state_.parameter).editor) {
    case Editor::slider:
      buildSlider();
      break;
    case Editor::segments:
      buildSegments();
      break;
    case Editor::list:
      buildList();
      break;
  }
  buildButtons();
  watchKeys();
}

void ParameterRow::buildButtons() {
  revert_ = new IconButton(QStringLiteral("arrow.uturn.backward"), false, this);
  revert_->setObjectName(partName(state_.parameter, "Revert"));
  revert_->setFocusPolicy(Qt::NoFocus);  // Backspace does the same
  connect(revert_, &IconButton::clicked, this, [this] {
    const bool hadFocus = revert_->hasFocus();
    emit reverted(state_.parameter);
    if (hadFocus) mainControl()->setFocus(Qt::OtherFocusReason);
  });
  help_ = new IconButton(QStringLiteral("questionmark.circle"), false, this);
  help_->setObjectName(partName(state_.parameter, "Help"));
  help_->setFocusPolicy(Qt::NoFocus);  // F1 does the same
  help_->setAccessibleName(QStringLiteral("%1, what it does").arg(text(state_.parameter.title())));
  PlainText::setToolTip(*help_, QStringLiteral("What it does (F1)"));
  connect(help_, &IconButton::clicked, this, [this] { emit helpWanted(state_.parameter); });
}

void ParameterRow::buildSlider() {
  const ClosedRange range = state_.parameter.amounts(state_.product);
  const int lowest = static_cast<int>(range.lower);
  const int highest = static_cast<int>(range.upper);
  const int step = static_cast<int>(state_.parameter.step());
  slider_ = new ValueSlider(this);
  slider_->setObjectName(partName(state_.parameter, "Slider"));
  slider_->setScale(lowest, highest, step);
  connect(slider_, &ValueSlider::chosen, this, [this](int value) { stage(value); });
  connect(slider_, &ValueSlider::dragged, this, &ParameterRow::previewDrag);

  if (const auto& special = settingOf(state_.parameter).special) {
    toggle_ = new Toggle(text(special->switchWord), this);
    toggle_->setObjectName(partName(state_.parameter, "Toggle"));
    toggle_->setFocusPolicy(Qt::ClickFocus);
    connect(toggle_, &Toggle::chosen, this, &ParameterRow::toggle);
  }
  readout_ = new Readout(this);
  readout_->setObjectName(partName(state_.parameter, "Readout"));
  readout_->setScale(lowest, highest, step, text(state_.parameter.unit()));
  connect(readout_, &Readout::chosen, this, [this](int value) { stage(value); });
  connect(readout_, &Readout::finished, this, &ParameterRow::takeFocus);
}

void ParameterRow::buildSegments() {
  segments_ = new Segments(choices(settingOf(state_.parameter)), this);
  segments_->setObjectName(partName(state_.parameter, "Segments"));
  for (QRadioButton* const button : segments_->buttons()) {
    button->setObjectName(partName(state_.parameter, "Segment") + button->text().left(3));
  }
  connect(segments_, &Segments::chosen, this, [this](int value) { stage(value); });
}

void ParameterRow::buildList() {
  picker_ = new Picker(this);
  picker_->setObjectName(partName(state_.parameter, "Picker"));
  picker_->setChoices(choices(settingOf(state_.parameter)));
  connect(picker_, &Picker::chosen, this, [this](int value) { stage(value); });
  title_->setBuddy(picker_);
}

QWidget* ParameterRow::mainControl() const {
  if (slider_ != nullptr) {
    if (toggle_ != nullptr && state_.isSpecial()) return toggle_;
    return slider_;
  }
  if (picker_ != nullptr) return picker_;
  for (QRadioButton* const button : segments_->buttons()) {
    if (button->isChecked()) return button;
  }
  return segments_->buttons().front();
}

void ParameterRow::show(const RowState& state, const QString& whyNot) {
  if (!isTouched_ && state == state_ && whyNot == whyNot_) return;
  isTouched_ = false;
  // The tick is about the value that was saved.
  if (notice_ == Notice::taken && !isChanged() && state.current != state_.current) endNotice();
  state_ = state;
  whyNot_ = whyNot;
  render();
}

void ParameterRow::noteChangeAtBase() { notify(Notice::changedAtBase, noticeTime); }

void ParameterRow::noteTaken() { notify(Notice::taken, takenTime); }

// `time` in milliseconds.
void ParameterRow::notify(Notice notice, int time) {
  notice_ = notice;
  noticeEnd_.start(time, this);
  describe();
  place();
  update();
}

QString ParameterRow::noticeText() const {
  switch (notice_) {
    case Notice::none:
      return {};
    case Notice::changedAtBase:
      return QStringLiteral("changed on the base");
    case Notice::taken:
      return QStringLiteral("Taken");
  }
  return {};
}

void ParameterRow::endNotice() {
  noticeEnd_.stop();
  notice_ = Notice::none;
}

void ParameterRow::timerEvent(QTimerEvent* event) {
  if (event->timerId() != noticeEnd_.timerId()) return;
  endNotice();
  describe();
  place();
  update();
}

void ParameterRow::setColumns(const RowLayout::Columns& columns) {
  if (columns_ == columns) return;
  columns_ = columns;
  updateGeometry();
  place();
  update();
}

void ParameterRow::setCurrent(bool current) {
  if (isCurrent_ == current) return;
  isCurrent_ = current;
  renderHelp();
  update();
}

void ParameterRow::setExplainedBeside(bool beside) {
  if (isExplainedBeside_ == beside) return;
  isExplainedBeside_ = beside;
  renderHelp();
  update();
}

void ParameterRow::setRoomy(bool roomy) {
  if (isRoomy_ == roomy) return;
  isRoomy_ = roomy;
  updateGeometry();
}

// The button appears in the row that is pointed at or has the focus.
void ParameterRow::renderHelp() {
  help_->setVisible(!isExplainedBeside_ && !isChanged() && (isCurrent_ || underMouse()));
}

QSize ParameterRow::sizeHint() const {
  const int least = isRoomy_ ? std::max(RowLayout::roomyHeight, columns_.height) : columns_.height;
  return {Metrics::minimumWidth - Metrics::sidebarWidth,
          least + (note_.isEmpty() ? 0 : RowLayout::noteHeight(columns_.form))};
}

void ParameterRow::stage(std::int64_t value) {
  isTouched_ = true;
  emit staged(state_.parameter, value);
}

void ParameterRow::toggle(bool on) {
  stage(on ? settingOf(state_.parameter).special->value
           : ordinaryValue(state_, state_.current, lastOrdinary_));
}

// Shows the dragged value in the readout without staging it.
void ParameterRow::previewDrag(int value) {
  readout_->show(value, {}, value != state_.current ? Mark::changed : Mark::none);
  update();
}

void ParameterRow::render() {
  if (!state_.isSpecial()) lastOrdinary_ = state_.shown();
  const bool enabled = whyNot_.isEmpty();
  renderControl(enabled);
  revert_->setVisible(isChanged());
  revert_->setEnabled(enabled);
  revert_->setMark(mark());
  const QString note = text(noteOf(state_));
  if (note.isEmpty() != note_.isEmpty()) updateGeometry();
  note_ = note;
  renderRetry(enabled);
  renderHelp();
  describe();
  explain();
  place();
  update();
  passFocusOn();
}

void ParameterRow::renderControl(bool enabled) {
  const int shown = static_cast<int>(state_.shown());
  if (segments_ != nullptr) {
    segments_->show(shown, mark());
    // Qt leaves the focus nowhere when the parent of its control is disabled.
    QWidget* const focused = window()->focusWidget();
    const bool hadFocus = focused != nullptr && segments_->isAncestorOf(focused);
    segments_->setEnabled(enabled);
    if (hadFocus && !enabled) keepFocusOf(focused);
  } else if (picker_ != nullptr) {
    picker_->show(shown, mark());
    picker_->setEnabled(enabled);
  } else {
    renderSlider(enabled);
  }
}

void ParameterRow::renderSlider(bool enabled) {
  const int shown = static_cast<int>(state_.shown());
  const bool special = state_.isSpecial();
  const int ordinary = static_cast<int>(ordinaryValue(state_, shown, lastOrdinary_));
  if (special) {
    slider_->showSpecial(ordinary);
  } else {
    slider_->show(shown,
                  isChanged() ? std::optional<int>(static_cast<int>(state_.current)) : std::nullopt,
                  mark());
  }
  slider_->setEnabled(enabled && !special);
  if (toggle_ != nullptr) {
    const bool wasSpecial =
        RowState{state_.parameter, state_.current, {}, state_.product}.isSpecial();
    toggle_->show(special, special != wasSpecial ? mark() : Mark::none);
    toggle_->setEnabled(enabled && (special || state_.parameter.hasSpecial(state_.product)));
    // While it is on, the switch takes the slider's place as the row's Tab stop.
    const bool wasStop = toggle_->focusPolicy() == Qt::StrongFocus;
    toggle_->setFocusPolicy(special ? Qt::StrongFocus : Qt::ClickFocus);
    if (wasStop && !special && toggle_->hasFocus()) takeFocus();
  }
  if (!slider_->isSliderDown()) {
    readout_->show(special ? ordinary : shown,
                   text(MenuText::word(state_.parameter, shown, state_.product)), mark());
  }
  readout_->setEnabled(enabled);
}

Mark ParameterRow::mark() const {
  if (!isChanged()) return Mark::none;
  return state_.isNotTaken() ? Mark::refused : Mark::changed;
}

void ParameterRow::renderRetry(bool enabled) {
  const bool shows = state_.isNotTaken();
  if (retry_ == nullptr) {
    if (!shows) return;
    retry_ = new TextLink(QStringLiteral("Try again"), this);
    retry_->setObjectName(partName(state_.parameter, "TryAgain"));
    retry_->setAccessibleName(QStringLiteral("%1, try again").arg(text(state_.parameter.title())));
    PlainText::setToolTip(*retry_, QStringLiteral("Write this value once more (Ctrl+Return)"));
    retry_->setFocusPolicy(Qt::NoFocus);
    connect(retry_, &TextLink::clicked, this, [this] { emit triedAgain(state_.parameter); });
  }
  retry_->setVisible(shows);
  retry_->setEnabled(enabled);
}

std::vector<QWidget*> ParameterRow::controls() const {
  std::vector<QWidget*> all{slider_, toggle_, segments_, picker_, readout_};
  std::erase(all, nullptr);
  return all;
}

// Sets the accessible names for a screen reader.
void ParameterRow::describe() {
  QString name = text(spokenName(state_));
  if (notice_ == Notice::changedAtBase) name += QStringLiteral(", %1").arg(noticeText());
  const QString title = text(state_.parameter.title());
  setAccessibleName(name);
  for (QWidget* const control : controls()) control->setAccessibleName(name);
  if (toggle_ != nullptr) {
    toggle_->setAccessibleName(
        QStringLiteral("%1, %2, %3")
            .arg(title, toggle_->text(),
                 toggle_->isChecked() ? QStringLiteral("on") : QStringLiteral("off")));
  }
  if (segments_ != nullptr) {
    for (QRadioButton* const button : segments_->buttons()) {
      button->setAccessibleName(QStringLiteral("%1, %2").arg(title, button->text()));
    }
  }
  revert_->setAccessibleName(
      QStringLiteral("%1, back to %2").arg(title, text(format(state_, state_.current))));
}

// Sets the tooltips: what a control is for, or why it cannot be used.
void ParameterRow::explain() {
  for (QWidget* const control : controls()) {
    QString help;
    if (control == slider_ && whyNot_.isEmpty() && state_.isSpecial()) {
      help = QStringLiteral("Turn %1 off to set a number").arg(toggle_->text());
    } else if (control == toggle_ && !state_.parameter.hasSpecial(state_.product)) {
      help = text(settingOf(state_.parameter).special->whyMissing);
    }
    const QString& shown = whyNot_.isEmpty() ? help : whyNot_;
    if (control->toolTip() != shown) PlainText::setToolTip(*control, shown);
    const bool isNumber = control == slider_ || control == readout_;
    control->setAccessibleDescription(shown.isEmpty() && isNumber
                                          ? text(MenuText::range(state_.parameter, state_.product))
                                          : shown);
  }
  setAvailable(*revert_, whyNot_,
               QStringLiteral("Back to %1").arg(text(format(state_, state_.current))));
}

bool ParameterRow::event(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) place();
  if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
    renderHelp();
    emit pointed(event->type() == QEvent::Enter);
  }
  // Elsewhere in the window, F1 is the shortcut of another action.
  if (event->type() == QEvent::ShortcutOverride &&
      static_cast<const QKeyEvent*>(event)->key() == Qt::Key_F1) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

}  // namespace quorvane
