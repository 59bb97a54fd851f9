#include "ui/tuning/preset_values.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "protocol/menu_text.h"
#include "support/text.h"
#include "ui/kit/device_pixels.h"
#include "ui/kit/metrics.h"
#include "ui/kit/mirroring.h"
#include "ui/kit/painting.h"
#include "ui/kit/text.h"
#include "ui/kit/theme.h"
#include "ui/model/menu_text.h"

namespace quorvane {
namespace {

constexpr int lineTall = 33;
constexpr int barLong = 48;
constexpr int trackThick = 1;
constexpr int fillThick = 3;
constexpr int valueGap = 10;

QString leftAlone() { return QStringLiteral("left alone"); }

}  // namespace

PresetValues::PresetValues(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PresetValues::show(TuningParameter parameter, const std::vector<TuningPreset>& presets,
                        const std::optional<FanatecProduct>& product) {
  std::vector<Line> lines;
  lines.reserve(presets.size());
  QStringList spoken;
  for (const TuningPreset& preset : presets) {
    Line line{text(oneLine(preset.name)), leftAlone(), {}};
    if (const auto value = preset.value(parameter)) {
      line.value = text(MenuText::shortText(parameter, *value, product));
      line.place = placeInRange(parameter, *value, product);
    }
    spoken += QStringLiteral("%1: %2").arg(line.name, line.value);
    lines.push_back(std::move(line));
  }
  if (lines == lines_) return;
  lines_ = std::move(lines);
  setAccessibleName(spoken.join(QStringLiteral(", ")));
  updateGeometry();
  update();
}

int PresetValues::lineHeight() const {
  return Metrics::atLeast(lineTall, Metrics::font(Metrics::Type::body));
}

QSize PresetValues::sizeHint() const { return {0, lineHeight() * static_cast<int>(lines_.size())}; }

QSize PresetValues::minimumSizeHint() const { return sizeHint(); }

void PresetValues::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const int tall = lineHeight();
  const auto first = static_cast<std::size_t>(std::max(0, event->rect().top() / tall));
  const auto end =
      std::min(lines_.size(), static_cast<std::size_t>(event->rect().bottom() / tall) + 1);
  for (std::size_t i = first; i < end; ++i) {
    const QRect line(0, static_cast<int>(i) * tall, width(), tall);
    if (i > 0) drawEdge(painter, line, Qt::TopEdge, theme().hairline);
    paint(painter, lines_[i], line.adjusted(Metrics::cardInset, 0, -Metrics::cardInset, 0));
  }
}

void PresetValues::paint(QPainter& painter, const Line& line, const QRect& rect) const {
  const Theme& t = theme();
  const bool isSet = line.value != leftAlone();
  const QFontMetrics values(Metrics::font(Metrics::Type::value));
  const int valueWidth = values.horizontalAdvance(isSet ? QStringLiteral("2520 deg") : line.value);
  painter.setFont(Metrics::font(isSet ? Metrics::Type::value : Metrics::Type::body));
  painter.setPen(isSet ? t.ink : t.ink2);
  painter.drawText(rect,
                   lineFlags(line.value, Qt::AlignRight | Qt::AlignVCenter, layoutDirection()),
                   line.value);
  const int barRight = rect.right() + 1 - valueWidth - valueGap;
  if (line.place) {
    const auto bar = [&](qreal length, int thick, const QColor& colour) {
      const qreal top = rect.center().y() + 1 - thick / 2.0;
      const QRectF place = DevicePixels(painter).placed(
          visualRect(*this, QRectF(barRight - barLong, top, length, thick)));
      drawBox(painter, place, place.height() / 2, colour, QColor());
    };
    bar(barLong, trackThick, t.track);
    if (*line.place > 0) bar(*line.place * barLong, fillThick, t.fill);
  }
  const int nameWidth = (line.place ? barRight - barLong : barRight) - valueGap - rect.left();
  const QFont body = Metrics::font(Metrics::Type::body);
  painter.setFont(body);
  painter.setPen(t.ink);
  const QString name = QFontMetrics(body).elidedText(line.name, Qt::ElideRight, nameWidth);
  painter.drawText(firstPart(rect, nameWidth, layoutDirection()),
                   lineFlags(name, Qt::AlignLeft | Qt::AlignVCenter, layoutDirection()), name);
}

}  // namespace quorvane
