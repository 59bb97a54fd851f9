// The layout of ParameterRow.

#include <algorithm>

#include "protocol/setting.h"
#include "ui/kit/button.h"
#include "ui/kit/elided_label.h"
#include "ui/kit/metrics.h"
#include "ui/kit/painting.h"
#include "ui/kit/pickers.h"
#include "ui/kit/readout.h"
#include "ui/kit/text.h"
#include "ui/kit/text_link.h"
#include "ui/kit/text_width.h"
#include "ui/kit/toggle.h"
#include "ui/kit/value_slider.h"
#include "ui/tuning/parameter_row.h"
#include "ui/tuning/row_layout.h"

namespace quorvane {
namespace {

constexpr int besideToggle = 11;
constexpr int noteGap = 12;

int advanceOf(Metrics::Type type, const QString& words) {
  return textWidth(Metrics::font(type), words);
}

int pillWidth() {
  return advanceOf(Metrics::Type::pill, QLatin1String(RowLayout::changed)) +
         2 * RowLayout::pillPadding;
}

int withSymbol(int width) { return Metrics::symbolSide() + RowLayout::symbolGap + width; }

}  // namespace

RowLayout::Needs ParameterRow::needs() const {
  using Metrics::Type;
  const QString longest = text(longestFormat(state_));
  RowLayout::Needs needs;
  needs.title = advanceOf(Type::body, title_->text());
  needs.note =
      withSymbol(advanceOf(Type::callout, QStringLiteral("Not taken · still %1").arg(longest)));
  needs.state =
      pillWidth() + Metrics::gap + advanceOf(Type::callout, QStringLiteral("was %1").arg(longest));
  if (segments_ != nullptr) needs.picker = segments_->sizeHint().width();
  if (picker_ != nullptr) needs.picker = picker_->sizeHint().width();
  if (toggle_ != nullptr) needs.toggle = toggle_->sizeHint().width() + besideToggle;
  needs.readout =
      readout_ != nullptr ? readout_->sizeHint().width() : advanceOf(Type::value, longest);
  return needs;
}

QString ParameterRow::oldValue() const {
  return QStringLiteral("was %1").arg(text(format(state_, state_.current)));
}

// The width of what stands in the place of the state now.
int ParameterRow::stateWidth() const {
  using Metrics::Type;
  if (isChanged()) return pillWidth() + Metrics::gap + advanceOf(Type::callout, oldValue());
  if (notice_ == Notice::none) return 0;
  const int words = advanceOf(Type::callout, noticeText());
  return notice_ == Notice::taken ? withSymbol(words) : words;
}

RowLayout::Extras ParameterRow::extras() const { return {stateWidth(), !note_.isEmpty()}; }

void ParameterRow::place() {
  const RowLayout::Places p = RowLayout::places(columns_, size(), extras());
  places_ = mirrored(p);
  title_->setGeometry(places_.title);
  revert_->setGeometry(places_.button);
  help_->setGeometry(places_.button);
  const auto centred = [&](QWidget* widget, int left, int width) {
    const int tall = std::min(p.control.height(), widget->sizeHint().height());
    const int top = p.control.top() + (p.control.height() - tall) / 2;
    widget->setGeometry(visualRect(*this, QRect(left, top, width, tall)));
  };
  if (readout_ != nullptr) readout_->setGeometry(places_.readout);
  if (segments_ != nullptr) centred(segments_, p.control.left(), segments_->sizeHint().width());
  if (picker_ != nullptr) centred(picker_, p.control.left(), picker_->sizeHint().width());
  if (slider_ != nullptr) {
    QRect track = p.control.adjusted(-RowLayout::sliderMargin, 0, RowLayout::sliderMargin, 0);
    if (toggle_ != nullptr) {
      // A common width, so that switches with words of different lengths are aligned.
      track.setWidth(std::max(0, track.width() - columns_.toggle));
      centred(toggle_, track.right() + 1, toggle_->sizeHint().width());
    }
    slider_->setGeometry(visualRect(*this, track));
  }
  if (retry_ == nullptr) return;
  const QSize link = retry_->sizeHint();
  const int textEnd = p.note.left() + withSymbol(advanceOf(Metrics::Type::callout, note_));
  const bool isOneLine = columns_.form == RowLayout::Form::oneLine;
  const QPoint corner(isOneLine ? p.state.left() : textEnd + noteGap, p.note.top());
  retry_->setGeometry(visualRect(*this, QRect(corner, link)));
}

// Where these places, reckoned from left to right, are in the row.
RowLayout::Places ParameterRow::mirrored(RowLayout::Places places) const {
  for (QRect* const rect : {&places.plate, &places.title, &places.control, &places.readout,
                            &places.button, &places.state, &places.note}) {
    if (!rect->isNull()) *rect = visualRect(*this, *rect);
  }
  return places;
}

void ParameterRow::resizeEvent(QResizeEvent* /*event*/) { place(); }

}  // namespace quorvane
