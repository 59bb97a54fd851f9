#include "ui/compare/side_picker.h"

#include <QAbstractItemView>
#include <QHBoxLayout>
#include <algorithm>

#include "ui/kit/pickers.h"
#include "ui/kit/plain_text.h"

namespace quorvane {
namespace {

constexpr int textEntry = -1;
constexpr int fileEntry = -2;
constexpr int leastLetters = 16;  // of a name that is visible in any window

}  // namespace

SidePicker::SidePicker(const QString& name, const QString& objectName, QWidget* parent)
    : QWidget(parent), picker_(new Picker) {
  picker_->setObjectName(objectName);
  picker_->setAccessibleName(name);
  picker_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  picker_->setMinimumWidth(leastLetters * picker_->fontMetrics().averageCharWidth());
  connect(picker_, &Picker::chosen, this, &SidePicker::choose);
  setFocusProxy(picker_);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(picker_);
}

void SidePicker::show(const std::vector<CompareSide>& sides, const CompareSide& chosen) {
  if (picker_->view()->isVisible()) return;
  sides_ = sides;
  const auto found = std::find_if(sides_.begin(), sides_.end(),
                                  [&](const CompareSide& side) { return side.isSideOf(chosen); });
  shown_ = static_cast<int>(found - sides_.begin());
  std::vector<Choice> choices;
  choices.reserve(sides_.size() + 2);
  for (const CompareSide& side : sides_) {
    choices.push_back({static_cast<int>(choices.size()), side.name});
  }
  choices.push_back({textEntry, QStringLiteral("Text from the clipboard")});
  choices.push_back({fileEntry, QStringLiteral("A settings file…")});
  picker_->setChoices(choices);
  picker_->show(shown_, Mark::none);
  PlainText::setToolTip(*picker_, chosen.name);
}

void SidePicker::choose(int value) {
  if (value >= 0) {
    emit chosen(CompareSide(sides_[static_cast<std::size_t>(value)]));
    return;
  }
  picker_->show(shown_, Mark::none);
  if (value == textEntry) emit textAsked();
  if (value == fileEntry) emit fileAsked();
}

}  // namespace quorvane
