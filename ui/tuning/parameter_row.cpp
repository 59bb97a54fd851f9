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
#include "ui/kit/toggle.h"
#include "ui/kit/value_slider.h"
#include "ui/model/availability.h"
#include "ui/tuning/row_layout.h"

namespace quorvane {
namespace {

constexpr int noticeTime = 4000;  // milliseconds

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
}

void ParameterRow::buildButtons() {
  revert_ = new IconButton(QStringLiteral("arrow.uturn.backward"), false, this);
  revert_->setObjectName(partName(state_.parameter, "Revert"));
  revert_->setProminent(true);
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
    connect(toggle_, &Toggle::chosen, this, &ParameterRow::toggle);
  }
  readout_ = new Readout(this);
  readout_->setObjectName(partName(state_.parameter, "Readout"));
  readout_->setScale(lowest, highest, step, text(state_.parameter.unit()));
  connect(readout_, &Readout::chosen, this, [this](int value) { stage(value); });
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
  state_ = state;
  whyNot_ = whyNot;
  render();
}

void ParameterRow::noteChangeAtBase() {
  notice_.start(noticeTime, this);
  describe();
  update();
}

void ParameterRow::timerEvent(QTimerEvent* event) {
  if (event->timerId() != notice_.timerId()) return;
  notice_.stop();
  describe();
  update();
}

void ParameterRow::setNarrow(bool isNarrow) {
  if (isNarrow_ == isNarrow) return;
  isNarrow_ = isNarrow;
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
  const int least = isRoomy_ ? RowLayout::roomyHeight : Metrics::tuningRowHeight;
  return {Metrics::minimumWidth - Metrics::sidebarWidth,
          Metrics::atLeast(least, Metrics::font(Metrics::Type::body))};
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
  readout_->show(value, {}, value != state_.current);
  update();
}

void ParameterRow::render() {
  if (!state_.isSpecial()) lastOrdinary_ = state_.shown();
  const bool enabled = whyNot_.isEmpty();
  renderControl(enabled);
  revert_->setVisible(isChanged());
  revert_->setEnabled(enabled);
  renderHelp();
  describe();
  explain();
  place();
  update();
}

void ParameterRow::renderControl(bool enabled) {
  const int shown = static_cast<int>(state_.shown());
  if (segments_ != nullptr) {
    segments_->show(shown, isChanged());
    segments_->setEnabled(enabled);
  } else if (picker_ != nullptr) {
    picker_->show(shown, isChanged());
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
    slider_->show(
        shown, isChanged() ? std::optional<int>(static_cast<int>(state_.current)) : std::nullopt);
  }
  // Only the switch can be used now: queue its setFocus() after the view has taken the focus from
  // the slider.
  if (special && enabled && slider_->hasFocus()) {
    QMetaObject::invokeMethod(
        toggle_, [toggle = toggle_] { toggle->setFocus(Qt::OtherFocusReason); },
        Qt::QueuedConnection);
  }
  slider_->setEnabled(enabled && !special);
  if (toggle_ != nullptr) {
    const bool wasSpecial =
        RowState{state_.parameter, state_.current, {}, state_.product}.isSpecial();
    toggle_->show(special, isChanged() && special != wasSpecial);
    toggle_->setEnabled(enabled && (special || state_.parameter.hasSpecial(state_.product)));
  }
  if (!slider_->isSliderDown()) {
    readout_->show(special ? ordinary : shown,
                   text(MenuText::word(state_.parameter, shown, state_.product)), isChanged());
  }
  readout_->setEnabled(enabled);
}

std::vector<QWidget*> ParameterRow::controls() const {
  std::vector<QWidget*> all{slider_, toggle_, segments_, picker_, readout_};
  std::erase(all, nullptr);
  return all;
}

// Sets the accessible names for a screen reader.
void ParameterRow::describe() {
  QString name = text(spokenName(state_));
  if (notice_.isActive())
    name += QStringLiteral(", %1").arg(QString::fromLatin1(RowLayout::notice));
  const QString title = text(state_.parameter.title());
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

void ParameterRow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1) {
    emit helpWanted(state_.parameter);
    return;
  }
  const bool reverts = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
  if (!reverts || !isChanged() || !revert_->isEnabled()) {
    QWidget::keyPressEvent(event);
    return;
  }
  emit reverted(state_.parameter);
}

bool ParameterRow::event(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    updateGeometry();
    place();
  }
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
