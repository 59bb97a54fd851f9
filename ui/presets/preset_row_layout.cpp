#include "ui/presets/preset_row_layout.h"

#include <QFontMetrics>
#include <algorithm>

#include "protocol/tuning_parameter.h"
#include "ui/kit/button.h"
#include "ui/kit/metrics.h"
#include "ui/presets/badge_label.h"
#include "ui/presets/preset_strip.h"

namespace quorvane {
namespace {

constexpr int presetRowInset = 14;  // at the left
constexpr int rowEnd = 10;          // at the right
constexpr int fullPadding = 8;      // above and below
constexpr int aboveStrip = 4;
constexpr int textGap = 8;        // between texts and buttons
constexpr int wordButtonGap = 6;  // between buttons with words
constexpr int iconGap = 4;        // before buttons with a symbol
constexpr int compactPadding = 6;
constexpr int leastCompactHeight = 46;
constexpr int leastSource = 120;  // beside a compact strip

int heightOfStrip(const PresetForm& form, int width) {
  return PresetStrip::heightOf({form.words, form.cells, width, form.isCompact});
}

// Places the buttons from the right end, all around one height. Returns where they begin.
int placeButtons(PresetRowLayout& layout, const PresetForm& form, int right, int middle) {
  const auto place = [&](QRect& button, const QSize& size, int gap) {
    right -= size.width();
    button = QRect(QPoint(right, middle - size.height() / 2), size);
    right -= gap;
  };
  place(layout.trash, form.icon, iconGap);
  place(layout.menu, form.icon, iconGap);
  place(layout.apply, form.apply, wordButtonGap);
  place(layout.load, form.load, 0);
  return right;
}

PresetRowLayout compactLayout(int width, const PresetForm& form) {
  PresetRowLayout layout;
  const int lines = form.nameHeight + form.lineHeight;
  layout.height = std::max(
      {leastCompactHeight, lines + 2 * compactPadding, form.load.height() + 2 * compactPadding});
  const int top = (layout.height - lines) / 2;
  const int end = placeButtons(layout, form, width - rowEnd, layout.height / 2) - 2 * textGap;
  const int badge = std::min(form.widestBadge, std::max(0, end - presetRowInset) / 2);
  layout.badge = QRect(end - badge, top, badge, form.nameHeight);
  layout.name =
      QRect(presetRowInset, top, layout.badge.left() - textGap - presetRowInset, form.nameHeight);
  const int strip = StripColumns::narrowestLine(form.words, form.cells, true);
  const bool hasStrip = end - strip >= presetRowInset + leastSource;
  const int second = top + form.nameHeight;
  if (hasStrip) layout.strip = QRect(end - strip, second, strip, form.lineHeight);
  const int room = (hasStrip ? layout.strip.left() - textGap : end) - presetRowInset;
  layout.details = QRect(presetRowInset, second, room, form.lineHeight);
  return layout;
}

PresetRowLayout fullLayout(int width, const PresetForm& form, int notesHeight) {
  PresetRowLayout layout;
  const int right = width - rowEnd;
  const int texts = std::max(form.nameHeight + form.lineHeight, form.load.height() - 2);
  const int end = placeButtons(layout, form, right, fullPadding - 1 + form.load.height() / 2);
  const int room = end - textGap - presetRowInset;
  layout.name = QRect(presetRowInset, fullPadding, room, form.nameHeight);
  layout.details = QRect(presetRowInset, fullPadding + form.nameHeight, room, form.lineHeight);
  layout.notes = QRect(presetRowInset, fullPadding + texts, right - presetRowInset, notesHeight);
  const int top = layout.notes.top() + notesHeight + aboveStrip;
  const int beside = right - presetRowInset - textGap - form.widestBadge;
  const bool isNarrow = beside < StripColumns::narrowestLine(form.words, form.cells, false);
  const int strip = isNarrow ? right - presetRowInset : beside;
  layout.strip = QRect(presetRowInset, top, strip, heightOfStrip(form, strip));
  if (!isNarrow) {
    layout.badge = QRect(right - form.widestBadge, top, form.widestBadge, layout.strip.height());
  }
  layout.height = layout.strip.top() + layout.strip.height() + fullPadding;
  return layout;
}

}  // namespace

PresetForm PresetForm::of(const std::optional<FanatecProduct>& product, bool isCompact) {
  const Button load(QStringLiteral("Load"));
  const Button apply(QStringLiteral("Apply now"));
  const IconButton icon(QStringLiteral("trash"));
  return {product,
          isCompact,
          Metrics::font(Metrics::Type::body),
          static_cast<int>(TuningParameter::adjustable(product).size()),
          QFontMetrics(Metrics::font(Metrics::Type::value)).height(),
          QFontMetrics(Metrics::font(Metrics::Type::callout)).height(),
          BadgeLabel::widest(),
          StripWords::measured(),
          load.sizeHint(),
          apply.sizeHint(),
          icon.sizeHint()};
}

PresetRowLayout PresetRowLayout::of(int width, const PresetForm& form, int notesHeight) {
  return form.isCompact ? compactLayout(width, form) : fullLayout(width, form, notesHeight);
}

}  // namespace quorvane
