#include "ui/presets/preset_group.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "ui/kit/form.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/theme.h"
#include "ui/model/window_state.h"
#include "ui/presets/fold_caption.h"
#include "ui/presets/preset_list.h"

namespace quorvane {
namespace {

constexpr int underCaption = 6;

// "4", "12 of 300 match", "none of 4 match".
QString countText(std::size_t listed, std::size_t all, bool isSearch) {
  if (!isSearch) return QString::number(all);
  const QString found = listed == 0 ? QStringLiteral("none") : QString::number(listed);
  return QStringLiteral("%1 of %2 match").arg(found).arg(all);
}

}  // namespace

PresetGroup::PresetGroup(const QString& title, const QString& key, const QString& hint,
                         PresetList* list, QWidget* parent)
    : QWidget(parent),
      title_(title),
      key_(key),
      caption_(new FoldCaption(title)),
      hint_(messageRow(
          hint, hint.isEmpty() ? QStringLiteral("emptyGroup") : QStringLiteral("noPresetsHint"))),
      list_(list),
      isFolded_(WindowState::flag(key, false)) {
  setAccessibleName(title);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(underCaption);
  column->addWidget(caption_);
  auto* const body = new QVBoxLayout;
  body->setContentsMargins(1, 0, 1, 0);
  body->addWidget(hint_);
  body->addWidget(list_);
  column->addLayout(body);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  connect(caption_, &FoldCaption::toggled, this, [this](bool isOpen) { setFolded(!isOpen); });
}

QWidget& PresetGroup::caption() const { return *caption_; }

void PresetGroup::setCounts(std::size_t listed, std::size_t all, bool isSearch) {
  listed_ = listed;
  all_ = all;
  isSearch_ = isSearch;
  render();
}

void PresetGroup::setFolded(bool isFolded) {
  if (!isSearch_ && isFolded != isFolded_) {
    isFolded_ = isFolded;
    WindowState::setFlag(key_, isFolded);
  }
  render();
}

void PresetGroup::unfold() { setFolded(false); }

void PresetGroup::render() {
  const bool isOpen = isSearch_ ? listed_ > 0 : !isFolded_;
  caption_->show(countText(listed_, all_, isSearch_), isOpen);
  showPart(*hint_, isOpen && all_ == 0);
  showPart(*list_, isOpen && listed_ > 0);
}

// Hints and lists have a box around them.
void PresetGroup::showPart(QWidget& part, bool isShown) {
  if (part.isVisibleTo(this) == isShown) return;
  part.setVisible(isShown);
  update();
  emit changed();
}

void PresetGroup::resizeEvent(QResizeEvent* /*event*/) { emit changed(); }

void PresetGroup::paintEvent(QPaintEvent* /*event*/) {
  const QWidget* const shown = list_->isVisible() ? static_cast<QWidget*>(list_) : hint_;
  if (!shown->isVisible()) return;
  const Theme& t = theme();
  QPainter painter(this);
  drawBox(painter, shown->geometry().adjusted(-1, -1, 1, 1), Metrics::cardRadius, t.surface,
          t.line);
}

}  // namespace quorvane
