#include "ui/presets/value_texts.h"

#include <QFontMetrics>

#include "ui/kit/metrics.h"

namespace quorvane {
namespace {

constexpr int mostValues = 2000;  // in one font

QTextOption asWritten(const QString& value) {
  QTextOption option;
  option.setTextDirection(value.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  return option;
}

}  // namespace

ValueTexts::ValueTexts()
    : usual_{Metrics::font(Metrics::Type::callout), {}},
      strong_{Metrics::font(Metrics::Type::caption), {}},
      height_(QFontMetrics(strong_.font).height()) {}

const ValueTexts::Value& ValueTexts::of(const QString& value, bool isStrong) {
  Texts& texts = isStrong ? strong_ : usual_;
  const auto known = texts.values.constFind(value);
  if (known != texts.values.constEnd()) return *known;
  if (texts.values.size() >= mostValues) texts.values.clear();
  Value laidOut{QStaticText(value), QFontMetrics(texts.font).horizontalAdvance(value)};
  laidOut.text.setTextFormat(Qt::PlainText);
  laidOut.text.setTextOption(asWritten(value));
  return *texts.values.insert(value, laidOut);
}

}  // namespace quorvane
