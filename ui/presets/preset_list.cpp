#include "ui/presets/preset_list.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

#include "ui/kit/painting.h"
#include "ui/kit/theme.h"
#include "ui/presets/preset_notes.h"

namespace quorvane {
namespace {

constexpr int lineBetween = 1;
constexpr int dropLine = 3;
constexpr std::size_t spareRows = 6;  // above and below the visible part
constexpr std::size_t keptRows = 40;  // likewise, of rows that were created before

// The number of the row at this height; the nearest one if there is none.
std::size_t numberAt(const std::vector<int>& tops, int y) {
  const auto after = std::upper_bound(tops.begin(), tops.end() - 1, y);
  return static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, after - tops.begin() - 1));
}

// Where a dragged row would land.
class DropMark final : public QWidget {
 public:
  explicit DropMark(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter(this).fillRect(rect(), theme().brandEdge);
  }
};

}  // namespace

PresetList::PresetList(NewRow newRow, QWidget* parent)
    : QWidget(parent), newRow_(std::move(newRow)), dropMark_(new DropMark(this)) {
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void PresetList::start(const PresetForm& form) {
  form_ = form;
  for (const Entry& entry : std::exchange(entries_, {})) delete entry.row;
}

void PresetList::setPresets(const std::vector<TuningPreset>& presets) {
  std::vector<ListedPreset> listed;
  listed.reserve(presets.size());
  std::transform(
      presets.begin(), presets.end(), std::back_inserter(listed),
      [](const TuningPreset& preset) { return std::make_shared<const TuningPreset>(preset); });
  setPresets(listed);
}

bool PresetList::shows(const std::vector<ListedPreset>& presets) const {
  return std::equal(entries_.begin(), entries_.end(), presets.begin(), presets.end(),
                    [](const Entry& entry, const ListedPreset& preset) {
                      return entry.preset == preset || *entry.preset == *preset;
                    });
}

void PresetList::setPresets(const std::vector<ListedPreset>& presets) {
  if (shows(presets)) return;
  std::vector<Entry> before = std::exchange(entries_, {});
  idsBefore_.clear();
  idsBefore_.reserve(before.size());
  for (const Entry& entry : before) idsBefore_.push_back(entry.preset->id);
  topsBefore_ = tops_;
  entries_.reserve(presets.size());
  for (const ListedPreset& preset : presets) entries_.push_back({preset});
  measureNotes();
  adopt(before);
  const QWidget* const focused = window()->focusWidget();
  const auto left = std::find_if(before.begin(), before.end(), [&](const Entry& entry) {
    return entry.row != nullptr && (entry.row == focused || entry.row->isAncestorOf(focused));
  });
  const auto number = static_cast<std::size_t>(left - before.begin());
  if (left != before.end()) emit focusLeft(rowBefore(number));
  for (const Entry& entry : before) delete entry.row;
  hideDrop();
  updateGeometry();
  place();
  emit resized();
}

// Takes over the widgets of presets that still exist. Several presets may have the same id.
void PresetList::adopt(std::vector<Entry>& before) {
  std::multimap<UUID, Entry*> known;
  for (Entry& entry : before) {
    if (entry.row != nullptr) known.emplace(entry.preset->id, &entry);
  }
  for (Entry& entry : entries_) {
    if (known.empty()) return;
    const auto found = known.find(entry.preset->id);
    if (found == known.end()) continue;
    Entry& former = *found->second;
    known.erase(found);
    if (former.preset == entry.preset || *former.preset == *entry.preset) {
      entry.row = std::exchange(former.row, nullptr);
    } else {
      replace(entry, std::exchange(former.row, nullptr));
    }
  }
}

void PresetList::replace(Entry& entry, PresetRow* former) {
  const QWidget* const focused = window()->focusWidget();
  const bool hasFocus = former->isAncestorOf(focused);
  PresetRow* const row = make(entry);
  emit made({row}, former);
  if (former == focused) {
    row->setFocus(Qt::OtherFocusReason);
  } else if (hasFocus) {
    if (auto* const control = row->findChild<QWidget*>(focused->objectName())) {
      control->setFocus(Qt::OtherFocusReason);
    }
  }
  delete former;
}

PresetRow* PresetList::make(Entry& entry) {
  entry.row = newRow_(entry.preset);
  entry.row->setParent(this);
  connect(entry.row, &PresetRow::grown, this, [this] {
    updateGeometry();
    place();
    emit resized();
  });
  entry.row->show();
  return entry.row;
}

std::vector<PresetRow*> PresetList::rows() const {
  std::vector<PresetRow*> rows;
  for (const Entry& entry : entries_) {
    if (entry.row != nullptr) rows.push_back(entry.row);
  }
  return rows;
}

std::size_t PresetList::numberOf(const PresetRow& row) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.row == &row; });
  return static_cast<std::size_t>(found - entries_.begin());
}

PresetRow* PresetList::rowAt(std::size_t number) {
  if (number >= entries_.size()) return nullptr;
  Entry& entry = entries_[number];
  if (entry.row == nullptr) {
    PresetRow* const before = rowBefore(number);
    emit made({make(entry)}, before);
    place();
  }
  return entry.row;
}

PresetRow* PresetList::rowOf(const UUID& id) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.preset->id == id; });
  return rowAt(static_cast<std::size_t>(found - entries_.begin()));
}

std::size_t PresetList::showDropAt(int y) {
  if (entries_.empty()) return 0;
  std::size_t number = numberAt(tops_, y);
  if (y > (tops_[number] + tops_[number + 1]) / 2) ++number;
  const int top = std::clamp(tops_[number] - dropLine, 0, std::max(0, height() - dropLine));
  dropMark_->setGeometry(0, top, width(), dropLine);
  dropMark_->raise();
  dropMark_->show();
  return number;
}

void PresetList::hideDrop() { dropMark_->hide(); }

PresetRow* PresetList::rowBefore(std::size_t number) const {
  for (std::size_t i = std::min(number, entries_.size()); i > 0; --i) {
    if (entries_[i - 1].row != nullptr) return entries_[i - 1].row;
  }
  return nullptr;
}

void PresetList::makeRows(const QRect& visible) {
  if (entries_.empty() || visible.isEmpty()) return;
  const std::size_t from = numberAt(tops_, visible.top());
  const std::size_t to =
      std::min(numberAt(tops_, visible.bottom()) + spareRows, entries_.size() - 1);
  std::size_t number = from < spareRows ? 0 : from - spareRows;
  PresetRow* before = rowBefore(number);
  std::vector<PresetRow*> fresh;
  const auto tell = [&] {
    if (!fresh.empty()) emit made(std::exchange(fresh, {}), before);
  };
  for (; number <= to; ++number) {
    Entry& entry = entries_[number];
    if (entry.row == nullptr) {
      fresh.push_back(make(entry));
    } else {
      tell();
      before = entry.row;
    }
  }
  tell();
  place();
  firstNear_ = from < keptRows ? 0 : from - keptRows;
  lastNear_ = to + keptRows;
  if (std::exchange(isDropDue_, true)) return;
  // Queued: whoever has made a row far away may use it first.
  QMetaObject::invokeMethod(this, &PresetList::dropRows, Qt::QueuedConnection);
}

void PresetList::dropRows() {
  isDropDue_ = false;
  for (std::size_t number = 0; number < entries_.size(); ++number) {
    PresetRow*& row = entries_[number].row;
    const bool isNear = number >= firstNear_ && number <= lastNear_;
    if (row != nullptr && !isNear && !isUsed(*row)) delete std::exchange(row, nullptr);
  }
}

bool PresetList::isUsed(const PresetRow& row) const {
  const QWidget* const focused = window()->focusWidget();
  return row.isUnfolded() || &row == focused || row.isAncestorOf(focused);
}

int PresetList::takeShiftAt(int y) {
  const std::vector<UUID> before = std::exchange(idsBefore_, {});
  const std::vector<int> topsBefore = std::exchange(topsBefore_, {});
  if (topsBefore.size() <= before.size()) return 0;
  for (std::size_t i = numberAt(topsBefore, std::max(0, y)); i < before.size(); ++i) {
    const auto now = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
      return entry.preset->id == before[i];
    });
    if (now == entries_.end()) continue;
    return tops_[static_cast<std::size_t>(now - entries_.begin())] - topsBefore[i];
  }
  return 0;
}

// A compact list has no notes.
void PresetList::measureNotes() {
  if (form_.isCompact) return;
  for (Entry& entry : entries_) {
    const auto [known, isNew] = advances_.try_emplace(entry.preset->notes, 0);
    if (isNew) known->second = PresetNotes::advanceOf(*entry.preset);
    entry.notesAdvance = known->second;
  }
}

std::vector<int> PresetList::tops(int width) const {
  const PresetRowLayout bare = PresetRowLayout::of(width, form_, 0);
  const int oneLine = form_.isCompact ? 0 : PresetNotes::heightOf(1, 1);
  std::vector<int> tops{0};
  tops.reserve(entries_.size() + 1);
  for (const Entry& entry : entries_) {
    const int lines = entry.notesAdvance == 0                    ? 0
                      : entry.notesAdvance <= bare.notes.width() ? 1
                                                                 : 2;
    const int height = entry.row != nullptr && entry.row->isUnfolded()
                           ? entry.row->heightForWidth(width)
                           : bare.height + lines * oneLine;
    tops.push_back(tops.back() + height + lineBetween);
  }
  return tops;
}

int PresetList::heightForWidth(int width) const {
  return std::max(0, tops(width).back() - lineBetween);
}

QSize PresetList::sizeHint() const { return {0, heightForWidth(width())}; }

void PresetList::place() {
  tops_ = tops(width());
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].row == nullptr) continue;
    entries_[i].row->setGeometry(0, tops_[i], width(), tops_[i + 1] - tops_[i] - lineBetween);
  }
}

void PresetList::resizeEvent(QResizeEvent* /*event*/) {
  place();
  emit resized();
}

bool PresetList::event(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    advances_.clear();
    measureNotes();
    updateGeometry();
    place();
  }
  return QWidget::event(event);
}

void PresetList::paintEvent(QPaintEvent* event) {
  if (entries_.empty()) return;
  QPainter painter(this);
  for (std::size_t i = std::max<std::size_t>(1, numberAt(tops_, event->rect().top()));
       i < entries_.size() && tops_[i] - lineBetween <= event->rect().bottom(); ++i) {
    drawEdge(painter, QRect(0, tops_[i] - lineBetween, width(), lineBetween), Qt::TopEdge,
             theme().hairline);
  }
}

}  // namespace quorvane
