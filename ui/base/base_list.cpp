#include "ui/base/base_list.h"

#include <QApplication>
#include <algorithm>
#include <utility>

#include "app/app_model.h"
#include "session/candidates.h"
#include "ui/base/base_row.h"
#include "ui/model/availability.h"

namespace quorvane {
namespace {

bool isChoice(const AppModel& model) {
  const auto& bases = model.devices();
  return bases.size() > 1 ||
         (bases.size() == 1 && model.linkTo(bases.front()) == AppModel::Link::none);
}

}  // namespace

BaseList::BaseList(QWidget* parent) : Card(QStringLiteral("Attached bases"), parent) {
  setObjectName(QStringLiteral("baseList"));
}

void BaseList::show(const AppModel& model) {
  build(model.devices());
  const QString whyNot = whyWait(model);
  for (BaseRow* const row : rows_) row->show(model.linkTo(row->base()), whyNot);
  setVisible(isChoice(model));
}

// Keeps the rows of bases that are still attached, so that hover and focus on them stay.
void BaseList::build(const std::vector<HIDDeviceInfo>& bases) {
  const auto shows = [](const BaseRow* row, const HIDDeviceInfo& base) {
    return row != nullptr && isSameDevice(row->base(), base);
  };
  if (std::equal(rows_.begin(), rows_.end(), bases.begin(), bases.end(), shows)) return;
  std::vector<BaseRow*> before = std::exchange(rows_, {});
  for (std::size_t i = 0; i < bases.size(); ++i) {
    const auto kept = std::find_if(before.begin(), before.end(),
                                   [&](const BaseRow* row) { return shows(row, bases[i]); });
    rows_.push_back(kept == before.end() ? newRow(bases[i]) : std::exchange(*kept, nullptr));
    insert(static_cast<int>(i), rows_.back());
  }
  const bool leavesFocus = std::any_of(before.begin(), before.end(), [](const BaseRow* row) {
    return row != nullptr && row->isAncestorOf(QApplication::focusWidget());
  });
  for (BaseRow* const row : before) delete row;
  if (leavesFocus && !rows_.empty()) rows_.front()->focusDetail();
  emit rebuilt();
}

BaseRow* BaseList::newRow(const HIDDeviceInfo& base) {
  auto* const row = new BaseRow(base);
  connect(row, &BaseRow::chosen, this, [this, row] { emit chosen(row->base()); });
  return row;
}

}  // namespace quorvane
