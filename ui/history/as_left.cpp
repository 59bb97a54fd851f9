#include "ui/history/as_left.h"

#include <QStringList>
#include <algorithm>
#include <array>

#include "protocol/menu_text.h"
#include "ui/kit/text.h"
#include "ui/model/time_text.h"
#include "ui/model/window_state.h"

namespace quorvane {
namespace {

constexpr std::array<const char*, 13> numberWords{"No",   "One",    "Two",   "Three", "Four",
                                                  "Five", "Six",    "Seven", "Eight", "Nine",
                                                  "Ten",  "Eleven", "Twelve"};
constexpr std::size_t mostNamed = 3;

QString numberWord(std::size_t number) {
  return number < numberWords.size() ? QString::fromLatin1(numberWords[number])
                                     : QString::number(number);
}

}  // namespace

AsLeft::AsLeft(AppModel& model, QObject* parent) : QObject(parent), model_(model) {
  connect(&model, &AppModel::changed, this, &AsLeft::follow);
  follow();
}

void AsLeft::follow() {
  const auto& now = model_.notAsLeft();
  if (!now) {
    current_.reset();
    isOver_ = false;
  } else if (current_ != now) {
    current_ = now;
    isOver_ = WindowState::word(stateKey()) == text(now->record.id.text());
  }
  std::vector<ParameterValue> values;
  if (current_ && !isOver_ && model_.tuning()) {
    values = stillNotAsLeft(*current_, *model_.tuning(), model_.product());
    isOver_ = values.empty();
  }
  values_ = std::move(values);
}

// One for each base's product, set and mode, so that the file does not grow.
QString AsLeft::stateKey() const {
  return QStringLiteral("asLeft/%1-%2-%3")
      .arg(model_.product() ? model_.product()->productID : 0, 4, 16, QLatin1Char('0'))
      .arg(current_->place.slot)
      .arg(current_->place.isAdvanced ? QStringLiteral("advanced") : QStringLiteral("standard"));
}

QString AsLeft::title() const {
  if (values_.size() == 1) return QStringLiteral("One value is not as you left it");
  return QStringLiteral("%1 values are not as you left them").arg(numberWord(values_.size()));
}

QString AsLeft::note(WallClock::time_point now) const {
  if (!current_ || !model_.tuning()) return {};
  const auto product = model_.product();
  QStringList changes;
  for (const auto& [parameter, left] : values_) {
    if (changes.size() == static_cast<qsizetype>(mostNamed)) break;
    const std::int64_t present = model_.tuning()->value(parameter, product);
    changes +=
        QStringLiteral("%1 %2 → %3")
            .arg(text(parameter.code()), text(MenuText::presetText(parameter, left, product)),
                 text(MenuText::presetText(parameter, present, product)));
  }
  if (values_.size() > mostNamed) {
    changes += QStringLiteral("%1 more").arg(values_.size() - mostNamed);
  }
  return QStringLiteral("%1: %2").arg(dayAndTimeText(current_->record.time, now),
                                      changes.join(QStringLiteral(", ")));
}

QString AsLeft::noteInSetA(WallClock::time_point now) const {
  if (!current_) return {};
  return QStringLiteral("%1 (set A does that when switched on)")
      .arg(dayAndTimeText(current_->record.time, now));
}

void AsLeft::fillIn() {
  const std::vector<ParameterValue> values = values_;
  end();
  for (const auto& [parameter, left] : values) model_.stage(parameter, left);
}

void AsLeft::compare() {
  if (current_) emit compareAsked(current_->record);
}

void AsLeft::dismiss() {
  if (!current_) return;
  WindowState::setWord(stateKey(), text(current_->record.id.text()));
  end();
}

void AsLeft::end() {
  isOver_ = true;
  values_.clear();
  emit ended();
}

}  // namespace quorvane
